#pragma once

#include "dao/DaoErrors.h"
#include "dao/RowArray.h"

#include <memory>
#include <string_view>
#include <vector>

namespace veldrin::dao {
class Connection;
}

struct CDaoRelationInfo {
    CString m_strName;
    CString m_strTable;
    CString m_strForeignTable;
    CString m_strField;
    CString m_strForeignField;
};

// A database file. Operations throw CDaoException; the descriptions in it are one line for the user.
class VELDRIN_API CDaoDatabase {
public:
    CDaoDatabase();
    ~CDaoDatabase();
    CDaoDatabase(const CDaoDatabase&) = delete;
    CDaoDatabase& operator=(const CDaoDatabase&) = delete;

    // 3051 when it may not be written (and read-only was not asked for), or somebody has it exclusively; a
    // file that somebody has exclusively can be opened read-only.
    void Open(const CString& path, bool exclusive = false, bool readOnly = false);
    void OpenToRead(const CString& path); // whether it may be written or not
    // Makes a file that holds nothing and opens it. It must not be there yet.
    void Create(const CString& path);
    void Close();
    bool IsOpen() const { return m_connection != nullptr; }
    bool CanUpdate() const;
    const CString& GetName() const; // the path it was opened by

    // Runs an action query, whole or not at all, and gives the number of rows that it changed.
    std::int64_t Execute(std::string_view sql);
    // Runs anything that gives rows.
    RowArray Select(std::string_view sql);

    // Tables of the file and linked ones. The engine's own are left out, those of this layer ("MSys...") not.
    std::vector<CString> GetTableNames();
    bool TableExists(std::string_view name);
    void RenameTable(std::string_view name, std::string_view newName);
    void DeleteTableDef(std::string_view name); // or unlinks

    // Relations describe; they are not enforced.
    void CreateRelation(const CDaoRelationInfo& relation);
    std::vector<CDaoRelationInfo> GetRelations();
    void DeleteRelation(std::string_view name);

    // What is read in between is of one moment; what is written is there whole or not at all. The lock for
    // writing is taken at once, or else with the first write, which fails when another user wrote meanwhile.
    void BeginTrans(bool forWriting = false);
    void CommitTrans();
    void Rollback();

    // What was read ahead may be out of date: called when the user or Lisp had a turn.
    static void noteTurn();

    veldrin::dao::Connection& connection() const; // throws 3420 when closed

private:
    void take(std::unique_ptr<veldrin::dao::Connection> connection);
    std::unique_ptr<veldrin::dao::Connection> m_connection;
};

// A query: stored under a name, or for once.
class VELDRIN_API CDaoQueryDef {
public:
    explicit CDaoQueryDef(CDaoDatabase& database) : m_database(database) {}

    void Create(const CString& name, const CString& sql); // nothing is stored before Append
    void Append();
    void Open(const CString& name); // a stored one; 3265 without
    void SetSQL(const CString& sql);
    const CString& GetSQL() const { return m_sql; }

    // 3265 for a parameter that the query does not have.
    void SetParamValue(std::string_view parameter, const COleVariant& value);
    std::int64_t Execute();
    RowArray Snapshot(); // of all rows, at one moment

private:
    CDaoDatabase& m_database;
    CString m_name;
    CString m_sql;
    std::vector<std::pair<CString, COleVariant>> m_values;
};

class VELDRIN_API CDaoWorkspace {
public:
    // Writes the contents, and nothing else, into a new file. The destination must not be there.
    static void CompactDatabase(const CString& source, const CString& destination);
};
