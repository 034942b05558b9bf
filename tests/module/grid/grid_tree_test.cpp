#include "module/grid/GridTest.h"

using veldrin::CellPart;

// A tree of levels 1 2 3 3 2 1 2, in column 1.
class GridTree : public GridTest {
protected:
    GridTree() {
        make(3, 0);
        grid.SetTreeColumn(1);
        for (const int level : {1, 2, 3, 3, 2, 1, 2}) {
            const int row = grid.InsertTreeRow(level);
            grid.SetItemText(row, 0, std::to_string(row));
        }
    }
    std::string shown() const {
        std::string rows;
        for (int at = 1; at < grid.shownRowCount(); ++at) rows += std::to_string(grid.shownRow(at));
        for (int row = 0; row < grid.GetRowCount(); ++row)
            EXPECT_EQ(grid.IsRowShown(row), row == 0 || rows.find(std::to_string(row)) != std::string::npos);
        return rows;
    }
};

TEST_F(GridTree, CollapsedBranchesHideWhatIsDeeper) {
    EXPECT_EQ(shown(), "1234567");
    EXPECT_TRUE(grid.hasBranch(2) && grid.isExpanded(2) && !grid.hasBranch(4));
    EXPECT_FALSE(grid.CollapseRow(4)) << "nothing is under it";
    EXPECT_TRUE(grid.CollapseRow(2));
    EXPECT_EQ(shown(), "12567");
    EXPECT_TRUE(grid.CollapseRow(1));
    EXPECT_EQ(shown(), "167");
    grid.ExpandRow(1);
    EXPECT_EQ(shown(), "12567") << "what was collapsed inside stays so";
    EXPECT_TRUE(grid.EnsureVisible(4, 1));
    EXPECT_EQ(shown(), "1234567");
}

TEST_F(GridTree, RowsGoWithTheirBranch) {
    grid.CollapseRow(2);
    grid.SetFocusCell(6, 1);
    EXPECT_TRUE(grid.DeleteTreeRow(2));
    EXPECT_EQ(column(0), "1 5 6 7 ");
    EXPECT_EQ(shown() + " " + focus(), "1234 3,1");
    EXPECT_TRUE(grid.DeleteRow(1));
    EXPECT_EQ(column(0) + focus(), "6 7 1,1");
}

TEST_F(GridTree, ABranchIsFilledByTheClickThatOpensIt) {
    grid.CollapseRow(6);
    grid.OnClick([this](Cell at) {
        tell("click", at);
        if (grid.isExpanded(at.row) || grid.GetItemText(at.row + 1, 0) != "7") return;
        grid.DeleteRow(at.row + 1); // what stood for the branch until now
        for (const char* text : {"a", "b"}) grid.SetItemText(grid.InsertTreeRow(2, at.row + 1), 0, text);
    });
    click(6, 1);
    EXPECT_EQ(taken() + shown(), "focus 6,1;click 6,1;123456") << "a click beside the box opens nothing";
    click(6, 1, CellPart::kExpandBox);
    EXPECT_EQ(taken() + shown() + " " + column(0), "click 6,1;12345678 1 2 3 4 5 6 b a ");
    click(6, 1, CellPart::kExpandBox);
    EXPECT_EQ(shown(), "123456");
    grid.SetFixedColumnCount(2);
    click(6, 1, CellPart::kExpandBox);
    EXPECT_EQ(shown(), "12345678") << "the tree may be one of headers";
}

TEST_F(GridTree, KeysStepOverHiddenRowsAndOpenBranches) {
    grid.SetColumnWidth(2, 0);
    grid.SetFocusCell(1, 1);
    press(Key::kLeft);
    EXPECT_EQ(taken() + shown(), "click 1,1;167") << "nothing lies to the left, so it closes";
    press(Key::kDown);
    EXPECT_EQ(focus(), "6,1");
    press(Key::kEnd, true);
    EXPECT_EQ(focus(), "7,1");
    press(Key::kHome, true);
    press(Key::kRight);
    EXPECT_EQ(shown(), "1234567");
    press(Key::kRight);
    EXPECT_EQ(shown() + " " + focus(), "1234567 1,1");
}

TEST_F(GridTree, MergedCellsAreOneForTheUser) {
    grid.MergeCells(2, 1, 2, 2);
    click(2, 2);
    EXPECT_EQ(focus(), "2,1");
    press(Key::kRight);
    EXPECT_EQ(focus(), "2,1") << "its branch is open, and nothing lies to the right";
    grid.SetFocusCell(1, 2);
    press(Key::kDown);
    EXPECT_EQ(focus(), "2,1");
    press(Key::kDown);
    EXPECT_EQ(focus(), "3,2") << "back in the column where it came from";
}
