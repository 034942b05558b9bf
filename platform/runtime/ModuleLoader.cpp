#include "runtime/ModuleLoader.h"

#include "runtime/AcRxClass.h"
#include "runtime/CException.h"
#include "runtime/acrx.h"

#include <dlfcn.h>
#include <fmt/format.h>

#include <algorithm>

namespace fs = std::filesystem;

namespace veldrin {

namespace {

using EntryPoint = AcRx::AppRetCode (*)(AcRx::AppMsgCode, void*);
using VersionFunction = unsigned (*)();

constexpr const char* kEnding = ".arx";
constexpr unsigned kApiGeneration = 0x17; // upper half of what a module says it was made for

// Names the module for as long as its entry point runs.
class Current {
public:
    Current(const LoadedModule*& slot, const LoadedModule* module) : m_slot(slot), m_before(slot) {
        slot = module;
    }
    ~Current() { m_slot = m_before; }
    Current(const Current&) = delete;
    Current& operator=(const Current&) = delete;

private:
    const LoadedModule*& m_slot;
    const LoadedModule* m_before;
};

bool isFile(const fs::path& path) {
    std::error_code ignored;
    return fs::is_regular_file(path, ignored);
}

fs::path withEnding(const fs::path& path) {
    return path.extension() == kEnding ? path : fs::path(path.string() + kEnding);
}

std::string lastLibraryError() {
    const char* const text = dlerror();
    return text ? text : "unknown reason";
}

std::string statusText(ModuleStatus status) {
    switch (status) {
    case ModuleStatus::kAlreadyLoaded: return "is already loaded";
    case ModuleStatus::kNotFound: return "cannot be found";
    case ModuleStatus::kNotAModule: return "is no module of this program";
    case ModuleStatus::kRefused: return "failed to load";
    case ModuleStatus::kNotLoaded: return "is not loaded";
    case ModuleStatus::kLocked: return "cannot be unloaded: it is locked";
    case ModuleStatus::kBusy: return "cannot be unloaded: it is at work";
    case ModuleStatus::kDone: break;
    }
    return "is done";
}

} // namespace

ModuleLoader::ModuleLoader() = default;
ModuleLoader::~ModuleLoader() = default;

void ModuleLoader::setHooks(Hooks hooks) {
    m_hooks = std::move(hooks);
}

void ModuleLoader::setSearchFolders(std::vector<fs::path> folders) {
    m_folders = std::move(folders);
}

ModuleStatus ModuleLoader::load(const std::string& file, bool printIt) {
    if (find(file)) return report(ModuleStatus::kAlreadyLoaded, file, "", printIt);
    const fs::path path = locate(file);
    if (path.empty()) return report(ModuleStatus::kNotFound, file, "", printIt);

    auto fresh = std::make_unique<LoadedModule>();
    fresh->m_name = path.stem().string();
    fresh->m_path = path;
    LoadedModule& module = *fresh;
    std::string problem = bind(module);
    if (!problem.empty()) return report(ModuleStatus::kNotAModule, file, problem, printIt);

    m_modules.push_back(std::move(fresh));
    problem = send(module, AcRx::kInitAppMsg);
    if (!problem.empty()) {
        if (!dropClasses(module)) module.m_library = nullptr;
        forget(module);
        return report(ModuleStatus::kRefused, file, problem, printIt);
    }
    sendToDocuments(module, AcRx::kLoadDwgMsg);
    return ModuleStatus::kDone;
}

ModuleStatus ModuleLoader::unload(const std::string& file, bool printIt) {
    LoadedModule* const module = find(file);
    if (!module) return report(ModuleStatus::kNotLoaded, file, "", printIt);
    if (module->m_running > 0 || m_current == module) return report(ModuleStatus::kBusy, file, "", printIt);
    if (module->m_locked) return report(ModuleStatus::kLocked, file, "", printIt);
    if (!shutDown(*module))
        return report(ModuleStatus::kRefused, file, "it could not let go of everything and stays in memory",
                      printIt);
    return ModuleStatus::kDone;
}

void ModuleLoader::unloadAll() {
    while (!m_modules.empty()) shutDown(*m_modules.back());
}

// False when the module failed to let go of everything. It is then forgotten but stays in memory, since
// something may still point into it.
bool ModuleLoader::shutDown(LoadedModule& module) {
    sendToDocuments(module, AcRx::kUnloadDwgMsg);
    const bool wentWell = tell(module, AcRx::kUnloadAppMsg);
    if (m_hooks.unloading) m_hooks.unloading(module);
    const bool letGo = wentWell && dropClasses(module);
    if (!letGo) module.m_library = nullptr;
    forget(module);
    return letGo;
}

void ModuleLoader::sendToAll(AcRx::AppMsgCode message) {
    for (std::size_t i = 0; i < m_modules.size(); ++i) tell(*m_modules[i], message);
}

std::vector<std::string> ModuleLoader::names() const {
    std::vector<std::string> names;
    for (const auto& module : m_modules) names.push_back(module->m_name);
    return names;
}

void ModuleLoader::enterCall(const LoadedModule* module) {
    if (module) ++const_cast<LoadedModule*>(module)->m_running;
}

void ModuleLoader::leaveCall(const LoadedModule* module) {
    if (module) --const_cast<LoadedModule*>(module)->m_running;
}

bool ModuleLoader::unlock(const void* package) {
    LoadedModule* const module = findPackage(package);
    if (module) module->m_locked = false;
    return module != nullptr;
}

bool ModuleLoader::isPackage(const void* package) const {
    return findPackage(package) != nullptr;
}

void ModuleLoader::startDao() const {
    if (m_daoStarter) m_daoStarter();
}

ModuleStatus ModuleLoader::report(ModuleStatus status, const std::string& file, const std::string& detail,
                                  bool printIt) {
    if (!printIt || !m_hooks.print) return status;
    const std::string reason = detail.empty() ? "" : ": " + detail;
    m_hooks.print(fmt::format("{} {}{}.", fs::path(file).filename().string(), statusText(status), reason));
    return status;
}

// The file as it was given, then in the folders; each with the ending where that is missing.
fs::path ModuleLoader::locate(const std::string& file) const {
    if (file.empty()) return {};
    for (const fs::path& candidate : {fs::path(file), withEnding(file)}) {
        if (isFile(candidate)) return fs::absolute(candidate).lexically_normal();
    }
    if (fs::path(file).has_parent_path()) return {};
    for (const fs::path& folder : m_folders) {
        if (isFile(folder / withEnding(file)))
            return fs::absolute(folder / withEnding(file)).lexically_normal();
    }
    return {};
}

LoadedModule* ModuleLoader::find(const std::string& file) const {
    const std::string name = withEnding(fs::path(file).filename()).stem().string();
    for (const auto& module : m_modules) {
        if (module->m_name == name) return module.get();
    }
    return nullptr;
}

LoadedModule* ModuleLoader::findPackage(const void* package) const {
    for (const auto& module : m_modules) {
        if (module.get() == package) return module.get();
    }
    return nullptr;
}

// Opens the library and finds its doors; what was wrong, or nothing.
std::string ModuleLoader::bind(LoadedModule& module) const {
    dlerror();
    module.m_library = dlopen(module.m_path.c_str(), RTLD_NOW | RTLD_LOCAL);
    if (!module.m_library) return lastLibraryError();
    module.m_entryPoint = dlsym(module.m_library, "acrxEntryPoint");
    void* const version = dlsym(module.m_library, "acrxGetApiVersion");
    std::string problem;
    if (!module.m_entryPoint)
        problem = "it has no entry point";
    else if (!version)
        problem = "it does not say for which host it was made";
    else if (const unsigned made = reinterpret_cast<VersionFunction>(version)(); made >> 16 != kApiGeneration)
        problem = fmt::format("it was made for host version {:#x}", made);
    if (!problem.empty()) dlclose(module.m_library);
    return problem;
}

// What was wrong, or nothing.
std::string ModuleLoader::send(LoadedModule& module, int message) {
    const Current current(m_current, &module);
    try {
        const auto entry = reinterpret_cast<EntryPoint>(module.m_entryPoint);
        const auto answer = entry(static_cast<AcRx::AppMsgCode>(message), &module);
        return answer == AcRx::kRetOK ? "" : "its entry point reports an error";
    } catch (const std::exception& fault) {
        return *fault.what() ? fault.what() : "it was left by an exception";
    } catch (...) {
        return "it was left by an exception";
    }
}

// Sends a message whose failure ends nothing, but is told.
bool ModuleLoader::tell(LoadedModule& module, int message) {
    const std::string problem = send(module, message);
    if (!problem.empty() && m_hooks.print) m_hooks.print(fmt::format("{}: {}.", module.m_name, problem));
    return problem.empty();
}

void ModuleLoader::sendToDocuments(LoadedModule& module, int message) {
    if (!m_hooks.forEachDocument) return;
    m_hooks.forEachDocument([&] { tell(module, message); });
}

// A class whose factory lies in a library that goes must go before it, whoever forgot to take it away.
// False when one cannot go, because an object of it is open.
bool ModuleLoader::dropClasses(const LoadedModule& module) const {
    Dl_info entry{};
    if (!dladdr(module.m_entryPoint, &entry)) return false;
    try {
        for (AcRxClass* aClass : AcRxClassRegistry::instance().all()) {
            Dl_info factory{};
            const auto address = reinterpret_cast<void*>(aClass->traits().factory);
            const bool isOfModule =
                address && dladdr(address, &factory) && factory.dli_fbase == entry.dli_fbase;
            if (isOfModule) deleteAcRxClass(aClass);
        }
    } catch (const CException& fault) {
        if (m_hooks.print) m_hooks.print(fault.GetErrorMessage());
        return false;
    }
    return true;
}

void ModuleLoader::forget(const LoadedModule& module) {
    void* const library = module.m_library;
    std::erase_if(m_modules, [&](const auto& held) { return held.get() == &module; });
    if (library) dlclose(library);
}

} // namespace veldrin
