#pragma once

#include "runtime/CException.h"
#include "runtime/CString.h"

struct sqlite3;

// Numbers of failures. They are those by which scripts and logs have always known them.
enum DaoError : int {
    kDaoReserved = 3000, // a fault of the program that calls
    kDaoTableExists = 3010,
    kDaoObjectExists = 3012,
    kDaoNotAnIndex = 3015,
    kDaoNoCurrentIndex = 3019,
    kDaoNotEditing = 3020, // Update or a field set without AddNew or Edit
    kDaoNoCurrentRecord = 3021,
    kDaoDuplicateKey = 3022,
    kDaoFileNotFound = 3024,
    kDaoDiskFull = 3026,
    kDaoReadOnly = 3027,
    kDaoOutOfMemory = 3035,
    kDaoFormerEngine = 3041, // a file of the engine that projects once had
    kDaoDiskOrNetwork = 3043,
    kDaoDamaged = 3049,
    kDaoCannotOpen = 3051, // somebody has it exclusively, or it may not be written
    kDaoCancelled = 3059,
    kDaoWrongParameters = 3061,
    kDaoSyntax = 3075,
    kDaoNoSuchTable = 3078,
    kDaoFieldTooSmall = 3163,
    kDaoRecordDeleted = 3167,
    kDaoBadReference = 3200,
    kDaoTableLocked = 3211,
    kDaoLocked = 3218,
    kDaoItemNotFound = 3265,
    kDaoRequired = 3314,
    kDaoZeroLength = 3315,
    kDaoValidation = 3317,
    kDaoUnrecognized = 3343, // not a database
    kDaoClosed = 3420,
    kDaoWrongType = 3421,
};

struct CDaoErrorInfo {
    int m_lErrorCode = 0;
    CString m_strDescription;
};

// What operations on databases throw, by value.
class VELDRIN_API CDaoException : public CException {
public:
    CDaoException(DaoError number, CString description);
    ~CDaoException() override;
    const CDaoErrorInfo& errorInfo() const { return m_errorInfo; }
    int number() const { return m_errorInfo.m_lErrorCode; }

private:
    CDaoErrorInfo m_errorInfo;
};

namespace veldrin::dao {

// The number of a code of the engine. The text tells apart what the engine has one code for.
DaoError meaningOf(int engineCode, const char* engineText);

// Throws what the connection's last code means; `path` is named where the file itself is at fault.
[[noreturn]] void throwEngineError(sqlite3* connection, int code, const CString& path);

} // namespace veldrin::dao
