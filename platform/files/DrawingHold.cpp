#include "files/DrawingHold.h"

#include "files/FileReplacement.h"

#include <fcntl.h>
#include <pwd.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <fmt/chrono.h>
#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <ctime>

namespace veldrin {

namespace {

constexpr const char* kEnding = ".lock";
constexpr int kAttempts = 20;
constexpr int kFlags = O_CLOEXEC | O_NOFOLLOW;

std::string whoWeAre() {
    std::array<char, 256> host{};
    gethostname(host.data(), host.size() - 1);
    const passwd* const user = getpwuid(getuid());
    return fmt::format("{} on {} (process {}, since {:%Y-%m-%d %H:%M})",
                       user ? user->pw_name : std::to_string(getuid()), host.data(), getpid(),
                       fmt::localtime(std::time(nullptr)));
}

// One line of the file: it may be a foreign one.
std::string readHolder(int file) {
    std::array<char, 512> bytes{};
    const ssize_t count = pread(file, bytes.data(), bytes.size() - 1, 0);
    std::string text(bytes.data(), count > 0 ? static_cast<std::size_t>(count) : 0);
    text.erase(std::min(text.find_first_of(std::string_view("\r\n\0", 3)), text.size()));
    return text.empty() ? "another program" : text;
}

// The holder before may have removed the file between our opening and our locking it.
bool isStillThere(const std::string& path, int file) {
    struct stat ours {};
    struct stat named {};
    return fstat(file, &ours) == 0 && stat(path.c_str(), &named) == 0 && ours.st_ino == named.st_ino &&
           ours.st_dev == named.st_dev;
}

bool writeHolder(int file) {
    const std::string text = whoWeAre() + "\n";
    return ftruncate(file, 0) == 0 && pwrite(file, text.data(), text.size(), 0) >= 0;
}

} // namespace

DrawingHold::Attempt DrawingHold::take(const std::string& drawing) {
    Attempt attempt;
    const std::string path = realPath(drawing) + kEnding;
    for (int i = 0; i < kAttempts; ++i) {
        int file = open(path.c_str(), O_RDWR | O_CREAT | kFlags, 0666);
        const int refusal = file < 0 ? errno : 0;
        if (refusal == EACCES) file = open(path.c_str(), O_RDONLY | kFlags); // somebody else made it
        if (file < 0) {
            attempt.isDenied = refusal == EACCES || refusal == EROFS || refusal == EPERM;
            return attempt;
        }
        if (flock(file, LOCK_EX | LOCK_NB) != 0) {
            attempt.isUnlockable = errno != EWOULDBLOCK;
            if (!attempt.isUnlockable) attempt.holder = readHolder(file);
            close(file);
            return attempt;
        }
        if (refusal != 0 && isStillThere(path, file) && unlink(path.c_str()) != 0) {
            attempt.isDenied = true;
            close(file);
            return attempt;
        }
        if (refusal == 0 && isStillThere(path, file)) {
            struct stat before {};
            attempt.afterCrash = fstat(file, &before) == 0 && before.st_size > 0;
            attempt.hold.reset(new DrawingHold(path, file));
            writeHolder(file); // on a full disk it is a hold without a name
            return attempt;
        }
        close(file);
    }
    return attempt;
}

DrawingHold::~DrawingHold() {
    unlink(m_path.c_str()); // while it is locked, so that nobody else's goes
    close(m_file);
}

} // namespace veldrin
