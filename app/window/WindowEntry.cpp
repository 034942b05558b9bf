#include "window/WindowEntry.h"

#include "window/WindowUi.h"

#include <QGuiApplication>

#include <cstdio>

#include <sys/wait.h>
#include <unistd.h>

namespace {

// The window system ends the process of who cannot reach the display, so another process tries first.
bool canReachDisplay() {
    const pid_t child = fork();
    if (child < 0) return true;
    if (child == 0) {
        if (!std::freopen("/dev/null", "w", stderr)) _exit(1);
        int count = 1;
        char name[] = "veldrin";
        char* arguments[] = {name, nullptr};
        const QGuiApplication application(count, arguments);
        _exit(0);
    }
    int status = 0;
    return waitpid(child, &status, 0) == child && WIFEXITED(status) && WEXITSTATUS(status) == 0;
}

} // namespace

veldrin::UiBackend* veldrinMakeWindows() {
    return canReachDisplay() ? new WindowUi : nullptr;
}
