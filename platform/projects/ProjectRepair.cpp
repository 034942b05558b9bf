#include "dao/Connection.h"
#include "dao/DaoErrors.h"
#include "dao/SqlText.h"
#include "dao/TableInfo.h"
#include "files/DamagedFile.h"
#include "files/FileReplacement.h"
#include "files/SalvageWalk.h"
#include "files/SqlFile.h"
#include "projects/ProjectCheck.h"
#include "projects/ProjectFiles.h"
#include "projects/ProjectSchema.h"

#include <fmt/format.h>
#include <sqlite3.h>

#include <algorithm>
#include <array>
#include <filesystem>
#include <fstream>
#include <limits>
#include <memory>

namespace fs = std::filesystem;

namespace veldrin {

namespace {

[[noreturn]] void refuse(const std::string& path, const std::string& why) {
    throw CDaoException(kDaoCannotOpen, fmt::format("Cannot repair {}: {}.", path, why));
}

// The damaged file, with every lock that the engine has on it, so that nobody else reads or writes. A file
// whose first page is no database's cannot be locked, and cannot be used by anybody either.
class DamagedProject {
public:
    explicit DamagedProject(std::string path);
    bool isSound();
    void copyTo(const std::string& target); // the bytes as they are
    void replaceBy(const std::string& mended);
    void run(const char* sql) { check(sqlite3_exec(m_handle.get(), sql, nullptr, nullptr, nullptr)); }

private:
    void check(int code) {
        if (code != SQLITE_OK) dao::throwEngineError(m_handle.get(), code, m_path);
    }
    void lock();
    sqlite3_file* file() const;

