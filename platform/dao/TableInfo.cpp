#include "dao/TableInfo.h"

#include "dao/Connection.h"
#include "dao/DaoErrors.h"
#include "dao/Links.h"
#include "dao/SqlText.h"

#include <fmt/format.h>

#include <algorithm>

namespace veldrin::dao {

namespace {

// A default as the file keeps it is an expression; as a value it is what a simple one means.
CString defaultValue(CString expression) {
    if (expression.size() < 2 || expression.front() != '\'' || expression.back() != '\'') return expression;
    CString text;
    for (std::size_t i = 1; i + 1 < expression.size(); ++i) {
        if (expression[i] == '\'') ++i;
        text += expression[i];
    }
    return text;
}

void readFields(Connection& connection, const LinkedName& source, TableInfo& table) {
    const Connection::Lease rows =
        connection.prepare("select name, type, \"notnull\", dflt_value, pk from pragma_table_info(?, ?)");
    rows->bind(1, COleVariant(source.table)).bind(2, COleVariant(source.file));
    int keys = 0;
    while (rows->step()) {
        CDaoFieldInfo field;
        const DeclaredType declared = parseDeclaredType(rows->text(1));
        field.m_strName = rows->text(0);
        field.m_nType = declared.type;
        field.m_lSize = declared.size;
        field.m_bAllowZeroLength =
            declared.allowZeroLength && (declared.type == dbText || declared.type == dbMemo);
        field.m_bRequired = rows->integer(2) != 0;
        field.m_strDefaultValue = defaultValue(rows->text(3));
        field.m_nOrdinalPosition = static_cast<short>(table.fields.size());
        if (rows->integer(4) != 0) {
            ++keys;
            table.keyField = equalNames(rows->text(1), "INTEGER") ? field.m_nOrdinalPosition : -1;
        }
        table.fields.push_back(std::move(field));
    }
    if (keys != 1) table.keyField = -1;
    if (table.keyField >= 0)
        table.fields[static_cast<std::size_t>(table.keyField)].m_lAttributes = dbAutoIncrField;
}

std::vector<IndexInfo::Key> readIndexKeys(Connection& connection, const LinkedName& source,
                                          const CString& index) {
    std::vector<IndexInfo::Key> keys;
    const Connection::Lease rows =
        connection.prepare("select cid, \"desc\" from pragma_index_xinfo(?, ?) where key = 1 order by seqno");
    rows->bind(1, COleVariant(index)).bind(2, COleVariant(source.file));
    while (rows->step()) keys.push_back({static_cast<int>(rows->integer(0)), rows->integer(1) != 0});
    const bool isPlain =
        std::all_of(keys.begin(), keys.end(), [](const auto& key) { return key.column >= 0; });
    return isPlain ? keys : std::vector<IndexInfo::Key>();
}

void readIndexes(Connection& connection, const LinkedName& source, TableInfo& table) {
    if (table.keyField >= 0)
        table.indexes.push_back({table.fields[static_cast<std::size_t>(table.keyField)].m_strName,
                                 {},
                                 {{table.keyField, false}},
                                 true,
                                 true});
    const Connection::Lease rows = connection.prepare(
        "select name, \"unique\", partial from pragma_index_list(?, ?) where origin = 'c' order by seq desc");
    rows->bind(1, COleVariant(source.table)).bind(2, COleVariant(source.file));
    const CString prefix = source.table + ".";
    while (rows->step()) {
        if (rows->integer(2) != 0) continue;
        IndexInfo index;
        index.engineName = rows->text(0);
        index.name = index.engineName;
        if (equalNames(index.name.substr(0, prefix.size()), prefix)) index.name.erase(0, prefix.size());
        index.unique = rows->integer(1) != 0;
        index.keys = readIndexKeys(connection, source, index.engineName);
        if (!index.keys.empty()) table.indexes.push_back(std::move(index));
    }
}

} // namespace

int TableInfo::findField(std::string_view field) const {
    for (const CDaoFieldInfo& info : fields)
        if (equalNames(info.m_strName, field)) return info.m_nOrdinalPosition;
    return -1;
}

const IndexInfo* TableInfo::findIndex(std::string_view index) const {
    for (const IndexInfo& info : indexes)
        if (equalNames(info.name, index)) return &info;
    return nullptr;
}

std::shared_ptr<const TableInfo> readTableInfo(Connection& connection, std::string_view table) {
    auto info = std::make_shared<TableInfo>();
    const LinkedName source = resolveName(connection, table);
    info->name = CString(table);
    info->engineName = bracketed(source.file) + "." + bracketed(source.table);
    const Connection::Lease kind = connection.prepare(
        fmt::format("select count(*) from {}.sqlite_schema where type = 'table' and name = ? collate nocase",
                    bracketed(source.file)));
    kind->bind(1, COleVariant(source.table));
    if (!kind->step() || kind->integer(0) == 0)
        throw CDaoException(kDaoNoSuchTable,
                            fmt::format("There is no table {} in {}.", table, connection.path()));
    readFields(connection, source, *info);
    readIndexes(connection, source, *info);
    return info;
}

std::vector<CString> tableNames(Connection& connection) {
    std::vector<CString> names;
    const Connection::Lease rows =
        connection.prepare("select name from sqlite_schema where type = 'table' and "
                           "name not like 'sqlite\\_%' escape '\\' order by name collate nocase");
    while (rows->step()) names.push_back(rows->text(0));
    return names;
}

CString engineIndexName(std::string_view table, std::string_view index) {
    return bracketed(fmt::format("{}.{}", table, index));
}

void keepYesNo(Connection& connection, std::string_view table) {
    const std::shared_ptr<const TableInfo> info = readTableInfo(connection, table);
    CString differs;
    CString mended;
    for (const CDaoFieldInfo& field : info->fields) {
        if (field.m_nType != dbBoolean) continue;
        const CString name = bracketed(field.m_strName);
        differs +=
            fmt::format("{}new.{} is not 0 and new.{} is not -1", differs.empty() ? "" : " or ", name, name);
        mended += fmt::format("{}{} = case when ifnull(new.{}, 0) = 0 then 0 else -1 end",
                              mended.empty() ? "" : ", ", name, name);
    }
    for (const char* event : {"insert", "update"}) {
        const CString trigger = bracketed(fmt::format("{}.yesno.{}", table, event));
        connection.run(fmt::format("drop trigger if exists {}", trigger).c_str());
        if (differs.empty()) continue;
        connection.run(fmt::format("create trigger {} after {} on {} when {} begin update {} set {} where "
                                   "rowid = new.rowid; end",
                                   trigger, event, bracketed(table), differs, bracketed(table), mended)
                           .c_str());
    }
}

} // namespace veldrin::dao
