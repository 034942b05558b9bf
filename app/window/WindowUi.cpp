#include "window/WindowUi.h"

#include "window/DialogWindow.h"
#include "window/qt_text.h"

#include <QApplication>
#include <QFileDialog>
#include <QMessageBox>
#include <QPushButton>

#include <clocale>

using veldrin::FileWindow;
using veldrin::MessageIcon;
using veldrin::MessageWindow;

namespace {

std::unique_ptr<QApplication> makeApplication() {
    if (QApplication::instance()) return nullptr;
    static int count = 1;
    static char name[] = "veldrin";
    static char* arguments[] = {name, nullptr};
    auto application = std::make_unique<QApplication>(count, arguments);
    std::setlocale(LC_NUMERIC, "C"); // numbers in drawings and databases have points everywhere
    QApplication::setQuitOnLastWindowClosed(false);
    return application;
}

QMessageBox::Icon iconOf(MessageIcon icon) {
    switch (icon) {
    case MessageIcon::kStop: return QMessageBox::Critical;
    case MessageIcon::kQuestion: return QMessageBox::Question;
    case MessageIcon::kWarning: return QMessageBox::Warning;
    case MessageIcon::kInformation: return QMessageBox::Information;
    default: return QMessageBox::NoIcon;
    }
}

QMessageBox::ButtonRole roleOf(const std::string& button) {
    if (button == "OK") return QMessageBox::AcceptRole;
    if (button == "Yes") return QMessageBox::YesRole;
    if (button == "No") return QMessageBox::NoRole;
    return QMessageBox::RejectRole;
}

QString filterOf(const std::string& extensions) {
    if (extensions.empty()) return {};
    const QStringList endings = toQt(extensions).split(';', Qt::SkipEmptyParts);
    return "*." + endings.join(" *.");
}

} // namespace

WindowUi::WindowUi() : m_application(makeApplication()) {
    QFont font = QApplication::font("QDialog");
    m_plain = std::make_unique<QFontMetrics>(font);
    font.setBold(true);
    m_bold = std::make_unique<QFontMetrics>(font);
}

WindowUi::~WindowUi() = default;

std::string WindowUi::showMessage(const MessageWindow& window) {
    const OpenWindow open(*this);
    QMessageBox box(QApplication::activeWindow());
    box.setWindowTitle(toQt(window.caption));
    box.setTextFormat(Qt::PlainText);
    box.setText(toQt(window.text));
    box.setIcon(iconOf(window.icon));
    const std::string& cancel = window.cancelButton.empty() ? window.defaultButton : window.cancelButton;
    for (const std::string& text : window.buttons) {
        QPushButton* button = box.addButton(toQt(text), roleOf(text));
        if (text == window.defaultButton) box.setDefaultButton(button);
        if (text == cancel) box.setEscapeButton(button);
    }
    box.exec();
    const QAbstractButton* pressed = box.clickedButton();
    return pressed ? fromQt(pressed->text().remove('&')) : cancel;
}

std::optional<std::string> WindowUi::showFile(const FileWindow& window) {
    const OpenWindow open(*this);
    QWidget* parent = QApplication::activeWindow();
    const QString caption = toQt(window.caption);
    const QString proposal = toQt(window.proposal);
    const QString filter = filterOf(window.extension);
    const QString path = window.isSaving ? QFileDialog::getSaveFileName(parent, caption, proposal, filter)
                                         : QFileDialog::getOpenFileName(parent, caption, proposal, filter);
    if (path.isEmpty()) return std::nullopt;
    return fromQt(path);
}

bool WindowUi::showDialog(CAcUiDialog& dialog) {
    DialogWindow window(dialog, QApplication::activeWindow());
    window.run();
    return true;
}

int WindowUi::textWidth(std::string_view text, bool isBold) const {
    return (isBold ? *m_bold : *m_plain).horizontalAdvance(toQt(text));
}
