#include "window/TableWidget.h"

#include "window/CellEditorWidget.h"
#include "window/qt_text.h"

#include <QHelpEvent>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QScrollBar>
#include <QToolTip>

using veldrin::CellPart;
using veldrin::TableCell;
using veldrin::TableKey;

namespace {

constexpr int kRowPadding = 3;  // pixels above and below a row's text
constexpr int kBorderReach = 3; // pixels around a border in which the mouse has hold of it
constexpr int kBoxSize = 13;

} // namespace

std::optional<TableKey> tableKey(const QKeyEvent& event) {
    switch (event.key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter: return TableKey::kReturn;
    case Qt::Key_Escape: return TableKey::kEscape;
    case Qt::Key_Tab:
    case Qt::Key_Backtab: return TableKey::kTab;
    case Qt::Key_Up: return TableKey::kUp;
    case Qt::Key_Down: return TableKey::kDown;
    case Qt::Key_Left: return TableKey::kLeft;
    case Qt::Key_Right: return TableKey::kRight;
    case Qt::Key_Home: return TableKey::kHome;
    case Qt::Key_End: return TableKey::kEnd;
    case Qt::Key_PageUp: return TableKey::kPageUp;
    case Qt::Key_PageDown: return TableKey::kPageDown;
    case Qt::Key_Backspace: return TableKey::kBackspace;
    case Qt::Key_Delete: return TableKey::kDelete;
    case Qt::Key_Space: return TableKey::kSpace;
    case Qt::Key_F2: return TableKey::kF2;
    default: return std::nullopt;
    }
}

veldrin::HeldKeys heldKeys(const QKeyEvent& event) {
    return {event.modifiers().testFlag(Qt::ShiftModifier) || event.key() == Qt::Key_Backtab,
            event.modifiers().testFlag(Qt::ControlModifier)};
}

TableWidget::TableWidget(QWidget* parent) : QAbstractScrollArea(parent) {
    setFocusPolicy(Qt::StrongFocus);
    setVerticalScrollBarPolicy(Qt::ScrollBarAsNeeded);
    viewport()->setMouseTracking(true);
    m_update.setSingleShot(true);
    connect(&m_update, &QTimer::timeout, this, [this] {
        updateScrollBars();
        placeEditor();
        viewport()->update();
    });
}

TableWidget::~TableWidget() {
    if (m_table) m_table->setView(nullptr);
}

void TableWidget::setTable(veldrin::UiTable* table) {
    if (table == m_table) return;
    if (m_table) m_table->setView(nullptr);
    m_table = table;
    if (m_table) m_table->setView(this);
    updateScrollBars();
    editorChanged();
    viewport()->update();
}

void TableWidget::takeFocus() {
    if (m_editor)
        m_editor->setFocus();
    else
        setFocus();
}

// Geometry.

int TableWidget::rowHeight(int row) const {
    return fontMetrics().height() * (m_table ? m_table->rowLines(row) : 1) + 2 * kRowPadding;
}

int TableWidget::headHeight() const {
    int height = 0;
    for (int row = 0; m_table && row < m_table->fixedRowCount() && row < m_table->rowCount(); ++row)
        height += rowHeight(row);
    return height;
}

int TableWidget::firstBodyPosition() const {
    return m_table ? std::min(m_table->fixedRowCount(), m_table->shownRowCount()) : 0;
}

int TableWidget::bodyPositions() const {
    return m_table ? m_table->shownRowCount() - firstBodyPosition() : 0;
}

int TableWidget::pageRows() const {
    return std::max((viewport()->height() - headHeight()) / rowHeight(-1), 1);
}

int TableWidget::rowTop(int row) const {
    if (row < m_table->fixedRowCount()) {
        int top = 0;
        for (int above = 0; above < row; ++above) top += rowHeight(above);
        return top;
    }
    const int position = m_table->positionOfRow(row) - firstBodyPosition() - verticalScrollBar()->value();
    if (m_table->positionOfRow(row) < 0 || position < 0) return -1;
    const int top = headHeight() + position * rowHeight(-1);
    return top < viewport()->height() ? top : -1;
}

int TableWidget::fixedWidth() const {
    int width = 0;
    for (int column = 0; column < m_table->fixedColumnCount(); ++column)
        width += m_table->columnWidth(column);
    return width;
}

int TableWidget::bodyWidth() const {
    int width = 0;
    for (int column = m_table->fixedColumnCount(); column < m_table->columnCount(); ++column)
        width += m_table->columnWidth(column);
    return width;
}

