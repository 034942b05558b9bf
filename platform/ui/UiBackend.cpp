#include "ui/UiBackend.h"

#include "ui/CAcUiDialog.h"

#include <algorithm>
#include <utility>

namespace veldrin {

UiBackend::~UiBackend() = default;

namespace {

class OpenDialog {
public:
    OpenDialog(std::vector<CAcUiDialog*>& all, CAcUiDialog& dialog) : m_all(all) { m_all.push_back(&dialog); }
    ~OpenDialog() { m_all.pop_back(); }
    OpenDialog(const OpenDialog&) = delete;
    OpenDialog& operator=(const OpenDialog&) = delete;

private:
    std::vector<CAcUiDialog*>& m_all;
};

} // namespace

std::optional<std::string> HeadlessUi::respond(const WindowRequest& request) {
    if (m_queue.empty()) return {};
    const Responder responder = std::move(m_queue.front());
    m_queue.pop_front();
    return responder(request);
}

// Windows are listed as they open; one that opens meanwhile comes behind.
template<class AnswerOf>
auto HeadlessUi::serve(const WindowRequest& request, AnswerOf answerOf) {
    const std::uint64_t serial = ++m_lastSerial;
    m_log.push_back({serial, {request.kind, request.caption, request.text, {}}});
    auto [answer, logged] = answerOf(respond(request));
    const auto entry =
        std::find_if(m_log.begin(), m_log.end(), [&](const auto& line) { return line.first == serial; });
    if (entry != m_log.end()) entry->second.answer = logged;
    return answer;
}

std::string HeadlessUi::showMessage(const MessageWindow& window) {
    const OpenWindow open(*this);
    return serve({"message", window.caption, window.text, window.buttons},
                 [&](const std::optional<std::string>& given) {
                     const bool known = given && std::find(window.buttons.begin(), window.buttons.end(),
                                                           *given) != window.buttons.end();
                     const std::string answer = known ? *given : window.defaultButton;
                     return std::pair(answer, answer);
                 });
}

std::optional<std::string> HeadlessUi::showFile(const FileWindow& window) {
    const OpenWindow open(*this);
    return serve({"file", window.caption, window.proposal, {}}, [](std::optional<std::string> given) {
        std::string logged = given.value_or("");
        return std::pair(std::move(given), std::move(logged));
    });
}

// Whoever answers acts on the dialog itself; what is left open is closed.
bool HeadlessUi::showDialog(CAcUiDialog& dialog) {
    WindowRequest request{"dialog", dialog.caption(), {}, {}};
    for (const auto& control : dialog.controls())
        if (control->kind() == ControlKind::kButton) request.buttons.push_back(control->GetWindowText());
    const OpenDialog open(m_dialogs, dialog);
    const auto close = [&](const std::optional<std::string>&) {
        if (dialog.isOpen()) dialog.userCloses();
        if (dialog.isOpen()) dialog.userDestroys();
        return std::pair(true, dialog.lastPressed());
    };
    serve(request, close);
    return true;
}

CAcUiDialog* HeadlessUi::dialog() const {
    return m_dialogs.empty() || !m_dialogs.back()->isOpen() ? nullptr : m_dialogs.back();
}

int HeadlessUi::textWidth(std::string_view text, bool isBold) const {
    constexpr int kPlain = 6; // of an average letter at the usual size
    constexpr int kBold = 7;
    const auto letters = std::count_if(text.begin(), text.end(),
                                       [](char c) { return (static_cast<unsigned char>(c) & 0xC0) != 0x80; });
    return static_cast<int>(letters) * (isBold ? kBold : kPlain);
}

void HeadlessUi::queue(Responder responder) {
    m_queue.push_back(std::move(responder));
}

std::vector<WindowLogEntry> HeadlessUi::takeLog() {
    std::vector<WindowLogEntry> log;
    for (auto& [serial, entry] : m_log) log.push_back(std::move(entry));
    m_log.clear();
    return log;
}

} // namespace veldrin
