#pragma once

#include "dao/CDaoDatabase.h"
#include "dao/ColumnTypes.h"

#include <cstdint>
#include <memory>
#include <span>
#include <string_view>
#include <vector>

namespace veldrin::dao {
struct TableInfo;
class TableWalk;
} // namespace veldrin::dao

// A table with a current record. Records come in the order of the current index, or of their numbers without
// one. Moving reads ahead; a seek or an edit always meets what the file holds now, and so does reading a
// record when anything was written through this database, or anybody else had a turn, since it was met.
//
// Operations throw CDaoException: 3021 where there is no current record, 3167 where another user has deleted
// it.
class VELDRIN_API CDaoRecordset {
public:
    using Bookmark = std::int64_t;

    explicit CDaoRecordset(CDaoDatabase& database);
    ~CDaoRecordset();
    CDaoRecordset(const CDaoRecordset&) = delete;
    CDaoRecordset& operator=(const CDaoRecordset&) = delete;

    void Open(const CString& table, bool readOnly = false);
    void Close();
    bool IsOpen() const { return m_table != nullptr; }
    const CString& GetName() const { return m_name; }
    bool CanUpdate() const;

    const CString& GetCurrentIndex() const { return m_index; }
    void SetCurrentIndex(const CString& index); // 3015 when the table has none of this name
    // The first record whose index has these keys in front; an empty key meets null. Without one there is no
    // current record. The number of keys may be lower than the index's.
    bool Seek(std::span<const COleVariant> keys);

    void MoveFirst();
    void MoveLast();
    void MoveNext();
    void MovePrev();
    void Move(long rows);
    bool IsBOF();
    bool IsEOF();
    std::int64_t GetRecordCount();

    // With pessimistic locking, which is the default, nobody else writes between Edit and Update.
    void SetLockingMode(bool pessimistic) { m_pessimistic = pessimistic; }
    void AddNew();
    void Edit();
    void SetFieldValue(std::string_view field, const COleVariant& value);
    void Update(); // the changed record stays current, the added one is the last modified
    void CancelUpdate();
    void Delete();
    Bookmark GetBookmark();
    Bookmark GetLastModifiedBookmark() const { return m_lastModified; }
    void SetBookmark(Bookmark bookmark);

    std::span<const CDaoFieldInfo> fields() const;
    int findField(std::string_view field) const; // without regard to case; -1 without
    // The fields of the current record, in the order of fields().
    std::span<const COleVariant> record();
    const COleVariant& GetFieldValue(std::string_view field); // 3265 without such a field
    std::vector<CString> GetIndexNames() const;
    // Identity of the table's description: while it is the same, fields stand in the same places.
    const void* layout() const { return m_table.get(); }

private:
    enum class Pending { kNothing, kAdd, kEdit };
    void insertRecord();
    void updateRecord();
    void endEdit();
    void requireUpdatable() const;

    CDaoDatabase& m_database;
    CString m_name;
    CString m_index;
    std::shared_ptr<const veldrin::dao::TableInfo> m_table;
    std::unique_ptr<veldrin::dao::TableWalk> m_walk;
    bool m_readOnly = false;
    bool m_pessimistic = true;
    Pending m_pending = Pending::kNothing;
    bool m_holdsLock = false;
    std::vector<std::pair<int, COleVariant>> m_changes; // field and value, in the order they were set
    Bookmark m_lastModified = 0;
};
