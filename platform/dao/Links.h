#pragma once

#include "runtime/CString.h"

#include <string_view>
#include <vector>

namespace veldrin::dao {

class Connection;

// What a database keeps of itself beside its tables: links to tables of other files, stored queries and
// relations. It lies in tables whose names begin with "MSys", which no list of tables shows.

struct LinkedName {
    CString file; // the engine's name of the file, "main" for the database itself
    CString table;
};

// Where a table of this name lies.
LinkedName resolveName(Connection& connection, std::string_view table);

struct Link {
    CString name;
    CString path; // of the source file
    CString table;
};
void addLink(Connection& connection, const Link& link);
void dropLink(Connection& connection, std::string_view name);
std::vector<Link> links(Connection& connection);
// Opens the linked files, and makes their tables known to SQL under their names here. A file that cannot be
// opened leaves its tables unknown.
void openLinks(Connection& connection);

// The SQL of a stored query; false without one.
bool findQuery(Connection& connection, std::string_view name, CString& sql);
void storeQuery(Connection& connection, std::string_view name, std::string_view sql);

// Relations are descriptions: the engine does not enforce them.
struct Relation {
    CString name;
    CString table;
    CString foreignTable;
    CString field;
    CString foreignField;
};
std::vector<Relation> relations(Connection& connection);
void addRelation(Connection& connection, const Relation& relation);
void dropRelation(Connection& connection, std::string_view name);

} // namespace veldrin::dao
