#pragma once

#include "dao/CDaoDatabase.h"
#include "dao/ColumnTypes.h"

// The definition of a table: one that is there, or one that comes to be by Append. Operations throw
// CDaoException.
class VELDRIN_API CDaoTableDef {
public:
    explicit CDaoTableDef(CDaoDatabase& database) : m_database(database) {}

    void Create(const CString& name);
    // A table of another database file under a name of this one, once it is appended.
    void CreateLink(const CString& name, const CString& sourceTable, const CString& sourcePath);
    void Append();
    void Open(const CString& name);

    // Of a table that is there these act at once; else with Append.
    void CreateField(const CDaoFieldInfo& field);
    // On one field. A primary index makes its field required and unique.
    struct Index {
        CString name;
        CString field;
        bool unique = false;
        bool primary = false;
        bool descending = false;
    };
    void CreateIndex(const Index& index);

    CDaoFieldInfo GetFieldInfo(std::string_view field); // 3265 without

private:
    void makeIndex(const Index& index);
    void addField(const CDaoFieldInfo& field);

    CDaoDatabase& m_database;
    CString m_name;
    CString m_sourceTable;
    CString m_sourcePath;
    bool m_isThere = false;
    std::vector<CDaoFieldInfo> m_fields;
    std::vector<Index> m_indexes;
};
