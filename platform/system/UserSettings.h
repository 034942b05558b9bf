#pragma once

#include "system/SystemApi.h"

#include <cstdint>
#include <filesystem>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace veldrin {

// The settings of one user: values by key and name, as in "Software\Veldrin Software\Plumbing",
// "bCalloutFirst". Keys and names compare without regard to case (A to Z). A key must be made before values
// are written under it, and may exist without any. The empty name is the key's own value.
//
// All of it is one text file that is read when it is first asked for and again when another process has
// changed it. A change is written at once, whole or not at all.
class VELDRIN_SYSTEM_API UserSettings {
public:
    using Value = std::variant<std::string, std::int32_t>;

    // The file of the user who runs the program: veldrin/settings below XDG_CONFIG_HOME, or below ~/.config.
    UserSettings();
    explicit UserSettings(std::filesystem::path file);

    const std::filesystem::path& file() const { return m_file; }

    // Nothing when key or value does not exist.
    std::optional<Value> read(std::string_view key, std::string_view name) const;
    // Nothing when it does not exist or is no text.
    std::optional<std::string> readText(std::string_view key, std::string_view name) const;
    bool hasKey(std::string_view key) const;
    std::vector<std::string> subkeys(std::string_view key) const; // names of the next level
    std::vector<std::string> valueNames(std::string_view key) const;

    // False when the file cannot be written (errno says why), and for a key that does not exist.
    bool write(std::string_view key, std::string_view name, Value value);
    // Makes the key and those above it. True when it exists already.
    bool createKey(std::string_view key);
    // False when there was nothing to remove. A key goes with all that is below it.
    bool remove(std::string_view key, std::string_view name);
    bool removeKey(std::string_view key);

private:
    struct Less {
        bool operator()(const std::string& a, const std::string& b) const;
    };
    using Values = std::map<std::string, Value, Less>;
    using Keys = std::map<std::string, Values, Less>;

    struct Stamp {
        std::int64_t time = 0;
        std::int64_t size = -1;
        std::int64_t inode = 0;
        bool operator==(const Stamp&) const = default;
    };

    Stamp stampOfFile() const;
    void refresh() const;
    void parse(std::string_view text) const;
    std::string format() const;
    bool store();
    template<class Change>
    bool change(const Change& apply);

    std::filesystem::path m_file;
    mutable Keys m_keys;
    mutable Stamp m_stamp;
};

} // namespace veldrin
