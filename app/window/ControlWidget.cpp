#include "window/ControlWidget.h"

#include "window/TableWidget.h"
#include "window/qt_text.h"

#include <QCheckBox>
#include <QComboBox>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QSignalBlocker>

ControlWidget::~ControlWidget() = default;

namespace {

constexpr int kFrameTop = 4; // pixels by which a frame's title stands above its line

// Owns its widget, so that no signal of it comes when there is nobody to answer.
template<class Widget>
class Shown : public ControlWidget {
public:
    Shown(CAcUiDialog& dialog, int id, QWidget* parent)
        : ControlWidget(id), m_dialog(dialog), m_widget(new Widget(parent)) {}
    ~Shown() override {
        m_widget->blockSignals(true);
        delete m_widget;
    }
    QWidget& widget() const override { return *m_widget; }

protected:
    // What the user does is the dialog's to answer, whatever it throws.
    template<class Act>
    void act(Act action) {
        m_dialog.guarded([&] { action(); });
    }
    // Shows the control as it is now, when the dialog did not take what the user did.
    void showAgain() {
        if (const DialogControl* control = m_dialog.control(id()); control && m_dialog.isOpen())
            refresh(*control);
    }

    CAcUiDialog& m_dialog;
    Widget* const m_widget;
};

class TextWidget : public Shown<QLabel> {
public:
    using Shown::Shown;
    void refresh(const DialogControl& control) override {
        m_widget->setText(toQt(control.GetWindowText()));
        m_widget->setEnabled(control.IsWindowEnabled());
    }
};

class FrameWidget : public Shown<QGroupBox> {
public:
    using Shown::Shown;
    void refresh(const DialogControl& control) override {
        m_widget->setTitle(toQt(control.GetWindowText()));
        m_widget->setEnabled(control.IsWindowEnabled());
    }
    void place(const QRect& rect) override { m_widget->setGeometry(rect.adjusted(0, -kFrameTop, 0, 0)); }
};

class ButtonWidget : public Shown<QPushButton> {
public:
    ButtonWidget(CAcUiDialog& dialog, const DialogControl& control, QWidget* parent)
        : Shown(dialog, control.id(), parent) {
        // A button that takes the focus on its way down would end an edit before it is pressed.
        m_widget->setFocusPolicy(Qt::TabFocus);
        m_widget->setAutoDefault(false);
        m_widget->setDefault((control.form().flags & kDefaultButton) != 0);
        QObject::connect(m_widget, &QPushButton::clicked, m_widget,
                         [this] { act([this] { m_dialog.userClicks(id()); }); });
    }
    void refresh(const DialogControl& control) override {
        m_widget->setText(toQt(control.GetWindowText()));
        m_widget->setEnabled(control.IsWindowEnabled());
    }
};

class CheckWidget : public Shown<QCheckBox> {
public:
    CheckWidget(CAcUiDialog& dialog, const DialogControl& control, QWidget* parent)
        : Shown(dialog, control.id(), parent) {
        m_widget->setFocusPolicy(Qt::TabFocus);
        QObject::connect(m_widget, &QCheckBox::clicked, m_widget, [this](bool isChecked) {
            act([&] {
                if (!m_dialog.userChecks(id(), isChecked)) showAgain();
            });
        });
    }
    void refresh(const DialogControl& control) override {
        m_widget->setText(toQt(control.GetWindowText()));
        m_widget->setEnabled(control.IsWindowEnabled());
        m_widget->setChecked(dynamic_cast<const CheckControl&>(control).GetCheck());
    }
};

class EditWidget : public Shown<QLineEdit> {
public:
    EditWidget(CAcUiDialog& dialog, const DialogControl& control, QWidget* parent)
        : Shown(dialog, control.id(), parent) {
        QObject::connect(m_widget, &QLineEdit::textEdited, m_widget, [this](const QString& text) {
            act([&] {
                if (!m_dialog.userTypes(id(), fromQt(text))) showAgain();
            });
        });
    }
    void refresh(const DialogControl& control) override {
        const auto& edit = dynamic_cast<const EditControl&>(control);
        const QString text = toQt(edit.GetWindowText());
        if (m_widget->text() != text) m_widget->setText(text);
        m_widget->setEnabled(edit.IsWindowEnabled());
        if (std::exchange(m_shownRequests, edit.selectionRequests()) == edit.selectionRequests()) return;
        const int first = qtPlace(edit.GetWindowText(), edit.selectionFirst());
        const int last = qtPlace(edit.GetWindowText(), edit.selectionLast());
        m_widget->setSelection(first, last - first);
    }

private:
    int m_shownRequests = 0; // where the user's own caret is stays the widget's
};

QStringList itemsOf(const ListControl& list) {
    QStringList items;
    for (int at = 0; at < list.GetCount(); ++at) items.append(toQt(list.GetText(at)));
    return items;
}

// A list, whichever way it is shown. Its items are only replaced when they are others.
template<class Widget>
class ItemsWidget : public Shown<Widget> {
public:
    using Shown<Widget>::Shown;
    void refresh(const DialogControl& control) override {
        const auto& list = dynamic_cast<const ListControl&>(control);
        const QSignalBlocker silent(this->m_widget);
        const QStringList items = itemsOf(list);
        if (items != m_items) {
            this->m_widget->clear();
            this->m_widget->addItems(items);
            m_items = items;
        }
        select(list.GetCurSel());
        this->m_widget->setEnabled(list.IsWindowEnabled());
    }

protected:
    virtual void select(int item) = 0;
    void pick(int item) {
        this->act([&] {
            if (item >= 0 && !this->m_dialog.userSelects(this->id(), item)) this->showAgain();
        });
    }

private:
    QStringList m_items;
};

class ListWidget : public ItemsWidget<QListWidget> {
public:
    ListWidget(CAcUiDialog& dialog, const DialogControl& control, QWidget* parent)
        : ItemsWidget(dialog, control.id(), parent) {
        m_widget->setUniformItemSizes(true);
        QObject::connect(m_widget, &QListWidget::currentRowChanged, m_widget, [this](int row) { pick(row); });
        QObject::connect(m_widget, &QListWidget::itemDoubleClicked, m_widget,
                         [this] { act([this] { m_dialog.userDoubleClicks(id()); }); });
    }

protected:
    void select(int item) override { m_widget->setCurrentRow(item); }
};

class ComboWidget : public ItemsWidget<QComboBox> {
public:
    ComboWidget(CAcUiDialog& dialog, const DialogControl& control, QWidget* parent)
        : ItemsWidget(dialog, control.id(), parent) {
        QObject::connect(m_widget, &QComboBox::activated, m_widget, [this](int item) { pick(item); });
    }

protected:
    void select(int item) override { m_widget->setCurrentIndex(item); }
};

class GridWidget : public Shown<TableWidget> {
public:
    using Shown::Shown;
    void refresh(const DialogControl& control) override {
        m_widget->setTable(dynamic_cast<const TableControl&>(control).table());
        m_widget->setEnabled(control.IsWindowEnabled());
    }
    void focus() override { m_widget->takeFocus(); }
};

} // namespace

std::unique_ptr<ControlWidget> makeControlWidget(CAcUiDialog& dialog, const DialogControl& control,
                                                 QWidget* parent) {
    switch (control.kind()) {
    case ControlKind::kButton: return std::make_unique<ButtonWidget>(dialog, control, parent);
    case ControlKind::kCheck: return std::make_unique<CheckWidget>(dialog, control, parent);
    case ControlKind::kEdit: return std::make_unique<EditWidget>(dialog, control, parent);
    case ControlKind::kList: return std::make_unique<ListWidget>(dialog, control, parent);
    case ControlKind::kCombo: return std::make_unique<ComboWidget>(dialog, control, parent);
    case ControlKind::kGrid: return std::make_unique<GridWidget>(dialog, control.id(), parent);
    case ControlKind::kFrame: return std::make_unique<FrameWidget>(dialog, control.id(), parent);
    case ControlKind::kText:
    case ControlKind::kImage: break;
    }
    return std::make_unique<TextWidget>(dialog, control.id(), parent);
}
