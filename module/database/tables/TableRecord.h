#pragma once

#include "dao/COleVariant.h"
#include "runtime/CString.h"

#include <initializer_list>
#include <span>
#include <utility>
#include <vector>

namespace plumb {

class CDBConnection;
class TableRecord;

// A column of a record class. Giving it a value notes that it is to be written; what is read does not.
class Column {
public:
    Column(const Column&) = delete;
    Column& operator=(const Column&) = delete;
    const char* name() const { return m_name; }

protected:
    enum class Kind : unsigned char { kLong, kDouble, kText, kYesNo };
    Column(TableRecord* record, const char* name, Kind kind, bool isNullable);
    ~Column() = default;

    bool m_isNull = true; // nullable columns alone give it a meaning
    bool m_isChanged = false;

private:
    friend class TableRecord;
    void load(const COleVariant& value);
    COleVariant toWrite() const;

    const char* m_name;
    Kind m_kind;
    bool m_isNullable;
    bool m_isMaster; // one of the two columns that a standards file does not have
};

// Reads as its value, `long n = row.iSortOrder`, and takes one, `row.iSortOrder = n`.
template<class Value, int WhichKind>
class PlainColumn : public Column {
public:
    PlainColumn(TableRecord* record, const char* name) : PlainColumn(record, name, false) {}
    const Value& get() const { return m_value; }
    operator const Value&() const { return m_value; }
    void operator=(Value value) { set(std::move(value)); }
    void operator=(const PlainColumn& other) { set(other.m_value); }

protected:
    PlainColumn(TableRecord* record, const char* name, bool isNullable)
        : Column(record, name, static_cast<Kind>(WhichKind), isNullable) {}
    void set(Value value) {
        m_value = std::move(value);
        m_isNull = false;
        m_isChanged = true;
    }

private:
    friend class Column;
    Value m_value{};
};

// A column whose null is a state of its own.
template<class Value, int WhichKind>
class NullableColumn : public PlainColumn<Value, WhichKind> {
public:
    NullableColumn(TableRecord* record, const char* name)
        : PlainColumn<Value, WhichKind>(record, name, true) {}
    bool isNull() const { return this->m_isNull; }
    // True, and the value, when it is not null.
    bool get(Value& value) const {
        value = PlainColumn<Value, WhichKind>::get();
        return !this->m_isNull;
    }
    using PlainColumn<Value, WhichKind>::get;
    void operator=(Value value) { this->set(std::move(value)); }
    void setNull() {
        this->m_isNull = true;
        this->m_isChanged = true;
    }
};

using LongColumn = PlainColumn<std::int32_t, 0>;
using DoubleColumn = PlainColumn<double, 1>;
using TextColumn = PlainColumn<CString, 2>;
using YesNoColumn = PlainColumn<bool, 3>;
using NullableLong = NullableColumn<std::int32_t, 0>;
using NullableDouble = NullableColumn<double, 1>;
using NullableText = NullableColumn<CString, 2>;

// A typed view of the current record of one table of a connection, which several record objects may share:
// they share the place in the table, too. It holds the values of the record that was read last, and notes
// which of them were set since. Without a connection every operation does nothing, a seek finds nothing and
// IsEOF is true, so that a caller without a project can run its whole sequence. Nothing here tells of
// failures: the connection knows them.
//
// Reading all: SetCurrentIndex, MoveFirst, then while not IsEOF: the columns, MoveNext. Adding: AddNew, set
// columns, Update; the object then holds the record as stored, with its key. Changing: Seek, Edit, set
// columns, Update. An AddNew or Edit that is not wanted is just not followed by Update.
class TableRecord {
public:
    TableRecord(const TableRecord&) = delete;
    TableRecord& operator=(const TableRecord&) = delete;

    void AddNew();
    void Close(); // the connection's recordset of the table
    void Delete();
    void Edit();
    void GetFieldValue(const CString& field,
                       COleVariant& value); // of the stored record, not of a column here
    bool IsBOF();
    bool IsEOF();
    void MoveFirst();
    void MoveNext();
    bool Seek(std::int32_t key); // by the key column
    void SetCurrentIndex(const CString& index);
    void Update(); // writes what was set; nothing without

protected:
    // The first column of a class is its key, and names the key's index. With the standards flag the columns
    // that say which row of a standards file a row came from are never written.
    TableRecord(const char* table, CDBConnection* connection, bool isStandards = false);
    ~TableRecord() = default;

    bool seekOn(const CString& index, std::initializer_list<COleVariant> keys);
    void moveLast();

private:
    friend class Column;
    std::int32_t key() const;
    bool makeCurrent(const CString& index);
    bool makeCurrent(); // whatever its index
    void load();
    void forgetChanges();

    CString m_table;
    CString m_keyIndex; // like the key column
    CDBConnection* m_connection;
    bool m_isStandards;
    bool m_isAdding = false;
    bool m_isEditing = false;
    std::int32_t m_editKey = 0;
    std::vector<Column*> m_columns;
    const void* m_layout = nullptr; // of the table that the places below are of
    std::vector<int> m_places;      // of each column among the table's fields; -1 where it has none
};

// The columns by which a row knows the standards row that it is a copy of. The Lisp layer gives them a
// meaning.
#define PLUMB_MASTER_COLUMNS                                                                                 \
    NullableLong ixMasterDatabase{this, "ixMasterDatabase"};                                                 \
    NullableLong iMasterDatabaseIndex{this, "iMasterDatabaseIndex"};

} // namespace plumb
