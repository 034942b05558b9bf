#pragma once

#include "dao/CDaoDatabase.h"
#include "dao/CDaoRecordset.h"
#include "runtime/CList.h"

#include <functional>
#include <initializer_list>
#include <memory>
#include <optional>
#include <span>

namespace plumb {

// A record as pairs of names and values.
struct FieldPair {
    CString name;
    COleVariant value;
};
using FieldArray = std::vector<FieldPair>;

// The one door to a project database. Operations answer true or false and keep the error for a later report;
// nothing is thrown. A closed database answers true where a caller without a project should go on without
// noticing, false where a record is wanted; each operation's comment says which.
//
// The connection keeps each table open that was ever made current. The head of its list is the current one,
// which the operations on records work on. Operations that give a record leave it out for a null pointer.
class CDBConnection {
public:
    CDBConnection() = default;
    ~CDBConnection();
    CDBConnection(const CDBConnection&) = delete;
    CDBConnection& operator=(const CDBConnection&) = delete;

    // Opening. The result is the path; "" for a failure that is kept as the error; "*REPAIR*" for a damaged
    // file. A file that may not be written, or that another user has exclusively, is opened read-only.
    CString Open(const CString& path, bool exclusive, bool readOnly);
    // True when opened, or when it may not be written; the flag tells the latter, and then nothing is open.
    bool OpenOrFlagReadOnly(const CString& path, bool& isReadOnly);
    bool IsOpen() const { return m_database.IsOpen(); }
    bool IsUsable() const { return true; }           // the database object lives as long as its connection
    bool IsReadOnly() const { return !CanUpdate(); } // closed: yes
    bool CanUpdate() const { return m_database.CanUpdate(); }
    bool Close(); // closed: true
    CString GetName() const;
    static int GetVersion() { return 2; }
    // What an engineer should know of the open file, a line each: tables and columns that it lacks, a file
    // system whose locks cannot be trusted.
    std::vector<CString> Doubts();
    // Makes an empty file; needs no open database, and neither does the other.
    bool CreateDatabase(const CString& path);
    bool CompactDatabase(const CString& source, const CString& destination);

    // The current table. An empty index leaves the table's index as it is. Closed: true.
    bool OpenTable(const CString& table, const CString& index);
    CString GetCurrentTable() const; // closed: ""
    CString GetCurrentIndex() const; // closed: ""
    bool NoTableOpen() const { return m_tables.IsEmpty(); }
    void CloseTable(const CString& table);
    bool CloseCurrentTable(); // closed: false
    bool CloseAllTables();    // closed: true
    bool GetIndexNames(std::vector<CString>& names);
    bool GetFieldCount(int& count);
    bool GetFieldName(int index, CString& name);
    // strName, nType, lSize, lAttributes, nOrdinalPosition, bRequired, bAllowZeroLength, strDefaultValue.
    bool GetFieldInfo(const CString& field, FieldArray& info);

    // The current record of the current table. Closed: false.
    bool Seek1(const COleVariant& key, FieldArray* record = nullptr);
    bool Seek2(const COleVariant& first, const COleVariant& second, FieldArray* record = nullptr);
    bool Seek3(const COleVariant& first, const COleVariant& second, const COleVariant& third,
               FieldArray* record = nullptr);
    bool SeekMany(std::span<const COleVariant> keys, FieldArray* record = nullptr); // 1 to 10
    bool MoveFirst(FieldArray* record = nullptr);
    bool MoveLast(FieldArray* record = nullptr);
    bool Move(long rows, FieldArray* record = nullptr); // by 0: false
    bool IsBOF();
    bool IsEOF();
    bool GetRecordCount(int& count);
    bool GetRecord(FieldArray& record);
    bool GetBlankRecord(FieldArray& record);
    bool GetFieldValue(const CString& field, COleVariant& value); // null at first
    bool GetFieldValueAt(int index, COleVariant& value);
    // For those who read records in place: the current table, null without one, and the values of its record
    // in the order of the table's fields, which are good until the next operation.
    const CDaoRecordset* currentTable();
    bool ReadCurrent(std::span<const COleVariant>& values);

