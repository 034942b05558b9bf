#include "ui/UiBackend.h"

#include <algorithm>
#include <utility>

namespace veldrin {

UiBackend::~UiBackend() = default;

namespace {

// Counts a window for as long as it is open, however its responder ends.
class OpenWindow {
public:
    explicit OpenWindow(int& count) : m_count(++count) {}
    ~OpenWindow() { --m_count; }
    OpenWindow(const OpenWindow&) = delete;
    OpenWindow& operator=(const OpenWindow&) = delete;

private:
    int& m_count;
};

} // namespace

std::string HeadlessUi::showMessage(const MessageWindow& window) {
    const OpenWindow open(m_openWindows);
    // Windows are listed as they open; one that opens meanwhile comes behind.
    const std::uint64_t serial = ++m_lastSerial;
    m_log.push_back({serial, {"message", window.caption, window.text, {}}});
    std::string answer;
    if (!m_queue.empty()) {
        const Responder responder = std::move(m_queue.front());
        m_queue.pop_front();
        answer = responder(window);
    }
    if (std::find(window.buttons.begin(), window.buttons.end(), answer) == window.buttons.end())
        answer = window.defaultButton;
    const auto entry =
        std::find_if(m_log.begin(), m_log.end(), [&](const auto& line) { return line.first == serial; });
    if (entry != m_log.end()) entry->second.answer = answer;
    return answer;
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
