#include "database/SchemaList.h"

#include "dao/CDaoTableDef.h"
#include "dao/ColumnTypes.h"
#include "system/AsciiCase.h"

#include <optional>

namespace plumb {

namespace {

constexpr const char* kListBegin = "*RTLB*";
constexpr const char* kListEnd = "*RTLE*";

struct TypeWord {
    const char* word;
    DaoFieldType type;
};
constexpr TypeWord kTypeWords[] = {
    {"BOOL", dbBoolean},      {"BYTE", dbByte}, {"INT", dbInteger}, {"LONG", dbLong}, {"REAL", dbDouble},
    {"CURRENCY", dbCurrency}, {"DATE", dbDate}, {"MEMO", dbMemo},   {"TEXT", dbText},
};

std::optional<DaoFieldType> findType(const CString& word) {
    for (const TypeWord& type : kTypeWords)
        if (veldrin::asciiEqual(word, type.word)) return type.type;
    return {};
}

// Everything is true but empty and a boolean false.
bool isTrue(const COleVariant& value) {
    return !value.isEmpty() && !(value.vt() == VT_BOOL && value.whole() == 0);
}

class Reader {
public:
    explicit Reader(const std::vector<COleVariant>& items) : m_items(items) {}

    bool atEnd() const { return m_at >= m_items.size(); }
    const COleVariant* take() { return atEnd() ? nullptr : &m_items[m_at++]; }
    const COleVariant* peek() const { return atEnd() ? nullptr : &m_items[m_at]; }
    const CString* takeText() {
        const COleVariant* item = take();
        return item && item->vt() == VT_BSTR ? &item->text() : nullptr;
    }
    bool atText(const char* text) const {
        return !atEnd() && m_items[m_at].vt() == VT_BSTR && m_items[m_at].text() == text;
    }

private:
    const std::vector<COleVariant>& m_items;
    std::size_t m_at = 0;
};

struct IndexWish {
    bool wanted = false;
    bool descending = false;
    bool unique = false;
    bool primary = false;
};

// From the name up to the default.
bool readField(Reader& reader, CDaoFieldInfo& field) {
    if (reader.atText(kListBegin)) reader.take();
    const CString* name = reader.takeText();
    const CString* word = reader.takeText();
    if (!name || !word) return false;
    const std::optional<DaoFieldType> type = findType(*word);
    if (!type) return false;
    field.m_strName = *name;
    field.m_nType = *type;
    field.m_bAllowZeroLength = *type == dbMemo || *type == dbText;
    if (*type == dbText) {
        const COleVariant* size = reader.take();
        if (!size || size->vt() != VT_I4) return false;
        field.m_lSize = static_cast<long>(size->whole());
    }
    const COleVariant* required = reader.take();
    const COleVariant* otherwise = reader.take();
    if (!required || !otherwise) return false;
    field.m_bRequired = isTrue(*required);
    field.m_strDefaultValue = otherwise->text();
    return true;
}

bool readIndex(Reader& reader, CDaoFieldInfo& field, IndexWish& index) {
    const CString* word = reader.takeText();
    if (!word) return false;
    if (*word == kListEnd || word->empty()) return true;
    index.wanted = true;
    index.descending = *word == "D";
    if (*word == "I") {
        field.m_nType = dbLong;
        field.m_lAttributes = dbAutoIncrField;
    }
    for (bool* flag : {&index.unique, &index.primary}) {
        if (reader.atEnd()) break;
        if (reader.atText(kListEnd)) {
            reader.take();
            break;
        }
        *flag = isTrue(*reader.take());
    }
    return true;
}

} // namespace

bool createFields(CDaoTableDef& table, const COleVariant& schemaList) {
    Reader reader(schemaList.items());
    while (!reader.atEnd()) {
        const CString* bracket = reader.takeText();
        if (!bracket) return false;
        if (*bracket == kListEnd) continue;
        if (*bracket != kListBegin) return false;
        CDaoFieldInfo field;
        IndexWish index;
        if (!readField(reader, field) || !readIndex(reader, field, index)) return false;
        table.CreateField(field);
        if (index.wanted)
            table.CreateIndex(
                {field.m_strName, field.m_strName, index.unique, index.primary, index.descending});
    }
    return true;
}

} // namespace plumb
