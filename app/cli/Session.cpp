#include "cli/Session.h"

#include "cli/Subcommands.h"
#include "cli/input.h"
#include "editor/CommandLine.h"
#include "editor/CommandRegistry.h"
#include "editor/DocumentManager.h"
#include "files/DxfImport.h"
#include "runtime/ModuleLoader.h"
#include "scripting/Scripting.h"
#include "system/AsciiCase.h"
#include "system/ProgramFolders.h"
#include "system/UserSettings.h"

#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <unistd.h>

namespace fs = std::filesystem;
namespace lisp = veldrin::lisp;

namespace {

constexpr const char* kModule = "vq_plumb";
constexpr const char* kLoader = "veldrin.lsp";
constexpr const char* kInstalledKey = "Software\\Veldrin Software\\Plumbing";
constexpr int kInterrupted = 130; // as shells count an interrupt

lisp::Engine* runningEngine = nullptr;
volatile std::sig_atomic_t isBreakPending = 0;

// The first interrupt breaks what runs; a second one that comes before that has happened ends the program.
void onInterrupt(int) {
    if (!runningEngine || isBreakPending) _exit(kInterrupted);
    isBreakPending = 1;
    runningEngine->requestBreak();
}

void listenToInterrupts(lisp::Engine* engine) {
    runningEngine = engine;
    struct sigaction action {};
    action.sa_handler = engine ? onInterrupt : SIG_DFL;
    sigaction(SIGINT, &action, nullptr);
}

// Drawings may lack their ending.
std::string drawingFile(const std::string& path) {
    const fs::path file(path);
    return file.empty() || file.has_extension() ? path : path + ".vqd";
}

bool isScript(const std::string& path) {
    return veldrin::asciiEqual(fs::path(path).extension().string(), ".lsp");
}

// Why a file cannot be read as a script; nothing when it can.
std::string readProblem(const std::string& path) {
    std::error_code error;
    if (fs::is_directory(path, error)) return reasonOf(EISDIR);
    std::FILE* file = std::fopen(path.c_str(), "rb");
    if (!file) return reasonOf(errno);
    std::fclose(file);
    return {};
}

} // namespace

std::string reasonOf(int error) {
    return std::strerror(error);
}

Session::Session() {
    veldrin::CommandLine& line = m_host.commandLine();
    const bool toTerminal = isatty(STDOUT_FILENO) != 0;
    line.setSink(
        [toTerminal](std::string_view text) {
            std::fwrite(text.data(), 1, text.size(), stdout);
            if (toTerminal) std::fflush(stdout);
        },
        [] { std::fflush(stdout); });
    line.setLineSource(readTypedLine);
    veldrin::scripting::install(m_host);
    listenToInterrupts(&m_host.lisp());
}

Session::~Session() {
    listenToInterrupts(nullptr);
}

bool Session::start(const Options& options) {
    m_host.commandLine().setArguments(options.arguments);
    makeInstalledKeys();
    const auto loadLayers = [&] { return options.bare || (loadModule() && loadLispLayer()); };
    // What comes from other programs is read into the module's classes; drawings find them later as well.
    const bool isForeign = veldrin::isExchangeFile(options.drawing);
    if (isForeign && !loadLayers()) return false;
    if (!openDrawing(options.drawing, options.onlyLooks)) return false;
    return isForeign || loadLayers();
}

// What an installer would have made. Without a place for settings the program works all the same.
void Session::makeInstalledKeys() {
    veldrin::UserSettings& settings = m_host.settings();
    if (!settings.hasKey(kInstalledKey) && !settings.createKey(kInstalledKey))
        tell("cannot write the settings file " + settings.file().string() + ": " + reasonOf(errno));
}

