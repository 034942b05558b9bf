#include "dao/Connection.h"

#include "dao/DaoErrors.h"
#include "dao/SqlText.h"

#include <fmt/format.h>
#include <sqlite3.h>
#include <unistd.h>

#include <array>
#include <chrono>
#include <cstring>
#include <filesystem>
#include <random>
#include <thread>

namespace fs = std::filesystem;

namespace veldrin::dao {

namespace {

using Clock = std::chrono::steady_clock;

constexpr auto kPatience = std::chrono::seconds(1); // with another user's lock
constexpr std::size_t kMostStatements = 200;        // kept for the next time
constexpr const char* kSetUp = "pragma synchronous = full;"
                               "pragma cache_size = -16384;" // KiB
                               "pragma temp_store = memory";

std::int64_t turns = 0;

std::int64_t nanoseconds() {
    return std::chrono::duration_cast<std::chrono::nanoseconds>(Clock::now().time_since_epoch()).count();
}

void pauseALittle() {
    static thread_local std::minstd_rand random(std::random_device{}());
    std::uniform_int_distribution<int> microseconds(100, 2000);
    std::this_thread::sleep_for(std::chrono::microseconds(microseconds(random)));
}

// A file name as the engine's address of a file, for what only an address can say.
CString asAddress(const CString& path, const char* query) {
    CString address = "file:";
    for (const char c : path) {
        if (std::strchr("%?#", c))
            address += fmt::format("%{:02X}", static_cast<unsigned char>(c));
        else
            address += c;
    }
    return address + query;
}

bool isLock(int code) {
    return (code & 0xFF) == SQLITE_BUSY;
}

} // namespace

Statement::Statement(Connection& connection, std::string_view engineSql) : m_connection(connection) {
    const char* end = nullptr;
    connection.check(sqlite3_prepare_v3(connection.handle(), engineSql.data(),
                                        static_cast<int>(engineSql.size()), SQLITE_PREPARE_PERSISTENT,
                                        &m_statement, &end));
    if (!m_statement) throw CDaoException(kDaoSyntax, "There is no statement to run.");
    if (!saysNothing({end, static_cast<std::size_t>(engineSql.data() + engineSql.size() - end)})) {
        sqlite3_finalize(m_statement);
        throw CDaoException(kDaoSyntax, fmt::format("There is more behind the statement: {}", end));
    }
}

Statement::~Statement() {
    sqlite3_finalize(m_statement);
}

Statement& Statement::bind(int parameter, const COleVariant& value) {
    m_connection.check(bindValue(m_statement, parameter, value));
    return *this;
}

Statement& Statement::bind(int parameter, std::int64_t value) {
    m_connection.check(sqlite3_bind_int64(m_statement, parameter, value));
    return *this;
}

bool Statement::step() {
    const int code = sqlite3_step(m_statement);
    if (code == SQLITE_ROW) return true;
    if (code == SQLITE_DONE) return false;
    sqlite3_reset(m_statement);
    m_connection.check(code);
    return false;
}

void Statement::runToEnd() {
    while (step()) {
    }
    sqlite3_reset(m_statement);
}

void Statement::reset() {
    sqlite3_reset(m_statement);
    sqlite3_clear_bindings(m_statement);
}

int Statement::columnCount() const {
    return sqlite3_column_count(m_statement);
}
CString Statement::columnName(int column) const {
    const char* name = sqlite3_column_name(m_statement, column);
    return name ? name : "";
}
std::int64_t Statement::integer(int column) const {
    return sqlite3_column_int64(m_statement, column);
}
CString Statement::text(int column) const {
    COleVariant value;
    readExpression(m_statement, column, value);
    return value.text();
}
bool Statement::isNull(int column) const {
    return sqlite3_column_type(m_statement, column) == SQLITE_NULL;
}
std::string_view Statement::columnDeclaration(int column) const {
    const char* declared = sqlite3_column_decltype(m_statement, column);
    return declared ? declared : std::string_view();
}
bool Statement::writes() const {
    return sqlite3_stmt_readonly(m_statement) == 0;
}

// Reading through the engine's own descriptor, because closing another one would drop the locks that other
// connections of this process have on the file.
bool isOfFormerEngine(sqlite3* connection) {
    sqlite3_file* file = nullptr;
    sqlite3_file_control(connection, "main", SQLITE_FCNTL_FILE_POINTER, &file);
    constexpr int kNameAt = 4;
    std::array<char, 32> head{};
    if (!file || !file->pMethods || file->pMethods->xRead(file, head.data(), head.size(), 0) != SQLITE_OK)
        return false;
    const std::string_view name(head.data() + kNameAt, head.size() - kNameAt);
    return name.starts_with("Standard Jet DB") || name.starts_with("Standard ACE DB");
}

Connection::Connection(const CString& path, Opening opening) : m_path(path) {
    std::error_code error;
    const fs::file_status status = fs::status(path, error);
    if (!fs::exists(status)) throw CDaoException(kDaoFileNotFound, fmt::format("There is no file {}.", path));
    if (fs::is_directory(status)) throw CDaoException(kDaoCannotOpen, fmt::format("{} is a folder.", path));
    if (fs::file_size(path, error) <= 1 && !error) // the engine takes one byte for none
        throw CDaoException(kDaoUnrecognized, fmt::format("{} is damaged: there is nothing in it.", path));
    m_readOnly = opening.readOnly;
    if (tryToOpen(opening)) return;
    if (!opening.readOnly)
        throw CDaoException(kDaoCannotOpen, fmt::format("{} is opened exclusively by another user.", path));
    // Its holder has every lock for good and writes nothing now. The engine still sees a transaction that
    // begins later, and refuses to read into it.
    open(asAddress(path, "?nolock=1"), SQLITE_OPEN_READONLY | SQLITE_OPEN_URI);
    look();
}

// False when somebody holds the file exclusively: it stays locked, and nobody is writing. Among many writers
// one look may come between two of them, so that it takes more than one.
bool Connection::tryToOpen(Opening opening) {
    constexpr int kLooks = 2;
    for (int n = 0; n < kLooks; ++n) {
        try {
            open(m_path, opening.readOnly ? SQLITE_OPEN_READONLY : SQLITE_OPEN_READWRITE);
            look();
            setUp(opening);
            return true;
        } catch (const CDaoException& failure) {
            const bool mayBeHeld = failure.number() == kDaoLocked && !isBeingWritten();
            close();
            if (!mayBeHeld) throw;
        }
    }
    return false;
}

void Connection::Closer::operator()(sqlite3* handle) const {
    sqlite3_close_v2(handle);
}

void Connection::close() {
    m_statements.clear();
    m_handle.reset();
}

void Connection::open(const CString& name, int flags) {
    constexpr int kAlways = SQLITE_OPEN_NOMUTEX | SQLITE_OPEN_EXRESCODE | SQLITE_OPEN_PRIVATECACHE;
    sqlite3* opened = nullptr;
    const int code = sqlite3_open_v2(name.c_str(), &opened, flags | kAlways, nullptr);
    m_handle.reset(opened); // a failed one too: it knows what failed
    check(code);
    sqlite3_busy_handler(handle(), whenBusy, this);
    sqlite3_db_config(handle(), SQLITE_DBCONFIG_DEFENSIVE, 1, nullptr);
    sqlite3_db_config(handle(), SQLITE_DBCONFIG_TRUSTED_SCHEMA, 0, nullptr);
    sqlite3_db_config(handle(), SQLITE_DBCONFIG_ENABLE_LOAD_EXTENSION, 0, nullptr);
}

// The first look at the file: whether it is one of ours, and whole at its beginning.
void Connection::look() {
    try {
        number("select count(*) from sqlite_schema");
    } catch (const CDaoException& failure) {
        if (failure.number() != kDaoUnrecognized || !isOfFormerEngine(handle())) throw;
        throw CDaoException(kDaoFormerEngine,
                            fmt::format("{} is of the former database engine; export it there "
                                        "and import it into a new project.",
                                        m_path));
    }
}

// A transaction that writes has its journal beside the file.
bool Connection::isBeingWritten() const {
    std::error_code error;
    const auto size = fs::file_size(m_path + "-journal", error);
    return !error && size > 0;
}

void Connection::setUp(Opening opening) {
    run(kSetUp);
    if (opening.readOnly) return;
    const CString folder = fs::absolute(m_path).parent_path().string();
    if (sqlite3_db_readonly(handle(), "main") != 0 || eaccess(m_path.c_str(), W_OK) != 0 ||
        eaccess(folder.c_str(), W_OK) != 0)
        throw CDaoException(kDaoCannotOpen, fmt::format("{} may not be written.", m_path));
    run("pragma journal_mode = delete"); // the other kind needs shared memory, which a share does not give
    if (opening.exclusive) {
        run("pragma locking_mode = exclusive");
        begin(true);
        run("commit; begin exclusive; commit"); // the lock stays
    }
}

int Connection::whenBusy(void* connection, int attempt) {
    auto& self = *static_cast<Connection*>(connection);
    const std::int64_t now = nanoseconds();
    if (attempt == 0) self.m_busySince = now;
    if (now - self.m_busySince > std::chrono::nanoseconds(kPatience).count()) return 0;
    pauseALittle();
    return 1;
}

std::unique_ptr<Connection> Connection::openToRead(const CString& path) {
    try {
        return std::make_unique<Connection>(path, Opening{});
    } catch (const CDaoException& failure) {
        if (failure.number() != kDaoCannotOpen) throw;
        return std::make_unique<Connection>(path, Opening{false, true});
    }
}

void Connection::createFile(const CString& path) {
    std::error_code error;
    if (fs::exists(path, error))
        throw CDaoException(kDaoObjectExists, fmt::format("{} is there already.", path));
    sqlite3* file = nullptr;
    constexpr int kFlags =
        SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE | SQLITE_OPEN_NOMUTEX | SQLITE_OPEN_EXRESCODE;
    int code = sqlite3_open_v2(path.c_str(), &file, kFlags, nullptr);
    // An engine's file without a table has no bytes; a version number gives it its first page.
    if (code == SQLITE_OK) code = sqlite3_exec(file, "pragma user_version = 1", nullptr, nullptr, nullptr);
    const std::unique_ptr<sqlite3, decltype(&sqlite3_close)> closing(file, sqlite3_close);
    if (code == SQLITE_OK) return;
    try {
        throwEngineError(file, code, path);
    } catch (const CDaoException&) {
        fs::remove(path, error);
        throw;
    }
}

void Connection::check(int code) const {
    if (code == SQLITE_OK || code == SQLITE_ROW || code == SQLITE_DONE) return;
    throwEngineError(handle(), code, m_path);
}

void Connection::GiveBack::operator()(Statement* statement) const {
    statement->reset();
    if (statement->m_lent)
        statement->m_lent = false;
    else
        delete statement;
}

Connection::Lease Connection::prepare(std::string_view engineSql) {
    std::string key(engineSql);
    auto kept = m_statements.find(key);
    if (kept != m_statements.end() && kept->second->m_lent) // in use further up: a second one
        return Lease(new Statement(*this, engineSql));
    if (kept == m_statements.end()) {
        if (m_statements.size() >= kMostStatements)
            std::erase_if(m_statements, [](const auto& entry) { return !entry.second->m_lent; });
        auto statement = std::make_unique<Statement>(*this, engineSql);
        kept = m_statements.emplace(std::move(key), std::move(statement)).first;
    }
    kept->second->m_lent = true;
    return Lease(kept->second.get());
}

void Connection::run(const char* engineSql) {
    check(sqlite3_exec(handle(), engineSql, nullptr, nullptr, nullptr));
}

std::int64_t Connection::number(std::string_view engineSql) {
    const Lease statement = prepare(engineSql);
    return statement->step() ? statement->integer(0) : 0;
}

void Connection::begin(bool forWriting) {
    run(forWriting ? "begin immediate" : "begin");
}

void Connection::commit() {
    const auto end = Clock::now() + kPatience;
    for (;;) {
        const int code = sqlite3_exec(handle(), "commit", nullptr, nullptr, nullptr);
        if (!isLock(code) || Clock::now() > end) return check(code);
        pauseALittle();
    }
}

void Connection::rollback() {
    if (!isInTransaction()) return; // the engine took it back by itself
    sqlite3_exec(handle(), "rollback", nullptr, nullptr, nullptr);
    ++m_takenBack;
}

bool Connection::isInTransaction() const {
    return sqlite3_get_autocommit(handle()) == 0;
}

std::int64_t Connection::stamp() const {
    return sqlite3_total_changes64(handle()) + m_takenBack + turns;
}

void Connection::noteTurn() {
    ++turns;
}

Transaction::Transaction(Connection& connection, bool forWriting)
    : m_connection(connection), m_mine(!connection.isInTransaction()) {
    if (m_mine) connection.begin(forWriting);
}

Transaction::~Transaction() {
    if (m_mine) m_connection.rollback();
}

void Transaction::commit() {
    if (!m_mine) return;
    m_connection.commit();
    m_mine = false;
}

} // namespace veldrin::dao
