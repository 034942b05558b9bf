// Focus and selection of a grid, and how the user moves them.

#include "grid/CGridCtrl.h"

#include <algorithm>

namespace plumb {

using veldrin::CellPart;
using veldrin::HeldKeys;
using veldrin::TableKey;

namespace {

constexpr int kPageRows = 10; // while nobody shows the grid

} // namespace

bool CGridCtrl::isShownColumn(int column) const {
    return columnWidth(column) > 0;
}

// The outermost column that the user can reach; -1 without one.
int CGridCtrl::edgeColumn(bool last) const {
    int found = -1;
    for (int column = m_fixedColumns; column < GetColumnCount(); ++column) {
        if (!isShownColumn(column)) continue;
        found = column;
        if (!last) break;
    }
    return found;
}

bool CGridCtrl::SetFocusCell(int row, int column) {
    const Cell cell{row, column};
    if (!has(cell)) return false;
    if (m_editor && m_editor->cell != cell) EndEdit();
    if (!has(cell)) return false;
    m_focus = m_anchor = cell;
    m_wishColumn = column;
    changed();
    return true;
}

bool CGridCtrl::SetFocusCell(int row) {
    return SetFocusCell(row, m_focus.column >= 0 ? m_focus.column : std::max(edgeColumn(false), 0));
}

CGridCtrl::Range CGridCtrl::GetSelectedRange() const {
    if (m_focus == veldrin::kNoCell) return {};
    Range range;
    range.firstRow = std::min(m_focus.row, m_anchor.row);
    range.lastRow = std::max(m_focus.row, m_anchor.row);
    range.firstColumn = m_isListMode ? 0 : std::min(m_focus.column, m_anchor.column);
    range.lastColumn = m_isListMode ? GetColumnCount() - 1 : std::max(m_focus.column, m_anchor.column);
    return range;
}

bool CGridCtrl::isSelected(int row, int column) const {
    if (isFixed({row, column})) return false;
    const Range range = GetSelectedRange();
    return row >= range.firstRow && row <= range.lastRow && column >= range.firstColumn &&
           column <= range.lastColumn;
}

void CGridCtrl::focusByUser(Cell cell, bool extend) {
    if (m_focus == cell && (extend || m_anchor == cell)) return;
    m_focus = cell;
    if (!extend || m_anchor == veldrin::kNoCell) m_anchor = cell;
    EnsureVisible(cell.row, cell.column);
    changed();
    if (m_onSelectionChanged) m_onSelectionChanged(cell);
}

// The dialog may have put the focus back to a cell that it had refused, and then its editor stays.
void CGridCtrl::endStrayEdit() {
    if (m_editor && m_editor->cell != m_focus) EndEdit();
}

void CGridCtrl::userPresses(Cell cell, bool extend) {
    const Cell pressed = originOf(cell);
    if (m_editor && m_editor->cell == pressed) return;
    EndEdit();
    if (!has(pressed) || isFixed(pressed)) return;
    m_wishColumn = pressed.column;
    focusByUser(pressed, extend);
    endStrayEdit();
}

void CGridCtrl::userReleases(Cell cell, CellPart part) {
    const Cell released = originOf(cell);
    if (!has(released) || released.row < m_fixedRows) return;
    if (m_editor && m_editor->cell != released) return;              // the press did not get away from there
    if (part == CellPart::kExpandBox) return toggleBranch(released); // of a tree of headers, too
    if (isFixed(released)) return;
    if (part == CellPart::kCheckBox) toggleCheck(released);
    if (m_onClick) m_onClick(released);
}

// The dialog hears of the click first: it may fill the branch before it opens.
void CGridCtrl::toggleBranch(Cell cell) {
    const bool opens = rowAt(cell.row).isCollapsed;
    if (m_onClick) m_onClick(cell);
    if (opens)
        ExpandRow(cell.row);
    else
        CollapseRow(cell.row);
}

CGridCtrl::Cell CGridCtrl::rowsFromFocus(int rows) const {
    const int first = std::min(m_fixedRows, shownRowCount() - 1);
    const int position = std::clamp(positionOfRow(m_focus.row) + rows, first, shownRowCount() - 1);
    const int column = isShownColumn(m_wishColumn) ? m_wishColumn : m_focus.column;
    return originOf({shownRow(position), column});
}

// The next cell that the user can reach in that direction; with wrap in the rows beyond, too.
CGridCtrl::Cell CGridCtrl::besideFocus(int step, bool wrap) const {
    Cell cell = m_focus;
    for (;;) {
        const veldrin::CellLook look = cellLook(cell.row, cell.column);
        cell.column += step > 0 ? std::max(look.span, 1) : -1;
        if (cell.column < m_fixedColumns || cell.column >= GetColumnCount()) {
            const int position = positionOfRow(cell.row) + step;
            if (!wrap || position < m_fixedRows || position >= shownRowCount()) return m_focus;
            cell = {shownRow(position), edgeColumn(step < 0)};
        }
        const Cell origin = originOf(cell);
        if (isShownColumn(cell.column) && origin != m_focus) return origin;
    }
}

CGridCtrl::Cell CGridCtrl::nextCell(TableKey key, HeldKeys held) const {
    const int page = m_view ? std::max(m_view->pageRows(), 1) : kPageRows;
    const int all = shownRowCount();
    switch (key) {
    case TableKey::kUp: return rowsFromFocus(-1);
    case TableKey::kDown: return rowsFromFocus(1);
    case TableKey::kPageUp: return rowsFromFocus(-page);
    case TableKey::kPageDown: return rowsFromFocus(page);
    case TableKey::kLeft: return besideFocus(-1, false);
    case TableKey::kRight: return besideFocus(1, false);
    case TableKey::kTab: return besideFocus(held.shift ? -1 : 1, true);
    case TableKey::kHome:
        if (held.control) return rowsFromFocus(-all);
        return originOf({m_focus.row, edgeColumn(false)});
    case TableKey::kEnd:
        if (held.control) return rowsFromFocus(all);
        return originOf({m_focus.row, edgeColumn(true)});
    default: return m_focus;
    }
}

// Across the tree itself, or across all columns where the tree is a header that the focus cannot reach.
bool CGridCtrl::opensByKeys(int column) const {
    for (int header = 0; header < m_fixedColumns; ++header)
        if (isTreeColumn(header)) return true;
    return isTreeColumn(column);
}

// False when the key leads nowhere, so that it may mean something to others.
bool CGridCtrl::moveFocus(TableKey key, HeldKeys held) {
    if (GetRowCount() <= m_fixedRows || edgeColumn(false) < 0) return false;
    Cell cell{m_fixedRows, edgeColumn(false)};
    if (has(m_focus) && !isFixed(m_focus) && IsRowShown(m_focus.row)) cell = nextCell(key, held);
    const bool moves = cell != m_focus;
    const bool isAcross = key == TableKey::kLeft || key == TableKey::kRight;
    if (!moves && isAcross && opensByKeys(m_focus.column) && hasBranch(m_focus.row)) {
        if ((key == TableKey::kRight) != isExpanded(m_focus.row)) toggleBranch(m_focus);
        return true;
    }
    if (!moves) return key != TableKey::kTab;
    if (isAcross || key == TableKey::kTab) m_wishColumn = cell.column;
    focusByUser(cell, held.shift && key != TableKey::kTab);
    endStrayEdit();
    return true;
}

} // namespace plumb
