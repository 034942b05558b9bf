#include "dao/CDaoDatabase.h"

#include "dao/Connection.h"
#include "dao/Links.h"
#include "dao/SqlText.h"
#include "dao/TableInfo.h"

#include <fmt/format.h>
#include <sqlite3.h>

#include <algorithm>
#include <filesystem>

namespace dao = veldrin::dao;
using dao::Connection;

namespace {

void bindParameters(dao::Statement& statement, const dao::SqlText& text,
                    const std::vector<std::pair<CString, COleVariant>>& values) {
    for (const auto& [name, value] : values) statement.bind(text.parameterNumber(name), value);
}

// Fields of tables have the kind that they are declared with, through joins; expressions that of their value.
struct ResultColumn {
    bool isField = false;
    DaoFieldType type = dbMemo;
};

RowArray readRows(dao::Statement& statement) {
    std::vector<CString> names;
    std::vector<ResultColumn> columns;
    bool begun = false;
    RowArray rows;
    while (statement.step()) {
        if (!begun) { // now, since the first step may have prepared the statement anew
            begun = true;
            for (int i = 0; i < statement.columnCount(); ++i) {
                names.push_back(statement.columnName(i));
                const std::string_view declared = statement.columnDeclaration(i);
                columns.push_back({!declared.empty(), dao::parseDeclaredType(declared).type});
            }
            rows = RowArray(names);
        }
        for (std::size_t i = 0; i < columns.size(); ++i) {
            COleVariant& value = rows.values().emplace_back();
            if (columns[i].isField)
                dao::readColumn(statement.handle(), static_cast<int>(i), columns[i].type, value);
            else
                dao::readExpression(statement.handle(), static_cast<int>(i), value);
        }
    }
    return rows;
}

std::int64_t execute(Connection& connection, const dao::SqlText& text,
                     const std::vector<std::pair<CString, COleVariant>>& values) {
    if (!connection.canUpdate())
        throw CDaoException(kDaoReadOnly, fmt::format("{} is read-only.", connection.path()));
    const std::string_view word = dao::firstWord(text.engine);
    const bool changesRows = dao::isOneOf(word, {"insert", "update", "delete", "replace", "with"});
    const bool changesTables = dao::isOneOf(word, {"create", "alter", "drop"});
    if (!changesRows && !changesTables) { // nothing that would go into a transaction
        const Connection::Lease statement = connection.prepare(text.engine);
        bindParameters(*statement, text, values);
        statement->runToEnd();
        return 0;
    }
    dao::Transaction transaction(connection);
    std::int64_t changed = 0;
    {
        const Connection::Lease statement = connection.prepare(text.engine);
        bindParameters(*statement, text, values);
        statement->runToEnd();
        if (changesRows) changed = sqlite3_changes64(connection.handle());
    }
    if (changesTables)
        for (const CString& table : dao::tableNames(connection)) dao::keepYesNo(connection, table);
    transaction.commit();
    return changed;
}

} // namespace

CDaoDatabase::CDaoDatabase() = default;
CDaoDatabase::~CDaoDatabase() = default;

void CDaoDatabase::Open(const CString& path, bool exclusive, bool readOnly) {
    Close();
    take(std::make_unique<Connection>(path, Connection::Opening{exclusive, readOnly}));
}

void CDaoDatabase::OpenToRead(const CString& path) {
    Close();
    take(Connection::openToRead(path));
}

void CDaoDatabase::take(std::unique_ptr<Connection> connection) {
    dao::openLinks(*connection);
    m_connection = std::move(connection);
}

void CDaoDatabase::Create(const CString& path) {
    Connection::createFile(path);
    Open(path);
}

void CDaoDatabase::Close() {
    m_connection.reset();
}

bool CDaoDatabase::CanUpdate() const {
    return m_connection && m_connection->canUpdate();
}

const CString& CDaoDatabase::GetName() const {
    return connection().path();
}

Connection& CDaoDatabase::connection() const {
    if (!m_connection) throw CDaoException(kDaoClosed, "The database is closed.");
    return *m_connection;
}

std::int64_t CDaoDatabase::Execute(std::string_view sql) {
    return execute(connection(), dao::translateSql(sql), {});
}

RowArray CDaoDatabase::Select(std::string_view sql) {
    const Connection::Lease statement = connection().prepare(dao::translateSql(sql).engine);
    if (!statement->writes()) return readRows(*statement);
    dao::Transaction transaction(connection());
    RowArray rows = readRows(*statement);
    statement->reset();
    transaction.commit();
    return rows;
}

std::vector<CString> CDaoDatabase::GetTableNames() {
    std::vector<CString> names = dao::tableNames(connection());
    for (const dao::Link& link : dao::links(connection())) names.push_back(link.name);
    return names;
}

bool CDaoDatabase::TableExists(std::string_view name) {
    const std::vector<CString> names = GetTableNames();
    return std::any_of(names.begin(), names.end(),
                       [&](const CString& other) { return dao::equalNames(name, other); });
}

