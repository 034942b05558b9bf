#include "module/grid/GridTest.h"
#include "ui/UiBackend.h"

using plumb::CGridCtrl;
using veldrin::CellKind;

class GridCells : public GridTest {};

TEST_F(GridCells, PlacesThatThereAreNotAreRefused) {
    make(3, 2);
    EXPECT_EQ(grid.GetItemText(3, 0) + grid.GetItemText(0, -1), "");
    EXPECT_FALSE(grid.SetItemText(3, 0, "x") || grid.DeleteRow(3) || grid.DeleteTreeRow(-1) ||
                 grid.SwapRows(1, 3) || grid.SetFocusCell(1, 3) || grid.SetColumnWidth(3, 5) ||
                 grid.MergeCells(1, 1, 1, 3) || grid.EnsureVisible(9, 0) || grid.SetCheckColumn("no"));
    EXPECT_EQ(grid.InsertRow(4, "x"), -1);
    EXPECT_EQ(grid.InsertTreeRow(0), -1);
    EXPECT_EQ(column(0), "1,0 2,0 ");
    EXPECT_EQ(grid.GetFocusRow(), -1);
}

TEST_F(GridCells, FieldsNameColumns) {
    make(3, 1);
    EXPECT_TRUE(grid.SetColumnField(1, "sName") && grid.SetColumnField(2, "dValue"));
    EXPECT_EQ(grid.GetTextByField(1, "dValue"), "1,2");
    EXPECT_FALSE(grid.SetTextByField(1, "sOther", "x"));
    EXPECT_EQ(grid.GetTextByField(1, "sOther") + grid.GetTextByField(1, ""), "");
    EXPECT_TRUE(grid.SetColumnField(0, "sName")) << "one name to one column";
    EXPECT_EQ(grid.FieldColumn("sName"), 0);
}

TEST_F(GridCells, BoxesAreClearedByZeroAlone) {
    make(3, 0);
    grid.SetCheckColumn(1);
    grid.AppendRow();
    EXPECT_EQ(grid.GetItemText(0, 1), "0,1") << "a caption is no box";
    EXPECT_EQ(grid.GetItemText(1, 1), "0");
    for (const char* set : {"1", "-1", "T", ""}) {
        EXPECT_TRUE(grid.SetItemText(1, 1, set));
        EXPECT_TRUE(grid.isChecked(1, 1)) << set;
        EXPECT_NE(grid.GetItemText(1, 1), "0");
    }
    grid.SetItemText(1, 1, "0");
    EXPECT_FALSE(grid.isChecked(1, 1));

    click(1, 1, veldrin::CellPart::kCheckBox);
    EXPECT_EQ(taken(), "focus 1,1;end 1,1;-1;click 1,1;") << "nobody is asked before";
    mayEnd = false;
    press(Key::kSpace);
    EXPECT_EQ(taken() + grid.GetItemText(1, 1), "end 1,1;0;-1");
    grid.SetItemReadOnly(1, 1, true);
    press(Key::kSpace);
    EXPECT_EQ(taken(), "");
    doubleClick(1, 1);
    EXPECT_EQ(editing(), "-");
}

TEST_F(GridCells, RowsComeAndGoUnderTheFocus) {
    make(2, 4);
    grid.SetFocusCell(3, 1);
    grid.InsertRow(2, "new");
    EXPECT_EQ(focus(), "4,1");
    grid.DeleteRow(1);
    EXPECT_EQ(focus(), "3,1");
    grid.SwapRows(3, 1);
    EXPECT_EQ(focus() + " " + column(0), "1,1 3,0 2,0 new 4,0 ");
    grid.SetFocusCell(4);
    grid.DeleteRow(4);
    EXPECT_EQ(focus(), "3,1");
    grid.SetRowCount(2);
    EXPECT_EQ(focus(), "-1,-1");
    grid.SetFocusCell(1, 1);
    grid.DeleteNonFixedRows();
    EXPECT_EQ(focus(), "-1,-1");
    EXPECT_EQ(grid.GetRowCount(), 1);
}

