#include "ui/CAcUiDialog.h"

#include "runtime/CException.h"
#include "runtime/Host.h"
#include "system/UserSettings.h"
#include "ui/UiBackend.h"
#include "ui/UiTable.h"

#include <fmt/format.h>

#include <algorithm>
#include <cstdio>

DialogView::~DialogView() = default;

CAcUiDialog::CAcUiDialog(const DialogTemplate& form) : m_form(form), m_caption(form.caption) {}
CAcUiDialog::~CAcUiDialog() = default;

namespace {

std::unique_ptr<DialogControl> makeControl(CAcUiDialog& dialog, const ControlTemplate& form) {
    switch (form.kind) {
    case ControlKind::kEdit: return std::make_unique<EditControl>(dialog, form);
    case ControlKind::kCheck: return std::make_unique<CheckControl>(dialog, form);
    case ControlKind::kList:
    case ControlKind::kCombo: return std::make_unique<ListControl>(dialog, form);
    case ControlKind::kGrid: return std::make_unique<TableControl>(dialog, form);
    default: return std::make_unique<DialogControl>(dialog, form);
    }
}

constexpr const char* kPlacesKey = "Software\\Veldrin Software\\Dialogs";

CString withoutMark(const CString& caption) {
    CString text;
    for (std::size_t i = 0; i < caption.size(); ++i) {
        if (caption[i] == '&' && ++i == caption.size()) break; // "&&" is one
        text += caption[i];
    }
    return text;
}

} // namespace

void CAcUiDialog::makeControls() {
    m_controls.clear();
    for (const ControlTemplate& form : m_form.controls) m_controls.push_back(makeControl(*this, form));
}

int CAcUiDialog::DoModal() {
    veldrin::UiBackend& ui = veldrin::Host::current().ui();
    const veldrin::UiBackend::OpenWindow counted(ui);
    m_caption = m_form.caption;
    m_result = 0;
    m_focus = 0;
    m_isEnabled = true;
    m_failure = nullptr;
    m_lastPressed.clear();
    makeControls();
    m_isOpen = true;
    guarded([this] {
        if (OnInitDialog() && m_focus == 0) focusFirst();
    });
    loadPlace();
    bool shown = true;
    if (m_isOpen) guarded([&] { shown = ui.showDialog(*this); });
    m_isOpen = false;
    m_view = nullptr;
    if (!shown) return kNotCreated;
    savePlace();
    guarded([this] { OnDestroy(); });
    if (m_failure) std::rethrow_exception(std::exchange(m_failure, nullptr));
    return m_result;
}

void CAcUiDialog::focusFirst() {
    for (const auto& control : m_controls) {
        if (!control->takesFocus() || !control->IsWindowEnabled()) continue;
        m_focus = control->id();
        return;
    }
}

void CAcUiDialog::guarded(const std::function<void()>& action) {
    try {
        action();
    } catch (...) {
        if (!m_failure) m_failure = std::current_exception();
        EndDialog(kCancel);
    }
}

void CAcUiDialog::loadPlace() {
    m_place.reset();
    if (m_savedName.empty()) return;
    const auto text = veldrin::Host::current().settings().readText(kPlacesKey, m_savedName);
    DialogPlace place;
    if (text &&
        std::sscanf(text->c_str(), "%d %d %d %d", &place.x, &place.y, &place.width, &place.height) == 4)
        m_place = place;
    m_savedPlace = m_place;
}

// A place that cannot be kept is no reason to trouble the user.
void CAcUiDialog::savePlace() const {
    if (m_savedName.empty() || !m_place || m_place == m_savedPlace) return;
    veldrin::UserSettings& settings = veldrin::Host::current().settings();
    if (!settings.createKey(kPlacesKey)) return;
    const DialogPlace& at = *m_place;
    settings.write(kPlacesKey, m_savedName, fmt::format("{} {} {} {}", at.x, at.y, at.width, at.height));
}

void CAcUiDialog::userPlaces(const DialogPlace& place) {
    m_place = place;
}

void CAcUiDialog::EndDialog(int result) {
    if (!m_isOpen) return;
    m_isOpen = false;
    m_result = result;
    if (m_lastPressed.empty() && result == kOk) m_lastPressed = buttonCaption(kDefaultButton);
    if (m_view) m_view->ended();
}

DialogControl* CAcUiDialog::control(int id) const {
    const auto found = std::find_if(m_controls.begin(), m_controls.end(),
                                    [id](const auto& control) { return control->id() == id; });
    return found == m_controls.end() ? nullptr : found->get();
}

template<class Kind>
Kind& CAcUiDialog::of(int id) const {
    auto* found = dynamic_cast<Kind*>(control(id));
    if (!found) throw CException(fmt::format("Dialog \"{}\" has no such control: {}", m_caption, id));
    return *found;
}
template VELDRIN_API EditControl& CAcUiDialog::of(int) const;
template VELDRIN_API CheckControl& CAcUiDialog::of(int) const;
template VELDRIN_API ListControl& CAcUiDialog::of(int) const;
template VELDRIN_API TableControl& CAcUiDialog::of(int) const;

