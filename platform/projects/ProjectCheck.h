#pragma once

#include "runtime/VeldrinApi.h"

#include <cstdint>
#include <string>
#include <vector>

namespace veldrin {

struct ProjectReport {
    std::string failure;               // the line that tells why nothing could be done; empty otherwise
    std::vector<std::string> problems; // what is wrong, or was lost or mended, a line each
    std::int64_t records = 0;          // that can be read
    std::string kept;                  // after a repair: where the damaged file is now, if there was damage
};

// Reads all of a project file and tells what is wrong with it: pages, missing tables and columns, values that
// yes/no columns cannot have. The file stays as it is.
[[nodiscard]] VELDRIN_API ProjectReport checkProject(const std::string& path);

// Mends a project file in place, so that whoever has it open goes on with the mended one, and keeps everybody
// else out meanwhile. A damaged file is kept beside it under a name that no folder takes for a project. What
// a sound file lacks of tables and columns is added.
[[nodiscard]] VELDRIN_API ProjectReport repairProject(const std::string& path);

namespace dao {
class Connection;
}

// What the engine finds wrong with the file's pages; nothing for a sound one. At most 20 lines.
std::vector<std::string> pageProblems(dao::Connection& connection);
// Tables and columns that a whole file lacks, and yes/no values that are neither.
std::vector<std::string> contentProblems(dao::Connection& connection);
std::int64_t countRecords(dao::Connection& connection);

} // namespace veldrin
