#include "dialogs/QueryRows.h"

#include "database/CDBConnection.h"
#include "ui/DialogControls.h"
#include "util/NumberText.h"
#include "util/VariantText.h"

#include <algorithm>

namespace plumb {

namespace {

constexpr int kAllDecimals = 10;

} // namespace

QueryRows::QueryRows(CDBConnection& connection, const CString& sql)
    : m_hasFailed(!connection.Select(sql, m_rows)) {}

long QueryRows::Row::integer(std::size_t column) const {
    return VariantToLong(m_rows->at(m_at, column));
}

double QueryRows::Row::real(std::size_t column) const {
    return VariantToDouble(m_rows->at(m_at, column));
}

CString QueryRows::Row::text(std::size_t column) const {
    const COleVariant& value = m_rows->at(m_at, column);
    return value.isReal() ? DoubleToText(value.real(), kAllDecimals, true) : VariantToText(value, 0);
}

void addItems(ListControl& list, CDBConnection& connection, const CString& sql) {
    for (const auto& row : QueryRows(connection, sql))
        list.AddString(row.text(1), static_cast<int>(row.integer(0)));
}

void selectItem(ListControl& list, long data) {
    list.SetCurSel(std::max(list.FindData(static_cast<int>(data)), 0));
}

} // namespace plumb