int TableWidget::columnLeft(int column) const {
    int left = 0;
    for (int before = 0; before < column; ++before) left += m_table->columnWidth(before);
    return column < m_table->fixedColumnCount() ? left : left - horizontalScrollBar()->value();
}

QRect TableWidget::cellRect(TableCell cell) const {
    if (!m_table || cell.row < 0 || cell.row >= m_table->rowCount()) return {};
    const int top = rowTop(cell.row);
    if (top < 0) return {};
    int width = 0;
    const int span = std::max(m_table->cellLook(cell.row, cell.column).span, 1);
    for (int column = cell.column; column < cell.column + span; ++column)
        width += m_table->columnWidth(column);
    return {columnLeft(cell.column), top, width,
            rowHeight(cell.row < m_table->fixedRowCount() ? cell.row : -1)};
}

TableCell TableWidget::cellAt(const QPoint& point) const {
    if (!m_table) return {};
    TableCell cell;
    for (int row = 0; row < m_table->fixedRowCount() && cell.row < 0; ++row)
        if (point.y() < rowTop(row) + rowHeight(row)) cell.row = row;
    if (cell.row < 0 && point.y() >= headHeight())
        cell.row = m_table->shownRow(firstBodyPosition() + verticalScrollBar()->value() +
                                     (point.y() - headHeight()) / rowHeight(-1));
    for (int column = 0; column < m_table->columnCount() && cell.column < 0; ++column) {
        const int left = columnLeft(column);
        const bool isUnderFixed = column >= m_table->fixedColumnCount() && point.x() < fixedWidth();
        if (!isUnderFixed && point.x() >= left && point.x() < left + m_table->columnWidth(column))
            cell.column = column;
    }
    return cell.row < 0 || cell.column < 0 ? veldrin::kNoCell : cell;
}

QRect TableWidget::boxRect(TableCell cell, CellPart part) const {
    QRect rect = cellRect(cell);
    if (rect.isEmpty() || part == CellPart::kCell) return {};
    QRect box(0, 0, kBoxSize, kBoxSize);
    if (part == CellPart::kExpandBox) {
        rect.setLeft(rect.left() + (m_table->rowLevel(cell.row) - 1) * veldrin::kTreeIndent);
        rect.setWidth(veldrin::kTreeIndent);
    }
    box.moveCenter(rect.center());
    return box;
}

CellPart TableWidget::partAt(TableCell cell, const QPoint& point) const {
    if (m_table->isTreeColumn(cell.column) && m_table->hasBranch(cell.row) &&
        boxRect(cell, CellPart::kExpandBox).contains(point))
        return CellPart::kExpandBox;
    if (m_table->cellKind(cell.row, cell.column) == veldrin::CellKind::kCheck &&
        boxRect(cell, CellPart::kCheckBox).contains(point))
        return CellPart::kCheckBox;
    return CellPart::kCell;
}

int TableWidget::borderAt(const QPoint& point) const {
    if (!m_table || point.y() >= headHeight()) return -1;
    for (int column = m_table->columnCount() - 1; column >= 0; --column) {
        const int width = m_table->columnWidth(column);
        if (width > 0 && std::abs(point.x() - columnLeft(column) - width) <= kBorderReach) return column;
    }
    return -1;
}

void TableWidget::updateScrollBars() {
    if (!m_table) return;
    const int page = pageRows();
    verticalScrollBar()->setPageStep(page);
    verticalScrollBar()->setRange(0, std::max(bodyPositions() - page, 0));
    const int room = viewport()->width() - fixedWidth();
    horizontalScrollBar()->setPageStep(room);
    horizontalScrollBar()->setSingleStep(veldrin::kTreeIndent);
    horizontalScrollBar()->setRange(0, std::max(bodyWidth() - room, 0));
}

void TableWidget::placeEditor() {
    if (m_editor && m_table->editor()) m_editor->place(cellRect(m_table->editor()->cell));
}

// What the table tells.

void TableWidget::tableChanged() {
    if (!m_update.isActive()) m_update.start(0);
}

void TableWidget::editorChanged() {
    const veldrin::CellEditor* editor = m_table ? m_table->editor() : nullptr;
    if (m_editor && (!editor || m_editor->cell() != editor->cell)) {
        const bool hadFocus = m_editor->hasFocus();
        m_editor.release()->dismiss();
        if (hadFocus) setFocus();
    }
    if (!editor) return;
    if (!m_editor) {
        m_editor = std::make_unique<CellEditorWidget>(*m_table, *viewport());
        placeEditor();
        m_editor->open();
    }
    m_editor->refresh();
}

