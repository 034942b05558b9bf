#pragma once

#include "dao/COleVariant.h"
#include "dao/ColumnTypes.h"
#include "runtime/CString.h"
#include "runtime/VeldrinApi.h"

#include <cstdint>
#include <memory>
#include <string_view>
#include <unordered_map>
#include <vector>

struct sqlite3;
struct sqlite3_stmt;

namespace veldrin::dao {

class Connection;

// A statement of the engine, ready to run any number of times. Parameters count from 1, columns from 0.
// Failures are thrown as CDaoException.
class Statement {
public:
    Statement(Connection& connection, std::string_view engineSql);
    ~Statement();
    Statement(const Statement&) = delete;
    Statement& operator=(const Statement&) = delete;

    Statement& bind(int parameter, const COleVariant& value);
    Statement& bind(int parameter, std::int64_t value);
    bool step();     // true when there is a row
    void runToEnd(); // and ready for the next run
    void reset();    // ready for the next run, values gone

    sqlite3_stmt* handle() const { return m_statement; }
    int columnCount() const;
    CString columnName(int column) const;
    std::int64_t integer(int column) const;
    CString text(int column) const;
    bool isNull(int column) const;
    // The declared type of the field that the column is, through joins and queries on queries; empty for an
    // expression.
    std::string_view columnDeclaration(int column) const;
    bool writes() const;

private:
    friend class Connection;
    Connection& m_connection;
    sqlite3_stmt* m_statement = nullptr;
    bool m_lent = false;
};

// A connection to one file of the engine: a rollback journal that is synced in full, since projects lie on
// network shares. Another user's lock is waited for briefly.
class Connection {
public:
    struct Opening {
        bool exclusive = false;
        bool readOnly = false;
    };

    // Throws kDaoCannotOpen for a file that somebody holds exclusively, or, unless read-only is asked for,
    // that may not be written; a retryable number for one that is being written at this moment.
    Connection(const CString& path, Opening opening);
    ~Connection() { close(); }
    Connection(const Connection&) = delete;
    Connection& operator=(const Connection&) = delete;

    // For reading alone where nothing may be written.
    static std::unique_ptr<Connection> openToRead(const CString& path);

    // A new file with nothing in it. Throws when there is one already.
    static void createFile(const CString& path);

    const CString& path() const { return m_path; }
    bool canUpdate() const { return !m_readOnly; }
    sqlite3* handle() const { return m_handle.get(); }

    // A statement that is kept for the next time that the same text is asked for. It goes back when the
    // pointer does.
    struct GiveBack {
        void operator()(Statement* statement) const;
    };
    using Lease = std::unique_ptr<Statement, GiveBack>;
    Lease prepare(std::string_view engineSql);
    // Statements that give no rows.
    void run(const char* engineSql);
    // The first column of the first row; 0 without one.
    std::int64_t number(std::string_view engineSql);

    // Writers lock at once, so that what is read behind it stays true until the end.
    void begin(bool forWriting);
    void commit(); // tried again by itself while readers are in the way
    void rollback();
    bool isInTransaction() const;

    // Grows with everything that this connection writes or takes back, and with every turn of the user's or
    // of Lisp's: what was read ahead at an older stamp may be out of date.
    std::int64_t stamp() const;
    static void noteTurn();

    void check(int code) const; // throws unless the code is a good one

private:
    friend class Statement;
    bool tryToOpen(Opening opening);
    void open(const CString& name, int flags);
    void look();
    bool isBeingWritten() const;
    void setUp(Opening opening);
    void close();
    static int whenBusy(void* connection, int attempt);

    CString m_path;
    struct Closer {
        void operator()(sqlite3* handle) const; // statements of recordsets may go later
    };
    std::unique_ptr<sqlite3, Closer> m_handle;
    bool m_readOnly = false;
    std::int64_t m_takenBack = 0;
    std::int64_t m_busySince = 0; // nanoseconds
    std::unordered_map<std::string, std::unique_ptr<Statement>> m_statements;
};

// Whether a file that is none of the engine's is of the one that projects once had.
bool isOfFormerEngine(sqlite3* connection);

// A transaction that is taken back unless it is committed. Within another one it is part of that.
class [[nodiscard]] Transaction {
public:
    explicit Transaction(Connection& connection, bool forWriting = true);
    ~Transaction();
    Transaction(const Transaction&) = delete;
    Transaction& operator=(const Transaction&) = delete;
    void commit();

private:
    Connection& m_connection;
    bool m_mine;
};

} // namespace veldrin::dao
