#pragma once

#include "ui/UiTable.h"

#include <QAbstractScrollArea>
#include <QTimer>

#include <memory>

class CellEditorWidget;
class QPainter;

// A table on the display. It draws the rows that are seen and passes on what mouse and keyboard do; all state
// but the scroll bars' is the table's.
class TableWidget : public QAbstractScrollArea, public veldrin::TableView {
public:
    explicit TableWidget(QWidget* parent = nullptr);
    ~TableWidget() override;

    void setTable(veldrin::UiTable* table);
    // The keyboard, for the table or for the editor that is open in it.
    void takeFocus();

    // Where a cell is seen, with the columns that it spans; empty when it is not.
    QRect cellRect(veldrin::TableCell cell) const;
    QRect boxRect(veldrin::TableCell cell, veldrin::CellPart part) const; // of its check or expand box

    // TableView
    void tableChanged() override;
    void editorChanged() override;
    void cellWanted(veldrin::TableCell cell) override;
    int pageRows() const override;

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void scrollContentsBy(int dx, int dy) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    bool focusNextPrevChild(bool next) override;
    bool viewportEvent(QEvent* event) override;

private:
    // Geometry. Fixed rows and columns stay, the others scroll: rows one by one, columns by pixels.
    int rowHeight(int row) const;
    int headHeight() const;
    int rowTop(int row) const; // -1 for one that is not seen
    int columnLeft(int column) const;
    int fixedWidth() const;
    int bodyWidth() const;
    veldrin::TableCell cellAt(const QPoint& point) const;
    veldrin::CellPart partAt(veldrin::TableCell cell, const QPoint& point) const;
    int borderAt(const QPoint& point) const; // the column whose right border may be dragged there; -1
    int firstBodyPosition() const;
    int bodyPositions() const;
    void updateScrollBars();
    void placeEditor();

    // Drawing (table_painting.cpp).
    void paintRow(QPainter& painter, int row, const QRect& seen);
    void paintCell(QPainter& painter, veldrin::TableCell cell, const QRect& rect);
    void paintText(QPainter& painter, veldrin::TableCell cell, QRect room, const QColor& color);
    void paintExpandBox(QPainter& painter, veldrin::TableCell cell);
    void paintFocus(QPainter& painter);
    QRect textRoom(veldrin::TableCell cell, const QRect& rect) const;
    bool isElided(veldrin::TableCell cell) const;
    QFont cellFont(veldrin::TableCell cell) const;

    veldrin::UiTable* m_table = nullptr;
    std::unique_ptr<CellEditorWidget> m_editor;
    QTimer m_update;
    veldrin::TableCell m_pressed; // under the mouse while its button is down
    int m_dragged = -1;           // column whose border is
};

// The key of a table that a key of the window system is.
std::optional<veldrin::TableKey> tableKey(const QKeyEvent& event);
veldrin::HeldKeys heldKeys(const QKeyEvent& event);
