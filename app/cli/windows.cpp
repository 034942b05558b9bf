#include "cli/windows.h"

#include "system/ProgramFolders.h"
#include "ui/UiBackend.h"
#include "window/WindowEntry.h"

#include <cstdlib>
#include <filesystem>
#include <memory>

#include <dlfcn.h>

namespace {

using MakeWindows = decltype(&veldrinMakeWindows);

bool isSet(const char* variable) {
    const char* value = std::getenv(variable);
    return value && *value;
}

// Stays loaded: the windows end with the host, behind everything that is done here.
MakeWindows loadWindows(std::string& problem) {
    for (const std::filesystem::path& folder : veldrin::moduleFolders()) {
        const std::filesystem::path file = folder / kWindowLibrary;
        std::error_code none;
        if (!std::filesystem::exists(file, none)) continue;
        void* library = dlopen(file.c_str(), RTLD_NOW | RTLD_LOCAL);
        void* entry = library ? dlsym(library, kWindowEntry) : nullptr;
        if (!entry) problem = dlerror();
        return reinterpret_cast<MakeWindows>(entry);
    }
    return nullptr;
}

} // namespace

Windows showWindows(veldrin::Host& host, std::string& problem) {
    const MakeWindows make = loadWindows(problem);
    if (!make) return problem.empty() ? Windows::kNotBuilt : Windows::kNotLoaded;
    if (!isSet("DISPLAY") && !isSet("WAYLAND_DISPLAY") && !isSet("QT_QPA_PLATFORM"))
        return Windows::kNoDisplay;
    std::unique_ptr<veldrin::UiBackend> windows(make());
    if (!windows) return Windows::kNoDisplay;
    host.setUi(std::move(windows));
    return Windows::kShown;
}
