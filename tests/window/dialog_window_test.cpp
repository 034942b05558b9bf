#include "runtime/CException.h"
#include "ui/UiBackend.h"
#include "window/WindowTest.h"

#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMessageBox>

namespace {

enum { kName = 10, kOn, kTypes, kSizes, kApply, kStore, kLeave };

constexpr ControlTemplate kControls[] = {
    {ControlKind::kText, 1, "&Name:", 4, 6, 40, 9},
    {ControlKind::kEdit, kName, "", 50, 4, 80, 13},
    {ControlKind::kCheck, kOn, "&On", 4, 22, 40, 10},
    {ControlKind::kList, kTypes, "", 4, 40, 100, 60, kSortedItems},
    {ControlKind::kCombo, kSizes, "", 110, 40, 60, 13},
    {ControlKind::kButton, kApply, "&Apply", 4, 110, 50, 14, kDisabled},
    {ControlKind::kButton, kStore, "&Store", 60, 110, 50, 14, kDefaultButton},
    {ControlKind::kButton, kLeave, "&Leave", 115, 110, 50, 14, kCancelButton},
};
constexpr DialogTemplate kForm{5, "Things", 180, 130, kControls};
constexpr ControlResize kResize[] = {{kTypes, kStretchBoth, 100}, {kSizes, kMoveAcross, 100},
                                     {kName, kStretchAcross, 50}, {kApply, kMoveDown, 100},
                                     {kStore, kMoveAcross, 50},   {kStore, kMoveDown, 100}};

class Things : public CAcUiDialog {
public:
    Things() : CAcUiDialog(kForm) {
        onChange(kName, [this] { told += "name " + edit(kName).GetWindowText() + ";"; });
        onClick(kOn, [this] { control(kApply)->EnableWindow(check(kOn).GetCheck()); });
        onSelection(kTypes, [this] { told += "type " + list(kTypes).GetWindowText() + ";"; });
        onDoubleClick(kTypes, [this] { told += "twice;"; });
        onSelection(kSizes, [this] { told += "size " + std::to_string(list(kSizes).selectedData()) + ";"; });
        onClick(kApply, [this] {
            edit(kName).SetWindowText("applied");
            edit(kName).SetFocus();
            edit(kName).SetSel(0, 255);
        });
        onClick(kStore, [this] {
            if (atStore) atStore();
            EndDialog(7);
        });
        onClick(kLeave, [this] { EndDialog(8); });
    }
    std::string told;
    std::function<void()> atStore;
    using CAcUiDialog::EnableWindow;

protected:
    bool OnInitDialog() override {
        SetDialogName("test:Things");
        SetControlProperty(kResize);
        for (const char* type : {"Vent", "Gas", "Storm"}) list(kTypes).AddString(type);
        list(kSizes).AddString("1/2\"", 5);
        list(kSizes).AddString("3/4\"", 6);
        return true;
    }
};

class Window : public WindowTest {
protected:
    Things things;
};

} // namespace

TEST_F(Window, TellsTheDialogWhatTheUserDoes) {
    next([this](DialogWindow& window) {
        EXPECT_TRUE(in<QLineEdit>(window, kName).hasFocus()) << "the first control";
        QTest::keyClicks(&in<QLineEdit>(window, kName), "ab");
        auto& types = in<QListWidget>(window, kTypes);
        EXPECT_EQ(types.item(0)->text(), "Gas");
        const QPoint second = types.visualItemRect(types.item(1)).center();
        QTest::mouseClick(types.viewport(), Qt::LeftButton, {}, second);
        QTest::mouseDClick(types.viewport(), Qt::LeftButton, {}, second);
        QTest::keyClick(&in<QComboBox>(window, kSizes), Qt::Key_Down);
        QTest::keyClick(&in<QComboBox>(window, kSizes), Qt::Key_Down);
        EXPECT_EQ(things.told, "name a;name ab;type Storm;twice;size 5;size 6;");

        auto& apply = in<QPushButton>(window, kApply);
        EXPECT_FALSE(apply.isEnabled());
        QTest::mouseClick(&apply, Qt::LeftButton);
        auto& box = in<QCheckBox>(window, kOn);
        QTest::mouseClick(&box, Qt::LeftButton, {}, QPoint(6, box.height() / 2));
        turn();
        EXPECT_TRUE(apply.isEnabled());
        QTest::mouseClick(&apply, Qt::LeftButton);
        turn();
        EXPECT_EQ(in<QLineEdit>(window, kName).selectedText(), "applied");
        in<QLineEdit>(window, kName).deselect();
        QTest::mouseClick(&apply, Qt::LeftButton);
        turn();
        EXPECT_EQ(in<QLineEdit>(window, kName).selectedText(), "applied") << "selected again";
        QTest::keyClicks(&in<QLineEdit>(window, kName), "x");
        turn();
        EXPECT_EQ(in<QLineEdit>(window, kName).text(), "x");
    });
    EXPECT_EQ(things.DoModal(), 8) << "the close box presses the cancel button";
    EXPECT_EQ(host->ui().openWindows(), 0);
}

