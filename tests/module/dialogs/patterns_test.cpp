// What the dialogs to come ask of the frame: a tree that is filled by clicks, a dialog that is left for the
// drawing and comes back, a tree of merged rows.

#include "dialogs/ProjectDialog.h"
#include "dialogs/QueryRows.h"
#include "module/database/DatabaseTest.h"
#include "ui/UiBackend.h"

using namespace plumb;
using veldrin::CellPart;

namespace {

enum { kGrid = 1052, kPick = 20 };

constexpr ControlTemplate kControls[] = {
    {ControlKind::kGrid, kGrid, "", 5, 5, 200, 100},
    {ControlKind::kButton, kPick, "&Pick <", 5, 110, 50, 14},
    {ControlKind::kButton, kDialogOk, "&OK", 5, 130, 50, 14, kDefaultButton},
    {ControlKind::kButton, kDialogCancel, "&Cancel", 60, 130, 50, 14, kCancelButton},
};
constexpr DialogTemplate kTemplate{2, "Tree", 220, 150, kControls};
constexpr GridColumnForm kColumns[] = {{"sValue", "ID", GridColumnKind::kTree},
                                       {"ixType", "", GridColumnKind::kHidden},
                                       {"bLoaded", "", GridColumnKind::kHidden},
                                       {"dValue", "Value"}};
constexpr ProjectDialogForm kForm{kTemplate, "test:Tree", {}};
constexpr GridForm kGridForm{kGrid, kColumns};

// Types, each with a row that stands for its sizes until a click loads them. It is left by a button, and
// comes back on the row where it was.
class TreeDialog : public ProjectDialog {
public:
    static constexpr int kPicked = 100;

    explicit TreeDialog(CDBConnection& connection) : ProjectDialog(kForm) {
        setDatabase(&connection, false);
        m_grid.mayEdit = [](CGridCtrl::Cell) { return false; };
        m_grid.clicked = [this](CGridCtrl::Cell at) {
            const bool isClosed = m_grid.hasBranch(at.row) && !m_grid.isExpanded(at.row);
            if (at.column == 0 && isClosed) loadSizes(at.row);
        };
        onClick(kPick, [this] {
            m_type = m_grid.GetTextByField(m_grid.GetFocusRow(), "ixType");
            EndDialog(kPicked);
        });
    }
    DialogGrid& grid() { return m_grid; }

protected:
    void load() override {
        for (const auto& type :
             QueryRows(connection(), "select ixPipeType, sName from tblPipeType order by sName")) {
            const int row = m_grid.InsertTreeRow(1);
            m_grid.SetTextByField(row, "sValue", type.text(1));
            m_grid.SetTextByField(row, "ixType", std::to_string(type.integer(0)));
            m_grid.MergeCells(row, 0, row, 3);
            m_grid.lookFixed(row);
            m_grid.InsertTreeRow(2);
            m_grid.CollapseRow(row);
        }
        for (int row = 1; row < m_grid.GetRowCount(); ++row)
            if (m_grid.GetTextByField(row, "ixType") == m_type) m_grid.SetFocusCell(row, 0);
    }

private:
    void loadSizes(int row) {
        if (m_grid.GetTextByField(row, "bLoaded") == "T") return;
        m_grid.SetTextByField(row, "bLoaded", "T");
        m_grid.DeleteRow(row + 1);
        int at = row;
        for (const auto& size :
             QueryRows(connection(), "select sLabel, dInteriorDiameter from tblPipeSize where ixPipeType = " +
                                         m_grid.GetTextByField(row, "ixType"))) {
            m_grid.InsertTreeRow(2, ++at);
            m_grid.SetTextByField(at, "sValue", size.text(0));
            m_grid.SetTextByField(at, "dValue", std::to_string(size.real(1)));
        }
    }
    DialogGrid m_grid{*this, kGridForm};
    CString m_type; // lives from one showing to the next
};

class Patterns : public DatabaseTest {
protected:
    int show(TreeDialog& dialog, std::function<void(CAcUiDialog&)> act) {
        auto& ui = dynamic_cast<veldrin::HeadlessUi&>(host->ui());
        ui.queue([&ui, act = std::move(act)](const veldrin::WindowRequest&) {
            act(*ui.dialog());
            return std::nullopt;
        });
        return showDialog(dialog);
    }
    static std::string shown(const CGridCtrl& grid) {
        std::string text;
        for (int at = 1; at < grid.shownRowCount(); ++at)
            text += std::string(static_cast<std::size_t>(grid.rowLevel(grid.shownRow(at))), '.') +
                    grid.GetItemText(grid.shownRow(at), 0) + " ";
        return text;
    }
};

} // namespace

TEST_F(Patterns, BranchesAreLoadedByTheirFirstClick) {
    TreeDialog dialog(connection);
    show(dialog, [&](CAcUiDialog&) {
        DialogGrid& grid = dialog.grid();
        EXPECT_EQ(shown(grid), ".Cold water .Hot water .Vent ");
        grid.userPresses({1, 0}, false);
        grid.userReleases({1, 0}, CellPart::kExpandBox);
        EXPECT_EQ(shown(grid), ".Cold water ..1/2\" ..3/4\" .Hot water .Vent ");
        for (int times = 0; times < 2; ++times) grid.userReleases({1, 0}, CellPart::kExpandBox);
        EXPECT_EQ(grid.GetRowCount(), 8) << "loaded once";
        grid.userReleases({4, 0}, CellPart::kExpandBox);
        EXPECT_FALSE(grid.hasBranch(4)) << "there is nothing to load";
        EXPECT_EQ(grid.cellLook(1, 0).span, 4);
        EXPECT_EQ(grid.cellLook(2, 0).span, 1);
        EXPECT_FALSE(grid.userKeys(veldrin::TableKey::kF2, {}));
    });
}

TEST_F(Patterns, ADialogComesBackOnItsRow) {
    TreeDialog dialog(connection);
    EXPECT_EQ(show(dialog,
                   [&](CAcUiDialog& open) {
                       dialog.grid().userPresses({3, 0}, false);
                       open.userClicks(kPick);
                   }),
              TreeDialog::kPicked);
    run("insert into tblPipeType(sName, iSortOrder) values('Aqua', 9)");
    EXPECT_EQ(show(dialog,
                   [&](CAcUiDialog& open) {
                       EXPECT_EQ(dialog.grid().GetItemText(dialog.grid().GetFocusRow(), 0), "Hot water");
                       EXPECT_EQ(dialog.grid().GetFocusRow(), 5);
                       open.userClicks(kDialogOk);
                   }),
              1);
}
