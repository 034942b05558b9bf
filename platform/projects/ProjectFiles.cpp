#include "projects/ProjectFiles.h"

#include "system/AsciiCase.h"

#include <fmt/format.h>

#include <filesystem>
#include <system_error>

namespace fs = std::filesystem;

namespace veldrin {

namespace {

constexpr const char* kProjectEnding = " vq_plumb.vq";
constexpr const char* kStandardsEnding = " vq_plumb_STANDARDS.vq";
constexpr const char* kDamagedEnding = ".damaged";

ProjectDatabaseSource databaseSource = nullptr;

bool isCandidate(const std::string& upperName, const std::string& module, const std::string& ending) {
    if (upperName.size() < module.size() + ending.size() || !upperName.ends_with(ending)) return false;
    const auto at = upperName.find(module);
    if (at == std::string::npos || at + module.size() + ending.size() > upperName.size()) return false;
    return !upperName.starts_with("52-VQ") && upperName.find("_MASTER") == std::string::npos &&
           upperName.find("_STANDARDS") == std::string::npos;
}

} // namespace

std::vector<std::string> projectFilesIn(const std::string& folder, std::string_view moduleName,
                                        std::string_view extension) {
    const std::string module = asciiUpperCase(moduleName);
    const std::string ending = "." + asciiUpperCase(extension);
    std::vector<std::string> found;
    std::error_code error;
    for (fs::directory_iterator file(folder, error), end; !error && file != end; file.increment(error)) {
        std::error_code unreadable;
        if (isCandidate(asciiUpperCase(file->path().filename().string()), module, ending) &&
            !file->is_directory(unreadable))
            found.push_back(file->path().string());
    }
    return found;
}

bool looksLikeProject(std::string_view path) {
    const std::string name = asciiUpperCase(fs::path(path).filename().string());
    return name.ends_with(".VQ") || name.ends_with(".MDB") || name.find(".VQ.DAMAGED") != std::string::npos;
}

std::string projectPath(const std::string& folder, const std::string& name) {
    return (fs::path(folder) / (name + kProjectEnding)).string();
}

std::string standardsPath(const std::string& folder, const std::string& name) {
    return (fs::path(folder) / (name + kStandardsEnding)).string();
}

std::string pathForDamaged(const std::string& path) {
    for (int n = 0;; ++n) {
        std::string name = n == 0 ? path + kDamagedEnding : fmt::format("{}{}-{}", path, kDamagedEnding, n);
        std::error_code none;
        if (!fs::exists(name, none)) return name;
    }
}

void setProjectDatabaseSource(ProjectDatabaseSource source) {
    databaseSource = source;
}

std::string currentProjectDatabase() {
    return databaseSource ? databaseSource() : std::string();
}

} // namespace veldrin
