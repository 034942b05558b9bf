#include "projects/ProjectDump.h"

#include "dao/CDaoDatabase.h"
#include "dao/Connection.h"
#include "dao/SqlText.h"
#include "dao/TableInfo.h"

#include <fmt/format.h>

namespace veldrin {

namespace {

std::string textLiteral(const std::string& text) {
    std::string literal = "\"";
    for (const char c : text) {
        switch (c) {
        case '"': literal += "\\\""; break;
        case '\\': literal += "\\\\"; break;
        case '\n': literal += "\\n"; break;
        case '\r': literal += "\\r"; break;
        case '\t': literal += "\\t"; break;
        default: literal += c;
        }
    }
    return literal + "\"";
}

std::string valueText(const COleVariant& value) {
    if (value.vt() == VT_BOOL) return value.whole() != 0 ? "yes" : "no";
    if (value.vt() == VT_DATE) return dateText(value.real());
    if (value.isWhole()) return std::to_string(value.whole());
    if (value.isReal()) return fmt::format("{}", value.real()); // shortest that reads back the same
    return textLiteral(value.text());
}

void dumpTable(CDaoDatabase& database, const CString& table, std::ostream& out) {
    // By the first column, which is the key, and by all others where keys are the same.
    const CString name = dao::bracketed(table);
    const RowArray columns =
        database.Select(fmt::format("select name from pragma_table_info({})", dao::quoted(table)));
    CString order;
    for (std::size_t i = 0; i < columns.rows(); ++i)
        order += (i == 0 ? "" : ", ") + dao::bracketed(columns.at(i, 0).text());
    const RowArray rows = database.Select(fmt::format("select * from {} order by {}", name, order));
    out << "\n[" << table << "] " << rows.rows() << "\n";
    for (std::size_t row = 0; row < rows.rows(); ++row) {
        out << "\n";
        for (std::size_t column = 0; column < rows.columns(); ++column) {
            const COleVariant& value = rows.at(row, column);
            if (!value.isNull()) out << rows.name(column) << " = " << valueText(value) << "\n";
        }
    }
}

} // namespace

void dumpProject(const std::string& path, std::ostream& out) {
    CDaoDatabase database;
    database.OpenToRead(path);
    database.BeginTrans(); // all of it as of one moment
    out << "Project database. A field that is not listed is null.\n";
    for (const CString& table : dao::tableNames(database.connection())) dumpTable(database, table, out);
    database.CommitTrans();
}

} // namespace veldrin
