#include "util/NumberText.h"

#include <algorithm>
#include <cstdio>

namespace plumb {

CString DoubleToText(double value, int decimals, bool trim) {
    decimals = std::clamp(decimals, 0, 10);
    char buffer[340];
    const int length = std::snprintf(buffer, sizeof buffer, "%.*f", decimals, value);
    CString text(buffer, static_cast<std::size_t>(std::max(length, 0)));
    const bool vanishes = text.find_first_not_of("-0.") == CString::npos;
    if (vanishes && text.front() == '-') text.erase(0, 1);
    if (!trim || (vanishes && value != 0.0) || text.find('.') == CString::npos) return text;
    text.erase(text.find_last_not_of('0') + 1);
    if (text.back() == '.') text.pop_back();
    return text;
}

} // namespace plumb