void CDaoDatabase::RenameTable(std::string_view name, std::string_view newName) {
    Connection& file = connection();
    for (dao::Link link : dao::links(file)) {
        if (!dao::equalNames(link.name, name)) continue;
        dao::dropLink(file, name);
        link.name = CString(newName);
        return dao::addLink(file, link);
    }
    const auto table = dao::readTableInfo(file, name);
    dao::Transaction transaction(file);
    for (const char* event : {"insert", "update"})
        file.run(
            fmt::format("drop trigger if exists {}", dao::bracketed(fmt::format("{}.yesno.{}", name, event)))
                .c_str());
    // By way of another name, because the engine takes one that differs in case alone for the same.
    constexpr const char* kMeanwhile = "MSysRenamed";
    file.run(fmt::format("alter table {} rename to {}", dao::bracketed(name), kMeanwhile).c_str());
    file.run(fmt::format("alter table {} rename to {}", kMeanwhile, dao::bracketed(newName)).c_str());
    for (const dao::IndexInfo& index : table->indexes) {
        if (index.engineName.empty()) continue;
        CString keys;
        for (const auto& key : index.keys)
            keys += (keys.empty() ? "" : ", ") +
                    dao::bracketed(table->fields[static_cast<std::size_t>(key.column)].m_strName) +
                    (key.descending ? " desc" : "");
        file.run(fmt::format("drop index {}", dao::bracketed(index.engineName)).c_str());
        file.run(fmt::format("create {} index {} on {}({})", index.unique ? "unique" : "",
                             dao::engineIndexName(newName, index.name), dao::bracketed(newName), keys)
                     .c_str());
    }
    dao::keepYesNo(file, newName);
    transaction.commit();
}

void CDaoDatabase::DeleteTableDef(std::string_view name) {
    Connection& file = connection();
    for (const dao::Link& link : dao::links(file))
        if (dao::equalNames(link.name, name)) return dao::dropLink(file, name);
    dao::readTableInfo(file, name); // that there is one
    dao::Transaction transaction(file);
    file.run(fmt::format("drop table {}", dao::bracketed(name)).c_str());
    transaction.commit();
}

void CDaoDatabase::CreateRelation(const CDaoRelationInfo& relation) {
    dao::addRelation(connection(), {relation.m_strName, relation.m_strTable, relation.m_strForeignTable,
                                    relation.m_strField, relation.m_strForeignField});
}

std::vector<CDaoRelationInfo> CDaoDatabase::GetRelations() {
    std::vector<CDaoRelationInfo> list;
    for (const dao::Relation& r : dao::relations(connection()))
        list.push_back({r.name, r.table, r.foreignTable, r.field, r.foreignField});
    return list;
}

void CDaoDatabase::DeleteRelation(std::string_view name) {
    dao::dropRelation(connection(), name);
}

void CDaoDatabase::BeginTrans(bool forWriting) {
    connection().begin(forWriting);
}
void CDaoDatabase::CommitTrans() {
    connection().commit();
}
void CDaoDatabase::Rollback() {
    connection().rollback();
}
void CDaoDatabase::noteTurn() {
    Connection::noteTurn();
}

void CDaoQueryDef::Create(const CString& name, const CString& sql) {
    m_name = name;
    m_sql = sql;
    m_values.clear();
}

void CDaoQueryDef::Append() {
    dao::storeQuery(m_database.connection(), m_name, m_sql);
}

void CDaoQueryDef::Open(const CString& name) {
    if (!dao::findQuery(m_database.connection(), name, m_sql))
        throw CDaoException(kDaoItemNotFound, fmt::format("There is no query {}.", name));
    m_name = name;
    m_values.clear();
}

void CDaoQueryDef::SetSQL(const CString& sql) {
    m_sql = sql;
    if (!m_name.empty()) Append();
}

void CDaoQueryDef::SetParamValue(std::string_view parameter, const COleVariant& value) {
    if (dao::translateSql(m_sql).parameterNumber(parameter) == 0)
        throw CDaoException(kDaoItemNotFound, fmt::format("The query has no parameter {}.", parameter));
    std::erase_if(m_values, [&](const auto& entry) { return dao::equalNames(entry.first, parameter); });
    m_values.emplace_back(CString(parameter), value);
}

std::int64_t CDaoQueryDef::Execute() {
    return execute(m_database.connection(), dao::translateSql(m_sql), m_values);
}

RowArray CDaoQueryDef::Snapshot() {
    const dao::SqlText text = dao::translateSql(m_sql);
    const Connection::Lease statement = m_database.connection().prepare(text.engine);
    bindParameters(*statement, text, m_values);
    return readRows(*statement);
}

void CDaoWorkspace::CompactDatabase(const CString& source, const CString& destination) {
    std::error_code error;
    if (std::filesystem::exists(destination, error))
        throw CDaoException(kDaoObjectExists, fmt::format("{} is there already.", destination));
    Connection file(source, {});
    const Connection::Lease copy = file.prepare("vacuum into ?");
    copy->bind(1, COleVariant(destination));
    copy->runToEnd();
}