void CAcUiDialog::SetWindowText(const CString& caption) {
    m_caption = caption;
    if (m_view) m_view->captionChanged();
}

void CAcUiDialog::EnableWindow(bool enable) {
    m_isEnabled = enable;
    if (m_view) m_view->enabledChanged();
}

void CAcUiDialog::SetActiveWindow() {
    if (m_view) m_view->activationWanted();
}

void CAcUiDialog::controlChanged(const DialogControl& control) {
    if (m_view) m_view->controlChanged(control);
}

void CAcUiDialog::setFocus(int id) {
    m_focus = id;
    if (m_view) m_view->focusChanged();
}

bool CAcUiDialog::canAct(const DialogControl* control) const {
    return m_isOpen && m_isEnabled && control && control->IsWindowEnabled();
}

bool CAcUiDialog::reaches(const DialogControl* target) {
    if (!canAct(target)) return false;
    const int id = target->id();
    for (const auto& other : m_controls) {
        const auto* shown = dynamic_cast<const TableControl*>(other.get());
        veldrin::UiTable* table = shown && shown != target ? shown->table() : nullptr;
        if (!table || !table->editor()) continue;
        table->userLeaves();
        if (!m_isOpen || table->editor()) return false;
    }
    return canAct(control(id)); // what was stored may have disabled it
}

// The handler may end the dialog, and destroy what it was hung on by showing it again.
bool CAcUiDialog::notify(Event event, int id) {
    const auto found = m_handlers.find({event, id});
    if (found == m_handlers.end()) return false;
    const Handler handler = found->second;
    guarded(handler);
    return true;
}

bool CAcUiDialog::userClicks(int id) {
    DialogControl* target = control(id);
    if (!reaches(target)) return false;
    if (auto* box = dynamic_cast<CheckControl*>(target)) return userChecks(id, !box->GetCheck());
    if (target->kind() != ControlKind::kButton) return userFocuses(id);
    m_focus = id;
    m_lastPressed = withoutMark(target->GetWindowText());
    if (notify(Event::kClick, id)) return true;
    if (id == kDialogOk) guarded([this] { OnOK(); });
    if (id == kDialogCancel) guarded([this] { OnCancel(); });
    return true;
}

bool CAcUiDialog::userDoubleClicks(int id) {
    const DialogControl* target = control(id);
    if (!target || !target->takesFocus() || !reaches(target)) return false;
    m_focus = id;
    m_lastPressed.clear();
    notify(Event::kDoubleClick, id);
    return true;
}

bool CAcUiDialog::userTypes(int id, const CString& text) {
    auto* target = dynamic_cast<EditControl*>(control(id));
    if (!reaches(target)) return false;
    m_focus = id;
    target->SetWindowText(text);
    const int end = static_cast<int>(text.size());
    target->userSelects(end, end);
    notify(Event::kChange, id);
    return true;
}

bool CAcUiDialog::userChecks(int id, bool check) {
    auto* target = dynamic_cast<CheckControl*>(control(id));
    if (!reaches(target)) return false;
    m_focus = id;
    if (target->GetCheck() == check) return true;
    target->SetCheck(check);
    notify(Event::kClick, id);
    return true;
}

bool CAcUiDialog::userSelects(int id, int item) {
    auto* target = dynamic_cast<ListControl*>(control(id));
    if (!reaches(target) || item < 0 || item >= target->GetCount()) return false;
    m_focus = id;
    target->SetCurSel(item);
    notify(Event::kSelection, id);
    return true;
}

bool CAcUiDialog::userFocuses(int id) {
    const DialogControl* target = control(id);
    if (!target || !target->takesFocus() || !reaches(target)) return false;
    setFocus(id);
    return true;
}

int CAcUiDialog::buttonWith(unsigned flag) const {
    for (const ControlTemplate& form : m_form.controls)
        if (form.flags & flag) return form.id;
    return 0;
}

CString CAcUiDialog::buttonCaption(unsigned flag) const {
    const DialogControl* button = control(buttonWith(flag));
    return button ? withoutMark(button->GetWindowText()) : CString();
}

bool CAcUiDialog::userPressesReturn() {
    const int button = buttonWith(kDefaultButton);
    return button != 0 && userClicks(button);
}

bool CAcUiDialog::userCloses() {
    if (!m_isOpen) return false;
    for (const auto& control : m_controls)
        if (const auto* shown = dynamic_cast<const TableControl*>(control.get()))
            if (shown->table() && shown->table()->editor())
                shown->table()->userKeys(veldrin::TableKey::kEscape, {});
    const int button = buttonWith(kCancelButton);
    if (button != 0) return userClicks(button);
    if (!m_isEnabled) return false;
    m_lastPressed.clear();
    guarded([this] { OnCancel(); });
    return true;
}
