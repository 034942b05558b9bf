#include "drawing/SymbolNames.h"

#include <algorithm>

namespace veldrin {

namespace {

constexpr std::size_t kLongestName = 255;
constexpr std::string_view kForbidden = "<>/\\\":;?*|,=`";

char upper(char c) {
    return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c;
}

} // namespace

std::string symbolKey(std::string_view name) {
    std::string key(name);
    std::ranges::transform(key, key.begin(), upper);
    return key;
}

bool sameSymbolName(std::string_view a, std::string_view b) {
    return std::ranges::equal(a, b, {}, upper, upper);
}

bool isSymbolName(std::string_view name) {
    if (name.empty() || name.size() > kLongestName) return false;
    if (name.front() == '*') name.remove_prefix(1);
    return !name.empty() && std::ranges::none_of(name, [](char c) {
        return (c >= 0 && c < ' ') || c == '\x7f' || kForbidden.find(c) != std::string_view::npos;
    });
}

} // namespace veldrin
