#pragma once

#include "runtime/VeldrinApi.h"

#include <filesystem>
#include <string>
#include <vector>

class CDaoDatabase;

namespace veldrin {

namespace dao {
class Connection;
}

// The schema of project databases lies as SQL in the folder "standards": schema.sql, the rows to start with
// in starter/, and standards-file.sql, which makes a standards file of a project.
inline constexpr const char* kSchemaFile = "schema.sql";
inline constexpr const char* kStandardsChange = "standards-file.sql";
inline constexpr const char* kStandardsMark = "tblValveM";  // a table that standards files alone have
std::string readSqlFile(const std::filesystem::path& file); // throws CDaoException
std::filesystem::path standardsFolder();                    // throws CDaoException without one
void runSqlFile(dao::Connection& connection, const std::filesystem::path& file);
void keepAllYesNo(dao::Connection& connection);

struct SchemaGap {
    std::string table;
    std::string column;     // empty when all of the table is missing
    std::string definition; // the statement that would mend it
};

// What a project, or a standards file, should have and does not. More tables and columns are fine.
std::vector<SchemaGap> findSchemaGaps(dao::Connection& connection);

// The gaps in one line for the user, "PATH lacks tblPipe.dX1 and the table tblFloor."; empty without any.
VELDRIN_API std::string describeSchemaGaps(CDaoDatabase& database);

} // namespace veldrin
