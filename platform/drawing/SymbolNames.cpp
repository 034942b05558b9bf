#include "drawing/SymbolNames.h"

#include "system/AsciiCase.h"

#include <algorithm>

namespace veldrin {

namespace {

constexpr std::size_t kLongestName = 255;
constexpr std::string_view kForbidden = "<>/\\\":;?*|,=`";

} // namespace

std::string symbolKey(std::string_view name) {
    return asciiUpperCase(name);
}

bool sameSymbolName(std::string_view a, std::string_view b) {
    return asciiEqual(a, b);
}

bool isSymbolName(std::string_view name) {
    if (name.empty() || name.size() > kLongestName) return false;
    if (name.front() == '*') name.remove_prefix(1);
    return !name.empty() && std::ranges::none_of(name, [](char c) {
        return (c >= 0 && c < ' ') || c == '\x7f' || kForbidden.find(c) != std::string_view::npos;
    });
}

} // namespace veldrin