TEST_F(Window, ReturnAndEscapeReachTheDialogsOwnButtons) {
    next([](DialogWindow& window) { QTest::keyClick(window.widgetOf(kName), Qt::Key_Return); });
    EXPECT_EQ(things.DoModal(), 7);
    next([](DialogWindow& window) { QTest::keyClick(window.widgetOf(kTypes), Qt::Key_Escape); });
    EXPECT_EQ(things.DoModal(), 8) << "the same dialog again, with controls made anew";
    next([](DialogWindow& window) {
        EXPECT_EQ(dynamic_cast<QLabel*>(window.widgetOf(1))->buddy(), window.widgetOf(kName));
        QTest::keyClick(window.widgetOf(kName), Qt::Key_S, Qt::AltModifier);
        EXPECT_TRUE(QTest::qWaitFor([&] { return !window.isVisible(); })) << "a button takes its time";
    });
    EXPECT_EQ(things.DoModal(), 7);
    next([](DialogWindow& window) {
        window.widgetOf(kLeave)->setFocus();
        QTest::keyClick(window.widgetOf(kLeave), Qt::Key_Return);
    });
    EXPECT_EQ(things.DoModal(), 8) << "the button that has the keyboard goes before the default one";
}

TEST_F(Window, ControlsFollowTheWindowsSize) {
    next([](DialogWindow& window) {
        std::map<int, QRect> before;
        for (const ControlTemplate& control : kControls)
            before[control.id] = window.widgetOf(control.id)->geometry();
        EXPECT_TRUE(window.rect().contains(before[kStore]));
        window.resize(window.width() + 100, window.height() + 40);
        turn();
        const auto grown = [&](int id, int x, int y, int width, int height) {
            const QRect now = window.widgetOf(id)->geometry();
            EXPECT_EQ(now.x() - before[id].x(), x) << id;
            EXPECT_EQ(now.y() - before[id].y(), y) << id;
            EXPECT_EQ(now.width() - before[id].width(), width) << id;
            EXPECT_EQ(now.height() - before[id].height(), height) << id;
        };
        grown(kTypes, 0, 0, 100, 40);
        grown(kSizes, 100, 0, 0, 0);
        grown(kName, 0, 0, 50, 0);
        grown(kApply, 0, 40, 0, 0);
        grown(kStore, 50, 40, 0, 0);
        grown(kOn, 0, 0, 0, 0);
        const QSize least = window.minimumSize();
        window.resize(10, 10);
        EXPECT_EQ(window.size(), least);
        window.resize(least + QSize(30, 20));
        window.move(60, 50);
        turn();
    });
    things.DoModal();
    Things again;
    next([](DialogWindow& window) {
        EXPECT_EQ(window.size() - window.minimumSize(), QSize(30, 20)) << "kept from one showing to the next";
        EXPECT_EQ(window.pos(), QPoint(60, 50));
        window.move(-5000, 50);
        turn();
    });
    again.DoModal();
    next([](DialogWindow& window) {
        EXPECT_GE(window.pos().x(), 0) << "a place off the screen is not taken";
    });
    again.DoModal();
}

TEST_F(Window, IsDisabledWhileSomebodyElseAsks) {
    things.atStore = [this] {
        const auto* window = QApplication::activeModalWidget();
        things.EnableWindow(false);
        EXPECT_FALSE(window->isEnabled());
        things.EnableWindow(true);
        EXPECT_TRUE(window->isEnabled());
    };
    next([](DialogWindow& window) { QTest::mouseClick(window.widgetOf(kStore), Qt::LeftButton); });
    EXPECT_EQ(things.DoModal(), 7);
}

TEST_F(Window, WhatAHandlerThrowsArrivesBehindTheWindow) {
    things.atStore = [] { throw CException("a fault"); };
    next([](DialogWindow& window) {
        QTest::mouseClick(window.widgetOf(kStore), Qt::LeftButton);
        EXPECT_FALSE(window.isVisible());
    });
    EXPECT_THROW(things.DoModal(), CException);
    EXPECT_EQ(host->ui().openWindows(), 0);
    EXPECT_EQ(QApplication::activeModalWidget(), nullptr);
}

TEST_F(Window, AnotherOneOpensInAHandler) {
    Things inner;
    things.atStore = [&] {
        next([](DialogWindow& window) { QTest::mouseClick(window.widgetOf(kStore), Qt::LeftButton); });
        EXPECT_EQ(inner.DoModal(), 7);
        EXPECT_TRUE(things.isOpen());
        EXPECT_EQ(host->ui().openWindows(), 1);
    };
    next([](DialogWindow& window) { QTest::mouseClick(window.widgetOf(kStore), Qt::LeftButton); });
    EXPECT_EQ(things.DoModal(), 7);
}

TEST_F(Window, AMessageAnswersWithItsButtons) {
    const auto press = [](int key) {
        QTimer::singleShot(0, qApp, [key] {
            auto* box = dynamic_cast<QMessageBox*>(QApplication::activeModalWidget());
            ASSERT_TRUE(box);
            EXPECT_EQ(box->text(), "Really <b>?");
            QTest::keyClick(box, static_cast<Qt::Key>(key));
        });
    };
    const veldrin::MessageWindow window{"Title", "Really <b>?", {"Yes", "No", "Cancel"},
                                        "No",    "Cancel",      veldrin::MessageIcon::kQuestion};
    press(Qt::Key_Return);
    EXPECT_EQ(host->ui().showMessage(window), "No");
    press(Qt::Key_Escape);
    EXPECT_EQ(host->ui().showMessage(window), "Cancel");
    EXPECT_GT(host->ui().textWidth("wide", true), host->ui().textWidth("i", false));
}
