#pragma once

#include "ui/CAcUiDialog.h"
#include "ui/DialogLayout.h"

#include <QDialog>
#include <QTimer>

#include <map>
#include <memory>
#include <set>

class ControlWidget;

// A dialog as a window: its controls where its template has them, moved and stretched as it says when the
// window grows. What the user does is told to the dialog; what the dialog does to itself is shown at the next
// turn of the event loop.
class DialogWindow : public QDialog, public DialogView {
public:
    DialogWindow(CAcUiDialog& dialog, QWidget* parent);
    ~DialogWindow() override;

    // Until the dialog has ended.
    void run();

    // Null for an id that the dialog does not have.
    QWidget* widgetOf(int id) const;

    // DialogView
    void controlChanged(const DialogControl& control) override;
    void focusChanged() override;
    void captionChanged() override;
    void enabledChanged() override;
    void activationWanted() override;
    void ended() override;

protected:
    void closeEvent(QCloseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void moveEvent(QMoveEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void makeWidgets();
    void setBuddies();
    void layOut();
    void restorePlace();
    void notePlace();
    void pressReturn();
    void refresh();

    CAcUiDialog& m_dialog;
    DialogBaseUnits m_units;
    DialogRect m_formSize;
    std::vector<std::unique_ptr<ControlWidget>> m_widgets; // in the order of the template
    std::set<int> m_changed;                               // controls to be shown anew
    QTimer m_refresh;
    bool m_isPlaced = false; // the user's own moves count from now on
};
