#include "projects/ProjectSchema.h"

#include "dao/CDaoDatabase.h"
#include "dao/Connection.h"
#include "dao/SqlText.h"
#include "dao/TableInfo.h"
#include "files/SqlFile.h"
#include "system/ProgramFolders.h"

#include <fmt/format.h>

#include <algorithm>
#include <fstream>
#include <iterator>

namespace fs = std::filesystem;

namespace veldrin {

namespace {

struct SchemaColumn {
    std::string table;
    std::string tableDefinition;
    std::string name;
    std::string definition;
};

// The columns of the schema files, made in memory.
std::vector<SchemaColumn> schemaColumns(bool isStandards) {
    SqlFile schema(":memory:", SqlFile::Mode::kCreate);
    schema.run(readSqlFile(standardsFolder() / kSchemaFile).c_str());
    if (isStandards) schema.run(readSqlFile(standardsFolder() / kStandardsChange).c_str());
    std::vector<SchemaColumn> columns;
    {
        SqlStatement rows(schema, "select m.name, m.sql, c.name, '[' || c.name || '] ' || c.type || "
                                  "case when c.type like '%TEXT%' then ' COLLATE NOCASE' else '' end || "
                                  "ifnull(' DEFAULT ' || c.dflt_value, '') "
                                  "from sqlite_schema m join pragma_table_info(m.name) c "
                                  "where m.type = 'table' and m.name not like 'sqlite\\_%' escape '\\' "
                                  "order by m.name, c.cid");
        while (rows.step())
            columns.push_back({std::string(rows.text(0)), std::string(rows.text(1)),
                               std::string(rows.text(2)), std::string(rows.text(3))});
    }
    if (!schema.ok()) throw CDaoException(kDaoSyntax, "The schema of projects: " + schema.error());
    return columns;
}

bool hasTable(const std::vector<CString>& tables, std::string_view name) {
    return std::any_of(tables.begin(), tables.end(),
                       [&](const CString& table) { return dao::equalNames(table, name); });
}

} // namespace

fs::path standardsFolder() {
    fs::path folder = findDataFolder("standards");
    if (folder.empty())
        throw CDaoException(kDaoFileNotFound, "The program's folder \"standards\" cannot be found.");
    return folder;
}

std::string readSqlFile(const fs::path& file) {
    std::ifstream stream(file, std::ios::binary);
    std::string text{std::istreambuf_iterator<char>(stream), {}};
    if (!stream) throw CDaoException(kDaoFileNotFound, fmt::format("{} cannot be read.", file.string()));
    return text;
}

void runSqlFile(dao::Connection& connection, const fs::path& file) {
    try {
        connection.run(readSqlFile(file).c_str());
    } catch (const CDaoException& failure) {
        throw CDaoException(static_cast<DaoError>(failure.number()),
                            fmt::format("{}: {}", file.filename().string(), failure.GetErrorMessage()));
    }
}

void keepAllYesNo(dao::Connection& connection) {
    for (const CString& table : dao::tableNames(connection)) dao::keepYesNo(connection, table);
}

std::vector<SchemaGap> findSchemaGaps(dao::Connection& connection) {
    const std::vector<CString> tables = dao::tableNames(connection);
    std::vector<SchemaGap> gaps;
    std::shared_ptr<const dao::TableInfo> table;
    for (const SchemaColumn& column : schemaColumns(hasTable(tables, kStandardsMark))) {
        if (!hasTable(tables, column.table)) {
            if (gaps.empty() || gaps.back().table != column.table)
                gaps.push_back({column.table, "", column.tableDefinition});
            continue;
        }
        if (!table || table->name != column.table) table = dao::readTableInfo(connection, column.table);
        if (table->findField(column.name) < 0)
            gaps.push_back({column.table, column.name,
                            fmt::format("alter table [{}] add column {}", column.table, column.definition)});
    }
    return gaps;
}

std::string describeSchemaGaps(CDaoDatabase& database) {
    constexpr std::size_t kMostNames = 8;
    const std::vector<SchemaGap> gaps = findSchemaGaps(database.connection());
    if (gaps.empty()) return {};
    std::string names;
    for (std::size_t i = 0; i < std::min(gaps.size(), kMostNames); ++i)
        names += (i == 0 ? "" : ", ") + (gaps[i].column.empty() ? "the table " + gaps[i].table
                                                                : gaps[i].table + "." + gaps[i].column);
    if (gaps.size() > kMostNames) names += fmt::format(" and {} more", gaps.size() - kMostNames);
    return fmt::format("{} lacks {}.", database.GetName(), names);
}

} // namespace veldrin
