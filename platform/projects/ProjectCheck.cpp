#include "projects/ProjectCheck.h"

#include "dao/Connection.h"
#include "dao/DaoErrors.h"
#include "dao/SqlText.h"
#include "dao/TableInfo.h"
#include "files/DamagedFile.h"
#include "projects/ProjectSchema.h"

#include <fmt/format.h>

#include <filesystem>
#include <memory>

namespace veldrin {

namespace {

constexpr int kMostPageProblems = 20;

void addLines(const CString& text, std::vector<std::string>& problems) {
    for (std::size_t at = 0; at < text.size();) {
        const std::size_t end = std::min(text.find('\n', at), text.size());
        const CString line = text.substr(at, end - at);
        if (line != "ok" && !line.starts_with("***")) problems.push_back("the file: " + line);
        at = end + 1;
    }
}

void addYesNoProblems(dao::Connection& connection, std::vector<std::string>& problems) {
    for (const CString& table : dao::tableNames(connection)) {
        const auto info = dao::readTableInfo(connection, table);
        for (const CDaoFieldInfo& field : info->fields) {
            if (field.m_nType != dbBoolean) continue;
            const CString name = dao::bracketed(field.m_strName);
            const std::int64_t wrong = connection.number(fmt::format(
                "select count(*) from {} where {} is not 0 and {} is not -1", info->engineName, name, name));
            if (wrong != 0)
                problems.push_back(
                    fmt::format("{}.{}: {} values are neither yes nor no", table, field.m_strName, wrong));
        }
    }
}

} // namespace

std::vector<std::string> pageProblems(dao::Connection& connection) {
    std::vector<std::string> problems;
    try {
        const dao::Connection::Lease rows =
            connection.prepare(fmt::format("pragma integrity_check({})", kMostPageProblems));
        while (rows->step()) addLines(rows->text(0), problems);
    } catch (const CDaoException& failure) {
        problems.push_back("the file: " + failure.GetErrorMessage());
    }
    return problems;
}

std::int64_t countRecords(dao::Connection& connection) {
    std::int64_t count = 0;
    for (const CString& table : dao::tableNames(connection)) {
        try {
            count += connection.number("select count(*) from " + dao::bracketed(table));
        } catch (const CDaoException&) {
            // A table that cannot be read counts nothing; its pages are among the problems.
        }
    }
    return count;
}

std::vector<std::string> contentProblems(dao::Connection& connection) {
    std::vector<std::string> problems;
    for (const SchemaGap& gap : findSchemaGaps(connection))
        problems.push_back(gap.column.empty() ? fmt::format("the table {} is missing", gap.table)
                                              : fmt::format("{}.{} is missing", gap.table, gap.column));
    addYesNoProblems(connection, problems);
    return problems;
}

ProjectReport checkProject(const std::string& path) {
    ProjectReport report;
    std::error_code error;
    const std::uintmax_t stated = statedLength(path);
    const std::uintmax_t size = std::filesystem::file_size(path, error);
    try {
        const auto connection = dao::Connection::openToRead(path);
        report.problems = pageProblems(*connection);
        if (report.problems.empty()) report.problems = contentProblems(*connection);
        report.records = countRecords(*connection);
    } catch (const CDaoException& failure) {
        report.failure = failure.GetErrorMessage();
        if (failure.number() == kDaoDamaged && !error && size < stated)
            report.failure = fmt::format("{} is damaged: its end is missing, {} of {} bytes are there.", path,
                                         size, stated);
    }
    return report;
}

} // namespace veldrin
