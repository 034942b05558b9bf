#include "ui/DialogKeys.h"

#include <algorithm>

using veldrin::HeldKeys;
using veldrin::TableKey;
using veldrin::UiTable;

namespace {

// A text with selected characters, in bytes.
struct TypedText {
    CString text;
    int first = 0;
    int last = 0;
};

void replaceSelection(TypedText& typed, const CString& text) {
    typed.text.replace(static_cast<std::size_t>(typed.first),
                       static_cast<std::size_t>(typed.last - typed.first), text);
    typed.first = typed.last = typed.first + static_cast<int>(text.size());
}

bool isInsideLetter(const CString& text, int at) {
    return at > 0 && at < static_cast<int>(text.size()) &&
           (static_cast<unsigned char>(text[static_cast<std::size_t>(at)]) & 0xC0) == 0x80;
}

int nextLetter(const CString& text, int at, int step) {
    at = std::clamp(at + step, 0, static_cast<int>(text.size()));
    while (isInsideLetter(text, at)) at += step;
    return at;
}

// False for a key that edits nothing.
bool editBy(TypedText& typed, TableKey key) {
    const bool isRange = typed.first != typed.last;
    switch (key) {
    case TableKey::kLeft:
        typed.first = typed.last = isRange ? typed.first : nextLetter(typed.text, typed.first, -1);
        return true;
    case TableKey::kRight:
        typed.first = typed.last = isRange ? typed.last : nextLetter(typed.text, typed.first, 1);
        return true;
    case TableKey::kHome: typed.first = typed.last = 0; return true;
    case TableKey::kEnd: typed.first = typed.last = static_cast<int>(typed.text.size()); return true;
    case TableKey::kBackspace:
        if (!isRange) typed.first = nextLetter(typed.text, typed.first, -1);
        replaceSelection(typed, {});
        return true;
    case TableKey::kDelete:
        if (!isRange) typed.last = nextLetter(typed.text, typed.last, 1);
        replaceSelection(typed, {});
        return true;
    case TableKey::kSpace: replaceSelection(typed, " "); return true;
    default: return false;
    }
}

TypedText typedIn(const EditControl& edit) {
    const CString text = edit.GetWindowText();
    const int end = static_cast<int>(text.size());
    const int first = std::clamp(edit.selectionFirst(), 0, end);
    return {text, first, std::clamp(edit.selectionLast(), first, end)};
}

bool store(CAcUiDialog& dialog, EditControl& edit, const TypedText& typed) {
    const int id = edit.id();
    if (typed.text != edit.GetWindowText() && !dialog.userTypes(id, typed.text)) return false;
    if (auto* same = dynamic_cast<EditControl*>(dialog.control(id)))
        same->userSelects(typed.first, typed.last);
    return true;
}

UiTable* tableOf(DialogControl* control) {
    auto* shown = dynamic_cast<TableControl*>(control);
    return shown ? shown->table() : nullptr;
}

UiTable* editedTable(const CAcUiDialog& dialog) {
    for (const auto& control : dialog.controls()) {
        UiTable* table = tableOf(control.get());
        if (table && table->editor()) return table;
    }
    return nullptr;
}

bool isAlive(const CAcUiDialog& dialog) {
    return dialog.isOpen() && dialog.IsWindowEnabled();
}

// The next control that takes the focus, round from the last to the first.
bool tab(CAcUiDialog& dialog, int step) {
    const auto& controls = dialog.controls();
    const int count = static_cast<int>(controls.size());
    int at = step > 0 ? -1 : count;
    for (int i = 0; i < count; ++i)
        if (controls[static_cast<std::size_t>(i)]->id() == dialog.focus()) at = i;
    for (int tried = 0; tried < count; ++tried) {
        at = (at + step + count) % count;
        DialogControl& control = *controls[static_cast<std::size_t>(at)];
        if (!control.takesFocus() || !control.IsWindowEnabled()) continue;
        if (auto* edit = dynamic_cast<EditControl*>(&control))
            edit->userSelects(0, static_cast<int>(edit->GetWindowText().size()));
        return dialog.userFocuses(control.id());
    }
    return false;
}

// The item that a key leads to; kNone for other keys.
int itemBy(const ListControl& list, TableKey key) {
    const int last = list.GetCount() - 1;
    switch (key) {
    case TableKey::kUp: return std::min(std::max(list.GetCurSel() - 1, 0), last);
    case TableKey::kDown: return std::min(list.GetCurSel() + 1, last);
    case TableKey::kHome: return std::min(0, last);
    case TableKey::kEnd: return last;
    default: return ListControl::kNone;
    }
}

bool keyForControl(CAcUiDialog& dialog, DialogControl& control, TableKey key) {
    if (auto* edit = dynamic_cast<EditControl*>(&control)) {
        TypedText typed = typedIn(*edit);
        return editBy(typed, key) && store(dialog, *edit, typed);
    }
    if (const auto* list = dynamic_cast<ListControl*>(&control)) {
        const int item = itemBy(*list, key);
        if (item == ListControl::kNone) return false;
        return item == list->GetCurSel() || dialog.userSelects(control.id(), item);
    }
    const bool isPressed =
        key == TableKey::kSpace || (key == TableKey::kReturn && control.kind() == ControlKind::kButton);
    return isPressed && dialog.userClicks(control.id());
}

bool keyInEditor(UiTable& table, TableKey key, HeldKeys held) {
    if (table.userKeys(key, held)) return true;
    const veldrin::CellEditor* editor = table.editor();
    if (!editor) return false;
    TypedText typed{editor->text, editor->first, editor->last};
    if (!editBy(typed, key)) return false;
    table.userEdits(typed.text, typed.first, typed.last);
    return true;
}

} // namespace

bool typeIntoDialog(CAcUiDialog& dialog, const CString& text) {
    if (!isAlive(dialog)) return false;
    UiTable* table = editedTable(dialog);
    DialogControl* control = dialog.control(dialog.focus());
    if (!table) table = tableOf(control);
    if (table) return table->userTypes(text);
    if (!control || !control->IsWindowEnabled()) return false;
    if (auto* edit = dynamic_cast<EditControl*>(control)) {
        TypedText typed = typedIn(*edit);
        replaceSelection(typed, text);
        return store(dialog, *edit, typed);
    }
    if (const auto* list = dynamic_cast<ListControl*>(control))
        return dialog.userSelects(control->id(), list->FindStringPrefix(text));
    return text == " " && keyForControl(dialog, *control, TableKey::kSpace);
}

bool pressDialogKey(CAcUiDialog& dialog, TableKey key, HeldKeys held) {
    if (!isAlive(dialog)) return false;
    if (UiTable* edited = editedTable(dialog)) return keyInEditor(*edited, key, held);
    if (DialogControl* control = dialog.control(dialog.focus()); control && control->IsWindowEnabled()) {
        if (UiTable* table = tableOf(control); table && table->userKeys(key, held)) return true;
        if (!tableOf(control) && keyForControl(dialog, *control, key)) return true;
    }
    switch (key) {
    case TableKey::kReturn: return dialog.userPressesReturn();
    case TableKey::kEscape: return dialog.userCloses();
    case TableKey::kTab: return tab(dialog, held.shift ? -1 : 1);
    default: return false;
    }
}