    std::string m_path;
    struct Closer {
        void operator()(sqlite3* handle) const { sqlite3_close(handle); }
    };
    std::unique_ptr<sqlite3, Closer> m_handle;
};

DamagedProject::DamagedProject(std::string path) : m_path(std::move(path)) {
    constexpr int kFlags = SQLITE_OPEN_READWRITE | SQLITE_OPEN_NOMUTEX | SQLITE_OPEN_EXRESCODE;
    constexpr int kPatience = 3000; // milliseconds
    sqlite3* opened = nullptr;
    const int code = sqlite3_open_v2(m_path.c_str(), &opened, kFlags, nullptr);
    m_handle.reset(opened);
    check(code);
    sqlite3_busy_timeout(opened, kPatience);
    lock();
}

void DamagedProject::lock() {
    run("pragma locking_mode = exclusive");
    const int code = sqlite3_exec(m_handle.get(), "begin exclusive; rollback", nullptr, nullptr, nullptr);
    switch (code & 0xFF) {
    case SQLITE_NOTADB:
        if (dao::isOfFormerEngine(m_handle.get())) refuse(m_path, "it is of the former database engine");
        return;
    case SQLITE_OK:
    case SQLITE_CORRUPT: return;
    case SQLITE_BUSY: refuse(m_path, "it is in use");
    default: check(code);
    }
}

bool DamagedProject::isSound() {
    sqlite3_stmt* rows = nullptr;
    bool sound =
        sqlite3_prepare_v2(m_handle.get(), "pragma integrity_check(1)", -1, &rows, nullptr) == SQLITE_OK;
    sound = sound && sqlite3_step(rows) == SQLITE_ROW &&
            std::string_view(reinterpret_cast<const char*>(sqlite3_column_text(rows, 0))) == "ok";
    sqlite3_finalize(rows);
    return sound;
}

sqlite3_file* DamagedProject::file() const {
    sqlite3_file* file = nullptr;
    sqlite3_file_control(m_handle.get(), "main", SQLITE_FCNTL_FILE_POINTER, &file);
    return file && file->pMethods ? file : nullptr;
}

// Through the engine's own descriptor: closing another one would drop its locks.
void DamagedProject::copyTo(const std::string& target) {
    sqlite3_file* source = file();
    sqlite3_int64 size = 0;
    if (!source || source->pMethods->xFileSize(source, &size) != SQLITE_OK)
        refuse(m_path, "it cannot be read");
    std::ofstream out(target, std::ios::binary | std::ios::trunc);
    std::array<char, 65536> block{};
    for (sqlite3_int64 at = 0; at < size && out;) {
        const int length = static_cast<int>(std::min<sqlite3_int64>(size - at, block.size()));
        if (source->pMethods->xRead(source, block.data(), length, at) != SQLITE_OK)
            refuse(m_path, "it cannot be read");
        out.write(block.data(), length);
        at += length;
    }
    out.flush();
    if (!out) {
        std::error_code none;
        fs::remove(target, none);
        refuse(m_path, "the damaged file cannot be kept as " + target);
    }
}

// Empties the file, whatever is in it, and fills it from the mended one. Each step is there whole or not at
// all; between them the file is an empty database.
void DamagedProject::replaceBy(const std::string& mended) {
    sqlite3_db_config(m_handle.get(), SQLITE_DBCONFIG_RESET_DATABASE, 1, nullptr);
    const int emptied = sqlite3_exec(m_handle.get(), "vacuum", nullptr, nullptr, nullptr);
    sqlite3_db_config(m_handle.get(), SQLITE_DBCONFIG_RESET_DATABASE, 0, nullptr);
    check(emptied);
    sqlite3* source = nullptr;
    int code = sqlite3_open_v2(mended.c_str(), &source, SQLITE_OPEN_READONLY, nullptr);
    if (code == SQLITE_OK) {
        sqlite3_backup* backup = sqlite3_backup_init(m_handle.get(), "main", source, "main");
        if (backup) sqlite3_backup_step(backup, -1);
        code = backup ? sqlite3_backup_finish(backup) : sqlite3_errcode(m_handle.get());
    }
    sqlite3_close(source);
    check(code);
}

// A file's first hundred bytes as the engine writes them for projects, where the damaged ones say something
// else about the form of the file. For reading, what else they told does not matter.
void mendHeader(const std::string& path) {
    constexpr unsigned kPageSize = 4096;
    std::array<char, 100> good{"SQLite format 3"};
    const auto put = [&good](std::size_t at, unsigned value) {
        for (std::size_t i = 0; i < 4; ++i) good[at + i] = static_cast<char>(value >> (24 - 8 * i) & 0xFF);
    };
    put(16, kPageSize << 16 | 0x0101); // page size; rollback journal for writing and reading
    put(20, 0x00402020);               // no reserved bytes; fractions of the payload
    put(24, 1);                        // change counter
    std::error_code error;
    put(28, static_cast<unsigned>(fs::file_size(path, error) / kPageSize));
    put(40, 1); // schema cookie
    put(44, 4); // schema format
    put(56, 1); // UTF-8
    put(92, 1); // the counter at which the version below was written
    put(96, SQLITE_VERSION_NUMBER);
    constexpr std::size_t kFormEnd = 24; // up to here nothing changes as long as a project lives
    std::fstream file(path, std::ios::binary | std::ios::in | std::ios::out);
    std::array<char, kFormEnd> head{};
    file.read(head.data(), head.size());
    if (!file || std::equal(head.begin(), head.end(), good.begin())) return;
    file.seekp(0);
    file.write(good.data(), good.size());
}

// Of the damaged file, as far as its list of tables can be read.
struct FoundTable {
    std::string name;
    std::string definition;
    std::vector<std::pair<std::string, std::string>> columns; // name and definition
};

bool isPlainName(const std::string& name) {
    return !name.empty() && std::all_of(name.begin(), name.end(), [](unsigned char c) {
        return std::isalnum(c) || c == '_' || c == '.' || c == ' ';
    });
}

std::vector<FoundTable> findTables(const std::string& damaged) {
    std::vector<FoundTable> tables;
    SqlFile file(damaged, SqlFile::Mode::kDamaged);
    SqlStatement rows(file, "select name, sql from sqlite_schema where type = 'table' and "
                            "name not like 'sqlite\\_%' escape '\\'");
    while (rows.step())
        if (isPlainName(std::string(rows.text(0))))
            tables.push_back({std::string(rows.text(0)), std::string(rows.text(1)), {}});
    for (FoundTable& table : tables) {
        SqlFile look(damaged, SqlFile::Mode::kDamaged);
        SqlStatement columns(look, "select name, '[' || name || '] ' || type from pragma_table_info(?)");
        columns.bind(1, std::string_view(table.name));
        while (columns.step())
            if (isPlainName(std::string(columns.text(0))))
                table.columns.emplace_back(columns.text(0), columns.text(1));
    }
    return tables;
}

// The tables of projects, and what the damaged file had beyond them.
void makeTables(const std::vector<FoundTable>& found, const std::string& mended) {
    dao::Connection::createFile(mended);
    dao::Connection connection(mended, {});
    const auto runIfItCan = [&connection](const std::string& statement) {
        try {
            connection.run(statement.c_str());
        } catch (const CDaoException&) {
            // A definition that is damaged itself: its records are told of as lost.
        }
    };
    const bool isStandards = std::any_of(
        found.begin(), found.end(), [](const FoundTable& table) { return table.name == kStandardsMark; });
    runSqlFile(connection, standardsFolder() / kSchemaFile);
    if (isStandards) runSqlFile(connection, standardsFolder() / kStandardsChange);
    for (const FoundTable& table : found) {
        const std::vector<CString> there = dao::tableNames(connection);
        if (std::find(there.begin(), there.end(), table.name) == there.end()) {
            runIfItCan(table.definition);
            continue;
        }
        const auto info = dao::readTableInfo(connection, table.name);
        for (const auto& [name, definition] : table.columns)
            if (info->findField(name) < 0)
                runIfItCan(
                    fmt::format("alter table {} add column {}", dao::bracketed(table.name), definition));
    }
}

// The highest key that a table may have: its last page says, or the engine's list of keys given out.
std::int64_t highestKey(const std::string& damaged, const std::string& table) {
    constexpr std::int64_t kOtherwise = 1 << 20;
    SqlFile file(damaged, SqlFile::Mode::kDamaged);
    const std::int64_t last =
        file.number(fmt::format("select max(rowid) from {}", dao::bracketed(table)).c_str());
    if (file.ok()) return std::max(last, std::int64_t{1});
    SqlFile again(damaged, SqlFile::Mode::kDamaged);
    const std::int64_t given = again.number(
        fmt::format("select seq from sqlite_sequence where name = {}", dao::quoted(table)).c_str());
    return again.ok() && given > 0 ? given : kOtherwise;
}

std::int64_t copyRows(const std::string& damaged, SqlFile& into, const FoundTable& found,
                      std::vector<std::string>& told) {
    const std::string& table = found.name;
    std::vector<std::string> columns;
    SqlStatement targets(into, "select name from pragma_table_info(?)");
    targets.bind(1, std::string_view(table));
    while (targets.step())
        if (std::any_of(found.columns.begin(), found.columns.end(),
                        [&](const auto& column) { return column.first == targets.text(0); }))
            columns.emplace_back(targets.text(0));
    if (columns.empty()) {
        told.push_back(fmt::format("the records of {} cannot be read", table));
        return 0;
    }
    std::string names;
    std::string places;
    for (const std::string& column : columns) {
        names += (names.empty() ? "" : ", ") + dao::bracketed(column);
        places += places.empty() ? "?" : ", ?";
    }
    std::int64_t copied = 0;
    SqlStatement insert(
        into, fmt::format("insert or ignore into {}({}) values({})", dao::bracketed(table), names, places));
    SalvageWalk walk(
        damaged,
        fmt::format("select rowid, {} from {} not indexed where rowid between ? and ? order by rowid", names,
                    dao::bracketed(table)),
        [&](const SqlStatement& row) {
            for (int i = 0; i < static_cast<int>(columns.size()); ++i) insert.bindValue(i + 1, row, i + 1);
            if (!insert.execute()) return false;
            copied += into.changedRows();
            return true;
        },
        SqlFile::Mode::kDamaged);
    constexpr std::int64_t kLowest = std::numeric_limits<std::int32_t>::min();
    walk.walk(kLowest, highestKey(damaged, table));
    for (const SalvageWalk::Gap& gap : walk.gaps()) {
        const std::string range = gap.first == kLowest    ? fmt::format("up to {}", gap.last)
                                  : gap.first == gap.last ? std::to_string(gap.first)
                                                          : fmt::format("{} to {}", gap.first, gap.last);
        told.push_back(copied == 0
                           ? fmt::format("{}: no record can be read", table)
                           : fmt::format("{}: records {} cannot be read, if there are such", table, range));
    }
    return copied;
}

// A yes/no that the old file had wrong is put right by writing it.
void mendYesNo(dao::Connection& connection) {
    keepAllYesNo(connection);
    for (const CString& table : dao::tableNames(connection)) {
        const auto info = dao::readTableInfo(connection, table);
        for (const CDaoFieldInfo& field : info->fields)
            if (field.m_nType == dbBoolean)
                connection.run(fmt::format("update {0} set {1} = {1} where {1} is not 0 and {1} is not -1",
                                           dao::bracketed(table), dao::bracketed(field.m_strName))
                                   .c_str());
    }
}

// Everything that can be read of the damaged file, in a new one. What cannot is told. The number of records.
std::int64_t salvage(const std::string& damaged, const std::string& mended, std::vector<std::string>& told) {
    const std::vector<FoundTable> found = findTables(damaged);
    makeTables(found, mended);
    SqlFile into(mended, SqlFile::Mode::kExisting);
    std::int64_t copied = 0;
    {
        SqlTransaction transaction(into);
        for (const FoundTable& table : found) copied += copyRows(damaged, into, table, told);
        transaction.commit();
    }
    if (!into.close()) throw CDaoException(kDaoDamaged, into.error());
    if (copied == 0) throw CDaoException(kDaoDamaged, "nothing in it can be read");
    dao::Connection connection(mended, {});
    dao::Transaction transaction(connection);
    mendYesNo(connection);
    for (const CString& table : dao::tableNames(connection))
        if (std::none_of(found.begin(), found.end(),
                         [&](const FoundTable& other) { return dao::equalNames(other.name, table); }))
            told.push_back(
                fmt::format("{} cannot be found in the file, if it had records they are lost", table));
    transaction.commit();
    return copied;
}

// A sound file that lacks tables or columns, or has wrong yes/no values.
void addWhatIsMissing(const std::string& path, ProjectReport& report) {
    dao::Connection connection(path, {});
    report.records = countRecords(connection);
    report.problems = contentProblems(connection);
    if (report.problems.empty()) return;
    dao::Transaction transaction(connection);
    for (const SchemaGap& gap : findSchemaGaps(connection)) connection.run(gap.definition.c_str());
    mendYesNo(connection);
    transaction.commit();
}

void repairDamaged(DamagedProject& project, const std::string& path, ProjectReport& report) {
    const std::string kept = pathForDamaged(path);
    project.copyTo(kept);
    const Scratch source(path, ".lengthened");
    const Scratch mended(path, ".mended");
    try {
        const std::string problem = copyLengthened(kept, source.path());
        if (!problem.empty()) refuse(path, problem);
        mendHeader(source.path());
        report.records = salvage(source.path(), mended.path(), report.problems);
    } catch (const CDaoException& failure) {
        std::error_code none;
        fs::remove(kept, none); // the damaged file is where it was, untouched
        refuse(path, failure.GetErrorMessage());
    }
    project.replaceBy(mended.path());
    report.kept = kept;
    if (report.problems.empty())
        report.problems.emplace_back("only its order was damaged; no record is lost");
}

// A file with nothing in it has nothing to lose.
void fillEmpty(const std::string& path, ProjectReport& report) {
    const Scratch mended(path, ".mended");
    makeTables({}, mended.path());
    {
        dao::Connection connection(mended.path(), {});
        keepAllYesNo(connection);
    }
    const std::string kept = pathForDamaged(path);
    std::error_code error;
    fs::copy_file(path, kept, error);
    DamagedProject(path).replaceBy(mended.path());
    report.kept = kept;
    report.problems.emplace_back(
        "there was nothing in the file; it has the tables of a project now, without records");
}

} // namespace

ProjectReport repairProject(const std::string& path) {
    ProjectReport report;
    const std::string target = realPath(path);
    try {
        std::error_code error;
        if (!fs::is_regular_file(target, error)) refuse(path, "there is no such file");
        const std::string problem = whyNotWritable(target);
        if (!problem.empty()) refuse(path, problem);
        if (fs::file_size(target, error) <= 1) {
            fillEmpty(target, report);
            return report;
        }
        const bool isWhole = fs::file_size(target, error) >= statedLength(target);
        bool sound = false;
        {
            DamagedProject project(target);
            sound = isWhole && project.isSound();
            if (!sound) repairDamaged(project, target, report);
        }
        if (sound) addWhatIsMissing(target, report);
    } catch (const CDaoException& failure) {
        report.failure = failure.GetErrorMessage();
        if (!report.failure.starts_with("Cannot repair"))
            report.failure = fmt::format("Cannot repair {}: {}", path, report.failure);
    }
    return report;
}

} // namespace veldrin
