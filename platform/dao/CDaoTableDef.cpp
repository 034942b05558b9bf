#include "dao/CDaoTableDef.h"

#include "dao/Connection.h"
#include "dao/Links.h"
#include "dao/SqlText.h"
#include "dao/TableInfo.h"

#include <fmt/format.h>

#include <algorithm>

namespace dao = veldrin::dao;

namespace {

// A default is a value here; numbers stay as they are, a yes/no is -1 or 0, and whatever else becomes a text.
CString defaultExpression(const CDaoFieldInfo& field) {
    const CString& value = field.m_strDefaultValue;
    if (field.m_nType == dbBoolean) return dao::isOneOf(value, {"0", "false", "no", "off"}) ? "0" : "-1";
    const bool isText = field.m_nType == dbText || field.m_nType == dbMemo;
    const bool isNumber = !value.empty() && value.find_first_not_of("0123456789.+-eE") == CString::npos;
    return isText || !isNumber ? dao::quoted(value) : value;
}

CString fieldDefinition(const CDaoFieldInfo& field) {
    if (field.m_lAttributes & dbAutoIncrField)
        return dao::bracketed(field.m_strName) + " INTEGER PRIMARY KEY AUTOINCREMENT";
    CString text = dao::bracketed(field.m_strName) + " " + dao::declaredType(field);
    if (!field.m_strDefaultValue.empty()) text += " DEFAULT " + defaultExpression(field);
    if (field.m_bRequired && field.m_nType != dbBoolean) text += " NOT NULL"; // a yes/no is never null anyway
    return text;
}

// What the records that are there get in a field that needs a value and has no default.
CDaoFieldInfo withValueForOldRecords(CDaoFieldInfo field) {
    if (field.m_bRequired && field.m_strDefaultValue.empty())
        field.m_strDefaultValue = field.m_nType == dbText || field.m_nType == dbMemo ? " " : "0";
    return field;
}

} // namespace

void CDaoTableDef::Create(const CString& name) {
    m_name = name;
    m_sourceTable.clear();
    m_sourcePath.clear();
    m_isThere = false;
    m_fields.clear();
    m_indexes.clear();
}

void CDaoTableDef::CreateLink(const CString& name, const CString& sourceTable, const CString& sourcePath) {
    Create(name);
    m_sourceTable = sourceTable;
    m_sourcePath = sourcePath;
}

void CDaoTableDef::Open(const CString& name) {
    dao::readTableInfo(m_database.connection(), name);
    Create(name);
    m_isThere = true;
}

void CDaoTableDef::Append() {
    dao::Connection& connection = m_database.connection();
    if (m_database.TableExists(m_name))
        throw CDaoException(kDaoTableExists, fmt::format("There is a table {} already.", m_name));
    if (!m_sourcePath.empty()) {
        dao::addLink(connection, {m_name, m_sourcePath, m_sourceTable});
        m_isThere = true;
        return;
    }
    if (m_fields.empty()) throw CDaoException(kDaoSyntax, fmt::format("The table {} has no fields.", m_name));
    CString fields;
    for (const CDaoFieldInfo& field : m_fields)
        fields += (fields.empty() ? "" : ", ") + fieldDefinition(field);
    dao::Transaction transaction(connection);
    connection.run(fmt::format("create table {}({})", dao::bracketed(m_name), fields).c_str());
    for (const Index& index : m_indexes) makeIndex(index);
    dao::keepYesNo(connection, m_name);
    transaction.commit();
    m_isThere = true;
}

void CDaoTableDef::addField(const CDaoFieldInfo& field) {
    dao::Connection& connection = m_database.connection();
    if (field.m_lAttributes & dbAutoIncrField)
        throw CDaoException(kDaoValidation,
                            fmt::format("{} numbers the rows; it can only be made with its table {}.",
                                        field.m_strName, m_name));
    dao::Transaction transaction(connection);
    connection.run(fmt::format("alter table {} add column {}", dao::bracketed(m_name),
                               fieldDefinition(withValueForOldRecords(field)))
                       .c_str());
    if (field.m_nType == dbBoolean && field.m_strDefaultValue.empty()) // a yes/no is never null
        connection.run(
            fmt::format("update {} set {} = 0", dao::bracketed(m_name), dao::bracketed(field.m_strName))
                .c_str());
    dao::keepYesNo(connection, m_name);
    transaction.commit();
}

void CDaoTableDef::CreateField(const CDaoFieldInfo& field) {
    if (field.m_strName.empty()) throw CDaoException(kDaoSyntax, "A field needs a name.");
    if (m_isThere) return addField(field);
    const bool isTwice = std::any_of(m_fields.begin(), m_fields.end(), [&](const CDaoFieldInfo& other) {
        return dao::equalNames(other.m_strName, field.m_strName);
    });
    if (isTwice)
        throw CDaoException(kDaoObjectExists, fmt::format("There is a field {} already.", field.m_strName));
    m_fields.push_back(field);
}

void CDaoTableDef::makeIndex(const Index& index) {
    dao::Connection& connection = m_database.connection();
    const auto table = dao::readTableInfo(connection, m_name);
    // The key that numbers the rows is an index by itself.
    if (table->keyField >= 0 && table->keyField == table->findField(index.field) &&
        dao::equalNames(index.name, index.field))
        return;
    connection.run(fmt::format("create {} index {} on {}({}{})",
                               index.unique || index.primary ? "unique" : "",
                               dao::engineIndexName(m_name, index.name), dao::bracketed(m_name),
                               dao::bracketed(index.field), index.descending ? " desc" : "")
                       .c_str());
}

void CDaoTableDef::CreateIndex(const Index& index) {
    if (!m_isThere) {
        m_indexes.push_back(index);
        return;
    }
    dao::Transaction transaction(m_database.connection());
    makeIndex(index);
    transaction.commit();
}

CDaoFieldInfo CDaoTableDef::GetFieldInfo(std::string_view field) {
    const auto table = dao::readTableInfo(m_database.connection(), m_name);
    const int at = table->findField(field);
    if (at < 0) throw CDaoException(kDaoItemNotFound, fmt::format("{} has no field {}.", m_name, field));
    return table->fields[static_cast<std::size_t>(at)];
}
