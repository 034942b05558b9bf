#include "projects/LockTrust.h"

#include "files/FileReplacement.h"

#include <fcntl.h>
#include <fmt/format.h>
#include <unistd.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <set>
#include <sstream>
#include <vector>

namespace fs = std::filesystem;

namespace veldrin {

namespace {

constexpr std::string_view kNetworkTypes[] = {"nfs", "nfs4", "cifs", "smb3",      "smbfs", "9p",
                                              "afs", "ceph", "fuse", "glusterfs", "ncpfs", "davfs"};
// Options by which a share's locks are kept on one machine, or not at all.
constexpr std::string_view kDoubtfulOptions[] = {"nolock", "local_lock=all", "local_lock=posix",
                                                 "nobrl",  "forcemand",      "nolease_locks"};

struct Mount {
    std::string point;
    std::string type;
    std::vector<std::string> options;
};

// Blanks and the like in a path are written as \040.
std::string unescaped(std::string_view text) {
    std::string plain;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] == '\\' && i + 3 < text.size()) {
            plain +=
                static_cast<char>((text[i + 1] - '0') * 64 + (text[i + 2] - '0') * 8 + (text[i + 3] - '0'));
            i += 3;
        } else {
            plain += text[i];
        }
    }
    return plain;
}

void splitOptions(const std::string& text, std::vector<std::string>& options) {
    std::istringstream stream(text);
    for (std::string option; std::getline(stream, option, ',');) options.push_back(option);
}

// "36 35 98:0 /root /mnt rw,noatime shared:1 - nfs4 server:/export rw,nolock"
bool readMount(const std::string& line, Mount& mount) {
    std::istringstream fields(line);
    std::string id, parent, device, root, point, options, field;
    if (!(fields >> id >> parent >> device >> root >> point >> options)) return false;
    while (fields >> field && field != "-") {
    }
    std::string source, more;
    if (!(fields >> mount.type >> source >> more)) return false;
    mount.point = unescaped(point);
    mount.options.clear();
    splitOptions(options, mount.options);
    splitOptions(more, mount.options);
    return true;
}

bool isUnder(std::string_view path, std::string_view point) {
    return point == "/" || path == point ||
           (path.starts_with(point) && path.size() > point.size() && path[point.size()] == '/');
}

Mount mountOf(std::string_view mounts, std::string_view path) {
    Mount best;
    std::istringstream lines{std::string(mounts)};
    Mount mount;
    for (std::string line; std::getline(lines, line);)
        if (readMount(line, mount) && isUnder(path, mount.point) && mount.point.size() >= best.point.size())
            best = mount; // of two on one point the later one is in sight
    return best;
}

bool isNetworkType(std::string_view type) {
    return std::any_of(std::begin(kNetworkTypes), std::end(kNetworkTypes), [&](std::string_view network) {
        return type == network || (network == "fuse" && type.starts_with("fuse."));
    });
}

// Two locks that exclude each other on a file of our own. False when both are given, or none.
bool locksExclude(const std::string& folder) {
    std::string name = folder + "/.veldrin-lock-XXXXXX";
    const int first = mkstemp(name.data());
    if (first < 0) return true; // nobody writes here
    const int second = open(name.c_str(), O_RDWR | O_CLOEXEC);
    struct flock lock {};
    lock.l_type = F_WRLCK;
    lock.l_whence = SEEK_SET;
    lock.l_len = 1;
    const bool taken = fcntl(first, F_OFD_SETLK, &lock) == 0;
    lock.l_pid = 0;
    const bool refused = second >= 0 && fcntl(second, F_OFD_SETLK, &lock) != 0;
    if (second >= 0) close(second);
    close(first);
    unlink(name.c_str());
    return taken && refused;
}

std::string readMounts() {
    std::ifstream stream("/proc/self/mountinfo");
    return {std::istreambuf_iterator<char>(stream), {}};
}

} // namespace

bool isOnNetwork(std::string_view mounts, std::string_view path) {
    return isNetworkType(mountOf(mounts, path).type);
}

std::string whyMountIsDoubtful(std::string_view mounts, std::string_view path) {
    const Mount mount = mountOf(mounts, path);
    if (!isNetworkType(mount.type)) return {};
    for (const std::string& option : mount.options)
        if (std::find(std::begin(kDoubtfulOptions), std::end(kDoubtfulOptions), option) !=
            std::end(kDoubtfulOptions))
            return fmt::format("the share is mounted with {}", option);
    return {};
}

std::string describeLockDoubts(const std::string& path) {
    static std::set<std::string> asked;
    const std::string folder = fs::path(realPath(path)).parent_path().string();
    if (!asked.insert(folder).second) return {};
    const std::string mounts = readMounts();
    std::string why = whyMountIsDoubtful(mounts, folder);
    if (why.empty() && isOnNetwork(mounts, folder) && !locksExclude(folder)) why = "its locks do not hold";
    if (why.empty()) return {};
    return fmt::format("Only one person at a time should write the project in {}: {}.", folder, why);
}

} // namespace veldrin
