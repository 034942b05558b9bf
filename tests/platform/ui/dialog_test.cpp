#include "runtime/Host.h"
#include "ui/CAcUiDialog.h"
#include "ui/DialogKeys.h"
#include "ui/DialogLayout.h"
#include "ui/UiBackend.h"

#include <gtest/gtest.h>

namespace {

enum Id { kName = 10, kOn = 11, kKinds = 12, kApply = 13, kOther = 14 };

constexpr ControlTemplate kControls[] = {
    {ControlKind::kText, 1, "&Name:", 4, 4, 40, 8},
    {ControlKind::kEdit, kName, "", 50, 4, 80, 12},
    {ControlKind::kCheck, kOn, "&On", 4, 20, 40, 10},
    {ControlKind::kList, kKinds, "", 4, 40, 100, 60, kSortedItems},
    {ControlKind::kButton, kApply, "&Apply && go", 4, 110, 50, 14, kDisabled},
    {ControlKind::kButton, kOther, "Other...", 60, 110, 50, 14},
    {ControlKind::kButton, kDialogOk, "&OK", 4, 130, 50, 14, kDefaultButton},
    {ControlKind::kButton, kDialogCancel, "&Cancel", 60, 130, 50, 14, kCancelButton},
};
constexpr DialogTemplate kForm{77, "Things", 140, 150, kControls};

class Things : public CAcUiDialog {
public:
    explicit Things(std::string& told) : CAcUiDialog(kForm), m_told(told) {
        onChange(kName, [this] { note("name " + edit(kName).GetWindowText()); });
        onClick(kOn, [this] {
            note(check(kOn).GetCheck() ? "on" : "off");
            control(kApply)->EnableWindow(check(kOn).GetCheck());
        });
        onSelection(kKinds, [this] { note("kind " + std::to_string(list(kKinds).selectedData())); });
        onDoubleClick(kKinds, [this] { OnOK(); });
        onClick(kApply, [this] { note("apply"); });
        onClick(kOther, [this] {
            EndDialog(42);
            Things other(m_told);
            note("other " + std::to_string(other.DoModal()));
        });
    }
    std::string takeTold() { return std::exchange(m_told, {}); }

protected:
    bool OnInitDialog() override {
        list(kKinds).AddString("pear", 3);
        list(kKinds).AddString("Apple", 1);
        list(kKinds).AddString("fig", 2);
        list(kKinds).SetCurSel(0);
        edit(kName).SetWindowText("start");
        return true;
    }
    void OnDestroy() override {
        note("gone");
        OnOK(); // changes nothing any more
    }

private:
    void note(const std::string& what) { m_told += what + ";"; }
    std::string& m_told;
};

class Dialogs : public testing::Test {
protected:
    veldrin::HeadlessUi& ui() { return dynamic_cast<veldrin::HeadlessUi&>(host.ui()); }
    void next(std::function<void(CAcUiDialog&)> act) {
        ui().queue([this, act = std::move(act)](const veldrin::WindowRequest& request) {
            EXPECT_EQ(request.kind, "dialog");
            act(*ui().dialog());
            return std::nullopt;
        });
    }
    std::string answers() {
        std::string text;
        for (const auto& entry : ui().takeLog()) text += entry.caption + "=" + entry.answer + ";";
        return text;
    }

    veldrin::Host host;
    std::string told;
    Things things{told};
};

} // namespace

TEST_F(Dialogs, TheUsersHandReachesWhatIsEnabled) {
    next([this](CAcUiDialog& dialog) {
        EXPECT_EQ(told, "") << "what a dialog does itself makes no notification";
        EXPECT_FALSE(dialog.userClicks(kApply));
        EXPECT_FALSE(dialog.userClicks(99) || dialog.userTypes(kOn, "x") || dialog.userSelects(kKinds, 3));
        EXPECT_TRUE(dialog.userTypes(kName, "new"));
        EXPECT_TRUE(dialog.userChecks(kOn, true) && dialog.userChecks(kOn, true));
        EXPECT_TRUE(dialog.userClicks(kApply));
        EXPECT_EQ(dialog.lastPressed(), "Apply & go");
        EXPECT_TRUE(dialog.userClicks(kOn)) << "a click toggles";
        EXPECT_FALSE(dialog.userClicks(kApply));
        EXPECT_TRUE(dialog.userSelects(kKinds, 2));
        EXPECT_EQ(dialog.focus(), kKinds);
        EXPECT_TRUE(dialog.userPressesReturn());
        EXPECT_FALSE(dialog.isOpen());
        EXPECT_FALSE(dialog.userTypes(kName, "late"));
    });
    EXPECT_EQ(things.DoModal(), 1);
    EXPECT_EQ(told, "name new;on;apply;off;kind 3;gone;");
    EXPECT_EQ(answers(), "Things=OK;");
}

TEST_F(Dialogs, ADialogThatIsLeftOpenIsCancelled) {
    EXPECT_EQ(things.DoModal(), 2) << "nobody answers";
    next([](CAcUiDialog& dialog) { dialog.userTypes(kName, "x"); });
    EXPECT_EQ(things.DoModal(), 2);
    next([](CAcUiDialog& dialog) {
        EXPECT_EQ(dynamic_cast<EditControl*>(dialog.control(kName))->GetWindowText(), "start");
    });
    EXPECT_EQ(things.DoModal(), 2) << "the controls are made anew";
    EXPECT_EQ(answers(), "Things=Cancel;Things=Cancel;Things=Cancel;");
}

