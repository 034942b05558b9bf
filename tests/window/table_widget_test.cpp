#include "window/WindowTest.h"

#include <QHeaderView>
#include <QImage>
#include <QLineEdit>
#include <QListWidget>
#include <QMessageBox>

using namespace plumb;
using veldrin::CellPart;

namespace {

enum { kGrid = 1052 };
enum { kTree = 1, kText, kBox, kColor, kFree };

constexpr ControlTemplate kControls[] = {
    {ControlKind::kGrid, kGrid, "", 5, 5, 300, 120},
    {ControlKind::kButton, kDialogOk, "&OK", 5, 130, 50, 14, kDefaultButton},
    {ControlKind::kButton, kDialogCancel, "&Cancel", 60, 130, 50, 14, kCancelButton},
};
constexpr DialogTemplate kTemplate{6, "Table", 310, 150, kControls};
constexpr GridColumnForm kColumns[] = {{"key", "", GridColumnKind::kHidden},
                                       {"sTree", "Tree", GridColumnKind::kTree},
                                       {"sText", "Name\nof it"},
                                       {"bBox", "Box", GridColumnKind::kCheck},
                                       {"sColor", "Colour", GridColumnKind::kList, "red|green"},
                                       {"sFree", "Free", GridColumnKind::kList, "|Browse. . ."}};
constexpr ProjectDialogForm kForm{kTemplate, "test:Table", {}};
constexpr GridForm kGridForm{kGrid, kColumns};

// Rows: 1 a branch, 2 and 3 under it, 4 merged and coloured, then many.
class TableDialog : public ProjectDialog {
public:
    TableDialog() : ProjectDialog(kForm) {
        m_grid.mayEdit = [](CGridCtrl::Cell at) { return at.row != 4; };
        m_grid.accepts = [this](CGridCtrl::Cell at) {
            told += m_grid.GetItemText(at.row, at.column) + ";";
            return at.column != kText || m_grid.acceptsUniqueName(at);
        };
        m_grid.clicked = [this](CGridCtrl::Cell at) { wasExpanded = m_grid.isExpanded(at.row); };
        m_grid.picked = [this](CGridCtrl::Cell, const CString& item) {
            return item != "Browse. . ." || m_grid.CloseListWith("pump");
        };
    }
    CGridCtrl& grid() { return m_grid; }
    std::string told;
    bool wasExpanded = false;

protected:
    void load() override {
        for (const int level : {1, 2, 2}) m_grid.InsertTreeRow(level);
        m_grid.SetRowCount(500);
        for (int row = 1; row < 500; ++row) {
            m_grid.SetItemText(row, kTree, "row");
            m_grid.SetItemText(row, kText, "name " + std::to_string(row));
        }
        m_grid.SetItemText(4, kTree, "a heading that is wider than its column, but not than its row");
        m_grid.MergeCells(4, kTree, 4, kBox);
        m_grid.SetItemColors(4, kTree, 0xFFFFFF, 0x102030);
        m_grid.SetFocusCell(6, kText);
    }

private:
    DialogGrid m_grid{*this, kGridForm};
};

class Table : public WindowTest {
protected:
    // Runs the dialog with the table that it shows.
    template<class Act>
    int show(Act act) {
        next([act](DialogWindow& window) { act(window, in<TableWidget>(window, kGrid)); });
        return dialog.DoModal();
    }
    static void click(TableWidget& table, int row, int column, CellPart part = CellPart::kCell) {
        const QRect rect =
            part == CellPart::kCell ? table.cellRect({row, column}) : table.boxRect({row, column}, part);
        QTest::mouseClick(table.viewport(), Qt::LeftButton, {}, rect.center());
    }
    static void doubleClick(TableWidget& table, int row, int column) {
        click(table, row, column);
        QTest::mouseDClick(table.viewport(), Qt::LeftButton, {}, table.cellRect({row, column}).center());
    }
    static QLineEdit* line(TableWidget& table) {
        for (auto* found : table.viewport()->findChildren<QLineEdit*>())
            if (found->isVisible()) return found;
        return nullptr;
    }
    std::string focus() {
        return std::to_string(dialog.grid().GetFocusRow()) + "," +
               std::to_string(dialog.grid().GetFocusColumn());
    }

