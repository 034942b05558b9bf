#include "runtime/afx.h"

#include "runtime/Host.h"
#include "runtime/ModuleLoader.h"

#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <string>
#include <string_view>

using veldrin::Host;

AFX_MODULE_STATE* AfxGetModuleState() {
    return &Host::current().modules().sharedState();
}

void AfxDaoInit() {
    Host::current().modules().startDao();
    AFX_MODULE_STATE& state = *AfxGetModuleState();
    if (!state.m_pDaoState) state.m_pDaoState = new _AFX_DAO_STATE;
}

// The engine lives in its connections, so that stopping it leaves nothing to be done here.
void AfxDaoTerm() {}

unsigned GetLastError() {
    return static_cast<unsigned>(errno);
}

void SetLastError(unsigned code) {
    errno = static_cast<int>(code);
}

namespace {

constexpr int kNoFile = 2;
constexpr int kNoAssociation = 31;
constexpr int kStarted = 33;

bool hasDisplay() {
    const char* const x11 = std::getenv("DISPLAY");
    const char* const wayland = std::getenv("WAYLAND_DISPLAY");
    return (x11 && *x11) || (wayland && *wayland);
}

} // namespace

int ShellExecute(const char* verb, const char* target) {
    if (!target || !*target || *target == '-') return kNoFile;
    if (verb && *verb && std::string_view(verb) != "open") return kNoAssociation;
    if (!hasDisplay()) return kNoAssociation;
    // The shell leaves the desktop's opener running on its own, so that there is nobody to wait for.
    std::string shell = "sh", option = "-c", what = target;
    std::string script = "command -v xdg-open >/dev/null || exit 1; xdg-open \"$0\" >/dev/null 2>&1 &";
    char* const arguments[] = {shell.data(), option.data(), script.data(), what.data(), nullptr};
    pid_t child = 0;
    if (posix_spawn(&child, "/bin/sh", nullptr, nullptr, arguments, environ) != 0) return kNoAssociation;
    int status = 0;
    while (waitpid(child, &status, 0) < 0) {
        if (errno != EINTR) return kNoAssociation;
    }
    return WIFEXITED(status) && WEXITSTATUS(status) == 0 ? kStarted : kNoAssociation;
}
