#include "database/tables/tblPipeType.h"
#include "dialogs/DialogDatabase.h"
#include "dialogs/ProjectDialog.h"
#include "dialogs/QueryRows.h"
#include "module/database/DatabaseTest.h"
#include "ui/UiBackend.h"

using namespace plumb;

namespace {

// A list editor: pipe types with names, which can be added, deleted and moved.

enum { kNew = 10, kDelete = 11, kUp = 12, kOther = 13, kGrid = 1052 };
enum { kKey = 1, kName = 3 };

constexpr ControlTemplate kControls[] = {
    {ControlKind::kGrid, kGrid, "", 5, 5, 200, 100},
    {ControlKind::kButton, kNew, "&New", 5, 110, 50, 14},
    {ControlKind::kButton, kDelete, "&Delete", 60, 110, 50, 14},
    {ControlKind::kButton, kUp, "&Up", 115, 110, 50, 14},
    {ControlKind::kButton, kOther, "&Other...", 170, 110, 50, 14},
    {ControlKind::kButton, kDialogOk, "&OK", 5, 130, 50, 14, kDefaultButton},
    {ControlKind::kButton, kDialogCancel, "&Cancel", 60, 130, 50, 14, kCancelButton},
};
constexpr DialogTemplate kTypesTemplate{1, "Types", 220, 150, kControls};
constexpr GridColumnForm kColumns[] = {{"", "", GridColumnKind::kHidden},
                                       {"ixPipeType", "", GridColumnKind::kHidden},
                                       {"iSortOrder", "", GridColumnKind::kHidden},
                                       {"sName", "Name"},
                                       {"bFittingTicks", "Ticks", GridColumnKind::kCheck},
                                       {"iElbow", "Elbow", GridColumnKind::kList, "Right Angle|Arc"}};
constexpr ControlResize kResize[] = {{kGrid, kStretchBoth, 100}};
constexpr ProjectDialogForm kTypes{kTypesTemplate, "test:Types", kResize};
constexpr GridForm kTypeGrid{kGrid, kColumns};

class TypeDialog : public ProjectDialog {
public:
    explicit TypeDialog(CDBConnection& connection) : ProjectDialog(kTypes), m_record(false, &connection) {
        setDatabase(&connection, false);
        m_grid.accepts = [this](CGridCtrl::Cell at) {
            return at.column != kName || m_grid.acceptsUniqueName(at);
        };
        onClick(kNew, [this] { addRow(); });
        onClick(kDelete, [this] { deleteRow(); });
        onClick(kUp, [this] {
            const int row = m_grid.GetFocusRow();
            if (row > 1) m_grid.SwapRows(row, row - 1);
        });
        onClick(kOther, [this] {
            handOver([this] {
                TypeDialog other{this->connection()};
                other.DoModal();
            });
        });
    }
    DialogGrid& grid() { return m_grid; }

protected:
    void load() override {
        for (const auto& row : QueryRows(connection(), "select ixPipeType, iSortOrder, sName from tblPipeType"
                                                       " order by iSortOrder")) {
            const int at = m_grid.AppendRow();
            m_grid.SetTextByField(at, "ixPipeType", std::to_string(row.integer(0)));
            m_grid.SetTextByField(at, "sName", row.text(2));
        }
    }
    void OnOK() override {
        if (store([this] { writeTypes(); })) EndDialog(kOk);
    }

private:
    void writeTypes() {
        deleteRecords(m_record, m_grid);
        for (int row = 1; row < m_grid.GetRowCount(); ++row) {
            if (!openRecord(m_record, m_grid.GetTextByField(row, "ixPipeType"))) continue;
            m_record.iSortOrder = row;
            m_record.sName = m_grid.GetTextByField(row, "sName");
            m_record.Update();
        }
    }
    void addRow() {
        const int row = m_grid.AppendRow();
        m_grid.SetTextByField(row, "sName", m_grid.freeName(kName, "New Pipe Type "));
        m_grid.SetTextByField(row, "ixPipeType", kNewRow);
        m_grid.editCell(row, kName);
    }
    void deleteRow() {
        const int row = m_grid.GetFocusRow();
        if (m_grid.GetRowCount() <= 2) return tellUser("You cannot delete the last pipe type.");
        m_grid.removeRow(row, "ixPipeType", kName);
    }

