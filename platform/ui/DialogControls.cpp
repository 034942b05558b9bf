#include "ui/DialogControls.h"

#include "system/AsciiCase.h"
#include "ui/CAcUiDialog.h"

#include <algorithm>

DialogControl::DialogControl(CAcUiDialog& dialog, const ControlTemplate& form)
    : m_text(form.caption), m_dialog(dialog), m_form(form), m_isEnabled((form.flags & kDisabled) == 0) {}
DialogControl::~DialogControl() = default;

void DialogControl::changed() {
    m_dialog.controlChanged(*this);
}

bool DialogControl::takesFocus() const {
    return kind() != ControlKind::kText && kind() != ControlKind::kImage && kind() != ControlKind::kFrame;
}

void DialogControl::EnableWindow(bool enable) {
    if (m_isEnabled == enable) return;
    m_isEnabled = enable;
    changed();
}

void DialogControl::SetFocus() {
    m_dialog.setFocus(id());
}

void DialogControl::SetWindowText(const CString& text) {
    m_text = text;
    changed();
}

void EditControl::SetSel(int first, int last) {
    m_first = first;
    m_last = last;
    ++m_requests;
    changed();
}

void EditControl::SelectAll() {
    SetSel(0, static_cast<int>(m_text.size()));
}

void EditControl::userSelects(int first, int last) {
    m_first = first;
    m_last = last;
}

void CheckControl::SetCheck(bool check) {
    m_isChecked = check;
    changed();
}

int ListControl::AddString(const CString& text, int data) {
    int at = GetCount();
    if (form().flags & kSortedItems) {
        const auto place =
            std::upper_bound(m_items.begin(), m_items.end(), text,
                             [](const CString& t, const Item& i) { return veldrin::asciiLess(t, i.text); });
        at = static_cast<int>(place - m_items.begin());
    }
    return InsertString(at, text, data);
}

int ListControl::InsertString(int at, const CString& text, int data) {
    at = std::clamp(at, 0, GetCount());
    m_items.insert(m_items.begin() + at, {text, data});
    if (m_selected >= at) ++m_selected;
    changed();
    return at;
}

void ListControl::DeleteString(int at) {
    if (!has(at)) return;
    m_items.erase(m_items.begin() + at);
    if (m_selected == at)
        m_selected = kNone;
    else if (m_selected > at)
        --m_selected;
    changed();
}

void ListControl::ResetContent() {
    m_items.clear();
    m_selected = kNone;
    changed();
}

CString ListControl::GetText(int at) const {
    return has(at) ? m_items[static_cast<std::size_t>(at)].text : CString();
}

int ListControl::GetItemData(int at) const {
    return has(at) ? m_items[static_cast<std::size_t>(at)].data : 0;
}

void ListControl::SetItemData(int at, int data) {
    if (has(at)) m_items[static_cast<std::size_t>(at)].data = data;
}

int ListControl::FindStringExact(const CString& text) const {
    int found = kNone;
    for (int at = 0; at < GetCount(); ++at) {
        const CString& item = m_items[static_cast<std::size_t>(at)].text;
        if (item == text) return at;
        if (found == kNone && veldrin::asciiEqual(item, text)) found = at;
    }
    return found;
}

int ListControl::FindStringPrefix(const CString& start) const {
    for (int at = 0; at < GetCount(); ++at) {
        if (veldrin::asciiStartsWith(m_items[static_cast<std::size_t>(at)].text, start)) return at;
    }
    return kNone;
}

int ListControl::FindData(int data) const {
    for (int at = 0; at < GetCount(); ++at)
        if (m_items[static_cast<std::size_t>(at)].data == data) return at;
    return kNone;
}

void ListControl::SetCurSel(int at) {
    m_selected = has(at) ? at : kNone;
    changed();
}

void TableControl::SetTable(veldrin::UiTable* table) {
    m_table = table;
    changed();
}
