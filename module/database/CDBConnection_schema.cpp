#include "dao/CDaoTableDef.h"
#include "database/CDBConnection.h"
#include "database/SchemaList.h"

#include <algorithm>

namespace plumb {

bool CDBConnection::TableExists(const CString& table, bool& exists) {
    clearError();
    exists = false;
    return IsOpen() && attempt([&] { exists = m_database.TableExists(table); });
}

bool CDBConnection::GetTableNames(std::vector<CString>& names) {
    clearError();
    names.clear();
    if (!IsOpen()) return false;
    return attempt([&] {
        names = m_database.GetTableNames();
        std::erase_if(names, [](const CString& name) { return name.starts_with("MS"); });
    });
}

bool CDBConnection::CreateTable(const CString& table, const COleVariant& schemaList) {
    if (!IsOpen()) return true;
    CloseTable(table);
    bool isWhole = false;
    return attempt([&] {
               CDaoTableDef definition(m_database);
               definition.Create(table);
               // What is wrong in a field does not take the others with it.
               const bool created = attempt([&] { isWhole = createFields(definition, schemaList); });
               definition.Append();
               isWhole = isWhole && created;
           }) &&
           isWhole;
}

bool CDBConnection::AddFields(const CString& table, const COleVariant& schemaList) {
    if (!IsOpen()) return true;
    CloseTable(table);
    bool isWhole = false;
    return attempt([&] {
               CDaoTableDef definition(m_database);
               definition.Open(table);
               isWhole = createFields(definition, schemaList);
           }) &&
           isWhole;
}

bool CDBConnection::RenameTable(const CString& table, const CString& newName) {
    if (!IsOpen()) return true;
    CloseTable(table);
    return attempt([&] { m_database.RenameTable(table, newName); });
}

bool CDBConnection::DeleteTable(const CString& table, bool withRelations) {
    if (!IsOpen()) return true;
    CloseTable(table);
    return attempt([&] {
        if (withRelations)
            for (const CDaoRelationInfo& relation : m_database.GetRelations())
                if (relation.m_strTable == table || relation.m_strForeignTable == table)
                    m_database.DeleteRelation(relation.m_strName);
        m_database.DeleteTableDef(table);
    });
}

bool CDBConnection::CreateIndex(const CString& table, const CString& name, bool unique, bool primary) {
    if (!IsOpen()) return true;
    CloseTable(table);
    return attempt([&] {
        CDaoTableDef definition(m_database);
        definition.Open(table);
        definition.CreateIndex({name, name, unique, primary, false});
    });
}

bool CDBConnection::LinkTable(const CString& name, const CString& sourcePath, const CString& sourceTable,
                              bool& linked) {
    clearError();
    linked = false;
    if (!IsOpen()) return true;
    return attempt([&] {
        CDaoTableDef definition(m_database);
        definition.CreateLink(name, sourceTable, sourcePath);
        definition.Append();
        linked = true;
    });
}

bool CDBConnection::IsFieldRequired(const CString& table, const CString& field, bool& isRequired) {
    isRequired = false;
    if (!IsOpen()) return true;
    if (!OpenTable(table, "")) return false;
    return attempt([&] {
        CDaoTableDef definition(m_database);
        definition.Open(table);
        isRequired = definition.GetFieldInfo(field).m_bRequired;
    });
}

bool CDBConnection::RelationExists(const CString& name, bool& exists) {
    clearError();
    exists = false;
    if (!IsOpen()) return true;
    return attempt([&] {
        const std::vector<CDaoRelationInfo> relations = m_database.GetRelations();
        exists = std::any_of(relations.begin(), relations.end(),
                             [&](const CDaoRelationInfo& relation) { return relation.m_strName == name; });
    });
}

bool CDBConnection::DeleteRelation(const CString& table, const CString& foreignTable) {
    clearError();
    if (!IsOpen()) return true;
    return attempt([&] {
        for (const CDaoRelationInfo& relation : m_database.GetRelations())
            if (relation.m_strTable == table && relation.m_strForeignTable == foreignTable)
                m_database.DeleteRelation(relation.m_strName);
    });
}

} // namespace plumb
