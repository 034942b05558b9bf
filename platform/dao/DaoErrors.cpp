#include "dao/DaoErrors.h"

#include <fmt/format.h>
#include <sqlite3.h>

#include <cstring>
#include <string_view>
#include <system_error>

CDaoException::CDaoException(DaoError number, CString description)
    : CException(description), m_errorInfo{number, std::move(description)} {}
CDaoException::~CDaoException() = default;

namespace veldrin::dao {

namespace {

struct Meaning {
    int code;
    const char* text; // how the engine's text begins; null for any
    DaoError number;
    const char* words; // said of the file; null: what the engine says, as it stands
};

// The first row that fits counts: texts and extended codes stand before the general ones.
constexpr Meaning kMeanings[] = {
    {SQLITE_BUSY, nullptr, kDaoLocked, "is locked by another user"},
    {SQLITE_LOCKED, nullptr, kDaoTableLocked, "has a table that is in use"},
    {SQLITE_PROTOCOL, nullptr, kDaoLocked, "is locked by another user"},
    {SQLITE_CORRUPT, nullptr, kDaoDamaged, "is damaged"},
    {SQLITE_NOTADB, nullptr, kDaoUnrecognized, "is damaged or no database"},
    {SQLITE_READONLY, nullptr, kDaoReadOnly, "is read-only"},
    {SQLITE_PERM, nullptr, kDaoCannotOpen, "cannot be opened"},
    {SQLITE_AUTH, nullptr, kDaoCannotOpen, "cannot be opened"},
    {SQLITE_CANTOPEN, nullptr, kDaoCannotOpen, "cannot be opened"},
    {SQLITE_IOERR_NOMEM, nullptr, kDaoOutOfMemory, nullptr},
    {SQLITE_IOERR, nullptr, kDaoDiskOrNetwork, "cannot be read or written"},
    {SQLITE_NOLFS, nullptr, kDaoDiskOrNetwork, "is too large for its file system"},
    {SQLITE_FULL, nullptr, kDaoDiskFull, "cannot be written: the disk is full"},
    {SQLITE_NOMEM, nullptr, kDaoOutOfMemory, nullptr},
    {SQLITE_INTERRUPT, nullptr, kDaoCancelled, nullptr},
    {SQLITE_ABORT, nullptr, kDaoCancelled, nullptr},
    {SQLITE_CONSTRAINT_NOTNULL, nullptr, kDaoRequired, nullptr},
    {SQLITE_CONSTRAINT_UNIQUE, nullptr, kDaoDuplicateKey, nullptr},
    {SQLITE_CONSTRAINT_PRIMARYKEY, nullptr, kDaoDuplicateKey, nullptr},
    {SQLITE_CONSTRAINT_ROWID, nullptr, kDaoDuplicateKey, nullptr},
    {SQLITE_CONSTRAINT_FOREIGNKEY, nullptr, kDaoBadReference, nullptr},
    {SQLITE_CONSTRAINT, nullptr, kDaoValidation, nullptr},
    {SQLITE_TOOBIG, nullptr, kDaoFieldTooSmall, nullptr},
    {SQLITE_MISMATCH, nullptr, kDaoWrongType, nullptr},
    {SQLITE_RANGE, nullptr, kDaoWrongParameters, nullptr},
    {SQLITE_SCHEMA, nullptr, kDaoTableLocked, nullptr}, // changed under the statement once too often
    {SQLITE_ERROR, "no such table", kDaoNoSuchTable, nullptr},
    {SQLITE_ERROR, "no such column", kDaoWrongParameters, nullptr},
    {SQLITE_ERROR, nullptr, kDaoSyntax, nullptr},
};

bool fits(const Meaning& row, int code, std::string_view text) {
    const bool isExtended = row.code > 0xFF;
    return row.code == (isExtended ? code : code & 0xFF) && (!row.text || text.starts_with(row.text));
}

const Meaning* find(int code, std::string_view text) {
    for (const Meaning& row : kMeanings)
        if (fits(row, code, text)) return &row;
    return nullptr;
}

} // namespace

DaoError meaningOf(int engineCode, const char* engineText) {
    const Meaning* meaning = find(engineCode, engineText ? engineText : "");
    return meaning ? meaning->number : kDaoReserved;
}

void throwEngineError(sqlite3* connection, int code, const CString& path) {
    const char* text = connection ? sqlite3_errmsg(connection) : sqlite3_errstr(code);
    const Meaning* meaning = find(code, text);
    if (!meaning) throw CDaoException(kDaoReserved, text);
    if (!meaning->words) throw CDaoException(meaning->number, text);
    CString words = fmt::format("{} {}", path, meaning->words);
    const int system = connection ? sqlite3_system_errno(connection) : 0;
    const bool systemSays = meaning->number == kDaoDiskOrNetwork || meaning->number == kDaoCannotOpen;
    if (systemSays && system != 0) words += ": " + std::generic_category().message(system);
    throw CDaoException(meaning->number, words + ".");
}

} // namespace veldrin::dao
