#include "dao/ColumnTypes.h"

#include "dao/DaoErrors.h"
#include "dao/SqlText.h"

#include <fmt/format.h>
#include <sqlite3.h>

#include <charconv>
#include <cmath>
#include <limits>

namespace veldrin::dao {

namespace {

struct TypeWord {
    const char* word;
    DaoFieldType type;
    long size;
};

// The first word of each kind is the one that we write; its affinity in the engine is the kind's. The others
// are what other tools declare.
constexpr TypeWord kTypeWords[] = {
    {"YESNO", dbBoolean, 1},
    {"TINYINT", dbByte, 1},
    {"SMALLINT", dbInteger, 2},
    {"INTEGER", dbLong, 4},
    {"CURRENCY", dbCurrency, 8},
    {"SINGLE", dbSingle, 4},
    {"DOUBLE", dbDouble, 8},
    {"DATETIME", dbDate, 8},
    {"LONGTEXT", dbMemo, 0},
    {"BLOB", dbLongBinary, 0},
    {"BIT", dbBoolean, 1},
    {"BOOL", dbBoolean, 1},
    {"BOOLEAN", dbBoolean, 1},
    {"BYTE", dbByte, 1},
    {"SHORT", dbInteger, 2},
    {"INT", dbLong, 4},
    {"LONG", dbLong, 4},
    {"COUNTER", dbLong, 4},
    {"BIGINT", dbLong, 4},
    {"REAL", dbDouble, 8},
    {"FLOAT", dbDouble, 8},
    {"NUMERIC", dbDouble, 8},
    {"DATE", dbDate, 8},
    {"MEMO", dbMemo, 0},
    {"LONGBINARY", dbLongBinary, 0},
};
constexpr const char* kNotEmpty = "NONEMPTY "; // before a text that may not be empty

const TypeWord* findType(std::string_view word) {
    for (const TypeWord& type : kTypeWords)
        if (equalNames(type.word, word)) return &type;
    return nullptr;
}

const char* wordOf(DaoFieldType wanted) {
    for (const TypeWord& type : kTypeWords)
        if (type.type == wanted) return type.word;
    return "LONGTEXT";
}

long sizeIn(std::string_view declared) {
    const std::size_t open = declared.find('(');
    long size = 0;
    if (open != std::string_view::npos)
        std::from_chars(declared.data() + open + 1, declared.data() + declared.size(), size);
    return size;
}

std::string_view withoutSize(std::string_view declared) {
    declared = declared.substr(0, declared.find('('));
    while (declared.ends_with(' ')) declared.remove_suffix(1);
    return declared;
}

bool isTextType(DaoFieldType type) {
    return type == dbText || type == dbMemo;
}

constexpr std::int64_t kLeastLong = std::numeric_limits<std::int32_t>::min();
constexpr std::int64_t kMostLong = std::numeric_limits<std::int32_t>::max();

bool isWithin(std::int64_t value, std::int64_t least, std::int64_t most) {
    return value >= least && value <= most;
}

// A whole number as the field's kind, or a wider one that holds it.
void setWhole(std::int64_t value, DaoFieldType type, COleVariant& into) {
    if (type == dbByte && isWithin(value, 0, std::numeric_limits<std::uint8_t>::max()))
        into.setWhole(value, VT_UI1);
    else if (type == dbInteger && isWithin(value, std::numeric_limits<std::int16_t>::min(),
                                           std::numeric_limits<std::int16_t>::max()))
        into.setWhole(value, VT_I2);
    else if (isWithin(value, kLeastLong, kMostLong))
        into.setWhole(value, VT_I4);
    else
        into.setReal(static_cast<double>(value));
}

void readPlain(sqlite3_value* value, COleVariant& into) {
    switch (sqlite3_value_type(value)) {
    case SQLITE_NULL: into.setNull(); return;
    case SQLITE_INTEGER: setWhole(sqlite3_value_int64(value), dbLong, into); return;
    case SQLITE_FLOAT: into.setReal(sqlite3_value_double(value)); return;
    default: {
        const auto* bytes = static_cast<const char*>(sqlite3_value_blob(value));
        into.setText(bytes ? bytes : "", static_cast<std::size_t>(sqlite3_value_bytes(value)));
    }
    }
}

double parsedNumber(const CDaoFieldInfo& field, std::string_view text) {
    while (!text.empty() && text.front() == ' ') text.remove_prefix(1);
    while (!text.empty() && text.back() == ' ') text.remove_suffix(1);
    if (text.empty()) return 0.0; // the stored form of an empty text
    double number = 0.0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    if (error != std::errc() || end != text.data() + text.size())
        throw CDaoException(kDaoWrongType, fmt::format("'{}' is no value for {}.", text, field.m_strName));
    return number;
}

double numberOf(const CDaoFieldInfo& field, const COleVariant& value) {
    if (value.isWhole()) return static_cast<double>(value.whole());
    if (value.isReal()) return value.real();
    if (value.vt() == VT_BSTR) return parsedNumber(field, value.text());
    throw CDaoException(kDaoWrongType, fmt::format("A list is no value for {}.", field.m_strName));
}

COleVariant wholeFieldValue(const CDaoFieldInfo& field, const COleVariant& value) {
    const double number = std::nearbyint(numberOf(field, value)); // halves to even
    const bool isByte = field.m_nType == dbByte;
    const double least = isByte ? 0.0 : field.m_nType == dbInteger ? -32768.0 : kLeastLong;
    const double most = isByte ? 255.0 : field.m_nType == dbInteger ? 32767.0 : kMostLong;
    if (!(number >= least && number <= most))
        throw CDaoException(kDaoWrongType, fmt::format("{} is too large for {}.", number, field.m_strName));
    return static_cast<std::int32_t>(number);
}

COleVariant textFieldValue(const CDaoFieldInfo& field, const COleVariant& value) {
    CString text;
    if (value.vt() == VT_BSTR)
        text = value.text();
    else if (value.isWhole())
        text = std::to_string(value.whole());
    else
        text = fmt::format("{}", numberOf(field, value));
    if (text.empty() && !field.m_bAllowZeroLength)
        throw CDaoException(kDaoZeroLength, fmt::format("{} cannot be an empty text.", field.m_strName));
    if (field.m_nType == dbText && field.m_lSize > 0 &&
        characterCount(text) > static_cast<std::size_t>(field.m_lSize))
        throw CDaoException(kDaoFieldTooSmall, fmt::format("{} takes no more than {} characters.",
                                                           field.m_strName, field.m_lSize));
    return text;
}

} // namespace

DeclaredType parseDeclaredType(std::string_view declared) {
    DeclaredType result;
    constexpr std::string_view kMark = kNotEmpty;
    if (declared.size() > kMark.size() && equalNames(declared.substr(0, kMark.size()), kMark)) {
        result.allowZeroLength = false;
        declared.remove_prefix(kMark.size());
    }
    const std::string_view word = withoutSize(declared);
    if (const TypeWord* type = findType(word)) {
        result.type = type->type;
        result.size = type->size;
        return result;
    }
    result.size = sizeIn(declared);
    result.type = result.size > 0 ? dbText : dbMemo; // TEXT, VARCHAR, CHAR and whatever else
    return result;
}

CString declaredType(const CDaoFieldInfo& field) {
    if (!isTextType(field.m_nType)) return wordOf(field.m_nType);
    CString text = field.m_bAllowZeroLength ? "" : kNotEmpty;
    text += field.m_nType == dbText ? fmt::format("TEXT({})", field.m_lSize) : wordOf(dbMemo);
    text += " COLLATE NOCASE";
    if (!field.m_bAllowZeroLength) text += fmt::format(" CHECK ({} <> '')", bracketed(field.m_strName));
    return text;
}

// By the engine's values, not by its columns: each call for a column looks the value up again.
void readExpression(sqlite3_stmt* row, int column, COleVariant& into) {
    readPlain(sqlite3_column_value(row, column), into);
}

void readColumn(sqlite3_stmt* row, int column, DaoFieldType type, COleVariant& into) {
    sqlite3_value* value = sqlite3_column_value(row, column);
    const int stored = sqlite3_value_type(value);
    if (stored != SQLITE_INTEGER && stored != SQLITE_FLOAT) return readPlain(value, into);
    switch (type) {
    case dbBoolean: into.setWhole(sqlite3_value_double(value) != 0.0 ? -1 : 0, VT_BOOL); return;
    case dbByte:
    case dbInteger:
    case dbLong:
        if (stored == SQLITE_INTEGER)
            setWhole(sqlite3_value_int64(value), type, into);
        else
            into.setReal(sqlite3_value_double(value));
        return;
    case dbSingle: into.setReal(sqlite3_value_double(value), VT_R4); return;
    case dbCurrency:
    case dbDouble: into.setReal(sqlite3_value_double(value)); return;
    case dbDate: into.setReal(sqlite3_value_double(value), VT_DATE); return;
    default: readPlain(value, into);
    }
}

COleVariant fieldValue(const CDaoFieldInfo& field, const COleVariant& value) {
    if (value.isEmpty() || value.isNull()) {
        if (field.m_nType == dbBoolean) return COleVariant(std::int16_t{0}, VT_BOOL);
        return COleVariant::null();
    }
    switch (field.m_nType) {
    case dbBoolean:
        return COleVariant(static_cast<std::int16_t>(numberOf(field, value) != 0.0 ? -1 : 0), VT_BOOL);
    case dbByte:
    case dbInteger:
    case dbLong: return wholeFieldValue(field, value);
    case dbText:
    case dbMemo: return textFieldValue(field, value);
    case dbLongBinary: return value;
    case dbSingle: return static_cast<double>(static_cast<float>(numberOf(field, value)));
    default: return numberOf(field, value);
    }
}

int bindValue(sqlite3_stmt* statement, int parameter, const COleVariant& value) {
    if (value.isWhole()) return sqlite3_bind_int64(statement, parameter, value.whole());
    if (value.isReal()) return sqlite3_bind_double(statement, parameter, value.real());
    if (value.vt() == VT_BSTR)
        return sqlite3_bind_text64(statement, parameter, value.text().data(), value.text().size(),
                                   SQLITE_TRANSIENT, SQLITE_UTF8);
    return sqlite3_bind_null(statement, parameter);
}

std::size_t characterCount(std::string_view text) {
    std::size_t count = 0;
    for (const char c : text)
        if ((c & 0xC0) != 0x80) ++count;
    return count;
}

std::string_view firstCharacters(std::string_view text, std::size_t count) {
    std::size_t at = 0;
    for (std::size_t seen = 0; at < text.size(); ++at) {
        if ((text[at] & 0xC0) == 0x80) continue;
        if (seen++ == count) break;
    }
    return text.substr(0, at);
}

} // namespace veldrin::dao