    TableDialog dialog;
};

} // namespace

TEST_F(Table, AnEditGoesByMouseAndKeyboard) {
    EXPECT_EQ(show([this](DialogWindow&, TableWidget& table) {
                  click(table, 2, kText);
                  EXPECT_TRUE(table.hasFocus());
                  QTest::keyClicks(&table, "new");
                  ASSERT_TRUE(line(table));
                  EXPECT_EQ(line(table)->text(), "new");
                  EXPECT_TRUE(table.cellRect({2, kText}).contains(line(table)->geometry()));
                  QTest::keyClick(line(table), Qt::Key_Down);
                  EXPECT_EQ(dialog.grid().GetItemText(2, kText) + focus(), "new3,2");
                  doubleClick(table, 3, kText);
                  ASSERT_TRUE(line(table));
                  EXPECT_EQ(line(table)->selectedText(), "name 3");
                  QTest::keyClick(line(table), Qt::Key_End);
                  QTest::keyClicks(line(table), "!");
                  QTest::keyClick(line(table), Qt::Key_Tab);
                  EXPECT_EQ(dialog.grid().GetItemText(3, kText) + focus(), "name 3!3,3");
                  EXPECT_EQ(line(table), nullptr);
                  doubleClick(table, 2, kText);
                  QTest::keyClicks(line(table), "x");
                  QTest::keyClick(line(table), Qt::Key_Escape);
                  EXPECT_EQ(dialog.grid().GetItemText(2, kText), "new");
                  EXPECT_TRUE(dialog.isOpen()) << "the first Escape is the editor's";
                  QTest::keyClick(&table, Qt::Key_Return);
                  EXPECT_FALSE(dialog.isOpen()) << "Return without an editor is the dialog's";
              }),
              1);
}

TEST_F(Table, ARefusedEditIsRestored) {
    show([this](DialogWindow& window, TableWidget& table) {
        QTimer::singleShot(0, qApp, [] {
            auto* box = dynamic_cast<QMessageBox*>(QApplication::activeModalWidget());
            ASSERT_TRUE(box);
            EXPECT_EQ(box->text(), "Duplicate names are not allowed.");
            QTest::keyClick(box, Qt::Key_Return);
        });
        click(table, 6, kText);
        QTest::keyClicks(&table, "Name 7");
        QTest::mouseClick(window.widgetOf(kDialogOk), Qt::LeftButton);
        EXPECT_TRUE(dialog.isOpen()) << "the button has to wait";
        ASSERT_TRUE(line(table));
        EXPECT_EQ(line(table)->text(), "name 6");
        QTest::keyClick(line(table), Qt::Key_Escape);
        doubleClick(table, 4, kTree);
        EXPECT_EQ(line(table), nullptr) << "a row that may not be edited";
    });
}

TEST_F(Table, BoxesListsAndBranchesAnswerTheMouse) {
    show([this](DialogWindow&, TableWidget& table) {
        CGridCtrl& grid = dialog.grid();
        const QPoint beside = table.cellRect({2, kBox}).topLeft() + QPoint(2, 2);
        QTest::mouseClick(table.viewport(), Qt::LeftButton, {}, beside);
        EXPECT_EQ(grid.GetItemText(2, kBox), "0");
        click(table, 2, kBox, CellPart::kCheckBox);
        EXPECT_EQ(grid.GetItemText(2, kBox), "-1");
        QTest::keyClick(&table, Qt::Key_Space);
        EXPECT_EQ(grid.GetItemText(2, kBox), "0");

        doubleClick(table, 2, kColor);
        auto* list = table.window()->findChild<QListWidget*>();
        ASSERT_TRUE(list && list->isVisible());
        EXPECT_EQ(list->count(), 2);
        QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, list->visualItemRect(list->item(1)).center());
        EXPECT_EQ(line(table)->text(), "green");
        QTest::keyClicks(line(table), "r");
        QTest::keyClick(line(table), Qt::Key_Return);
        EXPECT_EQ(grid.GetItemText(2, kColor), "red");
        turn();
        doubleClick(table, 2, kFree);
        QTest::keyClick(line(table), Qt::Key_Down);
        EXPECT_EQ(grid.GetItemText(2, kFree), "pump") << "stored by the dialog through the open list";

        click(table, 1, kTree, CellPart::kExpandBox);
        EXPECT_TRUE(dialog.wasExpanded) << "the click comes first";
        EXPECT_FALSE(grid.isExpanded(1));
        turn();
        EXPECT_EQ(table.cellRect({4, kText}).top(), table.cellRect({1, kText}).bottom() + 1);
        EXPECT_TRUE(table.cellRect({2, kText}).isEmpty());
    });
}

