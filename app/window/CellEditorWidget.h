#pragma once

#include "ui/UiTable.h"

#include <QLineEdit>
#include <QListWidget>
#include <QPointer>

// The editor over a cell: a line to type in, with a list below it where the cell has one. The line edits;
// what ends the edit is the table's to say.
class CellEditorWidget : public QLineEdit {
public:
    CellEditorWidget(veldrin::UiTable& table, QWidget& viewport);
    ~CellEditorWidget() override;

    veldrin::TableCell cell() const { return m_cell; }
    void place(const QRect& rect);
    void open();
    void refresh(); // takes over the text that the table has put into its editor
    void dismiss(); // for good; it goes when its own events are over

protected:
    bool event(QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;

private:
    void makeList();
    void showList(bool show);
    void placeList();
    void pickBeside(int step);
    bool passOn(QKeyEvent& event);

    veldrin::UiTable& m_table;
    QWidget& m_viewport;
    veldrin::TableCell m_cell;
    veldrin::CellKind m_kind;
    QPointer<QListWidget> m_list;
    bool m_isClosed = false;
};
