#pragma once

#include "runtime/CString.h"
#include "runtime/VeldrinApi.h"
#include "ui/DialogControls.h"
#include "ui/DialogTemplate.h"

#include <exception>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <span>
#include <vector>

// Who shows a dialog: told of what the dialog does to itself.
class VELDRIN_API DialogView {
public:
    virtual ~DialogView();
    virtual void controlChanged(const DialogControl& control) = 0;
    virtual void focusChanged() = 0;
    virtual void captionChanged() = 0;
    virtual void enabledChanged() = 0;
    virtual void activationWanted() = 0; // it is to be in front, with the keyboard
    virtual void ended() = 0;
};

// Where a window stands on the screen, in pixels of the usual size.
struct DialogPlace {
    int x = 0;
    int y = 0;
    int width = 0;
    int height = 0;
    bool operator==(const DialogPlace&) const = default;
};

// A modal dialog. A class of it hangs handlers on its controls in its constructor, fills them in
// OnInitDialog, and ends itself with EndDialog. It does not know who shows it.
//
// DoModal may be called again: the controls are made anew from the template. In a handler that has ended the
// dialog another one may run; this one's window is gone then, and its DoModal returns when the handler does.
//
// What a handler throws closes the window as Cancel does, and leaves DoModal.
class VELDRIN_API CAcUiDialog {
public:
    explicit CAcUiDialog(const DialogTemplate& form);
    virtual ~CAcUiDialog();
    CAcUiDialog(const CAcUiDialog&) = delete;
    CAcUiDialog& operator=(const CAcUiDialog&) = delete;

    static constexpr int kNotCreated = -1;
    // What EndDialog was given; kNotCreated when it cannot be shown.
    int DoModal();
    bool isOpen() const { return m_isOpen; }

    const CString& caption() const { return m_caption; }
    int id() const { return m_form.id; }
    const DialogTemplate& form() const { return m_form; }
    // Under which the user's position and size of it are kept; several dialogs may share one.
    const CString& savedName() const { return m_savedName; }
    std::span<const ControlResize> resizeRules() const { return m_resizeRules; }
    // Where it stood on a display when it went, in this session or an earlier one; none before. It is kept
    // however the window goes.
    const std::optional<DialogPlace>& place() const { return m_place; }
    bool IsWindowEnabled() const { return m_isEnabled; }
    int focus() const { return m_focus; } // a control's id; 0 before any had it

    // Null for an id that the template does not have, or of another kind.
    DialogControl* control(int id) const;
    const std::vector<std::unique_ptr<DialogControl>>& controls() const { return m_controls; }

    // What the user does, as the one who shows the dialog tells it. Nothing happens, and the answer is false,
    // on a control that is disabled or missing, and while the dialog is.
    bool userClicks(int id); // a button, or toggles a check box
    bool userDoubleClicks(int id);
    bool userTypes(int id, const CString& text); // all of an edit's new text
    bool userChecks(int id, bool check);
    bool userSelects(int id, int item);
    bool userFocuses(int id);
    bool userPressesReturn();
    bool userCloses(); // Escape, or the close box
    // The window goes whatever the dialog says: for one that userCloses has not ended.
    void userDestroys() { EndDialog(kCancel); }
    void userPlaces(const DialogPlace& place);
    // The caption of the button that was pressed last, without its mark; that of the default one when it
    // ended as by that.
    const CString& lastPressed() const { return m_lastPressed; }
    void setView(DialogView* view) { m_view = view; }
    void SetActiveWindow(); // to the front, with the keyboard
    // Runs code of the dialog; what it throws ends the dialog and goes on from DoModal.
    void guarded(const std::function<void()>& action);

    void controlChanged(const DialogControl& control);
    void setFocus(int id);

protected:
    // True when the first control is to have the focus, unless another one was given it here.
    virtual bool OnInitDialog() { return true; }
    virtual void OnOK() { EndDialog(kOk); }
    virtual void OnCancel() { EndDialog(kCancel); }
    // The window goes, however it ended: what a dialog keeps beyond it is put right here.
    virtual void OnDestroy() {}

    static constexpr int kOk = 1;
    static constexpr int kCancel = 2;
    void EndDialog(int result); // the first one counts
    void SetWindowText(const CString& caption);
    void SetDialogName(const CString& name) { m_savedName = name; }
    void SetControlProperty(std::span<const ControlResize> rules) { m_resizeRules = rules; }
    // Disabled while Lisp asks the user something.
    void EnableWindow(bool enable);

    using Handler = std::function<void()>;
    void onClick(int id, Handler handler) { m_handlers[{Event::kClick, id}] = std::move(handler); }
    void onDoubleClick(int id, Handler handler) {
        m_handlers[{Event::kDoubleClick, id}] = std::move(handler);
    }
    void onSelection(int id, Handler handler) { m_handlers[{Event::kSelection, id}] = std::move(handler); }
    void onChange(int id, Handler handler) { m_handlers[{Event::kChange, id}] = std::move(handler); }

    // Of the template's kind: asking for another is a fault of the dialog's.
    EditControl& edit(int id) const { return of<EditControl>(id); }
    CheckControl& check(int id) const { return of<CheckControl>(id); }
    ListControl& list(int id) const { return of<ListControl>(id); }
    TableControl& table(int id) const { return of<TableControl>(id); }

private:
    enum class Event { kClick, kDoubleClick, kSelection, kChange };
    template<class Kind>
    Kind& of(int id) const;
    void makeControls();
    bool canAct(const DialogControl* control) const;
    // The same, and the user's hand gets there: an edit in a table is ended on the way, and may be refused.
    bool reaches(const DialogControl* control);
    bool notify(Event event, int id);
    void focusFirst();
    void loadPlace();
    void savePlace() const;
    int buttonWith(unsigned flag) const;
    CString buttonCaption(unsigned flag) const; // of that button; "" without one

    const DialogTemplate& m_form;
    CString m_caption;
    CString m_savedName;
    std::span<const ControlResize> m_resizeRules;
    std::vector<std::unique_ptr<DialogControl>> m_controls;
    std::map<std::pair<Event, int>, Handler> m_handlers;
    DialogView* m_view = nullptr;
    CString m_lastPressed;
    std::optional<DialogPlace> m_place;
    std::optional<DialogPlace> m_savedPlace; // as it is in the user's settings
    std::exception_ptr m_failure;
    int m_result = 0;
    int m_focus = 0;
    bool m_isOpen = false;
    bool m_isEnabled = true;
};