void TableWidget::cellWanted(TableCell cell) {
    updateScrollBars();
    const int position = m_table->positionOfRow(cell.row) - firstBodyPosition();
    if (position >= 0) {
        const int first = verticalScrollBar()->value();
        if (position < first) verticalScrollBar()->setValue(position);
        if (position >= first + pageRows()) verticalScrollBar()->setValue(position - pageRows() + 1);
    }
    if (cell.column < m_table->fixedColumnCount()) return;
    const int left = columnLeft(cell.column) - fixedWidth();
    const int right = left + m_table->columnWidth(cell.column);
    const int room = viewport()->width() - fixedWidth();
    QScrollBar* across = horizontalScrollBar();
    if (right > room) across->setValue(across->value() + right - room);
    if (left < 0) across->setValue(across->value() + left);
}

// Mouse and keyboard.

void TableWidget::resizeEvent(QResizeEvent* event) {
    QAbstractScrollArea::resizeEvent(event);
    tableChanged();
}

void TableWidget::scrollContentsBy(int, int) {
    placeEditor();
    viewport()->update();
}

void TableWidget::mousePressEvent(QMouseEvent* event) {
    if (!m_table || event->button() != Qt::LeftButton) return;
    m_dragged = borderAt(event->pos());
    if (m_dragged >= 0) return;
    m_pressed = cellAt(event->pos());
    m_table->userPresses(m_pressed, event->modifiers().testFlag(Qt::ShiftModifier));
    takeFocus();
}

void TableWidget::mouseMoveEvent(QMouseEvent* event) {
    if (!m_table) return;
    if (m_dragged >= 0) return m_table->userSizesColumn(m_dragged, event->pos().x() - columnLeft(m_dragged));
    viewport()->setCursor(borderAt(event->pos()) >= 0 ? Qt::SplitHCursor : Qt::ArrowCursor);
    if (!event->buttons().testFlag(Qt::LeftButton) || m_pressed == veldrin::kNoCell) return;
    const TableCell cell = cellAt(event->pos());
    if (cell == m_pressed || cell == veldrin::kNoCell) return;
    m_pressed = cell;
    m_table->userPresses(cell, true);
}

void TableWidget::mouseReleaseEvent(QMouseEvent* event) {
    if (!m_table || event->button() != Qt::LeftButton) return;
    if (std::exchange(m_dragged, -1) >= 0) return;
    const TableCell cell = cellAt(event->pos());
    const bool isClick = cell != veldrin::kNoCell && cell == m_pressed;
    m_pressed = veldrin::kNoCell;
    if (isClick) m_table->userReleases(cell, partAt(cell, event->pos()));
}

void TableWidget::mouseDoubleClickEvent(QMouseEvent* event) {
    if (!m_table || event->button() != Qt::LeftButton) return;
    const TableCell cell = cellAt(event->pos());
    if (cell == veldrin::kNoCell || borderAt(event->pos()) >= 0) return;
    m_pressed = cell;
    if (partAt(cell, event->pos()) == CellPart::kCell) m_table->userDoubleClicks(cell);
}

void TableWidget::keyPressEvent(QKeyEvent* event) {
    const std::optional<TableKey> key = tableKey(*event);
    if (m_table && key && m_table->userKeys(*key, heldKeys(*event))) return;
    const bool isCommand = (event->modifiers() & (Qt::ControlModifier | Qt::AltModifier)) != 0;
    if (m_table && !isCommand && m_table->userTypes(fromQt(event->text()))) return;
    event->ignore();
}

// Tab goes from cell to cell before it goes on to the next control. The same is called for a child that
// hides.
bool TableWidget::focusNextPrevChild(bool next) {
    if (m_table && hasFocus() && m_table->userKeys(TableKey::kTab, {!next, false})) return true;
    return QAbstractScrollArea::focusNextPrevChild(next);
}

bool TableWidget::viewportEvent(QEvent* event) {
    if (event->type() == QEvent::ToolTip && m_table) {
        const auto* help = dynamic_cast<QHelpEvent*>(event);
        const TableCell cell = cellAt(help->pos());
        const bool isShown = cell != veldrin::kNoCell && isElided(cell);
        QToolTip::showText(help->globalPos(),
                           isShown ? toQt(m_table->cellText(cell.row, cell.column)) : QString(), viewport(),
                           cellRect(cell));
        return true;
    }
    return QAbstractScrollArea::viewportEvent(event);
}