TEST_F(Dialogs, AnotherOneRunsInTheHandlerThatEndedThisOne) {
    next([this](CAcUiDialog& first) {
        next([&](CAcUiDialog& second) {
            EXPECT_NE(&first, &second);
            EXPECT_FALSE(first.isOpen());
            EXPECT_EQ(host.ui().openWindows(), 2);
            second.userDoubleClicks(kKinds);
        });
        first.userClicks(kOther);
    });
    EXPECT_EQ(things.DoModal(), 42);
    EXPECT_EQ(told, "gone;other 1;gone;");
}

TEST_F(Dialogs, ListsKeepTheirOrderTheirDataAndTheirSelection) {
    next([](CAcUiDialog& dialog) {
        auto& kinds = *dynamic_cast<ListControl*>(dialog.control(kKinds));
        EXPECT_EQ(kinds.GetText(0) + kinds.GetText(1) + kinds.GetText(2), "Applefigpear");
        kinds.SetCurSel(1);
        EXPECT_EQ(kinds.AddString("Banana", 9), 1);
        EXPECT_EQ(kinds.GetWindowText(), "fig") << "the selection stays on its item";
        EXPECT_EQ(kinds.FindStringExact("APPLE"), 0);
        EXPECT_EQ(kinds.FindData(3), 3);
        kinds.DeleteString(kinds.AddString("apple"));
        EXPECT_EQ(kinds.FindStringExact("apple"), 0);
        const int second = kinds.AddString("apple");
        EXPECT_EQ(kinds.FindStringExact("apple"), second) << "its own case first";
        kinds.DeleteString(second);
        const int last = kinds.AddString("\u00c4pfel");
        EXPECT_EQ(last, kinds.GetCount() - 1) << "behind all of ASCII";
        kinds.DeleteString(last);
        kinds.DeleteString(2);
        EXPECT_EQ(kinds.GetCurSel(), ListControl::kNone);
        EXPECT_EQ(kinds.selectedData(), 0);
        kinds.SetCurSel(7);
        EXPECT_EQ(kinds.GetWindowText() + kinds.GetText(-1), "");
    });
    things.DoModal();
}

TEST_F(Dialogs, KeysActOnTheControlWithTheFocus) {
    using Key = veldrin::TableKey;
    next([this](CAcUiDialog& dialog) {
        auto& name = *dynamic_cast<EditControl*>(dialog.control(kName));
        EXPECT_EQ(dialog.focus(), kName) << "the first control that takes it";
        const auto press = [&](std::initializer_list<Key> keys) {
            for (const Key key : keys) pressDialogKey(dialog, key);
        };
        name.SetSel(0, 255);
        typeIntoDialog(dialog, "H\u00F6he");
        EXPECT_EQ(name.GetWindowText(), "H\u00F6he") << "what is typed replaces what is selected";
        press({Key::kLeft, Key::kLeft, Key::kBackspace, Key::kDelete});
        typeIntoDialog(dialog, "os");
        EXPECT_EQ(name.GetWindowText(), "Hose");
        press({Key::kHome, Key::kDelete, Key::kEnd, Key::kSpace});
        EXPECT_EQ(name.GetWindowText(), "ose ");
        press({Key::kTab, Key::kSpace});
        EXPECT_EQ(dialog.focus(), kOn);
        press({Key::kTab, Key::kDown, Key::kDown, Key::kEnd, Key::kUp});
        EXPECT_EQ(told,
                  "name H\u00F6he;name Hhe;name He;name Hose;name ose;name ose ;on;kind 2;kind 3;kind 2;");
    });
    things.DoModal();
}

TEST(DialogLayout, GrowsWithItsFontAndItsWindow) {
    static constexpr ControlTemplate kSome[] = {{ControlKind::kList, 1, "", 8, 8, 80, 40},
                                                {ControlKind::kButton, 2, "", 40, 60, 40, 14}};
    static constexpr DialogTemplate kSmall{1, "", 100, 80, kSome};
    constexpr ControlResize kRules[] = {{1, kStretchBoth, 100}, {2, kMoveAcross, 50}, {2, kMoveDown, 100}};
    const DialogBaseUnits units{6, 16};
    EXPECT_EQ(dialogSize(kSmall, units), (DialogRect{0, 0, 150, 160}));
    auto places = layoutDialog(kSmall, kRules, units, 0, 0);
    EXPECT_EQ(places[0], (DialogRect{12, 16, 120, 80}));
    EXPECT_EQ(places[1], (DialogRect{60, 120, 60, 28}));
    places = layoutDialog(kSmall, kRules, units, 31, 10);
    EXPECT_EQ(places[0], (DialogRect{12, 16, 151, 90}));
    EXPECT_EQ(places[1], (DialogRect{75, 130, 60, 28}));
    EXPECT_EQ(layoutDialog(kSmall, kRules, units, -50, -50), layoutDialog(kSmall, {}, units, 0, 0));
}
