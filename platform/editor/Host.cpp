#include "runtime/Host.h"

#include "drawing/AcDbEntity.h"
#include "drawing/DatabaseRegistry.h"
#include "editor/CallFrames.h"
#include "editor/CommandLine.h"
#include "editor/CommandRegistry.h"
#include "editor/DocumentManager.h"
#include "editor/EditorEvents.h"
#include "editor/LispServices.h"
#include "editor/SystemVariables.h"
#include "files/DrawingFile.h"
#include "files/DxfExport.h"
#include "files/DxfImport.h"
#include "graphics/Recorder.h"
#include "lisp/Engine.h"
#include "runtime/ModuleLoader.h"
#include "system/ProgramFolders.h"
#include "system/UserSettings.h"
#include "ui/UiBackend.h"

#include <cstdio>
#include <cstdlib>

namespace veldrin {

namespace {

Host* theHost = nullptr;

void require(bool condition, const char* fault) {
    if (condition) return;
    std::fprintf(stderr, "veldrin: %s\n", fault);
    std::abort();
}

// Drawings from exchange files, which go back into them.
std::unique_ptr<AcDbDatabase> loadExchange(const std::string& path, std::string& error) {
    DxfImportReport report;
    auto imported = importDxf(path, report);
    if (const auto* problem = std::get_if<std::string>(&imported)) {
        error = *problem;
        return nullptr;
    }
    for (const std::string& line : report.lines()) Host::current().commandLine().print(line + "\n");
    auto database = std::move(std::get<std::unique_ptr<AcDbDatabase>>(imported));
    database->setFileLink({{}, {}, false, report.version});
    database->setModified(false);
    return database;
}

// In the version that it came in, as far as that is written.
bool saveExchange(AcDbDatabase& database, const std::string& path, std::string& error) {
    DxfExportOptions options;
    options.version = dxfVersionNamed(database.fileLink().exchangeVersion).value_or(DxfVersion::kR2000);
    std::vector<std::string> losses;
    error = exportDxf(database, path, options, losses).value_or(std::string());
    for (const std::string& line : losses) Host::current().commandLine().print(line + "\n");
    if (error.empty()) database.setModified(false);
    return error.empty();
}

bool keepError(const std::optional<std::string>& problem, std::string& error) {
    error = problem.value_or(std::string());
    return !problem;
}

DrawingFiles drawingFiles() {
    DrawingFiles files;
    files.load = [](const std::string& path, std::string& error) -> std::unique_ptr<AcDbDatabase> {
        if (isExchangeFile(path)) return loadExchange(path, error);
        auto opened = openDrawing(path);
        if (auto* database = std::get_if<std::unique_ptr<AcDbDatabase>>(&opened)) return std::move(*database);
        error = std::get<std::string>(opened);
        return nullptr;
    };
    files.save = [](AcDbDatabase& database, const std::string& path, std::string& error) {
        if (isExchangeFile(path)) return saveExchange(database, path, error);
        return keepError(saveDrawing(database, path), error);
    };
    files.saveCopy = [](AcDbDatabase& database, const std::string& path, std::string& error) {
        return keepError(saveDrawingCopy(database, path), error);
    };
    return files;
}

// What an entity shows, for the time that its class is away.
std::shared_ptr<AcGiDrawable> recordedPicture(AcDbEntity& entity) {
    DisplayList list;
    Recorder recorder(list);
    drawEntity(entity, recorder);
    return std::make_shared<RecordedPicture>(std::move(list));
}

// Limits of Lisp, where the user has set others: calls inside one another, and megabytes of the stack that
// they take up and of all values. A number that would leave no room to work in counts as not set.
lisp::Limits lispLimits(const UserSettings& settings) {
    constexpr const char* kKey = R"(Software\Veldrin Software\Lisp)";
    const auto number = [&](const char* name, std::int32_t least) -> std::optional<std::size_t> {
        const auto value = settings.read(kKey, name);
        const auto* given = value ? std::get_if<std::int32_t>(&*value) : nullptr;
        if (!given || *given < least) return {};
        return static_cast<std::size_t>(*given);
    };
    constexpr std::size_t kMegabyte = 1U << 20;
    lisp::Limits limits;
    if (const auto calls = number("CallDepth", 100)) limits.callDepth = static_cast<int>(*calls);
    if (const auto megabytes = number("StackMegabytes", 8)) limits.stackBytes = *megabytes * kMegabyte;
    if (const auto megabytes = number("HeapMegabytes", 16)) limits.heapBytes = *megabytes * kMegabyte;
    return limits;
}

} // namespace

// In the order in which they come, and in reverse go: what stands lower knows nothing of what stands above.
struct Host::Parts {
    UserSettings settings;
    CommandLine commandLine;
    std::unique_ptr<UiBackend> ui = std::make_unique<HeadlessUi>();
    DatabaseRegistry databases;
    SystemVariables variables;
    EditorEvents events;
    LispServices services;
    lisp::Engine engine;
    CallFrames frames{engine};
    DocumentManager documents;
    ModuleLoader modules;
    std::unique_ptr<CommandRegistry> commands; // asks the host for the others
};

Host::Host() {
    require(!theHost, "a second host beside a living one");
    theHost = this;
    m_parts = std::make_unique<Parts>();
    m_parts->engine.setServices(&m_parts->services);
    m_parts->engine.setLimits(lispLimits(m_parts->settings));
    ModuleLoader::Hooks hooks;
    hooks.print = [this](const std::string& line) {
        commandLine().freshLine();
        commandLine().print(line + "\n");
    };
    hooks.forEachDocument = [this](const std::function<void()>& action) {
        documents().forEachAsCurrent([&](Document&) { action(); });
    };
    hooks.unloading = [this](const LoadedModule& module) { callFrames().forgetModule(&module); };
    m_parts->modules.setHooks(std::move(hooks));
    m_parts->modules.setSearchFolders(moduleFolders());
    m_parts->documents.setDrawingFiles(drawingFiles());
    m_parts->databases.setPictureMaker(recordedPicture);
    m_parts->commands = std::make_unique<CommandRegistry>(*this);
}

Host::~Host() {
    m_parts->commands->cancelAll();
    m_parts->documents.closeAll();
    m_parts->modules.unloadAll();
    m_parts->commands.reset();
    m_parts.reset();
    theHost = nullptr;
}

Host& Host::current() {
    require(theHost, "no host");
    return *theHost;
}

bool Host::exists() {
    return theHost != nullptr;
}

DatabaseRegistry& Host::databases() {
    return m_parts->databases;
}

DocumentManager& Host::documents() {
    return m_parts->documents;
}

CommandLine& Host::commandLine() {
    return m_parts->commandLine;
}

CommandRegistry& Host::commands() {
    return *m_parts->commands;
}

SystemVariables& Host::variables() {
    return m_parts->variables;
}

lisp::Engine& Host::lisp() {
    return m_parts->engine;
}

CallFrames& Host::callFrames() {
    return m_parts->frames;
}

ModuleLoader& Host::modules() {
    return m_parts->modules;
}

UiBackend& Host::ui() {
    return *m_parts->ui;
}

UserSettings& Host::settings() {
    return m_parts->settings;
}

EditorEvents& Host::editorEvents() {
    return m_parts->events;
}

void Host::setUi(std::unique_ptr<UiBackend> ui) {
    m_parts->ui = std::move(ui);
}

} // namespace veldrin
