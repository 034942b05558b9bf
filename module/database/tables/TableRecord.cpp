#include "database/tables/TableRecord.h"

#include "database/CDBConnection.h"

#include <cstring>

namespace plumb {

namespace {

// A number whatever the tag says: of a record only its column is known.
double numberIn(const COleVariant& value) {
    return value.isReal() ? value.real() : static_cast<double>(value.whole());
}

// A yes/no counts as 1 where a class holds it as a number.
double doubleIn(const COleVariant& value) {
    return value.vt() == VT_BOOL ? static_cast<double>(value.whole() != 0) : numberIn(value);
}

std::size_t lengthTrimmed(const CString& text) {
    std::size_t length = text.size();
    while (length > 0 && text[length - 1] == ' ') --length;
    return length;
}

} // namespace

Column::Column(TableRecord* record, const char* name, Kind kind, bool isNullable)
    : m_name(name)
    , m_kind(kind)
    , m_isNullable(isNullable)
    , m_isMaster(std::strcmp(name, "ixMasterDatabase") == 0 ||
                 std::strcmp(name, "iMasterDatabaseIndex") == 0) {
    record->m_columns.push_back(this);
}

void Column::load(const COleVariant& value) {
    m_isNull = value.isEmpty() || value.isNull();
    m_isChanged = false;
    switch (m_kind) {
    case Kind::kLong:
        static_cast<LongColumn*>(this)->m_value = static_cast<std::int32_t>(numberIn(value));
        break;
    case Kind::kDouble: static_cast<DoubleColumn*>(this)->m_value = doubleIn(value); break;
    case Kind::kText:
        static_cast<TextColumn*>(this)->m_value.assign(value.text(), 0, lengthTrimmed(value.text()));
        break;
    case Kind::kYesNo:
        static_cast<YesNoColumn*>(this)->m_value = static_cast<std::int16_t>(value.whole()) == -1;
        break;
    }
}

COleVariant Column::toWrite() const {
    if (m_isNullable && m_isNull) return COleVariant::null();
    switch (m_kind) {
    case Kind::kLong: return static_cast<const LongColumn*>(this)->m_value;
    case Kind::kDouble: return static_cast<const DoubleColumn*>(this)->m_value;
    case Kind::kText: return static_cast<const TextColumn*>(this)->m_value;
    case Kind::kYesNo: break;
    }
    return static_cast<std::int16_t>(static_cast<const YesNoColumn*>(this)->m_value ? -1 : 0);
}

TableRecord::TableRecord(const char* table, CDBConnection* connection, bool isStandards)
    : m_table(table)
    , m_keyIndex("ix" + m_table.substr(3))
    , m_connection(connection)
    , m_isStandards(isStandards) {}

std::int32_t TableRecord::key() const {
    return static_cast<const LongColumn*>(m_columns.front())->get();
}

bool TableRecord::makeCurrent(const CString& index) {
    return m_connection && m_connection->OpenTable(m_table, index);
}

bool TableRecord::makeCurrent() {
    static const CString kAsItIs;
    return makeCurrent(kAsItIs);
}

void TableRecord::forgetChanges() {
    for (Column* column : m_columns) column->m_isChanged = false;
}

void TableRecord::load() {
    const CDaoRecordset* table = m_connection->currentTable();
    std::span<const COleVariant> values;
    if (!table || !m_connection->ReadCurrent(values)) return;
    if (m_layout != table->layout()) {
        m_layout = table->layout();
        m_places.clear();
        for (const Column* column : m_columns) {
            const int place = table->findField(column->m_name);
            const bool isSame =
                place >= 0 && table->fields()[static_cast<std::size_t>(place)].m_strName == column->m_name;
            m_places.push_back(isSame ? place : -1);
        }
    }
    for (std::size_t i = 0; i < m_columns.size(); ++i)
        if (m_places[i] >= 0)
            m_columns[i]->load(values[static_cast<std::size_t>(m_places[i])]);
        else
            m_columns[i]->m_isChanged = false;
    m_editKey = 0;
}

void TableRecord::AddNew() {
    m_isAdding = true;
    m_isEditing = false;
    forgetChanges();
}

void TableRecord::Edit() {
    m_isEditing = true;
    m_isAdding = false;
    forgetChanges();
    m_editKey = key();
}

void TableRecord::Close() {
    if (m_connection) m_connection->CloseTable(m_table);
}

void TableRecord::Delete() {
    if (makeCurrent(m_keyIndex) && m_connection->Seek1(key())) m_connection->DeleteRecord();
}

void TableRecord::GetFieldValue(const CString& field, COleVariant& value) {
    if (makeCurrent()) m_connection->GetFieldValue(field, value);
}

bool TableRecord::IsBOF() {
    return !m_connection || (makeCurrent(), m_connection->IsBOF());
}

bool TableRecord::IsEOF() {
    return !m_connection || (makeCurrent(), m_connection->IsEOF());
}

void TableRecord::MoveFirst() {
    if (makeCurrent() && m_connection->MoveFirst()) load();
}

void TableRecord::MoveNext() {
    if (makeCurrent() && m_connection->Move(1)) load();
}

void TableRecord::moveLast() {
    if (makeCurrent() && m_connection->MoveLast()) load();
}

bool TableRecord::Seek(std::int32_t key) {
    return seekOn(m_keyIndex, {key});
}

bool TableRecord::seekOn(const CString& index, std::initializer_list<COleVariant> keys) {
    if (!makeCurrent(index) || !m_connection->SeekMany(keys)) return false;
    load();
    return true;
}

void TableRecord::SetCurrentIndex(const CString& index) {
    makeCurrent(index);
}

void TableRecord::Update() {
    if (!m_connection) return;
    FieldArray fields;
    for (const Column* column : m_columns)
        if (column->m_isChanged && !(m_isStandards && column->m_isMaster))
            fields.push_back({column->m_name, column->toWrite()});
    if (fields.empty()) return;
    if (m_isAdding) {
        if (makeCurrent(m_keyIndex) && m_connection->AddRecord(fields, false)) load();
    } else if (m_isEditing) {
        if (Seek(m_editKey) && m_connection->EditRecord(fields)) load();
    }
    m_isAdding = false;
    m_isEditing = false;
    forgetChanges();
    m_editKey = 0;
}

} // namespace plumb
