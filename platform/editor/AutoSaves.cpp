#include "editor/AutoSaves.h"

#include "drawing/AcDbDatabase.h"
#include "editor/CommandLine.h"
#include "editor/DocumentManager.h"
#include "editor/EditorEvents.h"
#include "files/FileReplacement.h"
#include "runtime/Host.h"

#include <fcntl.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <filesystem>
#include <fmt/format.h>

namespace fs = std::filesystem;

namespace veldrin {

namespace {

constexpr const char* kEnding = ".sv$";
constexpr auto kBetweenLooks = std::chrono::seconds(1);
constexpr int kDone = 0;
constexpr int kFailed = 1;

std::string copyPath(const Document& document) {
    // A copy beside the drawing belongs to whoever holds it.
    if (document.isTitled() && !document.isReadOnly()) return AutoSaves::copyBeside(document.path());
    const std::string stem = fs::path(document.path()).stem().string();
    return fmt::format("{}{}_{}{}", Host::current().variables().text("TEMPPREFIX"), stem, getpid(), kEnding);
}

std::string readAll(int file) {
    std::string text;
    std::array<char, 512> bytes{};
    for (;;) {
        const ssize_t count = read(file, bytes.data(), bytes.size());
        if (count > 0) text.append(bytes.data(), static_cast<std::size_t>(count));
        if (count == 0 || (count < 0 && errno != EINTR)) return text;
    }
}

} // namespace

AutoSaves::AutoSaves(DocumentManager& documents) : m_documents(documents) {}
AutoSaves::~AutoSaves() = default;

std::string AutoSaves::copyBeside(const std::string& drawing) {
    return drawing + kEnding;
}

void AutoSaves::look() {
    const Clock::time_point now = m_now();
    if (m_isLooking || now - m_lastLook < kBetweenLooks) return;
    m_lastLook = now;
    m_isLooking = true; // reactors may run Lisp
    for (const auto& document : m_documents.documents()) {
        if (!document->isQuiescent()) break;
        if (document->autoSave().writer != 0) finish(*document, false);
        if (!isDue(*document, now)) continue;
        start(*document);
        break; // reactors may have closed a document
    }
    m_isLooking = false;
}

bool AutoSaves::isDue(const Document& document, Clock::time_point now) const {
    const AutoSaveState& state = document.autoSave();
    const int minutes = Host::current().variables().integer("SAVETIME");
    const AcDbDatabase& database = *document.database();
    return minutes > 0 && m_write && state.writer == 0 &&
           now - state.lastTime >= std::chrono::minutes(minutes) && database.isModified() &&
           database.graphicsGeneration() != state.lastChange;
}

bool AutoSaves::saveNow(Document& document) {
    if (document.autoSave().writer != 0) finish(document, true);
    return start(document) && (document.autoSave().writer == 0 || finish(document, true));
}

bool AutoSaves::start(Document& document) {
    AutoSaveState& state = document.autoSave();
    restart(document);
    state.path = copyPath(document);
    document.variables()["SAVEFILE"] = state.path;
    Host& host = Host::current();
    host.commandLine().flush();
    host.editorEvents().tell(&AcEditorReactor::beginSave, document.database(), state.path.c_str());

    std::array<int, 2> ends{-1, -1};
    if (pipe2(ends.data(), O_CLOEXEC) != 0) return conclude(document, "the system gives no pipe");
    const pid_t writer = fork();
    if (writer == 0) {
        // A break at the terminal is meant for the one who draws.
        signal(SIGINT, SIG_IGN);
        std::string problem;
        const bool written = m_write(*document.database(), state.path, problem);
        const ssize_t told = write(ends[1], problem.data(), problem.size());
        _exit(written && told >= 0 ? kDone : kFailed);
    }
    ::close(ends[1]);
    if (writer < 0) {
        ::close(ends[0]);
        return conclude(document, "the system gives no process");
    }
    state.writer = writer;
    state.messages = ends[0];
    return true;
}

// True when there is nothing to wait for or the copy is there.
bool AutoSaves::finish(Document& document, bool wait) {
    AutoSaveState& state = document.autoSave();
    int status = 0;
    pid_t ended = 0;
    do ended = waitpid(state.writer, &status, wait ? 0 : WNOHANG);
    while (ended < 0 && errno == EINTR);
    if (ended == 0) return true;
    std::string problem = readAll(state.messages);
    ::close(state.messages);
    state.writer = 0;
    state.messages = -1;
    const bool written = ended > 0 && WIFEXITED(status) && WEXITSTATUS(status) == kDone;
    if (!written && problem.empty()) problem = fmt::format("Cannot write drawing {}.", state.path);
    return conclude(document, problem);
}

bool AutoSaves::conclude(Document& document, const std::string& problem) {
    EditorEvents& events = Host::current().editorEvents();
    if (problem.empty()) {
        const std::string path = document.autoSave().path; // a reactor may save
        events.tell(&AcEditorReactor::saveComplete, document.database(), path.c_str());
        return true;
    }
    // The copy before, if there was one, stays where it is.
    std::error_code none;
    if (!fs::exists(document.autoSave().path, none)) {
        document.autoSave().path.clear();
        document.variables().erase("SAVEFILE");
    }
    events.tell(&AcEditorReactor::abortSave, document.database());
    CommandLine& line = Host::current().commandLine();
    line.freshLine();
    line.print("Automatic save: " + problem + "\n");
    return false;
}

void AutoSaves::restart(Document& document) {
    document.autoSave().lastTime = m_now();
    document.autoSave().lastChange = document.database()->graphicsGeneration();
}

void AutoSaves::stopWriter(AutoSaveState& state) {
    if (state.writer == 0) return;
    kill(state.writer, SIGKILL);
    while (waitpid(state.writer, nullptr, 0) < 0 && errno == EINTR) {
    }
    ::close(state.messages);
    state.writer = 0;
    state.messages = -1;
    FileReplacement::dropLeftovers(state.path);
}

void AutoSaves::drop(Document& document) {
    AutoSaveState& state = document.autoSave();
    stopWriter(state);
    std::error_code ignored; // it may be gone already
    if (!state.path.empty()) fs::remove(state.path, ignored);
    state = {};
    document.variables().erase("SAVEFILE");
    restart(document);
}

void AutoSaves::close(Document& document) {
    stopWriter(document.autoSave());
    if (document.autoSave().isRecovered) document.autoSave().path.clear();
    drop(document);
}

void AutoSaves::adopt(Document& document, const std::string& copy) {
    restart(document);
    document.autoSave().isRecovered = true;
    document.autoSave().path = copy;
    document.variables()["SAVEFILE"] = copy;
}

} // namespace veldrin
