#pragma once

#include <algorithm>
#include <string>
#include <string_view>

namespace veldrin {

// Letters A to Z without regard to case, so that a name means the same in every locale; all other characters
// are only equal to themselves. It is how names, keys and endings compare throughout, as the database does.

constexpr char asciiLower(char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}
constexpr char asciiUpper(char c) {
    return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c;
}

inline std::string asciiLowerCase(std::string_view text) {
    std::string lower(text);
    std::ranges::transform(lower, lower.begin(), asciiLower);
    return lower;
}
inline std::string asciiUpperCase(std::string_view text) {
    std::string upper(text);
    std::ranges::transform(upper, upper.begin(), asciiUpper);
    return upper;
}

inline bool asciiEqual(std::string_view a, std::string_view b) {
    return std::ranges::equal(a, b, {}, asciiLower, asciiLower);
}
inline bool asciiStartsWith(std::string_view text, std::string_view start) {
    return text.size() >= start.size() && asciiEqual(text.substr(0, start.size()), start);
}
inline bool asciiLess(std::string_view a, std::string_view b) {
    // As bytes, so that letters beyond ASCII come behind it.
    const auto letter = [](char c) { return static_cast<unsigned char>(asciiLower(c)); };
    return std::ranges::lexicographical_compare(a, b, {}, letter, letter);
}

} // namespace veldrin
