#pragma once

#include "runtime/CString.h"
#include "runtime/VeldrinApi.h"
#include "ui/DialogTemplate.h"

#include <vector>

class CAcUiDialog;

namespace veldrin {
class UiTable;
}

// A control of a dialog. What a dialog does to it is seen at once, but tells the dialog nothing: only what
// the user does makes notifications.
class VELDRIN_API DialogControl {
public:
    DialogControl(CAcUiDialog& dialog, const ControlTemplate& form);
    virtual ~DialogControl();
    DialogControl(const DialogControl&) = delete;
    DialogControl& operator=(const DialogControl&) = delete;

    int id() const { return m_form.id; }
    ControlKind kind() const { return m_form.kind; }
    const ControlTemplate& form() const { return m_form; }
    bool takesFocus() const; // what the Tab key stops at
    bool IsWindowEnabled() const { return m_isEnabled; }
    void EnableWindow(bool enable);
    void SetFocus();
    // The caption of a text or button, the contents of an edit, the selected item of a list.
    virtual CString GetWindowText() const { return m_text; }
    virtual void SetWindowText(const CString& text);

protected:
    void changed();
    CString m_text;

private:
    CAcUiDialog& m_dialog;
    ControlTemplate m_form;
    bool m_isEnabled;
};

class VELDRIN_API EditControl : public DialogControl {
public:
    using DialogControl::DialogControl;
    // Bytes from first to last are selected; a last beyond the end means up to it.
    void SetSel(int first, int last);
    void SelectAll();
    int selectionRequests() const { return m_requests; } // how often the dialog selected something
    void userSelects(int first, int last);               // as the user's hand has it: nobody is told
    int selectionFirst() const { return m_first; }
    int selectionLast() const { return m_last; }

private:
    int m_first = 0;
    int m_last = 0;
    int m_requests = 0;
};

class VELDRIN_API CheckControl : public DialogControl {
public:
    using DialogControl::DialogControl;
    bool GetCheck() const { return m_isChecked; }
    void SetCheck(bool check);

private:
    bool m_isChecked = false;
};

// A list box or a drop-down list. Items count from 0; each carries a number.
class VELDRIN_API ListControl : public DialogControl {
public:
    using DialogControl::DialogControl;
    static constexpr int kNone = -1;

    int GetCount() const { return static_cast<int>(m_items.size()); }
    // At its place in a sorted list, else at the end; the place.
    int AddString(const CString& text, int data = 0);
    int InsertString(int at, const CString& text, int data = 0);
    void DeleteString(int at);
    void ResetContent();
    CString GetText(int at) const; // "" for a place that there is not
    int GetItemData(int at) const; // 0 for one
    void SetItemData(int at, int data);
    int FindStringExact(const CString& text) const; // else without regard to case; kNone without
    int FindStringPrefix(const CString& start) const;
    int FindData(int data) const;
    int GetCurSel() const { return m_selected; }
    void SetCurSel(int at); // kNone, or a place that there is not, for none
    int selectedData() const { return GetItemData(m_selected); }
    CString GetWindowText() const override { return GetText(m_selected); }
    void SetWindowText(const CString& text) override { SetCurSel(FindStringExact(text)); }

private:
    struct Item {
        CString text;
        int data = 0;
    };
    bool has(int at) const { return at >= 0 && at < GetCount(); }

    std::vector<Item> m_items;
    int m_selected = kNone;
};

// Where a table is shown. The table is the dialog's, and lives longer than its window.
class VELDRIN_API TableControl : public DialogControl {
public:
    using DialogControl::DialogControl;
    void SetTable(veldrin::UiTable* table);
    veldrin::UiTable* table() const { return m_table; }

private:
    veldrin::UiTable* m_table = nullptr;
};
