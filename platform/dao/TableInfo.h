#pragma once

#include "dao/ColumnTypes.h"

#include <memory>
#include <string_view>
#include <vector>

namespace veldrin::dao {

class Connection;

struct IndexInfo {
    struct Key {
        int column; // of the table's fields
        bool descending;
    };
    CString name;
    CString engineName; // the engine's names are of the whole file; empty for the key that numbers the rows
    std::vector<Key> keys;
    bool unique = false;
    bool primary = false;
};

// What a table is made of, as its file says.
struct TableInfo {
    CString name;
    CString engineName; // in brackets, with the file that it lies in
    std::vector<CDaoFieldInfo> fields;
    std::vector<IndexInfo> indexes;
    int keyField = -1; // the one that numbers the rows; -1 without

    int findField(std::string_view field) const; // without regard to case; -1 without
    const IndexInfo* findIndex(std::string_view index) const;
};

// Throws kDaoNoSuchTable. A linked table is described as its source is.
std::shared_ptr<const TableInfo> readTableInfo(Connection& connection, std::string_view table);

// The tables of the file itself; the engine's own are not among them.
std::vector<CString> tableNames(Connection& connection);

// The engine's name for an index of a table.
CString engineIndexName(std::string_view table, std::string_view index);

// Makes the engine store every yes/no of the table as -1 or 0, whatever a statement says. Called when the
// table's fields have changed.
void keepYesNo(Connection& connection, std::string_view table);

} // namespace veldrin::dao
