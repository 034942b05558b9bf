#include "module/grid/GridTest.h"

class GridEditing : public GridTest {
protected:
    GridEditing() {
        make(4, 3);
        grid.SetFocusCell(1, 1);
    }
};

TEST_F(GridEditing, TypingReplacesAndReturnStores) {
    EXPECT_FALSE(grid.userTypes("\x1B"));
    EXPECT_TRUE(grid.userTypes("a"));
    EXPECT_TRUE(grid.userTypes("b"));
    EXPECT_EQ(editing() + " " + grid.GetItemText(1, 1), "ab 1,1");
    press(Key::kReturn);
    EXPECT_EQ(taken() + grid.GetItemText(1, 1) + " " + focus(), "begin 1,1;end 1,1;ab;ab 1,1");
    grid.userTypes("c");
    press(Key::kEscape);
    EXPECT_EQ(taken() + grid.GetItemText(1, 1), "begin 1,1;ab");
    press(Key::kF2);
    EXPECT_EQ(editing(), "ab");
    press(Key::kReturn);
    EXPECT_EQ(taken(), "begin 1,1;") << "the same text is no edit";
}

TEST_F(GridEditing, RefusalsKeepTheOldText) {
    mayBegin = false;
    EXPECT_FALSE(grid.userTypes("x"));
    doubleClick(1, 1);
    EXPECT_EQ(editing(), "-");
    grid.StartEdit();
    EXPECT_EQ(editing(), "1,1") << "what the dialog starts is told, but not asked";
    mayEnd = false;
    grid.userTypes("x");
    EXPECT_FALSE(grid.userEndsEdit());
    EXPECT_EQ(grid.GetItemText(1, 1), "1,1");
    grid.SetItemReadOnly(1, 1, true);
    mayBegin = true;
    taken();
    grid.StartEdit();
    EXPECT_FALSE(grid.userTypes("x"));
    EXPECT_EQ(taken(), "");
}

TEST_F(GridEditing, KeysEndWhatTheKeyboardBegan) {
    grid.userTypes("a");
    press(Key::kRight);
    EXPECT_EQ(taken() + focus(), "begin 1,1;end 1,1;a;focus 1,2;1,2");
    EXPECT_EQ(editing(), "-") << "the next cell does not open";
    doubleClick(1, 2);
    taken();
    EXPECT_FALSE(grid.userKeys(Key::kRight, {})) << "begun with the mouse, it keeps the arrows";
    EXPECT_FALSE(grid.userKeys(Key::kHome, {}));
    grid.userEdits("b", 1, 1);
    press(Key::kDown, true);
    EXPECT_EQ(taken() + focus(), "end 1,2;b;focus 2,2;2,2");
    doubleClick(2, 2);
    press(Key::kTab);
    EXPECT_EQ(focus(), "2,3");
    press(Key::kTab);
    EXPECT_EQ(focus(), "3,1") << "round to the next row, past the headers";
    press(Key::kTab, false, true);
    EXPECT_EQ(focus(), "2,3");
    grid.SetFocusCell(3, 3);
    EXPECT_FALSE(grid.userKeys(Key::kTab, {})) << "there is no next cell, so the next control is meant";
}

TEST_F(GridEditing, GoingElsewhereStores) {
    grid.userTypes("a");
    click(2, 2);
    EXPECT_EQ(taken(), "begin 1,1;end 1,1;a;focus 2,2;click 2,2;");
    grid.userTypes("b");
    grid.SetFocusCell(0, 2);
    EXPECT_EQ(taken(), "begin 2,2;end 2,2;b;") << "the dialog moves the focus without a word";
    grid.SetFocusCell(3, 3);
    grid.userTypes("c");
    grid.userLeaves();
    EXPECT_EQ(grid.GetItemText(3, 3), "c");
    click(0, 1);
    click(1, 0);
    EXPECT_EQ(focus(), "3,3") << "captions and headers are no data";
}

TEST_F(GridEditing, TheDialogPutsAnotherTextOrRow) {
    grid.OnEndEdit([this](Cell at, const std::string&) {
        grid.SetItemText(at.row, at.column, "[" + grid.GetItemText(at.row, at.column) + "]");
        return grid.SwapRows(1, 2);
    });
    grid.userTypes("a");
    press(Key::kReturn);
    EXPECT_EQ(column(1) + focus(), "2,1 [a] 3,1 2,1");
    grid.userTypes("b");
    grid.SetItemText(2, 1, "meanwhile");
    EXPECT_EQ(editing(), "b") << "the stored text is another one than the editor's";
    grid.DeleteRow(1);
    EXPECT_EQ(grid.editor()->cell, (Cell{1, 1})) << "the editor goes with its row";
    grid.DeleteRow(1);
    EXPECT_EQ(editing(), "-");
    press(Key::kReturn);
    EXPECT_EQ(column(1), "3,1 ");
}

TEST_F(GridEditing, ARefusedCellIsNotLeftByAClick) {
    bool isRefused = false;
    grid.OnEndEdit([&](Cell at, const std::string&) {
        grid.SetItemText(at.row, at.column, "old");
        grid.SetFocusCell(at.row, at.column);
        grid.StartEdit();
        return isRefused = true;
    });
    grid.OnSelectionChanged([&](Cell) {
        if (std::exchange(isRefused, false)) grid.SetFocusCell(1, 1);
    });
    grid.userTypes("bad");
    click(3, 2);
    EXPECT_EQ(focus() + " " + editing(), "1,1 old");
    click(3, 2);
    EXPECT_EQ(focus() + " " + editing(), "3,2 -") << "with the old text it may be left";
}

TEST_F(GridEditing, ListsTakeTheirItems) {
    grid.SetComboColumn(1, "red|green|grey");
    grid.SetComboColumn(2, "|Browse. . .");
    EXPECT_TRUE(grid.userTypes("gre"));
    EXPECT_EQ(editing(), "green");
    EXPECT_FALSE(grid.userEdits("blue", 4, 4));
    EXPECT_TRUE(grid.userPicks(2));
    EXPECT_EQ(taken() + editing(), "begin 1,1;pick 1,1;grey;grey") << "it stays open";
    mayPick = false;
    EXPECT_FALSE(grid.userPicks(0));
    EXPECT_EQ(editing(), "grey");
    press(Key::kReturn);
    EXPECT_EQ(grid.GetItemText(1, 1), "grey");

    grid.SetFocusCell(1, 2);
    grid.OnListSelection([this](Cell, const std::string&) { return grid.CloseListWith("pump"); });
    doubleClick(1, 2);
    taken();
    EXPECT_TRUE(grid.userPicks(0));
    EXPECT_EQ(taken() + grid.GetItemText(1, 2) + editing(), "end 1,2;pump;pump-");
    EXPECT_FALSE(grid.CloseListWith("x"));
    EXPECT_FALSE(grid.userPicks(0));
}
