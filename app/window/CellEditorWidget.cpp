#include "window/CellEditorWidget.h"

#include "window/TableWidget.h"
#include "window/qt_text.h"

#include <QKeyEvent>
#include <QSignalBlocker>

using veldrin::CellKind;
using veldrin::TableKey;

namespace {

constexpr int kMostItems = 12; // that a list shows without scrolling

} // namespace

CellEditorWidget::CellEditorWidget(veldrin::UiTable& table, QWidget& viewport)
    : QLineEdit(&viewport)
    , m_table(table)
    , m_viewport(viewport)
    , m_cell(table.editor()->cell)
    , m_kind(table.editor()->kind) {
    setFrame(false);
    setAutoFillBackground(true);
    setTextMargins(veldrin::kCellMargin - 2, 0, 0, 0);
    setReadOnly(m_kind == CellKind::kClosedList);
    connect(this, &QLineEdit::textEdited, this, [this](const QString& text) {
        const int caret = bytePlace(text, cursorPosition());
        m_table.userEdits(fromQt(text), caret, caret);
    });
    if (m_kind != CellKind::kText) makeList();
}

CellEditorWidget::~CellEditorWidget() {
    if (m_list) delete m_list;
}

void CellEditorWidget::makeList() {
    m_list = new QListWidget(m_viewport.window());
    m_list->setFocusPolicy(Qt::NoFocus);
    m_list->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    for (const std::string& item : m_table.editor()->items) m_list->addItem(toQt(item));
    connect(m_list, &QListWidget::itemClicked, this, [this](const QListWidgetItem* item) {
        const int picked = m_list->row(item);
        showList(false);
        m_table.userPicks(picked);
    });
    m_list->hide();
}

void CellEditorWidget::place(const QRect& rect) {
    setVisible(!rect.isEmpty());
    if (!rect.isEmpty()) setGeometry(rect.adjusted(0, 0, -1, -1));
    placeList();
}

// Below the line where there is room, else above it.
void CellEditorWidget::placeList() {
    if (!m_list) return;
    const QWidget* window = m_viewport.window();
    const int items = std::min(m_list->count(), kMostItems);
    const int height = items * m_list->sizeHintForRow(0) + 2 * m_list->frameWidth();
    const int wide = m_list->sizeHintForColumn(0) + 2 * m_list->frameWidth() + 2 * veldrin::kListArrow;
    const QPoint below = mapTo(window, QPoint(0, this->height()));
    const bool fits = below.y() + height <= window->height();
    const int top = fits ? below.y() : std::max(mapTo(window, QPoint()).y() - height, 0);
    const int left = std::max(std::min(below.x(), window->width() - wide), 0);
    m_list->setGeometry(left, top, std::max(wide, width()), height);
}

void CellEditorWidget::showList(bool show) {
    if (!m_list || m_list->count() == 0) return;
    placeList();
    m_list->setVisible(show);
    if (show) m_list->raise();
}

void CellEditorWidget::open() {
    show();
    setFocus();
    showList(true);
}

void CellEditorWidget::refresh() {
    const veldrin::CellEditor* editor = m_table.editor();
    if (!editor) return;
    const QString held = toQt(editor->text);
    const int first = qtPlace(editor->text, editor->first);
    const int last = qtPlace(editor->text, editor->last);
    if (text() != held) setText(held);
    setSelection(first, last - first);
    if (!m_list) return;
    const QSignalBlocker silent(m_list);
    const QList<QListWidgetItem*> same = m_list->findItems(held, Qt::MatchFixedString);
    m_list->setCurrentItem(same.isEmpty() ? nullptr : same.front());
}

void CellEditorWidget::dismiss() {
    m_isClosed = true;
    hide();
    if (m_list) m_list->hide();
    deleteLater();
}

void CellEditorWidget::pickBeside(int step) {
    if (!m_list || m_list->count() == 0) return;
    const int row = std::clamp(m_list->currentRow() + step, 0, m_list->count() - 1);
    m_table.userPicks(row);
}

// True when the key was not the line's.
bool CellEditorWidget::passOn(QKeyEvent& event) {
    if (m_isClosed) return true;
    if (m_list && (event.key() == Qt::Key_F4 ||
                   (event.key() == Qt::Key_Down && event.modifiers().testFlag(Qt::AltModifier)))) {
        showList(!m_list->isVisible());
        return true;
    }
    const std::optional<TableKey> key = tableKey(event);
    if (key && m_table.userKeys(*key, heldKeys(event))) return true;
    if (m_list && (key == TableKey::kUp || key == TableKey::kDown)) {
        pickBeside(key == TableKey::kUp ? -1 : 1);
        return true;
    }
    if (m_kind != CellKind::kClosedList || event.text().isEmpty()) return false;
    m_table.userTypes(fromQt(event.text()));
    return true;
}

// Tab would go to the next control before the line saw it.
bool CellEditorWidget::event(QEvent* event) {
    if (event->type() == QEvent::KeyPress) {
        auto& pressed = dynamic_cast<QKeyEvent&>(*event);
        if (pressed.key() == Qt::Key_Tab || pressed.key() == Qt::Key_Backtab) return passOn(pressed);
    }
    if (event->type() == QEvent::ShortcutOverride) event->accept();
    return QLineEdit::event(event);
}

void CellEditorWidget::keyPressEvent(QKeyEvent* event) {
    if (!passOn(*event)) QLineEdit::keyPressEvent(event);
    event->accept();
}

void CellEditorWidget::mousePressEvent(QMouseEvent* event) {
    QLineEdit::mousePressEvent(event);
    if (m_kind == CellKind::kClosedList && m_list) showList(!m_list->isVisible());
}
