#include "editor/aced.h"
#include "platform/editor/HostTest.h"
#include "runtime/afx.h"
#include "ui/UiBackend.h"

#include <stdexcept>

using veldrin::HeadlessUi;
using veldrin::WindowRequest;

namespace {

class WindowsTest : public HostTest {
protected:
    HeadlessUi& ui() { return dynamic_cast<HeadlessUi&>(host->ui()); }

    std::vector<std::string> log() {
        std::vector<std::string> lines;
        for (const veldrin::WindowLogEntry& entry : ui().takeLog())
            lines.push_back(entry.kind + " " + entry.caption + ": " + entry.text + " -> " + entry.answer);
        return lines;
    }
};

TEST_F(WindowsTest, messagesTakeTheQueuedAnswerOrTheirDefault) {
    ui().queue([](const WindowRequest& window) {
        EXPECT_EQ(window.buttons, (std::vector<std::string>{"Yes", "No", "Cancel"}));
        return "No";
    });
    ui().queue([](const WindowRequest&) { return "Perhaps"; });
    EXPECT_EQ(MessageBox("Save?", "Veldrin", MB_YESNOCANCEL | MB_ICONQUESTION), IDNO);
    EXPECT_EQ(MessageBox("Go on?", "Veldrin", MB_OKCANCEL), IDOK); // no such button
    EXPECT_EQ(MessageBox("Again?", "Veldrin", MB_YESNO), IDYES);
    EXPECT_EQ(acedAlert("Mind the step"), RTNORM);
    EXPECT_EQ(log(), (std::vector<std::string>{
                         "message Veldrin: Save? -> No", "message Veldrin: Go on? -> OK",
                         "message Veldrin: Again? -> Yes", "message Veldrin: Mind the step -> OK"}));
    EXPECT_EQ(log(), std::vector<std::string>{});
}

TEST_F(WindowsTest, aWindowThatOpensMeanwhileTakesTheNextResponder) {
    ui().queue([&](const WindowRequest&) {
        EXPECT_EQ(ui().openWindows(), 1);
        EXPECT_EQ(MessageBox("inner", "", MB_YESNO), IDNO);
        return "Cancel";
    });
    ui().queue([&](const WindowRequest&) {
        EXPECT_EQ(ui().openWindows(), 2);
        return "No";
    });
    EXPECT_EQ(MessageBox("outer", "", MB_OKCANCEL), IDCANCEL);
    EXPECT_EQ(log(), (std::vector<std::string>{"message : outer -> Cancel", "message : inner -> No"}));
}

TEST_F(WindowsTest, anOpenWindowKeepsDocumentsInPlaceEvenWhenItsResponderFails) {
    auto* document = documents().newDocument();
    ui().queue([&](const WindowRequest&) -> std::optional<std::string> {
        EXPECT_FALSE(document->isQuiescent());
        EXPECT_EQ(documents().newDocument(), nullptr);
        EXPECT_FALSE(documents().closeDocument(document));
        throw std::runtime_error("script");
    });
    EXPECT_THROW(acedAlert("x"), std::runtime_error);
    EXPECT_NE(printed.find("while a dialog is open"), std::string::npos);
    EXPECT_EQ(ui().openWindows(), 0);
    EXPECT_TRUE(documents().closeDocument(document));
}

} // namespace
