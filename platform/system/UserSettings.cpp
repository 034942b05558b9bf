#include "system/UserSettings.h"

#include "system/AsciiCase.h"

#include <algorithm>
#include <cerrno>
#include <charconv>
#include <cstdlib>
#include <fcntl.h>
#include <fstream>
#include <sstream>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

namespace fs = std::filesystem;

namespace veldrin {

namespace {

fs::path settingsFile() {
    if (const char* folder = std::getenv("XDG_CONFIG_HOME"); folder && *folder == '/')
        return fs::path(folder) / "veldrin" / "settings";
    const char* home = std::getenv("HOME");
    return fs::path(home && *home ? home : "/") / ".config" / "veldrin" / "settings";
}

// Keys without separators at the ends, and without the name of the user's root, which is the only one.
std::string normalKey(std::string_view key) {
    constexpr std::string_view kRoots[] = {"HKEY_CURRENT_USER\\", "HKEY_LOCAL_MACHINE\\"};
    for (const std::string_view root : kRoots)
        if (key.substr(0, root.size()) == root) key.remove_prefix(root.size());
    while (!key.empty() && key.front() == '\\') key.remove_prefix(1);
    while (!key.empty() && key.back() == '\\') key.remove_suffix(1);
    return std::string(key);
}

std::string quoted(const std::string& text) {
    std::string result = "\"";
    for (const char c : text) {
        if (c == '\n')
            result += "\\n";
        else if (c == '\r')
            result += "\\r";
        else if (c == '"' || c == '\\')
            (result += '\\') += c;
        else
            result += c;
    }
    return result + '"';
}

// Takes a quoted text off the front; nothing when there is none.
std::optional<std::string> takeQuoted(std::string_view& text) {
    if (text.empty() || text.front() != '"') return {};
    std::string result;
    for (std::size_t i = 1; i < text.size(); ++i) {
        if (text[i] == '"') {
            text.remove_prefix(i + 1);
            return result;
        }
        if (text[i] != '\\') {
            result += text[i];
        } else if (++i < text.size()) {
            const char c = text[i];
            result += c == 'n' ? '\n' : c == 'r' ? '\r' : c;
        }
    }
    return {};
}

// Holds other processes off while a change is made.
class FileLock {
public:
    explicit FileLock(const fs::path& file)
        : m_handle(open(file.c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0600)) {
        if (m_handle >= 0) flock(m_handle, LOCK_EX);
    }
    ~FileLock() {
        if (m_handle >= 0) close(m_handle);
    }
    FileLock(const FileLock&) = delete;
    FileLock& operator=(const FileLock&) = delete;

private:
    int m_handle;
};

bool writeWhole(const fs::path& file, const std::string& text) {
    const std::string fresh = file.string() + ".new";
    const int handle = open(fresh.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0600);
    if (handle < 0) return false;
    std::size_t done = 0;
    while (done < text.size()) {
        const ssize_t count = ::write(handle, text.data() + done, text.size() - done);
        if (count < 0 && errno == EINTR) continue;
        if (count < 0) break;
        done += static_cast<std::size_t>(count);
    }
    const bool isWhole = done == text.size() && fsync(handle) == 0;
    const int reason = errno;
    close(handle);
    if (isWhole && rename(fresh.c_str(), file.c_str()) == 0) return true;
    const int error = isWhole ? errno : reason;
    unlink(fresh.c_str());
    errno = error;
    return false;
}

} // namespace

bool UserSettings::Less::operator()(const std::string& a, const std::string& b) const {
    return asciiLess(a, b);
}

UserSettings::UserSettings() : UserSettings(settingsFile()) {}

UserSettings::UserSettings(fs::path file) : m_file(std::move(file)) {}

UserSettings::Stamp UserSettings::stampOfFile() const {
    struct stat info {};
    if (stat(m_file.c_str(), &info) != 0) return {};
    return {info.st_mtim.tv_sec * 1'000'000'000LL + info.st_mtim.tv_nsec, info.st_size,
            static_cast<std::int64_t>(info.st_ino)};
}

void UserSettings::refresh() const {
    const Stamp stamp = stampOfFile();
    if (stamp == m_stamp) return;
    m_stamp = stamp;
    m_keys.clear();
    std::ifstream in(m_file, std::ios::binary);
    std::ostringstream text;
    text << in.rdbuf();
    parse(text.str());
}

// Lines "[key]" and "name"="text" or "name"=number. What is none of these is passed over.
void UserSettings::parse(std::string_view text) const {
    Values* values = nullptr;
    while (!text.empty()) {
        std::string_view line = text.substr(0, text.find('\n'));
        text.remove_prefix(std::min(text.size(), line.size() + 1));
        if (line.size() > 2 && line.front() == '[' && line.back() == ']') {
            values = &m_keys[std::string(line.substr(1, line.size() - 2))];
            continue;
        }
        const auto name = takeQuoted(line);
        if (!values || !name || line.empty() || line.front() != '=') continue;
        line.remove_prefix(1);
        std::int32_t number = 0;
        if (const auto value = takeQuoted(line))
            (*values)[*name] = *value;
        else if (std::from_chars(line.data(), line.data() + line.size(), number).ec == std::errc())
            (*values)[*name] = number;
    }
}

std::string UserSettings::format() const {
    std::string text;
    for (const auto& [key, values] : m_keys) {
        text += "[" + key + "]\n";
        for (const auto& [name, value] : values) {
            const auto* number = std::get_if<std::int32_t>(&value);
            text += quoted(name) + "=" +
                    (number ? std::to_string(*number) : quoted(std::get<std::string>(value)));
            text += '\n';
        }
    }
    return text;
}

bool UserSettings::store() {
    const bool written = writeWhole(m_file, format());
    const int error = errno;
    m_stamp = written ? stampOfFile() : Stamp{-1, -1, -1}; // what was not written is read anew
    errno = error;
    return written;
}

template<class Change>
bool UserSettings::change(const Change& apply) {
    std::error_code error;
    fs::create_directories(m_file.parent_path(), error);
    if (error) {
        errno = error.value();
        return false;
    }
    const FileLock lock(m_file.string() + ".lock");
    refresh();
    return apply() && store();
}

std::optional<UserSettings::Value> UserSettings::read(std::string_view key, std::string_view name) const {
    refresh();
    const auto values = m_keys.find(normalKey(key));
    if (values == m_keys.end()) return {};
    const auto value = values->second.find(std::string(name));
    return value == values->second.end() ? std::nullopt : std::optional<Value>(value->second);
}

std::optional<std::string> UserSettings::readText(std::string_view key, std::string_view name) const {
    const auto value = read(key, name);
    const auto* text = value ? std::get_if<std::string>(&*value) : nullptr;
    return text ? std::optional<std::string>(*text) : std::nullopt;
}

bool UserSettings::hasKey(std::string_view key) const {
    refresh();
    return m_keys.contains(normalKey(key));
}

std::vector<std::string> UserSettings::subkeys(std::string_view key) const {
    refresh();
    const std::string above = normalKey(key) + (key.empty() ? "" : "\\");
    std::vector<std::string> names;
    for (const auto& [candidate, values] : m_keys) {
        const bool isBelow = candidate.size() > above.size() && asciiStartsWith(candidate, above);
        if (isBelow && candidate.find('\\', above.size()) == std::string::npos)
            names.push_back(candidate.substr(above.size()));
    }
    return names;
}

std::vector<std::string> UserSettings::valueNames(std::string_view key) const {
    refresh();
    std::vector<std::string> names;
    if (const auto values = m_keys.find(normalKey(key)); values != m_keys.end())
        for (const auto& [name, value] : values->second) names.push_back(name);
    return names;
}

bool UserSettings::write(std::string_view key, std::string_view name, Value value) {
    return change([&] {
        const auto values = m_keys.find(normalKey(key));
        errno = ENOENT;
        if (values == m_keys.end()) return false;
        values->second.insert_or_assign(std::string(name), std::move(value));
        return true;
    });
}

bool UserSettings::createKey(std::string_view key) {
    const std::string name = normalKey(key);
    if (name.empty() || name.find_first_of("\n\r[]") != std::string::npos) return false;
    if (hasKey(name)) return true;
    return change([&] {
        for (std::size_t end = name.find('\\'); end != std::string::npos; end = name.find('\\', end + 1))
            m_keys[name.substr(0, end)];
        m_keys[name];
        return true;
    });
}

bool UserSettings::remove(std::string_view key, std::string_view name) {
    return change([&] {
        const auto values = m_keys.find(normalKey(key));
        return values != m_keys.end() && values->second.erase(std::string(name)) > 0;
    });
}

bool UserSettings::removeKey(std::string_view key) {
    const std::string name = normalKey(key);
    return change([&] {
        return std::erase_if(m_keys, [&](const auto& entry) {
                   const std::string candidate = entry.first.substr(0, name.size());
                   const bool isSame = !Less{}(candidate, name) && !Less{}(name, candidate);
                   return isSame && (entry.first.size() == name.size() || entry.first[name.size()] == '\\');
               }) > 0;
    });
}

} // namespace veldrin