    DialogGrid m_grid{*this, kTypeGrid};
    tblPipeType m_record;
};

class Frame : public DatabaseTest {
protected:
    veldrin::HeadlessUi& ui() { return dynamic_cast<veldrin::HeadlessUi&>(host->ui()); }
    void next(std::function<void(CAcUiDialog&)> act) {
        ui().queue([this, act = std::move(act)](const veldrin::WindowRequest&) {
            act(*ui().dialog());
            return std::nullopt;
        });
    }
    // Moves the focus, begins an edit, types and presses Return, as a user does.
    static bool edit(CGridCtrl& grid, int row, int column, const CString& text) {
        grid.userPresses({row, column}, false);
        if (!grid.userKeys(veldrin::TableKey::kF2, {})) return false;
        grid.userEdits(text, 0, 0);
        return grid.userEndsEdit();
    }
    std::string messages() {
        std::string text;
        for (const auto& entry : ui().takeLog())
            if (entry.kind == "message") text += entry.caption + ": " + entry.text + ";";
        return text;
    }
    std::string types() { return rows("select sName from tblPipeType order by iSortOrder"); }
};

} // namespace

TEST_F(Frame, ItsGridIsBuiltFromItsForm) {
    TypeDialog dialog(connection);
    next([&](CAcUiDialog& open) {
        const CGridCtrl& grid = dialog.grid();
        EXPECT_EQ(grid.GetItemText(0, kKey), "ixPipeType") << "hidden columns show their field";
        EXPECT_EQ(grid.GetItemText(0, kName), "Name");
        EXPECT_EQ(grid.columnWidth(kKey), 0);
        EXPECT_GT(grid.columnWidth(kName), 0);
        EXPECT_EQ(grid.GetTextByField(1, "bFittingTicks"), "0");
        EXPECT_EQ(grid.cellItems(1, 5).size(), 2U);
        EXPECT_EQ(open.savedName(), "test:Types");
        EXPECT_EQ(open.focus(), kGrid);
        open.userPlaces({10, 20, 300, 200});
    });
    EXPECT_EQ(dialog.DoModal(), 2);
    next([&](CAcUiDialog& open) { EXPECT_EQ(open.place(), (DialogPlace{10, 20, 300, 200})); });
    TypeDialog again(connection);
    again.DoModal();
}

TEST_F(Frame, ANameIsNotGivenTwice) {
    TypeDialog dialog(connection);
    next([&](CAcUiDialog& open) {
        CGridCtrl& grid = dialog.grid();
        edit(grid, 1, kName, "VENT");
        EXPECT_EQ(messages(), "Veldrin Plumbing: Duplicate names are not allowed.;");
        ASSERT_TRUE(grid.editor()) << "it may be typed again at once";
        EXPECT_EQ(grid.editor()->text, "Hot water");
        grid.userPresses({2, kName}, false);
        EXPECT_EQ(grid.GetFocusRow(), 1) << "a click elsewhere does not leave the cell";
        grid.userPresses({2, kName}, false);
        EXPECT_EQ(grid.GetFocusRow(), 2);
        EXPECT_TRUE(edit(grid, 1, kName, "hot water")) << "its own name in other letters";
        EXPECT_EQ(messages(), "");
        grid.userTypes("vent");
        EXPECT_FALSE(open.userClicks(kDialogOk)) << "the refused cell keeps the keyboard";
        EXPECT_TRUE(open.isOpen());
        open.userClicks(kDialogOk);
    });
    EXPECT_EQ(dialog.DoModal(), 1);
    EXPECT_EQ(types(), "'hot water'|'Cold water'|'Vent'");
}

TEST_F(Frame, ARefusalKeepsToItsCell) {
    TypeDialog dialog(connection);
    next([&](CAcUiDialog&) {
        DialogGrid& grid = dialog.grid();
        constexpr int kTicks = 4;
        edit(grid, 1, kName, "typed");
        grid.accepts = [&](CGridCtrl::Cell) { return grid.refuse("One must be left."); };
        grid.userPresses({3, kTicks}, false);
        grid.userReleases({3, kTicks}, veldrin::CellPart::kCheckBox);
        EXPECT_EQ(grid.GetItemText(3, kTicks) + grid.GetItemText(1, kName), "0typed") << "and no other one";
        EXPECT_FALSE(grid.editor());

        std::string told;
        grid.selected = [&](CGridCtrl::Cell at) { told += std::to_string(at.row); };
        grid.clicked = [&](CGridCtrl::Cell at) { told += "!" + std::to_string(at.row); };
        edit(grid, 1, kName, "bad");
        told.clear();
        grid.userPresses({2, kTicks}, false);
        grid.userReleases({2, kTicks}, veldrin::CellPart::kCheckBox);
        EXPECT_EQ(told + grid.GetItemText(2, kTicks), "0") << "a click that is held back does nothing";
        edit(grid, 1, kName, "bad");
        grid.userKeys(veldrin::TableKey::kEscape, {});
        told.clear();
        grid.userPresses({2, kName}, false);
        EXPECT_EQ(told, "2") << "Escape has settled it";
    });
    dialog.DoModal();
}

