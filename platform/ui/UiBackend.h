#pragma once

#include "runtime/VeldrinApi.h"

#include <cstdint>
#include <deque>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

class CAcUiDialog;

namespace veldrin {

enum class MessageIcon { kNone, kStop, kQuestion, kWarning, kInformation };

// A modal message as it is shown.
struct MessageWindow {
    std::string caption;
    std::string text;
    std::vector<std::string> buttons; // "OK" "Cancel" "Yes" "No" in order
    std::string defaultButton;
    std::string cancelButton; // what the close box answers; empty: the default
    MessageIcon icon = MessageIcon::kNone;
};

// A window in which the user names a file.
struct FileWindow {
    std::string caption;
    std::string proposal;  // name or folder shown at first
    std::string extension; // "vqd"; several with semicolons between; empty for any
    bool isSaving = false; // else the file must be there
};

// Shows modal windows. The headless one is served from a queue by scripts, the other one shows them.
class VELDRIN_API UiBackend {
public:
    virtual ~UiBackend();
    // The text of the button that ended it.
    virtual std::string showMessage(const MessageWindow& window) = 0;
    // A path; none when it was cancelled.
    virtual std::optional<std::string> showFile(const FileWindow& window) = 0;
    // Returns when the dialog has ended itself; false when it cannot be shown.
    virtual bool showDialog(CAcUiDialog& dialog) = 0;
    // Width of a text as the back end shows it, in pixels.
    virtual int textWidth(std::string_view text, bool isBold) const = 0;

    // Number of modal windows that are open. A dialog is one from before its first code runs until its last
    // has.
    int openWindows() const { return m_openWindows; }
    // Counts a window for as long as it is open, however it ends.
    class OpenWindow {
    public:
        explicit OpenWindow(UiBackend& ui) : m_count(++ui.m_openWindows) {}
        ~OpenWindow() { --m_count; }
        OpenWindow(const OpenWindow&) = delete;
        OpenWindow& operator=(const OpenWindow&) = delete;

    private:
        int& m_count;
    };

private:
    int m_openWindows = 0;
};

// What happened to one modal window of a headless host.
struct WindowLogEntry {
    std::string kind; // "dialog", "message", "file"
    std::string caption;
    std::string text;
    std::string answer;
};

// A window as its responder sees it.
struct WindowRequest {
    std::string kind; // as in the log
    std::string caption;
    std::string text;
    std::vector<std::string> buttons;
};

// Windows without a display. Each is answered by the responder that was queued first, or by its default when
// the queue is empty; each leaves an entry in the log.
class VELDRIN_API HeadlessUi : public UiBackend {
public:
    // The button of a message or the path of a file; none for the default button, or to cancel.
    using Responder = std::function<std::optional<std::string>(const WindowRequest&)>;

    std::string showMessage(const MessageWindow& window) override;
    std::optional<std::string> showFile(const FileWindow& window) override;
    bool showDialog(CAcUiDialog& dialog) override;
    int textWidth(std::string_view text, bool isBold) const override;
    // The open dialog that the user's hand would reach; null without one.
    CAcUiDialog* dialog() const;

    void queue(Responder responder);
    // In the order in which they opened; empties the log.
    std::vector<WindowLogEntry> takeLog();

private:
    // What the next responder says; none when the queue is empty.
    std::optional<std::string> respond(const WindowRequest& request);
    // Asks it, and logs the window with its answer: `answerOf` gives what is returned and what is logged.
    template<class AnswerOf>
    auto serve(const WindowRequest& request, AnswerOf answerOf);

    std::vector<CAcUiDialog*> m_dialogs; // those that run, the innermost last; some have ended
    std::deque<Responder> m_queue;
    std::vector<std::pair<std::uint64_t, WindowLogEntry>> m_log;
    std::uint64_t m_lastSerial = 0;
};

} // namespace veldrin
