#include "dao/Links.h"

#include "dao/Connection.h"
#include "dao/DaoErrors.h"
#include "dao/SqlText.h"

#include <fmt/format.h>

#include <filesystem>

namespace veldrin::dao {

namespace {

constexpr const char* kLinks = "MSysLinks";
constexpr const char* kQueries = "MSysQueries";
constexpr const char* kRelations = "MSysRelationships";

constexpr const char* kMakeLinks =
    "create table if not exists MSysLinks(Name text primary key collate nocase, Path text, TableName text)";
constexpr const char* kMakeQueries =
    "create table if not exists MSysQueries(Name text primary key collate nocase, Sql text)";
constexpr const char* kMakeRelations =
    "create table if not exists MSysRelationships(Name text primary key collate nocase, TableName text "
    "collate nocase, ForeignTable text collate nocase, Field text, ForeignField text)";

bool hasTable(Connection& connection, const char* name) {
    const Connection::Lease found =
        connection.prepare("select count(*) from sqlite_schema where type = 'table' and name = ?");
    found->bind(1, COleVariant(name));
    return found->step() && found->integer(0) != 0;
}

void runWith(Connection& connection, const char* sql, std::initializer_list<std::string_view> values) {
    const Connection::Lease statement = connection.prepare(sql);
    int parameter = 0;
    for (const std::string_view value : values) statement->bind(++parameter, COleVariant(CString(value)));
    statement->runToEnd();
}

// The engine's name of the linked file; empty when it is not open.
CString openFileOf(Connection& connection, const CString& path) {
    std::error_code error;
    const CString real = std::filesystem::weakly_canonical(path, error).string();
    const Connection::Lease rows = connection.prepare("select name, file from pragma_database_list");
    while (rows->step()) {
        const bool isSame = std::filesystem::weakly_canonical(rows->text(1), error).string() == real;
        if (isSame && rows->text(0) != "main" && rows->text(0) != "temp") return rows->text(0);
    }
    return {};
}

CString openFile(Connection& connection, const CString& path) {
    CString name = openFileOf(connection, path);
    if (!name.empty()) return name;
    // The engine would make a file that is not there.
    std::error_code error;
    if (!std::filesystem::is_regular_file(path, error))
        throw CDaoException(kDaoFileNotFound, fmt::format("There is no file {}.", path));
    const std::int64_t count = connection.number("select count(*) from pragma_database_list");
    name = fmt::format("link{}", count);
    runWith(connection, fmt::format("attach ? as {}", name).c_str(), {path});
    return name;
}

void showLink(Connection& connection, const Link& link) {
    const CString file = openFile(connection, link.path);
    const CString view = bracketed(link.name);
    connection.run(fmt::format("drop view if exists temp.{}", view).c_str());
    connection.run(
        fmt::format("create temp view {} as select * from {}.{}", view, file, bracketed(link.table)).c_str());
}

} // namespace

std::vector<Link> links(Connection& connection) {
    std::vector<Link> list;
    if (!hasTable(connection, kLinks)) return list;
    const Connection::Lease rows = connection.prepare("select Name, Path, TableName from MSysLinks");
    while (rows->step()) list.push_back({rows->text(0), rows->text(1), rows->text(2)});
    return list;
}

LinkedName resolveName(Connection& connection, std::string_view table) {
    for (const Link& link : links(connection))
        if (equalNames(link.name, table)) return {openFile(connection, link.path), link.table};
    return {"main", CString(table)};
}

void addLink(Connection& connection, const Link& link) {
    const CString file = openFile(connection, link.path); // before anything is written
    const Connection::Lease source = connection.prepare(
        fmt::format("select count(*) from {}.sqlite_schema where name = ? collate nocase", file));
    source->bind(1, COleVariant(link.table));
    if (!source->step() || source->integer(0) == 0)
        throw CDaoException(kDaoNoSuchTable,
                            fmt::format("There is no table {} in {}.", link.table, link.path));
    Transaction transaction(connection);
    if (hasTable(connection, link.name.c_str()))
        throw CDaoException(kDaoTableExists, fmt::format("There is a table {} already.", link.name));
    connection.run(kMakeLinks);
    runWith(connection, "insert into MSysLinks values(?, ?, ?)", {link.name, link.path, link.table});
    transaction.commit();
    showLink(connection, link);
}

void dropLink(Connection& connection, std::string_view name) {
    runWith(connection, "delete from MSysLinks where Name = ?", {name});
    connection.run(fmt::format("drop view if exists temp.{}", bracketed(name)).c_str());
}

void openLinks(Connection& connection) {
    for (const Link& link : links(connection)) {
        try {
            showLink(connection, link);
        } catch (const CDaoException&) {
            // The table stays unknown: whoever asks for it is told which file is missing.
        }
    }
}

bool findQuery(Connection& connection, std::string_view name, CString& sql) {
    if (!hasTable(connection, kQueries)) return false;
    const Connection::Lease row = connection.prepare("select Sql from MSysQueries where Name = ?");
    row->bind(1, COleVariant(CString(name)));
    if (!row->step()) return false;
    sql = row->text(0);
    return true;
}

void storeQuery(Connection& connection, std::string_view name, std::string_view sql) {
    Transaction transaction(connection);
    connection.run(kMakeQueries);
    runWith(connection, "insert or replace into MSysQueries values(?, ?)", {name, sql});
    transaction.commit();
}

std::vector<Relation> relations(Connection& connection) {
    std::vector<Relation> list;
    if (!hasTable(connection, kRelations)) return list;
    const Connection::Lease rows = connection.prepare(
        "select Name, TableName, ForeignTable, Field, ForeignField from MSysRelationships order by Name");
    while (rows->step())
        list.push_back({rows->text(0), rows->text(1), rows->text(2), rows->text(3), rows->text(4)});
    return list;
}

void addRelation(Connection& connection, const Relation& relation) {
    Transaction transaction(connection);
    connection.run(kMakeRelations);
    runWith(connection, "insert into MSysRelationships values(?, ?, ?, ?, ?)",
            {relation.name, relation.table, relation.foreignTable, relation.field, relation.foreignField});
    transaction.commit();
}

void dropRelation(Connection& connection, std::string_view name) {
    runWith(connection, "delete from MSysRelationships where Name = ?", {name});
}

} // namespace veldrin::dao
