// How a table looks.

#include "window/TableWidget.h"
#include "window/qt_text.h"

#include <QPaintEvent>
#include <QPainter>
#include <QScrollBar>
#include <QStyleOptionButton>
#include <QStyleOptionViewItem>

using veldrin::CellKind;
using veldrin::CellLook;
using veldrin::CellPart;
using veldrin::TableCell;

namespace {

constexpr int kDark = 128; // lightness below which white is easier to read
constexpr int kArrowSize = 8;

// What is readable on a background that a cell brings along, whatever the desktop's own colours are.
QColor textOn(const QColor& background) {
    return background.lightness() < kDark ? Qt::white : Qt::black;
}

} // namespace

QFont TableWidget::cellFont(TableCell cell) const {
    QFont used = font();
    used.setBold(cell.row < m_table->fixedRowCount() || m_table->cellLook(cell.row, cell.column).isBold);
    return used;
}

void TableWidget::paintEvent(QPaintEvent* event) {
    QPainter painter(viewport());
    painter.fillRect(event->rect(), palette().base());
    if (!m_table) return;
    const int first = firstBodyPosition() + verticalScrollBar()->value();
    painter.save();
    painter.setClipRect(QRect(0, headHeight(), viewport()->width(), viewport()->height()));
    for (int position = first; position < m_table->shownRowCount(); ++position) {
        const int row = m_table->shownRow(position);
        if (rowTop(row) < 0 || rowTop(row) >= viewport()->height()) break;
        paintRow(painter, row, event->rect());
    }
    paintFocus(painter);
    painter.restore();
    for (int row = 0; row < m_table->fixedRowCount() && row < m_table->rowCount(); ++row)
        paintRow(painter, row, event->rect());
}

// Fixed columns come last, over what is scrolled under them.
void TableWidget::paintRow(QPainter& painter, int row, const QRect& seen) {
    const auto paint = [&](int first, int end) {
        for (int column = first; column < end; ++column) {
            if (m_table->columnWidth(column) == 0 || m_table->cellLook(row, column).span == 0) continue;
            const QRect rect = cellRect({row, column});
            if (rect.intersects(seen)) paintCell(painter, {row, column}, rect);
        }
    };
    paint(m_table->fixedColumnCount(), m_table->columnCount());
    paint(0, m_table->fixedColumnCount());
}

void TableWidget::paintCell(QPainter& painter, TableCell cell, const QRect& rect) {
    const CellLook look = m_table->cellLook(cell.row, cell.column);
    const bool isFixed = cell.row < m_table->fixedRowCount() || cell.column < m_table->fixedColumnCount();
    const bool isSelected = m_table->isSelected(cell.row, cell.column);
    QColor background = palette().color(QPalette::Base);
    QColor text = palette().color(isEnabled() ? QPalette::Active : QPalette::Disabled, QPalette::Text);
    if (isFixed || look.background) {
        background = toQt(look.background.value_or(veldrin::kFixedCellBackground));
        text = textOn(background);
    }
    if (look.text) text = toQt(*look.text);
    if (isSelected) {
        background = palette().color(QPalette::Highlight);
        text = palette().color(QPalette::HighlightedText);
    }
    painter.fillRect(rect, background);
    painter.setPen(palette().color(QPalette::Midlight).darker(110));
    painter.drawLine(rect.bottomLeft(), rect.bottomRight());
    painter.drawLine(rect.topRight(), rect.bottomRight());

    const bool isBody = cell.row >= m_table->fixedRowCount();
    if (isBody && m_table->isTreeColumn(cell.column)) paintExpandBox(painter, cell);
    if (m_table->cellKind(cell.row, cell.column) == CellKind::kCheck) {
        QStyleOptionButton box;
        box.rect = boxRect(cell, CellPart::kCheckBox);
        box.state = m_table->isChecked(cell.row, cell.column) ? QStyle::State_On : QStyle::State_Off;
        if (isEnabled()) box.state |= QStyle::State_Enabled;
        style()->drawPrimitive(QStyle::PE_IndicatorCheckBox, &box, &painter, this);
        return;
    }
    paintText(painter, cell, textRoom(cell, rect), text);
}

QRect TableWidget::textRoom(TableCell cell, const QRect& rect) const {
    QRect room = rect.adjusted(veldrin::kCellMargin, 0, -veldrin::kCellMargin, 0);
    const bool isBody = cell.row >= m_table->fixedRowCount();
    if (isBody && m_table->isTreeColumn(cell.column))
        room.setLeft(room.left() + m_table->rowLevel(cell.row) * veldrin::kTreeIndent);
    const CellKind kind = m_table->cellKind(cell.row, cell.column);
    if (kind == CellKind::kOpenList || kind == CellKind::kClosedList)
        room.setRight(room.right() - veldrin::kListArrow);
    return room;
}

bool TableWidget::isElided(TableCell cell) const {
    const QString text = toQt(m_table->cellText(cell.row, cell.column));
    const QRect room = textRoom(cell, cellRect(cell));
    return QFontMetrics(cellFont(cell)).boundingRect(QRect(), 0, text).width() > room.width();
}

void TableWidget::paintText(QPainter& painter, TableCell cell, QRect room, const QColor& color) {
    const QString text = toQt(m_table->cellText(cell.row, cell.column));
    painter.setFont(cellFont(cell));
    painter.setPen(color);
    const QFontMetrics metrics = painter.fontMetrics();
    const int line = metrics.height();
    const QStringList lines = text.split('\n');
    room.setTop(room.top() + (room.height() - line * static_cast<int>(lines.size())) / 2);
    for (const QString& part : lines) {
        painter.drawText(QRect(room.left(), room.top(), room.width(), line), Qt::AlignLeft | Qt::AlignVCenter,
                         metrics.elidedText(part, Qt::ElideRight, room.width()));
        room.setTop(room.top() + line);
    }
}

void TableWidget::paintExpandBox(QPainter& painter, TableCell cell) {
    if (!m_table->hasBranch(cell.row)) return;
    QStyleOptionViewItem branch;
    branch.rect = boxRect(cell, CellPart::kExpandBox);
    branch.state = QStyle::State_Children | QStyle::State_Enabled;
    if (m_table->isExpanded(cell.row)) branch.state |= QStyle::State_Open;
    style()->drawPrimitive(QStyle::PE_IndicatorBranch, &branch, &painter, this);
}

void TableWidget::paintFocus(QPainter& painter) {
    const TableCell focus = m_table->focusCell();
    if (focus == veldrin::kNoCell || m_table->editor()) return;
    const QRect rect = cellRect(focus);
    if (rect.isEmpty()) return;
    painter.setPen(QPen(palette().color(QPalette::Text), 1, hasFocus() ? Qt::SolidLine : Qt::DotLine));
    painter.drawRect(rect.adjusted(0, 0, -1, -1));
    const CellKind kind = m_table->cellKind(focus.row, focus.column);
    if (kind != CellKind::kOpenList && kind != CellKind::kClosedList) return;
    QStyleOption arrow;
    arrow.initFrom(this);
    arrow.rect = QRect(0, 0, kArrowSize, kArrowSize);
    arrow.rect.moveCenter({rect.right() - veldrin::kListArrow / 2, rect.center().y()});
    style()->drawPrimitive(QStyle::PE_IndicatorArrowDown, &arrow, &painter, this);
}
