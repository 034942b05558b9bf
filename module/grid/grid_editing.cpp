// Editing in the cells of a grid.

#include "grid/CGridCtrl.h"

#include <algorithm>
#include <utility>

namespace plumb {

using veldrin::CellKind;
using veldrin::HeldKeys;
using veldrin::TableKey;

namespace {

bool isTypeable(const CString& text) {
    return !text.empty() &&
           std::none_of(text.begin(), text.end(), [](char c) { return c >= 0 && (c < ' ' || c == 0x7F); });
}

bool movesFocus(TableKey key) {
    switch (key) {
    case TableKey::kUp:
    case TableKey::kDown:
    case TableKey::kLeft:
    case TableKey::kRight:
    case TableKey::kHome:
    case TableKey::kEnd:
    case TableKey::kPageUp:
    case TableKey::kPageDown: return true;
    default: return false;
    }
}

} // namespace

void CGridCtrl::editorChanged() {
    if (m_view) m_view->editorChanged();
    changed();
}

bool CGridCtrl::canEdit(Cell cell) const {
    if (!has(cell) || isFixed(cell) || cellKind(cell.row, cell.column) == CellKind::kCheck) return false;
    const auto& format = cellAt(cell).format;
    return !format || !format->isReadOnly;
}

bool CGridCtrl::beginEdit(Cell cell, Begun begun) {
    if (!canEdit(cell)) return false;
    if (m_onBeginEdit && !m_onBeginEdit(cell)) return false;
    if (!canEdit(cell) || m_editor) return m_editor.has_value();
    openEditor(cell, begun);
    return true;
}

void CGridCtrl::StartEdit() {
    const Cell cell = m_focus;
    if (m_editor || !canEdit(cell)) return;
    if (m_onBeginEdit) m_onBeginEdit(cell); // is told, but not asked
    if (!m_editor && m_focus == cell && canEdit(cell)) openEditor(cell, Begun::kByKeyboard);
}

// Opens with the cell's text, all of it selected, so that typing replaces it.
void CGridCtrl::openEditor(Cell cell, Begun begun) {
    EnsureVisible(cell.row, cell.column);
    const CString& text = cellAt(cell).text;
    m_begun = begun;
    m_editor = veldrin::CellEditor{cell, cellKind(cell.row, cell.column), text,
                                   0,    static_cast<int>(text.size()),   cellItems(cell.row, cell.column)};
    editorChanged();
}

void CGridCtrl::dropEditor() {
    if (!m_editor) return;
    m_editor.reset();
    editorChanged();
}

bool CGridCtrl::EndEdit() {
    if (!m_editor) return true;
    const Cell cell = m_editor->cell;
    const CString entered = std::move(m_editor->text);
    dropEditor();
    if (!has(cell)) return true;
    const CString old = cellAt(cell).text;
    if (entered == old) return true;
    SetItemText(cell.row, cell.column, entered);
    if (!m_onEndEdit || m_onEndEdit(cell, old)) return true;
    if (has(cell)) SetItemText(cell.row, cell.column, old);
    return false;
}

bool CGridCtrl::userEndsEdit() {
    return EndEdit();
}

bool CGridCtrl::CloseListWith(const CString& text) {
    if (!m_editor || m_editor->kind == CellKind::kText) return false;
    m_editor->text = text;
    EndEdit();
    return true;
}

// What a closed list does not have cannot be entered.
bool CGridCtrl::setEditorText(const CString& text) {
    if (m_editor->kind != CellKind::kClosedList) {
        m_editor->text = text;
        return true;
    }
    const CGridCellCombo* list = listOf(m_editor->cell);
    const int item = list ? list->find(text) : -1;
    if (item >= 0) m_editor->text = list->items[static_cast<std::size_t>(item)];
    return item >= 0;
}

bool CGridCtrl::userEdits(const CString& text, int first, int last) {
    if (!m_editor || !setEditorText(text)) return false;
    const int end = static_cast<int>(m_editor->text.size());
    m_editor->first = std::clamp(first, 0, end);
    m_editor->last = std::clamp(last, m_editor->first, end);
    return true;
}

bool CGridCtrl::userTypes(const CString& text) {
    if (!isTypeable(text)) return false;
    if (!m_editor) {
        if (cellKind(m_focus.row, m_focus.column) == CellKind::kCheck)
            return text == " " && toggleCheck(m_focus);
        if (!beginEdit(m_focus, Begun::kByKeyboard)) return false;
    }
    if (m_editor->kind == CellKind::kClosedList) {
        const CGridCellCombo* list = listOf(m_editor->cell);
        const int item = list ? list->findPrefix(text) : -1;
        if (item >= 0) m_editor->text = list->items[static_cast<std::size_t>(item)];
    } else {
        const auto from = static_cast<std::size_t>(m_editor->first);
        m_editor->text.replace(from, static_cast<std::size_t>(m_editor->last) - from, text);
        m_editor->first = m_editor->last = static_cast<int>(from + text.size());
    }
    editorChanged();
    return true;
}

bool CGridCtrl::userPicks(int item) {
    if (!m_editor || item < 0 || item >= static_cast<int>(m_editor->items.size())) return false;
    const Cell cell = m_editor->cell;
    const CString picked = m_editor->items[static_cast<std::size_t>(item)];
    const CString before = std::exchange(m_editor->text, picked);
    m_editor->first = m_editor->last = static_cast<int>(picked.size());
    const bool stays = !m_onListSelection || m_onListSelection(cell, picked);
    if (!stays && m_editor && m_editor->cell == cell) {
        m_editor->text = before;
        m_editor->first = m_editor->last = static_cast<int>(before.size());
    }
    editorChanged();
    return stays;
}

bool CGridCtrl::editorKey(TableKey key, HeldKeys held) {
    if (key == TableKey::kReturn) {
        EndEdit();
        return true;
    }
    if (key == TableKey::kEscape) {
        dropEditor();
        return true;
    }
    const bool ends =
        key == TableKey::kTab || (movesFocus(key) && (m_begun == Begun::kByKeyboard || held.control));
    if (!ends) return false;
    EndEdit();
    moveFocus(key, held);
    return true;
}

bool CGridCtrl::userKeys(TableKey key, HeldKeys held) {
    if (m_editor) return editorKey(key, held);
    if (movesFocus(key) || key == TableKey::kTab) return moveFocus(key, held);
    switch (key) {
    case TableKey::kSpace: return toggleCheck(m_focus);
    case TableKey::kF2: return beginEdit(m_focus, Begun::kByKeyboard);
    case TableKey::kDelete:
    case TableKey::kBackspace:
        if (!beginEdit(m_focus, Begun::kByKeyboard)) return false;
        if (m_editor->kind != CellKind::kClosedList) m_editor->text.clear();
        m_editor->first = m_editor->last = 0;
        editorChanged();
        return true;
    default: return false;
    }
}

void CGridCtrl::userDoubleClicks(Cell cell) {
    const Cell at = originOf(cell);
    if (!m_editor && at == m_focus) beginEdit(at, Begun::kByMouse);
}

// Nobody is asked before: the dialog hears of it as of the end of an edit.
bool CGridCtrl::toggleCheck(Cell cell) {
    if (!has(cell) || isFixed(cell) || cellKind(cell.row, cell.column) != CellKind::kCheck) return false;
    const auto& format = cellAt(cell).format;
    if (format && format->isReadOnly) return false;
    const CString old = GetItemText(cell.row, cell.column);
    SetItemText(cell.row, cell.column, old == kNoText ? kYesText : kNoText);
    if (!m_onEndEdit || m_onEndEdit(cell, old)) return true;
    if (has(cell)) SetItemText(cell.row, cell.column, old);
    return true;
}

} // namespace plumb
