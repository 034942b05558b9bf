#include "projects/ProjectMaker.h"

#include "dao/Connection.h"
#include "dao/DaoErrors.h"
#include "files/FileReplacement.h"
#include "projects/ProjectFiles.h"
#include "projects/ProjectSchema.h"

#include <fmt/format.h>

#include <algorithm>
#include <filesystem>
#include <system_error>
#include <vector>

namespace fs = std::filesystem;

namespace veldrin {

namespace {

constexpr const char* kModuleName = "vq_plumb";

void requireUsableName(const std::string& name) {
    if (name.empty() || name.find('/') != std::string::npos || name.find('\\') != std::string::npos ||
        name.find('\0') != std::string::npos)
        throw CDaoException(kDaoCannotOpen, fmt::format("'{}' is no name for a project.", name));
}

void requireFolder(const std::string& folder) {
    std::error_code error;
    fs::create_directories(folder, error);
    if (error || !fs::is_directory(folder))
        throw CDaoException(kDaoCannotOpen, fmt::format("Cannot make the folder {}: {}.", folder,
                                                        error ? error.message() : "a file is in its place"));
}

void requireNothingThere(const std::string& path) {
    std::error_code error;
    if (fs::exists(path, error))
        throw CDaoException(kDaoObjectExists, fmt::format("{} is there already.", path));
    const std::string problem = whyNotWritable(path);
    if (!problem.empty())
        throw CDaoException(kDaoCannotOpen, fmt::format("Cannot make {}: {}.", path, problem));
}

enum class Content { kProject, kStandards };

void fill(const std::string& path, Content content) {
    const fs::path standards = standardsFolder();
    std::vector<fs::path> starters;
    for (const auto& file : fs::directory_iterator(standards / "starter"))
        if (file.path().extension() == ".sql") starters.push_back(file.path());
    std::sort(starters.begin(), starters.end());
    dao::Connection::createFile(path);
    dao::Connection connection(path, {});
    dao::Transaction transaction(connection);
    runSqlFile(connection, standards / kSchemaFile);
    for (const fs::path& file : starters) runSqlFile(connection, file);
    if (content == Content::kStandards) runSqlFile(connection, standards / kStandardsChange);
    keepAllYesNo(connection);
    transaction.commit();
}

// Under another name until it is whole, so that nobody opens half a project.
std::string make(const std::string& path, Content content) {
    requireNothingThere(path);
    FileReplacement file(path);
    fill(file.path(), content);
    const std::string problem = file.commit();
    if (!problem.empty())
        throw CDaoException(kDaoCannotOpen, fmt::format("Cannot make {}: {}.", path, problem));
    return path;
}

} // namespace

std::string makeProject(const std::string& folder, const std::string& name) {
    requireUsableName(name);
    requireFolder(folder);
    const std::vector<std::string> there = projectFilesIn(folder, kModuleName, "vq");
    if (!there.empty())
        throw CDaoException(kDaoObjectExists, fmt::format("{} has a project already, {}.", folder,
                                                          fs::path(there.front()).filename().string()));
    return make(projectPath(folder, name), Content::kProject);
}

std::string makeStandardsFile(const std::string& folder, const std::string& name) {
    requireUsableName(name);
    requireFolder(folder);
    return make(standardsPath(folder, name), Content::kStandards);
}

} // namespace veldrin