bool Session::openDrawing(const std::string& path, bool onlyLooks) {
    veldrin::DocumentManager& documents = m_host.documents();
    std::error_code error;
    const fs::path file = drawingFile(path);
    if (path.empty()) return documents.newDocument() != nullptr;
    if (!fs::exists(file, error)) {
        const fs::path folder = fs::absolute(file, error).parent_path();
        if (fs::is_directory(folder, error)) return documents.newDocument(file.string()) != nullptr;
        tell("cannot make drawing " + file.string() + ": there is no folder " + folder.string());
        return false;
    }
    using Opening = veldrin::DocumentManager::Opening;
    std::string told;
    bool isOpen = false;
    {
        const veldrin::CommandLine::Capture capture(m_host.commandLine());
        isOpen = documents.openDocument(file.string(), onlyLooks ? Opening::kToLook : Opening::kToWork);
        told = capture.text();
    }
    if (!isOpen)
        tell(told);
    else if (!onlyLooks)
        m_host.commandLine().print(told);
    return isOpen;
}

bool Session::loadModule() {
    std::string printed;
    veldrin::ModuleStatus status = veldrin::ModuleStatus::kDone;
    {
        const veldrin::CommandLine::Capture capture(m_host.commandLine());
        status = m_host.modules().load(kModule);
        printed = capture.text();
    }
    if (status == veldrin::ModuleStatus::kDone) {
        m_host.commandLine().print(printed);
        return true;
    }
    tell("cannot load the module: " + printed);
    return false;
}

bool Session::loadLispLayer() {
    const fs::path folder = veldrin::findDataFolder("lisp");
    if (folder.empty()) {
        tell("cannot find the folder lisp beside the program");
        return false;
    }
    lisp::Outcome outcome;
    return runScript((folder / kLoader).string(), outcome) && statusOf(outcome) == kDone;
}

bool Session::canRead(const std::string& path) {
    const std::string problem = readProblem(path);
    if (!problem.empty()) tell("cannot read " + path + ": " + problem);
    return problem.empty();
}

bool Session::runScript(const std::string& path, lisp::Outcome& outcome) {
    if (!canRead(path)) return false;
    isBreakPending = 0;
    outcome = m_host.lisp().runFile(path);
    return true;
}

int Session::prepare(const std::string& drawingOrScript, bool& goOn) {
    goOn = false;
    if (!isScript(drawingOrScript)) {
        const std::string file = drawingFile(drawingOrScript);
        if (!canRead(file)) return kFailed;
        goOn = start({false, file, {}, true});
        return goOn ? kDone : kFailed;
    }
    lisp::Outcome outcome;
    if (!canRead(drawingOrScript) || !start({}) || !runScript(drawingOrScript, outcome)) return kFailed;
    const int status = statusOf(outcome);
    goOn = status == kDone && m_host.documents().current();
    if (status == kDone && !goOn) tell("the script " + drawingOrScript + " leaves no drawing open");
    return goOn || status != kDone ? status : kFailed;
}

int Session::statusOf(const lisp::Outcome& outcome) {
    isBreakPending = 0;
    m_host.lisp().clearBreak();
    switch (outcome.status) {
    case lisp::Outcome::Status::Done: return kDone;
    case lisp::Outcome::Status::Quit: return outcome.exitStatus & 0xFF;
    default: break;
    }
    // A command that still waits would take the next line for its answer.
    m_host.commands().cancelAll();
    tell("error: " + (outcome.error ? outcome.error->report() : std::string("the script has failed")));
    return kFailed;
}

int Session::finish(int status) {
    if (isatty(STDOUT_FILENO)) m_host.commandLine().freshLine();
    if (std::fflush(stdout) == 0 && !std::ferror(stdout)) return status;
    tell("cannot write standard output: " + reasonOf(errno));
    return status == kDone ? kFailed : status;
}

void Session::tell(std::string_view message) {
    if (isatty(STDOUT_FILENO)) m_host.commandLine().freshLine();
    m_host.commandLine().flush();
    while (!message.empty() && message.back() == '\n') message.remove_suffix(1);
    while (!message.empty() && message.front() == '\n') message.remove_prefix(1);
    std::fprintf(stderr, "veldrin: %.*s\n", static_cast<int>(message.size()), message.data());
}
