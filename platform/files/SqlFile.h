#pragma once

#include "runtime/VeldrinApi.h"

#include <cstdint>
#include <string>
#include <string_view>

struct sqlite3;
struct sqlite3_stmt;

namespace veldrin {

// A connection to one file of the embedded database. The first failure stays: whatever follows it does
// nothing and answers false or zero, so that a sequence of steps is checked once, at its end.
class VELDRIN_API SqlFile {
public:
    // An existing file that is write-protected can still be read. Of a damaged one the tables that it still
    // lists can be read.
    enum class Mode { kExisting, kCreate, kDamaged };

    SqlFile(const std::string& path, Mode mode);
    ~SqlFile();
    SqlFile(const SqlFile&) = delete;
    SqlFile& operator=(const SqlFile&) = delete;

    bool ok() const { return m_error.empty(); }
    // What failed first, in words that go on behind "cannot open the drawing: "; empty while nothing did.
    const std::string& error() const { return m_error; }
    bool isBusy() const { return m_busy; } // the failure was that another program uses the file

    // Statements that give no rows, or whose rows do not matter.
    bool run(const char* statements);
    // First column of the first row; 0 without a row.
    std::int64_t number(const char* query);
    std::int64_t changedRows() const; // by the statement that was run last
    // Copies everything into the other file, which it replaces.
    bool copyInto(SqlFile& target);
    // Ends the connection: false when something failed, now or before.
    bool close();

    // The one way from the engine's codes to words. True for codes that are no failure.
    bool check(int code);
    // A failure that the engine does not know of.
    bool fail(std::string error);

private:
    friend class SqlStatement;
    sqlite3* m_connection = nullptr;
    std::string m_error;
    bool m_busy = false;
};

// A statement made once and run with other values any number of times. Parameters count from 1, columns from
// 0.
class VELDRIN_API SqlStatement {
public:
    SqlStatement(SqlFile& file, std::string_view text);
    ~SqlStatement();
    SqlStatement(const SqlStatement&) = delete;
    SqlStatement& operator=(const SqlStatement&) = delete;

    // Text and bytes must stay in place until the statement has run.
    SqlStatement& bind(int parameter, std::int64_t value);
    SqlStatement& bind(int parameter, double value);
    SqlStatement& bind(int parameter, std::string_view text);
    SqlStatement& bindBytes(int parameter, std::string_view bytes);
    SqlStatement& bindValue(int parameter, const SqlStatement& row, int column); // of any kind
    SqlStatement& clearValues();                                                 // all null again

    bool step();    // true when there is a row
    bool execute(); // to the end, ready for the next values; false on failure

    // Of the current row; texts and bytes are gone with the next step.
    bool isNumber(int column) const;
    bool isText(int column) const;
    std::int64_t integer(int column) const;
    double real(int column) const;
    std::string_view text(int column) const;
    std::string_view bytes(int column) const;

private:
    SqlFile& m_file;
    sqlite3_stmt* m_statement = nullptr;
};

// From begin to commit; what was not committed at the end of its life never happened.
class [[nodiscard]] SqlTransaction {
public:
    explicit SqlTransaction(SqlFile& file);
    ~SqlTransaction();
    SqlTransaction(const SqlTransaction&) = delete;
    SqlTransaction& operator=(const SqlTransaction&) = delete;

    bool commit(); // false: nothing of it is in the file

private:
    SqlFile& m_file;
    bool m_open = false;
};

} // namespace veldrin