    // Writing. A lock of another user's is met by trying again, up to 20 times with a pause of 10 to 499
    // milliseconds. An empty text is stored as one blank, a text that is too long is cut, and a key that the
    // database gives is passed over. Afterwards the record as stored is the current one.
    bool AddRecord(const FieldArray& fields, bool fillDefaults, FieldArray* record = nullptr);
    bool EditRecord(const FieldArray& fields, FieldArray* record = nullptr);
    bool DeleteRecord();

    // Runs what writes, and stores all of it, or nothing when an operation in it fails: what comes behind
    // that one writes nothing either, and false has its error as the last one. Closed: runs it, true.
    bool StoreTogether(const std::function<void()>& write);

    // SQL. Select clears the rows first; without a result they stay empty, and that is true. Closed: false.
    bool Select(const CString& sql, RowArray& rows);
    bool Execute(const CString& sql);                                                     // closed: true
    bool ExecuteCount(const CString& sql, int& count);                                    // closed: true
    bool SelectQuery(const CString& query, const FieldArray& parameters, RowArray& rows); // closed: true
    bool SetQuerySql(const CString& query, const CString& sql);                           // closed: true

    // The schema; see schema_list.cpp for the form of a list of fields. Closed: true but for the first two.
    bool TableExists(const CString& table, bool& exists);
    bool GetTableNames(std::vector<CString>& names); // but those that begin with MS
    bool CreateTable(const CString& table, const COleVariant& schemaList);
    bool AddFields(const CString& table, const COleVariant& schemaList);
    bool RenameTable(const CString& table, const CString& newName);
    bool DeleteTable(const CString& table, bool withRelations);
    bool CreateIndex(const CString& table, const CString& name, bool unique, bool primary);
    bool LinkTable(const CString& name, const CString& sourcePath, const CString& sourceTable, bool& linked);
    bool IsFieldRequired(const CString& table, const CString& field, bool& isRequired);
    bool RelationExists(const CString& name, bool& exists);
    bool DeleteRelation(const CString& table, const CString& foreignTable);

    // The last error. Almost every operation clears the flag when it starts.
    bool HasError() const { return m_hasError; }
    void GetLastError(int& code, CString& description) const;

private:
    using Tables = CList<std::unique_ptr<CDaoRecordset>>;

    void clearError() { m_hasError = false; }
    void record(const CDaoException& error);
    void spoilStore(const CDaoException& error); // nothing of a StoreTogether that runs is to stay
    bool hasTable();                             // the database and the current table are open
    // Runs what may throw; a failure is recorded and false.
    template<class Operation>
    bool attempt(Operation&& operation) {
        try {
            operation();
            return true;
        } catch (const CDaoException& error) {
            record(error);
            return false;
        }
    }
    bool give(FieldArray* record);
    bool mayWrite() const { return CanUpdate() && !m_storeFailure; }
    // Runs a writing operation until it succeeds, fails for good, or has met too many locks.
    enum class Write { kDone, kRefused };
    enum class OnFailure { kRecord, kStaySilent }; // of failures that are no locks
    bool writeWithRetry(const std::function<Write()>& operation, OnFailure onFailure); // on the current table
    bool retried(const std::function<Write()>& operation, OnFailure onFailure);
    void endStore();
    Write finishWrite(CDaoRecordset& table, const FieldArray& fields);
    bool setFields(CDaoRecordset& table, const FieldArray& fields);
    void fillDefaults(CDaoRecordset& table);

    CDaoDatabase m_database;
    Tables m_tables;
    CDaoErrorInfo m_lastError;
    bool m_hasError = false;
    bool m_isStoring = false;                    // a StoreTogether runs
    std::optional<CDaoErrorInfo> m_storeFailure; // the first one in it
};

// Gives Lisp nil for the running call and tells the user of the connection's error. False without one.
bool ReportDatabaseError(const CDBConnection& connection);

} // namespace plumb
