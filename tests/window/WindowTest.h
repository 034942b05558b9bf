#pragma once

#include "dialogs/ProjectDialog.h"
#include "runtime/Host.h"
#include "window/DialogWindow.h"
#include "window/TableWidget.h"
#include "window/WindowUi.h"

#include <QApplication>
#include <QPushButton>
#include <QTest>
#include <QTimer>

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <string>

// Windows without a display: the window system draws into memory.
class WindowTest : public testing::Test {
protected:
    WindowTest() {
        std::filesystem::create_directories(folder);
        setenv("XDG_CONFIG_HOME", folder.c_str(), 1);
        setenv("XDG_RUNTIME_DIR", folder.c_str(), 1);
        std::filesystem::permissions(folder, std::filesystem::perms::owner_all);
        host = std::make_unique<veldrin::Host>();
        host->setUi(std::make_unique<WindowUi>());
    }
    ~WindowTest() override {
        host.reset();
        std::filesystem::remove_all(folder);
    }

    // Acts on the window that is shown next, as soon as it waits for the user; what is left open is closed.
    template<class Act>
    static void next(Act act) {
        QTimer::singleShot(0, qApp, [act] {
            auto* window = dynamic_cast<DialogWindow*>(QApplication::activeModalWidget());
            ASSERT_TRUE(window && QTest::qWaitForWindowActive(window));
            act(*window);
            if (window->isVisible()) window->close();
        });
    }
    static void turn() { QApplication::processEvents(); }
    template<class Widget>
    static Widget& in(const DialogWindow& window, int id) {
        return dynamic_cast<Widget&>(*window.widgetOf(id));
    }

    const std::string folder = testing::TempDir() + "veldrin-window-test";
    std::unique_ptr<veldrin::Host> host;
};
