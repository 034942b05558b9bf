#include "grid/CGridCtrl.h"

#include <algorithm>
#include <utility>

namespace plumb {

using veldrin::CellKind;

// Shape.

void CGridCtrl::SetColumnCount(int count) {
    count = std::max(count, 0);
    if (m_editor && m_editor->cell.column >= count) dropEditor();
    const auto size = static_cast<std::size_t>(count);
    m_columns.resize(size);
    for (const auto& row : m_rows) {
        row->cells.resize(size);
        std::erase_if(row->merges, [count](const CGridMerge& merge) { return merge.last >= count; });
    }
    if (m_focus.column >= count) m_focus = m_anchor = veldrin::kNoCell;
    changed();
}

void CGridCtrl::SetRowCount(int count) {
    count = std::max(count, 0);
    if (count < GetRowCount()) {
        const bool losesFocus = m_focus.row >= count;
        eraseRows(count, GetRowCount());
        if (losesFocus) m_focus = m_anchor = veldrin::kNoCell;
    }
    m_rows.reserve(static_cast<std::size_t>(count));
    while (GetRowCount() < count) insertRow(GetRowCount(), 0);
    changed();
}

bool CGridCtrl::SetColumnWidth(int column, int width) {
    if (!hasColumn(column) || width < 0) return false;
    columnAt(column).width = width;
    changed();
    return true;
}

bool CGridCtrl::SetColumnField(int column, const CString& field) {
    if (!hasColumn(column)) return false;
    const int other = field.empty() ? -1 : FieldColumn(field);
    if (other >= 0) columnAt(other).field.clear(); // one name to one column
    columnAt(column).field = field;
    return true;
}

int CGridCtrl::FieldColumn(const CString& field) const {
    if (field.empty()) return -1;
    for (int column = 0; column < GetColumnCount(); ++column)
        if (columnAt(column).field == field) return column;
    return -1;
}

int CGridCtrl::AppendRow(const CString& text) {
    return InsertRow(GetRowCount(), text);
}

int CGridCtrl::InsertRow(int position, const CString& text) {
    if (position < 0 || position > GetRowCount()) return -1;
    const int row = insertRow(position, 0);
    if (!text.empty()) SetItemText(row, 0, text);
    return row;
}

int CGridCtrl::InsertTreeRow(int level, int position) {
    if (position == -1) position = GetRowCount();
    if (level < 1 || position < 0 || position > GetRowCount()) return -1;
    return insertRow(position, level);
}

int CGridCtrl::insertRow(int position, int level) {
    auto row = std::make_unique<CGridRow>();
    row->cells.resize(m_columns.size());
    row->level = level;
    m_rows.insert(m_rows.begin() + position, std::move(row));
    const auto shift = [position](Cell& cell) {
        if (cell.row >= position) ++cell.row;
    };
    shift(m_focus);
    shift(m_anchor);
    if (m_editor) shift(m_editor->cell);
    shapeChanged();
    return position;
}

bool CGridCtrl::DeleteRow(int row) {
    if (!hasRow(row)) return false;
    eraseRows(row, branchEnd(row));
    return true;
}

// What points behind the rows follows its row; what points at them goes to the row that takes their place,
// or to the last one.
void CGridCtrl::eraseRows(int first, int end) {
    if (m_editor && m_editor->cell.row >= first && m_editor->cell.row < end) dropEditor();
    for (int row = first; row < end; ++row) m_collapsed -= rowAt(row).isCollapsed ? 1 : 0;
    m_rows.erase(m_rows.begin() + first, m_rows.begin() + end);
    const auto follow = [&](Cell& cell) {
        if (cell.row < first) return;
        cell.row = cell.row < end ? std::min(first, GetRowCount() - 1) : cell.row - (end - first);
        if (cell.row < m_fixedRows) cell = veldrin::kNoCell;
    };
    follow(m_focus);
    follow(m_anchor);
    if (m_anchor == veldrin::kNoCell) m_anchor = m_focus;
    if (m_editor) follow(m_editor->cell);
    if (m_editor && !has(m_editor->cell)) dropEditor();
    shapeChanged();
}

bool CGridCtrl::SwapRows(int first, int second) {
    if (!hasRow(first) || !hasRow(second)) return false;
    std::swap(m_rows[static_cast<std::size_t>(first)], m_rows[static_cast<std::size_t>(second)]);
    const auto follow = [&](Cell& cell) {
        if (cell.row == first)
            cell.row = second;
        else if (cell.row == second)
            cell.row = first;
    };
    follow(m_focus);
    follow(m_anchor);
    if (m_editor) follow(m_editor->cell);
    shapeChanged();
    return true;
}

// Kinds of cells.

bool CGridCtrl::SetCheckColumn(int column) {
    if (!hasColumn(column)) return false;
    columnAt(column).kind = CellKind::kCheck;
    changed();
    return true;
}

bool CGridCtrl::SetComboColumn(int column, const CString& list) {
    if (!hasColumn(column)) return false;
    columnAt(column).list = CGridCellCombo::fromText(list);
    columnAt(column).kind = columnAt(column).list->isOpen ? CellKind::kOpenList : CellKind::kClosedList;
    changed();
    return true;
}

bool CGridCtrl::SetTreeColumn(int column) {
    if (!hasColumn(column)) return false;
    for (int other = 0; other < GetColumnCount(); ++other) columnAt(other).isTree = other == column;
    changed();
    return true;
}

bool CGridCtrl::SetItemCombo(int row, int column, const CString& list) {
    if (!has({row, column})) return false;
    CGridCellFormat& format = cellAt({row, column}).ownFormat();
    format.list = CGridCellCombo::fromText(list);
    format.kind = format.list->isOpen ? CellKind::kOpenList : CellKind::kClosedList;
    changed();
    return true;
}

bool CGridCtrl::SetItemKind(int row, int column, CellKind kind) {
    if (!has({row, column})) return false;
    cellAt({row, column}).ownFormat().kind = kind;
    changed();
    return true;
}

bool CGridCtrl::SetItemReadOnly(int row, int column, bool readOnly) {
    if (!has({row, column})) return false;
    cellAt({row, column}).ownFormat().isReadOnly = readOnly;
    return true;
}

CellKind CGridCtrl::cellKind(int row, int column) const {
    if (!has({row, column}) || row < m_fixedRows) return CellKind::kText;
    const CGridCell& cell = cellAt({row, column});
    if (cell.format && cell.format->kind) return *cell.format->kind;
    return columnAt(column).kind;
}

const CGridCellCombo* CGridCtrl::listOf(Cell cell) const {
    const CellKind kind = cellKind(cell.row, cell.column);
    if (kind != CellKind::kOpenList && kind != CellKind::kClosedList) return nullptr;
    const auto& format = cellAt(cell).format;
    return format && format->list ? format->list.get() : columnAt(cell.column).list.get();
}

std::vector<CString> CGridCtrl::cellItems(int row, int column) const {
    const CGridCellCombo* list = has({row, column}) ? listOf({row, column}) : nullptr;
    return list ? list->items : std::vector<CString>();
}

// Texts.

CGridCell& CGridCtrl::cellAt(Cell cell) {
    return rowAt(cell.row).cells[static_cast<std::size_t>(cell.column)];
}

const CGridCell& CGridCtrl::cellAt(Cell cell) const {
    return rowAt(cell.row).cells[static_cast<std::size_t>(cell.column)];
}

CString CGridCtrl::GetItemText(int row, int column) const {
    if (!has({row, column})) return {};
    const CString& text = cellAt({row, column}).text;
    return text.empty() && cellKind(row, column) == CellKind::kCheck ? kNoText : text;
}

// A box is cleared by a no alone.
bool CGridCtrl::SetItemText(int row, int column, const CString& text) {
    if (!has({row, column})) return false;
    const bool setsBox = text.empty() && cellKind(row, column) == CellKind::kCheck;
    cellAt({row, column}).text = setsBox ? kYesText : text;
    changed();
    return true;
}

bool CGridCtrl::isChecked(int row, int column) const {
    return cellKind(row, column) == CellKind::kCheck && GetItemText(row, column) != kNoText;
}

// Whoever shows it.

void CGridCtrl::setView(veldrin::TableView* view) {
    m_view = view;
    if (m_view && has(m_wanted)) m_view->cellWanted(m_wanted);
    m_wanted = veldrin::kNoCell;
}

void CGridCtrl::changed() {
    if (m_view && m_isRedrawn) m_view->tableChanged();
}

void CGridCtrl::SetRedraw(bool redraw) {
    m_isRedrawn = redraw;
    changed();
}

} // namespace plumb
