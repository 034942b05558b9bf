#include "dialogs/DialogGrid.h"

#include "dialogs/ProjectDialog.h"
#include "system/AsciiCase.h"

#include <algorithm>
#include <utility>

namespace plumb {

namespace {

constexpr const char* kDuplicateName = "Duplicate names are not allowed.";

} // namespace

DialogGrid::DialogGrid(ProjectDialog& dialog, const GridForm& form) : m_dialog(dialog), m_form(form) {
    dialog.adopt(*this);
    OnBeginEdit([this](Cell at) {
        m_edited = at;
        m_oldText = GetItemText(at.row, at.column);
        if (!m_isRefusing) m_isRefused = false;
        bool allowed = true;
        m_dialog.guarded([&] { allowed = !mayEdit || mayEdit(at); });
        return allowed;
    });
    OnEndEdit([this](Cell at, const CString& old) {
        bool accepted = true;
        m_edited = at;
        m_oldText = old;
        m_isRefused = false;
        m_dialog.guarded([&] { accepted = !accepts || accepts(at); });
        return accepted;
    });
    OnSelectionChanged([this](Cell at) {
        m_dialog.guarded([&] {
            if (std::exchange(m_isRefused, false)) {
                m_isHeld = true;
                SetFocusCell(m_edited.row, m_edited.column);
            } else if (selected)
                selected(at);
        });
    });
    OnClick([this](Cell at) {
        m_dialog.guarded([&] {
            if (clicked) clicked(at);
        });
    });
    OnListSelection([this](Cell at, const CString& item) {
        bool stays = true;
        m_dialog.guarded([&] { stays = !picked || picked(at, item); });
        return stays;
    });
}

void DialogGrid::build() {
    m_removedKeys.clear();
    m_isRefused = false;
    SetRowCount(0);
    SetColumnCount(0);
    SetColumnCount(static_cast<int>(m_form.columns.size()));
    SetFixedRowCount(m_form.fixedRows);
    SetFixedColumnCount(m_form.fixedColumns);
    SetListMode(true);
    SetRowCount(m_form.fixedRows);
    for (int column = 0; column < GetColumnCount(); ++column) {
        const GridColumnForm& form = m_form.columns[static_cast<std::size_t>(column)];
        const bool isHidden = form.kind == GridColumnKind::kHidden;
        if (isHidden) SetColumnWidth(column, 0);
        SetItemText(0, column, isHidden ? form.field : form.caption);
        SetColumnField(column, form.field);
        if (form.kind == GridColumnKind::kCheck) SetCheckColumn(column);
        if (form.kind == GridColumnKind::kList) SetComboColumn(column, form.list);
        if (form.kind == GridColumnKind::kTree) SetTreeColumn(column);
    }
}

void DialogGrid::userPresses(Cell cell, bool extend) {
    m_isHeld = false;
    CGridCtrl::userPresses(cell, extend);
}

void DialogGrid::userReleases(Cell cell, veldrin::CellPart part) {
    if (!std::exchange(m_isHeld, false)) CGridCtrl::userReleases(cell, part);
}

// Escape, or Return on the old text, settles a refusal.
bool DialogGrid::userKeys(veldrin::TableKey key, veldrin::HeldKeys held) {
    const bool isTaken = CGridCtrl::userKeys(key, held);
    const bool settles = key == veldrin::TableKey::kEscape || key == veldrin::TableKey::kReturn;
    if (settles && !editor()) m_isRefused = false;
    return isTaken;
}

bool DialogGrid::refuse(const CString& message) {
    const Cell at = m_edited;
    SetItemText(at.row, at.column, m_oldText);
    tellUser(message);
    m_dialog.SetActiveWindow();
    SetFocusCell(at.row, at.column);
    m_isRefusing = true;
    StartEdit();
    m_isRefusing = false;
    m_isRefused = editor() != nullptr; // a box has none
    return true;
}

bool DialogGrid::holdsName(int column, const CString& name, int exceptRow, const RowFilter& belongs) const {
    for (int row = fixedRowCount(); row < GetRowCount(); ++row)
        if (row != exceptRow && (!belongs || belongs(row)) &&
            veldrin::asciiEqual(GetItemText(row, column), name))
            return true;
    return false;
}

bool DialogGrid::acceptsUniqueName(Cell at, const RowFilter& belongs) {
    const CString name = GetItemText(at.row, at.column);
    if (name == m_oldText || !holdsName(at.column, name, at.row, belongs)) return true;
    return refuse(kDuplicateName);
}

CString DialogGrid::freeName(int column, const CString& word, const RowFilter& belongs) const {
    return firstFreeName([&](int number) { return word + std::to_string(number); },
                         [&](const CString& name) { return holdsName(column, name, -1, belongs); });
}

void DialogGrid::editCell(int row, int column) {
    EnsureVisible(row, column);
    SetFocusCell(row, column);
    StartEdit();
}

void DialogGrid::removeRow(int row, const CString& keyField, int focusColumn) {
    const int key = std::atoi(GetTextByField(row, keyField).c_str());
    if (!DeleteRow(row)) return;
    if (key > 0) m_removedKeys.push_back(key);
    const int last = GetRowCount() - 1;
    if (last >= fixedRowCount()) SetFocusCell(std::min(row, last), focusColumn);
}

void DialogGrid::lookHeading(int row) {
    for (int column = 0; column < GetColumnCount(); ++column)
        SetItemColors(row, column, {}, FixedBackgroundColor());
}

void DialogGrid::lookFixed(int row) {
    for (int column = 0; column < GetColumnCount(); ++column)
        SetItemColors(row, column, FixedTextColor(), FixedBackgroundColor());
}

} // namespace plumb
