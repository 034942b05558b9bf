#pragma once

#include "dao/COleVariant.h"
#include "runtime/CString.h"
#include "runtime/VeldrinApi.h"

#include <string_view>

// Kinds of fields, by the numbers that field descriptions give.
enum DaoFieldType : std::int16_t {
    dbBoolean = 1,
    dbByte = 2,
    dbInteger = 3,
    dbLong = 4,
    dbCurrency = 5,
    dbSingle = 6,
    dbDouble = 7,
    dbDate = 8,
    dbText = 10,
    dbLongBinary = 11,
    dbMemo = 12,
};

constexpr long dbAutoIncrField = 16;

struct CDaoFieldInfo {
    CString m_strName;
    DaoFieldType m_nType = dbText;
    long m_lSize = 0; // characters of a text field, bytes of the others; 0 without bound
    long m_lAttributes = 0;
    short m_nOrdinalPosition = 0;
    bool m_bRequired = false;
    bool m_bAllowZeroLength = false;
    CString m_strDefaultValue;
};

struct sqlite3_stmt;

namespace veldrin::dao {

// The kind and the size that a declared type of the file means. A text with no size is a memo; so is what has
// no declared type.
struct DeclaredType {
    DaoFieldType type = dbMemo;
    long size = 0;
    bool allowZeroLength = true;
};
DeclaredType parseDeclaredType(std::string_view declared);
// The other way: what a field is declared as, for texts with how they compare.
CString declaredType(const CDaoFieldInfo& field);

// Reads a column of the statement's row. Values that do not fit the field's kind come as what they are.
void readColumn(sqlite3_stmt* row, int column, DaoFieldType type, COleVariant& into);
// The kind of a result's column that is no field of a table: by the value itself.
void readExpression(sqlite3_stmt* row, int column, COleVariant& into);

// The value as the field keeps it: yes/no as -1 or 0, texts for numbers read. Throws CDaoException for a text
// that is no number, is too long, or is empty where that is not allowed.
COleVariant fieldValue(const CDaoFieldInfo& field, const COleVariant& value);

// Binds a value as it is; an empty one and a null are the engine's null. Gives the engine's code.
int bindValue(sqlite3_stmt* statement, int parameter, const COleVariant& value);

// Length in code points, and the bytes of the first so many of them.
VELDRIN_API std::size_t characterCount(std::string_view text);
VELDRIN_API std::string_view firstCharacters(std::string_view text, std::size_t count);

} // namespace veldrin::dao
