#pragma once

#include "runtime/VeldrinApi.h"

#include <string>
#include <string_view>
#include <vector>

namespace veldrin {

// Which files of a folder are a module's project databases: those whose name holds the module's and ends so,
// without regard to case. Names that begin with "52-VQ" or hold "_MASTER" or "_STANDARDS" do not count.
// Paths, in no order.
VELDRIN_API std::vector<std::string> projectFilesIn(const std::string& folder, std::string_view moduleName,
                                                    std::string_view extension);

// Whether a path looks like a project database, be it a damaged one that a repair has kept.
VELDRIN_API bool looksLikeProject(std::string_view path);

// Where a new project goes, and a new standards file, which no folder takes for its project.
VELDRIN_API std::string projectPath(const std::string& folder, const std::string& name);
VELDRIN_API std::string standardsPath(const std::string& folder, const std::string& name);

// The path at which a damaged project is kept; no folder takes it for its project.
std::string pathForDamaged(const std::string& path);

// Who knows the database that the module's running call works on: a module says so while it is loaded. It
// gives "" without one.
using ProjectDatabaseSource = std::string (*)();
VELDRIN_API void setProjectDatabaseSource(ProjectDatabaseSource source);
std::string currentProjectDatabase();

} // namespace veldrin
