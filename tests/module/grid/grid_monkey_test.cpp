#include "module/grid/GridTest.h"

#include <random>

using plumb::CGridCtrl;
using veldrin::CellKind;
using veldrin::CellPart;

namespace {

// A user and a dialog that do anything at any time, the dialog also in the middle of what the user does.
class Monkey {
public:
    Monkey(CGridCtrl& grid, unsigned seed) : m_grid(grid), m_random(seed) {
        grid.SetFixedRowCount(1);
        grid.SetColumnCount(5);
        grid.SetRowCount(8);
        grid.SetTreeColumn(1);
        grid.SetCheckColumn(2);
        grid.SetComboColumn(3, "red|green");
        grid.OnBeginEdit([this](CGridCtrl::Cell) { return interfere(); });
        grid.OnEndEdit([this](CGridCtrl::Cell, const CString&) { return interfere(); });
        grid.OnSelectionChanged([this](CGridCtrl::Cell) { interfere(); });
        grid.OnClick([this](CGridCtrl::Cell) { interfere(); });
        grid.OnListSelection([this](CGridCtrl::Cell, const std::string&) { return interfere(); });
    }
    void step() { upTo(3) == 0 ? dialogActs() : userActs(); }

private:
    int upTo(int last) { return std::uniform_int_distribution<int>(0, last)(m_random); }
    int anyRow() { return upTo(m_grid.GetRowCount() + 1) - 1; }
    int anyColumn() { return upTo(m_grid.GetColumnCount() + 1) - 1; }

    bool interfere() {
        if (m_depth < 3 && upTo(2) == 0) {
            ++m_depth;
            dialogActs();
            --m_depth;
        }
        return upTo(3) != 0;
    }
    void dialogActs() {
        switch (upTo(17)) {
        case 0: m_grid.InsertRow(anyRow(), "row"); break;
        case 1:
        case 2: m_grid.InsertTreeRow(1 + upTo(3), anyRow()); break;
        case 3: m_grid.DeleteRow(anyRow()); break;
        case 4: m_grid.SwapRows(anyRow(), anyRow()); break;
        case 5: m_grid.SetFocusCell(anyRow(), anyColumn()); break;
        case 6:
        case 7: m_grid.StartEdit(); break;
        case 8: m_grid.SetItemText(anyRow(), anyColumn(), std::to_string(upTo(99))); break;
        case 9: m_grid.CollapseRow(anyRow()); break;
        case 10: m_grid.ExpandRow(anyRow()); break;
        case 11: m_grid.MergeCells(upTo(7), upTo(4), upTo(7), upTo(4)); break;
        case 12: m_grid.UnmergeCells(anyRow(), 0, anyRow(), 4); break;
        case 13: m_grid.CloseListWith("blue"); break;
        case 14: m_grid.EnsureVisible(anyRow(), anyColumn()); break;
        case 15: m_grid.SetRowCount(upTo(12)); break;
        case 16: m_grid.SetColumnWidth(upTo(4), upTo(1) * 50); break;
        default: m_grid.SetColumnCount(3 + upTo(3)); break;
        }
    }
    void userActs() {
        const CGridCtrl::Cell cell{anyRow(), anyColumn()};
        switch (upTo(7)) {
        case 0: m_grid.userPresses(cell, upTo(1) == 0); break;
        case 1: m_grid.userReleases(cell, static_cast<CellPart>(upTo(2))); break;
        case 2: m_grid.userDoubleClicks(cell); break;
        case 3: m_grid.userTypes("g"); break;
        case 4: m_grid.userEdits("text", upTo(9), upTo(9)); break;
        case 5: m_grid.userPicks(upTo(2)); break;
        case 6: m_grid.userLeaves(); break;
        default:
            m_grid.userKeys(static_cast<veldrin::TableKey>(upTo(14)), {upTo(1) == 0, upTo(1) == 0});
            break;
        }
    }

    CGridCtrl& m_grid;
    std::mt19937 m_random;
    int m_depth = 0;
};

bool isInside(const CGridCtrl& grid, CGridCtrl::Cell cell) {
    return cell.row >= 0 && cell.row < grid.GetRowCount() && cell.column >= 0 &&
           cell.column < grid.GetColumnCount();
}

} // namespace

class GridMonkey : public testing::TestWithParam<unsigned> {};

TEST_P(GridMonkey, FindsNoStateThatMakesNoSense) {
    const veldrin::Host host;
    CGridCtrl grid;
    Monkey monkey(grid, GetParam());
    for (int step = 0; step < 5000; ++step) {
        monkey.step();
        const CGridCtrl::Cell focus{grid.GetFocusRow(), grid.GetFocusColumn()};
        ASSERT_TRUE(focus == veldrin::kNoCell || isInside(grid, focus)) << step;
        ASSERT_TRUE(!grid.editor() || isInside(grid, grid.editor()->cell)) << step;
        int shown = 0;
        for (int row = 0; row < grid.GetRowCount(); ++row) {
            const int position = grid.positionOfRow(row);
            if (position < 0) continue;
            ASSERT_EQ(position, shown++) << step;
            ASSERT_EQ(grid.shownRow(position), row) << step;
        }
        ASSERT_EQ(shown, grid.shownRowCount()) << step;
    }
}

INSTANTIATE_TEST_SUITE_P(Seeds, GridMonkey, testing::Range(0U, 20U));
