#include "editor/CommandLine.h"
#include "editor/aced.h"
#include "runtime/Host.h"
#include "runtime/afx.h"
#include "ui/UiBackend.h"

#include <string_view>
#include <utility>

using veldrin::Host;
using veldrin::MessageWindow;

namespace {

constexpr unsigned kButtonMask = 0xF;
constexpr unsigned kIconMask = 0xF0;
constexpr const char* kProgramName = "Veldrin";

struct ButtonRow {
    const char* text;
    int answer;
};
constexpr ButtonRow kButtons[] = {{"OK", IDOK}, {"Cancel", IDCANCEL}, {"Yes", IDYES}, {"No", IDNO}};

std::vector<std::string> buttonsOf(unsigned type) {
    switch (type & kButtonMask) {
    case MB_OKCANCEL: return {"OK", "Cancel"};
    case MB_YESNOCANCEL: return {"Yes", "No", "Cancel"};
    case MB_YESNO: return {"Yes", "No"};
    default: return {"OK"};
    }
}

veldrin::MessageIcon iconOf(unsigned type) {
    switch (type & kIconMask) {
    case MB_ICONSTOP: return veldrin::MessageIcon::kStop;
    case MB_ICONQUESTION: return veldrin::MessageIcon::kQuestion;
    case MB_ICONWARNING: return veldrin::MessageIcon::kWarning;
    case MB_ICONINFORMATION: return veldrin::MessageIcon::kInformation;
    default: return veldrin::MessageIcon::kNone;
    }
}

int show(MessageWindow window) {
    Host& host = Host::current();
    host.commandLine().flush();
    const std::string answer = host.ui().showMessage(window);
    for (const ButtonRow& row : kButtons)
        if (answer == row.text) return row.answer;
    return IDCANCEL;
}

} // namespace

int MessageBox(const char* text, const char* caption, unsigned type) {
    MessageWindow window{caption ? caption : "", text ? text : "", buttonsOf(type), {}, {}, iconOf(type)};
    const std::size_t second = (type & MB_DEFBUTTON2) && window.buttons.size() > 1 ? 1 : 0;
    window.defaultButton = window.buttons[second];
    if (window.buttons.size() > 1) window.cancelButton = window.buttons.back();
    return show(std::move(window));
}

int acedAlert(const char* text) {
    MessageBox(text, kProgramName, MB_OK | MB_ICONWARNING);
    return RTNORM;
}
