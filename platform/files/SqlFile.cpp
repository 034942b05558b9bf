#include "files/SqlFile.h"

#include <fmt/format.h>
#include <sqlite3.h>

#include <system_error>
#include <utility>

namespace veldrin {

namespace {

constexpr int kPatience = 1000; // milliseconds that another program's work is waited for
constexpr int kAllPages = -1;

std::string systemText(int number, const char* otherwise) {
    return number == 0 ? otherwise : std::generic_category().message(number);
}

// Codes that people meet get words of their own; the rest says what the engine says.
std::string describe(sqlite3* connection, int code) {
    const int system = connection ? sqlite3_system_errno(connection) : 0;
    if (code == SQLITE_READONLY_DIRECTORY) return "its folder is write-protected";
    switch (code & 0xFF) {
    case SQLITE_NOTADB: return "it is not a drawing";
    case SQLITE_CORRUPT: return "it is damaged";
    case SQLITE_FULL: return "the disk is full";
    case SQLITE_BUSY:
    case SQLITE_LOCKED: return "another program is using it";
    case SQLITE_READONLY: return "it is write-protected";
    case SQLITE_PERM:
    case SQLITE_CANTOPEN: return systemText(system, "the file or its folder cannot be used");
    case SQLITE_IOERR: return systemText(system, "it cannot be read or written completely");
    case SQLITE_NOMEM: return "out of memory";
    default:
        return fmt::format("it is damaged ({})",
                           connection ? sqlite3_errmsg(connection) : sqlite3_errstr(code));
    }
}

} // namespace

SqlFile::SqlFile(const std::string& path, Mode mode) {
    // Readers open for writing too: what a program that was killed left half-written is taken back by the
    // first one that comes.
    const int create = mode == Mode::kCreate ? SQLITE_OPEN_CREATE : 0;
    const int flags = SQLITE_OPEN_READWRITE | SQLITE_OPEN_NOMUTEX | SQLITE_OPEN_EXRESCODE | create;
    if (!check(sqlite3_open_v2(path.c_str(), &m_connection, flags, nullptr))) return;
    sqlite3_busy_timeout(m_connection, kPatience);
    if (mode == Mode::kDamaged)
        run("pragma writable_schema = on"); // tables whose description is lost do not keep the others away
    else
        sqlite3_db_config(m_connection, SQLITE_DBCONFIG_DEFENSIVE, 1, nullptr);
    sqlite3_db_config(m_connection, SQLITE_DBCONFIG_TRUSTED_SCHEMA, 0, nullptr);
}

SqlFile::~SqlFile() {
    sqlite3_close(m_connection);
}

bool SqlFile::check(int code) {
    if (!ok()) return false;
    if (code == SQLITE_OK || code == SQLITE_ROW || code == SQLITE_DONE) return true;
    const int kind = code & 0xFF;
    m_busy = kind == SQLITE_BUSY || kind == SQLITE_LOCKED;
    return fail(describe(m_connection, code));
}

bool SqlFile::fail(std::string error) {
    if (ok()) m_error = std::move(error);
    return false;
}

bool SqlFile::run(const char* statements) {
    return ok() && check(sqlite3_exec(m_connection, statements, nullptr, nullptr, nullptr));
}

std::int64_t SqlFile::number(const char* query) {
    SqlStatement statement(*this, query);
    return statement.step() ? statement.integer(0) : 0;
}

std::int64_t SqlFile::changedRows() const {
    return sqlite3_changes64(m_connection);
}

bool SqlFile::copyInto(SqlFile& target) {
    if (!ok() || !target.ok()) return false;
    sqlite3_backup* backup = sqlite3_backup_init(target.m_connection, "main", m_connection, "main");
    if (!backup) return target.check(sqlite3_errcode(target.m_connection));
    sqlite3_backup_step(backup, kAllPages);
    return target.check(sqlite3_backup_finish(backup));
}

bool SqlFile::close() {
    check(sqlite3_close(m_connection));
    m_connection = nullptr;
    return ok();
}

SqlStatement::SqlStatement(SqlFile& file, std::string_view text) : m_file(file) {
    if (!m_file.ok()) return;
    m_file.check(sqlite3_prepare_v3(m_file.m_connection, text.data(), static_cast<int>(text.size()),
                                    SQLITE_PREPARE_PERSISTENT, &m_statement, nullptr));
}

SqlStatement::~SqlStatement() {
    sqlite3_finalize(m_statement);
}

SqlStatement& SqlStatement::bind(int parameter, std::int64_t value) {
    if (m_file.ok()) m_file.check(sqlite3_bind_int64(m_statement, parameter, value));
    return *this;
}

SqlStatement& SqlStatement::bind(int parameter, double value) {
    if (m_file.ok()) m_file.check(sqlite3_bind_double(m_statement, parameter, value));
    return *this;
}

SqlStatement& SqlStatement::bind(int parameter, std::string_view text) {
    if (m_file.ok())
        m_file.check(sqlite3_bind_text64(m_statement, parameter, text.data() ? text.data() : "", text.size(),
                                         SQLITE_STATIC, SQLITE_UTF8));
    return *this;
}

SqlStatement& SqlStatement::bindBytes(int parameter, std::string_view bytes) {
    if (m_file.ok())
        m_file.check(sqlite3_bind_blob64(m_statement, parameter, bytes.data() ? bytes.data() : "",
                                         bytes.size(), SQLITE_STATIC));
    return *this;
}

SqlStatement& SqlStatement::bindValue(int parameter, const SqlStatement& row, int column) {
    if (m_file.ok())
        m_file.check(
            sqlite3_bind_value(m_statement, parameter, sqlite3_column_value(row.m_statement, column)));
    return *this;
}

SqlStatement& SqlStatement::clearValues() {
    if (m_statement) sqlite3_clear_bindings(m_statement);
    return *this;
}

bool SqlStatement::step() {
    if (!m_file.ok()) return false;
    const int code = sqlite3_step(m_statement);
    return m_file.check(code) && code == SQLITE_ROW;
}

bool SqlStatement::execute() {
    while (step()) {
    }
    if (m_statement) sqlite3_reset(m_statement); // its code is the step's, which was checked
    return m_file.ok();
}

bool SqlStatement::isNumber(int column) const {
    const int type = sqlite3_column_type(m_statement, column);
    return type == SQLITE_INTEGER || type == SQLITE_FLOAT;
}

bool SqlStatement::isText(int column) const {
    return sqlite3_column_type(m_statement, column) == SQLITE_TEXT;
}

std::int64_t SqlStatement::integer(int column) const {
    return sqlite3_column_int64(m_statement, column);
}

double SqlStatement::real(int column) const {
    return sqlite3_column_double(m_statement, column);
}

std::string_view SqlStatement::text(int column) const {
    const unsigned char* characters = sqlite3_column_text(m_statement, column);
    if (!characters) return {};
    return {reinterpret_cast<const char*>(characters),
            static_cast<std::size_t>(sqlite3_column_bytes(m_statement, column))};
}

std::string_view SqlStatement::bytes(int column) const {
    const void* start = sqlite3_column_blob(m_statement, column);
    if (!start) return {};
    return {static_cast<const char*>(start),
            static_cast<std::size_t>(sqlite3_column_bytes(m_statement, column))};
}

SqlTransaction::SqlTransaction(SqlFile& file) : m_file(file), m_open(file.run("begin immediate")) {}

SqlTransaction::~SqlTransaction() {
    // After a failure the engine may have rolled back by itself; a connection that ends rolls back as well.
    if (m_open && m_file.ok()) m_file.run("rollback");
}

bool SqlTransaction::commit() {
    if (!m_open || !m_file.ok()) return false;
    if (!m_file.run("commit")) return false;
    m_open = false;
    return true;
}

} // namespace veldrin