TEST_F(Frame, RowsAreWrittenAtOkAlone) {
    const auto change = [&](TypeDialog& dialog, CAcUiDialog& open) {
        CGridCtrl& grid = dialog.grid();
        open.userClicks(kNew);
        EXPECT_EQ(grid.editor()->text, "New Pipe Type 1");
        open.userClicks(kNew);
        EXPECT_EQ(grid.editor()->text, "New Pipe Type 2");
        grid.userTypes("Gas");
        open.userClicks(kUp);
        grid.SetFocusCell(3, kName);
        open.userClicks(kDelete);
        EXPECT_EQ(grid.GetItemText(grid.GetFocusRow(), kName), "Gas");
    };
    TypeDialog cancelled(connection);
    next([&](CAcUiDialog& open) {
        change(cancelled, open);
        open.userCloses();
    });
    EXPECT_EQ(cancelled.DoModal(), 2);
    EXPECT_EQ(types(), "'Hot water'|'Cold water'|'Vent'");

    TypeDialog stored(connection);
    next([&](CAcUiDialog& open) {
        change(stored, open);
        next([&](CAcUiDialog& second) {
            EXPECT_FALSE(open.isOpen()) << "it has stored and ended before the other one opens";
            EXPECT_NE(&second, &open);
            EXPECT_EQ(types(), "'Hot water'|'Cold water'|'Gas'|'New Pipe Typ'");
        });
        open.userClicks(kOther);
    });
    EXPECT_EQ(stored.DoModal(), 1);
}

TEST_F(Frame, AFailureClosesTheWindowAndIsTold) {
    TypeDialog dialog(connection);
    dialog.grid().clicked = [](CGridCtrl::Cell) { throw CException("a fault of ours"); };
    next([&](CAcUiDialog& open) {
        dialog.grid().userReleases({1, kName}, veldrin::CellPart::kCell);
        EXPECT_FALSE(open.isOpen());
    });
    EXPECT_THROW(showDialog(dialog), CException);
    EXPECT_EQ(takePrinted(), "\nTypes was closed: a fault of ours");
    EXPECT_EQ(ui().openWindows(), 0);

    next([&](CAcUiDialog& open) {
        connection.Close();
        EXPECT_TRUE(open.userClicks(kDialogOk));
        EXPECT_EQ(messages(),
                  "Veldrin Plumbing: The project database was closed while this window was open.\n"
                  "Nothing can be stored.;");
        EXPECT_TRUE(open.isOpen());
    });
    dialog.grid().clicked = {};
    EXPECT_EQ(showDialog(dialog), 2);
}

TEST_F(Frame, AMissingComponentIsOffered) {
    class NotMade : public CAcUiDialog {
    public:
        explicit NotMade(int result) : CAcUiDialog(kTypesTemplate), m_result(result) {}
        bool OnInitDialog() override {
            EndDialog(m_result);
            return true;
        }

    private:
        int m_result;
    };
    for (const int result : {-1, 0, 1, 2, 3}) {
        ui().queue([](const veldrin::WindowRequest&) { return "No"; });
        NotMade dialog(result);
        EXPECT_EQ(showDialog(dialog), result);
        EXPECT_EQ(messages(), result == -1 || result == 3
                                  ? "Veldrin Error: Dialog box could not be created.\nComponents need to be "
                                    "installed.\nWould you like to download a fix to this error?;"
                                  : "")
            << result;
    }
}

TEST_F(Frame, ADatabaseOfAPathIsOpenForItsDialogAlone) {
    {
        const DialogDatabase database(path);
        ASSERT_TRUE(database.connection());
        EXPECT_TRUE(database.isStandards());
        EXPECT_EQ(RunningDatabase::path(), path);
        const DialogDatabase inner(std::nullopt);
        EXPECT_EQ(RunningDatabase::path(), "");
        EXPECT_FALSE(inner.connection()) << "the drawing has no project";
    }
    EXPECT_EQ(RunningDatabase::path(), "");
    takePrinted();
    connection.Close();
    CDaoDatabase other;
    other.Open(path, true);
    const DialogDatabase database(path);
    EXPECT_FALSE(database.connection());
    EXPECT_EQ(messages(), "Veldrin: Database is read-only. Cannot be viewed at this time.;");
    const DialogDatabase missing(folder.file("none.vq"));
    EXPECT_FALSE(missing.connection());
    EXPECT_EQ(messages() + takePrinted(),
              "\nDatabase Error: There is no file " + folder.file("none.vq") + ".");
}