TEST_F(Table, LooksAsItsCellsSay) {
    show([this](DialogWindow&, TableWidget& table) {
        turn();
        const QImage image = table.viewport()->grab().toImage();
        const QRect merged = table.cellRect({4, kTree});
        EXPECT_EQ(merged.right(), table.cellRect({5, kBox}).right());
        const auto at = [&](const QPoint& point) {
            return image.pixelColor(point * image.devicePixelRatio()).rgb() & 0xFFFFFF;
        };
        EXPECT_EQ(at(merged.topLeft() + QPoint(2, 2)), 0x102030U);
        EXPECT_EQ(at(QPoint(table.cellRect({4, kBox}).left() - 1, merged.top() + 1)), 0x102030U)
            << "no line between merged cells";
        EXPECT_EQ(at(table.cellRect({0, kText}).topLeft() + QPoint(2, 2)), veldrin::kFixedCellBackground);
        EXPECT_EQ(at(table.cellRect({6, kText}).topLeft() + QPoint(2, 2)),
                  table.palette().color(QPalette::Highlight).rgb() & 0xFFFFFF);
        EXPECT_EQ(at(table.cellRect({5, kText}).topLeft() + QPoint(2, 2)),
                  table.palette().color(QPalette::Base).rgb() & 0xFFFFFF);
        int written = 0;
        const int second = table.cellRect({5, kText}).left(); // the text goes on beyond the first column
        for (int x = second; x < merged.right(); ++x)
            for (int y = merged.top() + 1; y < merged.bottom(); ++y)
                written += at({x, y}) == 0x102030 ? 0 : 1;
        EXPECT_GT(written, 50);
        EXPECT_GT(table.cellRect({0, kText}).height(), table.cellRect({1, kText}).height()) << "two lines";
        dialog.grid().SetColumnWidth(kText, 0);
        turn();
        EXPECT_TRUE(table.cellRect({5, kText}).isEmpty());
    });
}

TEST_F(Table, ScrollsToWhatIsWanted) {
    show([this](DialogWindow&, TableWidget& table) {
        EXPECT_TRUE(table.cellRect({400, kText}).isEmpty());
        dialog.grid().EnsureVisible(400, kText);
        EXPECT_FALSE(table.cellRect({400, kText}).isEmpty());
        EXPECT_TRUE(table.viewport()->rect().contains(table.cellRect({400, kText})));
        click(table, 399, kText);
        QTest::keyClick(&table, Qt::Key_Home, Qt::ControlModifier);
        EXPECT_EQ(focus(), "1,2");
        EXPECT_FALSE(table.cellRect({1, kText}).isEmpty());
        QTest::keyClick(&table, Qt::Key_PageDown);
        EXPECT_EQ(dialog.grid().GetFocusRow(), 1 + table.pageRows());
        const int before = dialog.grid().columnWidth(kText);
        const QRect caption = table.cellRect({0, kText});
        QTest::mousePress(table.viewport(), Qt::LeftButton, {}, caption.topRight() + QPoint(1, 3));
        QTest::mouseMove(table.viewport(), caption.topRight() + QPoint(41, 3));
        QTest::mouseRelease(table.viewport(), Qt::LeftButton, {}, caption.topRight() + QPoint(41, 3));
        EXPECT_NEAR(dialog.grid().columnWidth(kText), before + 40, 2);
    });
}
