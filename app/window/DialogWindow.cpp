#include "window/DialogWindow.h"

#include "window/ControlWidget.h"
#include "window/qt_text.h"

#include <QApplication>
#include <QCloseEvent>
#include <QFontMetrics>
#include <QKeyEvent>
#include <QLabel>
#include <QPushButton>
#include <QScreen>

namespace {

constexpr int kEdge = 40; // pixels of a window that stay on a screen, so that it can be grasped

DialogBaseUnits unitsOf(const QFont& font) {
    const QFontMetrics metrics(font);
    const QString letters = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz";
    const auto count = static_cast<int>(letters.size());
    return {(metrics.horizontalAdvance(letters) + count - 1) / count, metrics.height()};
}

bool isOnScreen(const QRect& place) {
    for (const QScreen* screen : QGuiApplication::screens()) {
        const QRect seen = screen->availableGeometry().intersected(place);
        if (seen.width() >= kEdge && seen.height() >= kEdge && seen.top() == place.top()) return true;
    }
    return false;
}

} // namespace

DialogWindow::DialogWindow(CAcUiDialog& dialog, QWidget* parent)
    : QDialog(parent)
    , m_dialog(dialog)
    , m_units(unitsOf(font()))
    , m_formSize(dialogSize(dialog.form(), m_units)) {
    setWindowTitle(toQt(m_dialog.caption()));
    setModal(true);
    setWindowFlag(Qt::WindowContextHelpButtonHint, false);
    m_refresh.setSingleShot(true);
    connect(&m_refresh, &QTimer::timeout, this, [this] { refresh(); });
    makeWidgets();
    setBuddies();
    setMinimumSize(m_formSize.width, m_formSize.height);
    resize(m_formSize.width, m_formSize.height);
    layOut();
    restorePlace();
}

DialogWindow::~DialogWindow() {
    m_dialog.setView(nullptr);
}

void DialogWindow::makeWidgets() {
    for (const auto& control : m_dialog.controls()) {
        std::unique_ptr<ControlWidget> made = makeControlWidget(m_dialog, *control, this);
        made->refresh(*control);
        made->widget().installEventFilter(this);
        if (control->kind() == ControlKind::kFrame) made->widget().lower();
        m_widgets.push_back(std::move(made));
    }
    QWidget* before = nullptr;
    for (const auto& made : m_widgets) {
        if (before) setTabOrder(before, &made->widget());
        before = &made->widget();
    }
}

// The letter behind the mark of a text reaches the control that follows it.
void DialogWindow::setBuddies() {
    for (std::size_t i = 0; i + 1 < m_widgets.size(); ++i) {
        auto* label = dynamic_cast<QLabel*>(&m_widgets[i]->widget());
        if (label && label->text().contains('&')) label->setBuddy(&m_widgets[i + 1]->widget());
    }
}

QWidget* DialogWindow::widgetOf(int id) const {
    for (const auto& made : m_widgets)
        if (made->id() == id) return &made->widget();
    return nullptr;
}

void DialogWindow::run() {
    m_dialog.setView(this);
    m_dialog.guarded([this] {
        focusChanged();
        if (!m_dialog.IsWindowEnabled()) setEnabled(false);
        show();
        m_isPlaced = true;
        if (m_dialog.isOpen()) exec();
    });
    m_dialog.setView(nullptr);
}

void DialogWindow::layOut() {
    const std::vector<DialogRect> places =
        layoutDialog(m_dialog.form(), m_dialog.resizeRules(), m_units, width() - m_formSize.width,
                     height() - m_formSize.height);
    for (std::size_t i = 0; i < m_widgets.size() && i < places.size(); ++i)
        m_widgets[i]->place(QRect(places[i].x, places[i].y, places[i].width, places[i].height));
}

void DialogWindow::restorePlace() {
    const std::optional<DialogPlace>& place = m_dialog.place();
    if (!place) return;
    resize(std::max(place->width, m_formSize.width), std::max(place->height, m_formSize.height));
    if (isOnScreen(QRect(place->x, place->y, width(), height()))) move(place->x, place->y);
}

void DialogWindow::notePlace() {
    if (m_isPlaced && isVisible()) m_dialog.userPlaces({x(), y(), width(), height()});
}

void DialogWindow::resizeEvent(QResizeEvent* event) {
    QDialog::resizeEvent(event);
    layOut();
    notePlace();
}

void DialogWindow::moveEvent(QMoveEvent* event) {
    QDialog::moveEvent(event);
    notePlace();
}

void DialogWindow::closeEvent(QCloseEvent* event) {
    m_dialog.guarded([this] { m_dialog.userCloses(); });
    event->setAccepted(!m_dialog.isOpen());
}

// The button that has the keyboard goes before the default one.
void DialogWindow::pressReturn() {
    for (const auto& made : m_widgets)
        if (made->widget().hasFocus() && dynamic_cast<QPushButton*>(&made->widget())) {
            m_dialog.userClicks(made->id());
            return;
        }
    m_dialog.userPressesReturn();
}

// Return and Escape mean the dialog's own buttons, whatever the window system would make of them.
void DialogWindow::keyPressEvent(QKeyEvent* event) {
    m_dialog.guarded([&] {
        switch (event->key()) {
        case Qt::Key_Return:
        case Qt::Key_Enter: pressReturn(); break;
        case Qt::Key_Escape: m_dialog.userCloses(); break;
        default: event->ignore();
        }
    });
}

// A control gets the keyboard. Where an edit elsewhere does not let go, it stays there.
bool DialogWindow::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::FocusIn) {
        for (const auto& made : m_widgets) {
            if (&made->widget() != watched) continue;
            const int id = made->id();
            bool isTaken = true;
            m_dialog.guarded([&] { isTaken = m_dialog.userFocuses(id); });
            if (!isTaken) QTimer::singleShot(0, this, [this] { focusChanged(); });
            break;
        }
    }
    return QDialog::eventFilter(watched, event);
}

void DialogWindow::controlChanged(const DialogControl& control) {
    m_changed.insert(control.id());
    if (!m_refresh.isActive()) m_refresh.start(0);
}

void DialogWindow::refresh() {
    const std::set<int> changed = std::exchange(m_changed, {});
    for (const auto& made : m_widgets) {
        const DialogControl* control = changed.contains(made->id()) ? m_dialog.control(made->id()) : nullptr;
        if (control && m_dialog.isOpen()) made->refresh(*control);
    }
}

void DialogWindow::focusChanged() {
    for (const auto& made : m_widgets) {
        if (made->id() != m_dialog.focus()) continue;
        if (const DialogControl* control = m_dialog.control(made->id())) made->refresh(*control);
        made->focus();
    }
}

void DialogWindow::captionChanged() {
    setWindowTitle(toQt(m_dialog.caption()));
}

void DialogWindow::enabledChanged() {
    setEnabled(m_dialog.IsWindowEnabled());
}

void DialogWindow::activationWanted() {
    raise();
    activateWindow();
    focusChanged();
}

void DialogWindow::ended() {
    m_refresh.stop();
    done(0);
}
