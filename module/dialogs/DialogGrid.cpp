#include "dialogs/DialogGrid.h"

#include "dialogs/DialogFrame.h"
#include "system/AsciiCase.h"
#include "ui/CAcUiDialog.h"

#include <algorithm>
#include <utility>

namespace plumb {

namespace {

constexpr const char* kDuplicateName = "Duplicate names are not allowed.";

} // namespace

DialogGrid::DialogGrid(CAcUiDialog& dialog) : m_dialog(dialog) {
    OnBeginEdit([this](Cell at) {
        m_edited = at;
        m_oldText = GetItemText(at.row, at.column);
        if (!m_isRefusing) m_isRefused = false;
        bool allowed = true;
        m_dialog.guarded([&] { allowed = !mayEdit || mayEdit(at); });
        return allowed;
    });
    OnEndEdit([this](Cell at) {
        bool accepted = true;
        m_isRefused = false;
        m_dialog.guarded([&] { accepted = !accepts || accepts(at); });
        return accepted;
    });
    OnSelectionChanged([this](Cell at) {
        m_dialog.guarded([&] {
            if (std::exchange(m_isRefused, false))
                SetFocusCell(m_edited.row, m_edited.column);
            else if (selected)
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

void DialogGrid::build(std::span<const GridColumnForm> columns, int fixedColumns) {
    SetRowCount(0);
    SetColumnCount(0);
    SetColumnCount(static_cast<int>(columns.size()));
    SetFixedRowCount(1);
    SetFixedColumnCount(fixedColumns);
    SetListMode(true);
    SetRowCount(1);
    for (int column = 0; column < GetColumnCount(); ++column) {
        const GridColumnForm& form = columns[static_cast<std::size_t>(column)];
        const bool isHidden = form.kind == GridColumnKind::kHidden;
        if (isHidden) SetColumnWidth(column, 0);
        SetItemText(0, column, isHidden ? form.field : form.caption);
        SetColumnField(column, form.field);
        if (form.kind == GridColumnKind::kCheck) SetCheckColumn(column);
        if (form.kind == GridColumnKind::kList) SetComboColumn(column, form.list);
        if (form.kind == GridColumnKind::kTree) SetTreeColumn(column);
    }
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
    m_isRefused = true;
    return true;
}

bool DialogGrid::holdsName(int column, const CString& name, int exceptRow, const RowFilter& belongs) const {
    for (int row = 1; row < GetRowCount(); ++row)
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

void DialogGrid::focusAfterDelete(int row, int column) {
    const int last = GetRowCount() - 1;
    if (last >= fixedRowCount()) SetFocusCell(std::min(row, last), column);
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
