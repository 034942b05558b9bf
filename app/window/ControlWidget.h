#pragma once

#include "ui/CAcUiDialog.h"

#include <QRect>
#include <QWidget>

#include <memory>

// A control of a dialog as a widget.
class ControlWidget {
public:
    explicit ControlWidget(int id) : m_id(id) {}
    virtual ~ControlWidget();
    ControlWidget(const ControlWidget&) = delete;
    ControlWidget& operator=(const ControlWidget&) = delete;

    int id() const { return m_id; }
    virtual QWidget& widget() const = 0;
    // Shows what the control holds; the dialog is told nothing of it.
    virtual void refresh(const DialogControl& control) = 0;
    virtual void place(const QRect& rect) { widget().setGeometry(rect); }
    virtual void focus() { widget().setFocus(); }

private:
    int m_id;
};

std::unique_ptr<ControlWidget> makeControlWidget(CAcUiDialog& dialog, const DialogControl& control,
                                                 QWidget* parent);
