// The tree of a grid, and which rows are shown.

#include "grid/CGridCtrl.h"

namespace plumb {

int CGridCtrl::rowLevel(int row) const {
    return hasRow(row) ? rowAt(row).level : 0;
}

bool CGridCtrl::isTreeColumn(int column) const {
    return hasColumn(column) && columnAt(column).isTree;
}

bool CGridCtrl::hasBranch(int row) const {
    return rowLevel(row) > 0 && rowLevel(row + 1) > rowLevel(row);
}

bool CGridCtrl::isExpanded(int row) const {
    return hasBranch(row) && !rowAt(row).isCollapsed;
}

int CGridCtrl::branchEnd(int row) const {
    int end = row + 1;
    if (rowLevel(row) > 0)
        while (rowLevel(end) > rowLevel(row)) ++end;
    return end;
}

bool CGridCtrl::ExpandRow(int row) {
    if (!hasRow(row) || rowLevel(row) < 1) return false;
    if (rowAt(row).isCollapsed) {
        rowAt(row).isCollapsed = false;
        --m_collapsed;
        shapeChanged();
    }
    return true;
}

bool CGridCtrl::CollapseRow(int row) {
    if (!hasBranch(row)) return false;
    if (!rowAt(row).isCollapsed) {
        rowAt(row).isCollapsed = true;
        ++m_collapsed;
        shapeChanged();
    }
    return true;
}

bool CGridCtrl::EnsureVisible(int row, int column) {
    if (!has({row, column})) return false;
    int level = rowLevel(row);
    for (int above = row - 1; above >= 0 && level > 1; --above) {
        if (rowLevel(above) == 0 || rowLevel(above) >= level) continue;
        level = rowLevel(above);
        ExpandRow(above);
    }
    if (m_view)
        m_view->cellWanted({row, column});
    else
        m_wanted = {row, column};
    return true;
}

void CGridCtrl::shapeChanged() {
    m_isLaidOut = false;
    changed();
}

void CGridCtrl::layOutShownRows() const {
    if (m_isLaidOut) return;
    m_isLaidOut = true;
    m_shown.clear();
    m_positions.assign(m_rows.size(), -1);
    int hiddenBelow = 0; // the level of the collapsed row that we are under; 0: none
    for (int row = 0; row < GetRowCount(); ++row) {
        const CGridRow& at = rowAt(row);
        if (hiddenBelow > 0 && at.level > hiddenBelow) continue;
        hiddenBelow = at.isCollapsed ? at.level : 0;
        m_positions[static_cast<std::size_t>(row)] = static_cast<int>(m_shown.size());
        m_shown.push_back(row);
    }
}

int CGridCtrl::shownRowCount() const {
    if (m_collapsed == 0) return GetRowCount();
    layOutShownRows();
    return static_cast<int>(m_shown.size());
}

int CGridCtrl::shownRow(int position) const {
    if (position < 0 || position >= shownRowCount()) return -1;
    return m_collapsed == 0 ? position : m_shown[static_cast<std::size_t>(position)];
}

int CGridCtrl::positionOfRow(int row) const {
    if (!hasRow(row)) return -1;
    if (m_collapsed == 0) return row;
    layOutShownRows();
    return m_positions[static_cast<std::size_t>(row)];
}

} // namespace plumb
