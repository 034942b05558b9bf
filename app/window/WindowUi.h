#pragma once

#include "ui/UiBackend.h"

#include <QFont>
#include <QFontMetrics>

#include <memory>

class QApplication;

// Windows on the display.
class WindowUi : public veldrin::UiBackend {
public:
    // With an application of its own unless there is one.
    WindowUi();
    ~WindowUi() override;

    std::string showMessage(const veldrin::MessageWindow& window) override;
    std::optional<std::string> showFile(const veldrin::FileWindow& window) override;
    bool showDialog(CAcUiDialog& dialog) override;
    int textWidth(std::string_view text, bool isBold) const override;

private:
    std::unique_ptr<QApplication> m_application;
    std::unique_ptr<QFontMetrics> m_plain;
    std::unique_ptr<QFontMetrics> m_bold;
};