TEST_F(GridCells, SwappedRowsTakeTheirLooksAlong) {
    make(4, 2);
    grid.SetItemColors(1, 1, 0xFF0000, {});
    grid.SetItemWeight(1, 1, CGridCtrl::kBoldWeight);
    grid.MergeCells(1, 2, 1, 3);
    grid.SwapRows(1, 2);
    EXPECT_EQ(grid.cellLook(2, 1).text, 0xFF0000U);
    EXPECT_TRUE(grid.cellLook(2, 1).isBold);
    EXPECT_EQ(grid.cellLook(2, 2).span, 2);
    EXPECT_EQ(grid.cellLook(2, 3).span, 0);
    EXPECT_EQ(grid.cellLook(1, 2).span, 1);
    EXPECT_TRUE(grid.UnmergeCells(1, 0, 2, 3));
    EXPECT_EQ(grid.cellLook(2, 2).span, 1);
}

TEST_F(GridCells, ListsAreOpenOrClosed) {
    make(3, 2);
    grid.SetComboColumn(1, "red|green");
    grid.SetComboColumn(2, "|one");
    grid.SetItemCombo(2, 1, "|any|other");
    EXPECT_EQ(grid.cellKind(1, 1), CellKind::kClosedList);
    EXPECT_EQ(grid.cellKind(1, 2), CellKind::kOpenList);
    EXPECT_EQ(grid.cellKind(2, 1), CellKind::kOpenList);
    EXPECT_EQ(grid.cellItems(2, 1), (std::vector<std::string>{"any", "other"}));
    EXPECT_EQ(grid.cellKind(0, 1), CellKind::kText);
    grid.SetItemKind(2, 1, CellKind::kCheck);
    EXPECT_EQ(grid.cellKind(2, 1), CellKind::kCheck) << "kinds change while the grid is shown";
    EXPECT_TRUE(plumb::CGridCellCombo::fromText("|")->items.empty());
}

TEST_F(GridCells, ColumnsFitTheirWidestCell) {
    make(4, 2);
    grid.SetColumnWidth(1, 0);
    grid.SetItemText(2, 2, "a text of some length");
    grid.SetItemText(0, 3, "Standard\nSize of all");
    grid.SetItemText(1, 2, "merged cells have the room of two columns, and widen none of them");
    grid.MergeCells(1, 2, 1, 3);
    grid.AutoSizeColumns();
    const auto width = [&](const char* text, bool bold) { return host.ui().textWidth(text, bold); };
    EXPECT_EQ(grid.columnWidth(1), 0) << "hidden ones stay hidden";
    EXPECT_EQ(grid.GetItemText(1, 1), "1,1");
    EXPECT_EQ(grid.columnWidth(2), width("a text of some length", false) + 2 * veldrin::kCellMargin);
    EXPECT_EQ(grid.columnWidth(3), width("Size of all", true) + 2 * veldrin::kCellMargin);
    EXPECT_EQ(grid.rowLines(0), 2);
    grid.userSizesColumn(1, 50);
    EXPECT_EQ(grid.columnWidth(1), 0);
}

TEST_F(GridCells, TheSelectionIsOfWholeRowsInAList) {
    make(4, 5);
    EXPECT_EQ(grid.GetSelectedRange().firstRow, -1);
    click(2, 1);
    grid.userPresses({4, 3}, true);
    auto range = grid.GetSelectedRange();
    EXPECT_EQ((std::vector{range.firstRow, range.firstColumn, range.lastRow, range.lastColumn}),
              (std::vector{2, 1, 4, 3}));
    EXPECT_FALSE(grid.isSelected(3, 0));
    grid.SetListMode(true);
    range = grid.GetSelectedRange();
    EXPECT_EQ((std::vector{range.firstColumn, range.lastColumn}), (std::vector{0, 3}));
    press(Key::kUp, false, true);
    EXPECT_TRUE(grid.isSelected(3, 2) && !grid.isSelected(4, 2));
    grid.SetFocusCell(1, 1);
    EXPECT_EQ(grid.GetSelectedRange().lastRow, 1);
}
