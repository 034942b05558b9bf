#pragma once

#include "runtime/VeldrinApi.h"
#include "runtime/acrx.h"
#include "runtime/afx.h"

#include <filesystem>
#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace veldrin {

// A module that is in memory. The address of this object is the package that its entry point is handed.
class VELDRIN_API LoadedModule {
public:
    const std::string& name() const { return m_name; } // file name without its ending
    const std::filesystem::path& path() const { return m_path; }
    bool isLocked() const { return m_locked; }

private:
    friend class ModuleLoader;
    std::string m_name;
    std::filesystem::path m_path;
    void* m_library = nullptr;
    void* m_entryPoint = nullptr;
    int m_running = 0; // functions of the module that are at work
    bool m_locked = true;
};

enum class ModuleStatus {
    kDone,
    kAlreadyLoaded,
    kNotFound,
    kNotAModule, // no shared object, no entry point, or made for another host
    kRefused,    // the entry point said no; after loading, the library is closed again
    kNotLoaded,
    kLocked, // the module has not unlocked itself
    kBusy,   // one of its functions is at work, or it is being loaded
};

// Modules: shared objects with an entry point, loaded at run time. A failure prints one line and leaves
// everything as it was. What a module registers while current() names it belongs to it.
class VELDRIN_API ModuleLoader {
public:
    // The loader's ties to what it does not know; each may be empty.
    struct Hooks {
        std::function<void(const std::string& line)> print;
        // Runs an action for each open document, with that document current.
        std::function<void(const std::function<void()>& action)> forEachDocument;
        // A module is about to leave the memory: whatever it registered has to go.
        std::function<void(const LoadedModule&)> unloading;
    };

    ModuleLoader();
    // Modules that are still loaded then stay in memory unasked; unloadAll comes first as a rule.
    ~ModuleLoader();
    ModuleLoader(const ModuleLoader&) = delete;
    ModuleLoader& operator=(const ModuleLoader&) = delete;

    void setHooks(Hooks hooks);
    // Where a module is looked for that is given by name; the ending .arx may be missing.
    void setSearchFolders(std::vector<std::filesystem::path> folders);

    ModuleStatus load(const std::string& file, bool printIt = true);
    ModuleStatus unload(const std::string& file, bool printIt = true);
    // For the end of the host, while its documents are still there: locks do not count.
    void unloadAll();

    // Tells every module of the current document: kLoadDwgMsg when it was opened or made, kUnloadDwgMsg when
    // it is about to close.
    void sendToAll(AcRx::AppMsgCode message);

    std::vector<std::string> names() const; // in the order of loading
    // The module whose entry point is running; null as a rule.
    const LoadedModule* current() const { return m_current; }
    // Around each call of a module's function; a null module is allowed.
    void enterCall(const LoadedModule* module);
    void leaveCall(const LoadedModule* module);
    bool unlock(const void* package);
    bool isPackage(const void* package) const;

    AFX_MODULE_STATE& sharedState() { return m_sharedState; }
    // What starts the table engine, by throwing CException when it cannot; without one it always starts.
    void setDaoStarter(std::function<void()> starter) { m_daoStarter = std::move(starter); }
    void startDao() const;

private:
    ModuleStatus report(ModuleStatus status, const std::string& file, const std::string& detail,
                        bool printIt);
    std::filesystem::path locate(const std::string& file) const;
    LoadedModule* find(const std::string& file) const;
    LoadedModule* findPackage(const void* package) const;
    std::string bind(LoadedModule& module) const;
    std::string send(LoadedModule& module, int message);
    void sendToDocuments(LoadedModule& module, int message);
    bool tell(LoadedModule& module, int message);
    bool dropClasses(const LoadedModule& module) const;
    bool shutDown(LoadedModule& module);
    void forget(const LoadedModule& module);

    Hooks m_hooks;
    std::vector<std::filesystem::path> m_folders;
    std::vector<std::unique_ptr<LoadedModule>> m_modules;
    const LoadedModule* m_current = nullptr;
    AFX_MODULE_STATE m_sharedState;
    std::function<void()> m_daoStarter;
};

} // namespace veldrin
