#include "util/NumberText.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdio>
#include <string_view>

namespace plumb {

namespace {

constexpr int kMostDecimals = 10;
constexpr double kInchesAFoot = 12.0;

// Digits of a number without its sign, rounded half up at a place behind the point. A half is a finite sum of
// powers of two, so it shows as a 5 and zeros well before the digits end.
CString roundedDigits(double value, int decimals) {
    constexpr int kExact = 40;
    char buffer[400];
    const int length = std::snprintf(buffer, sizeof buffer, "%.*f", kExact, std::abs(value));
    CString digits(buffer, static_cast<std::size_t>(length));
    const std::size_t point = digits.find('.');
    if (point == CString::npos) return digits; // not a number, or infinite
    const std::size_t cut = point + 1 + static_cast<std::size_t>(decimals);
    const bool up = digits[cut] >= '5';
    digits.resize(decimals == 0 ? point : cut);
    if (!up) return digits;
    for (std::size_t i = digits.size(); i-- > 0;) {
        if (digits[i] == '.') continue;
        if (digits[i] != '9') {
            ++digits[i];
            return digits;
        }
        digits[i] = '0';
    }
    return "1" + digits;
}

std::string_view withoutLeadingBlanks(std::string_view text) {
    return text.substr(std::min(text.find_first_not_of(" \t\n\v\f\r"), text.size()));
}

} // namespace

CString IntToText(long value) {
    return std::to_string(value);
}

CString DoubleToText(double value, int decimals, bool trim) {
    CString text = roundedDigits(value, std::clamp(decimals, 0, kMostDecimals));
    const bool vanishes = text.find_first_not_of("0.") == CString::npos;
    if (trim && (!vanishes || value == 0.0) && text.find('.') != CString::npos) {
        text.erase(text.find_last_not_of('0') + 1);
        if (text.back() == '.') text.pop_back();
    }
    return std::signbit(value) && !vanishes ? "-" + text : text;
}

CString DoubleToTextWithCommas(double value, int decimals) {
    CString text = DoubleToText(value, decimals, true);
    const std::size_t first = text.front() == '-' ? 1 : 0;
    std::size_t at = std::min(text.find('.'), text.size());
    while (at > first + 3) {
        at -= 3;
        text.insert(at, ",");
    }
    return text;
}

double TextToDouble(const CString& text) {
    std::string_view number = withoutLeadingBlanks(text);
    if (number.starts_with('+') && !number.starts_with("+-")) number.remove_prefix(1);
    double value = 0.0;
    const auto read = std::from_chars(number.data(), number.data() + number.size(), value);
    return read.ec == std::errc() && std::isfinite(value) ? value : 0.0;
}

CString InchesToFeetText(double inches) {
    const double size = std::abs(inches);
    const double feet = std::floor(std::trunc(size) / kInchesAFoot);
    const double rest = size - feet * kInchesAFoot;
    const CString text =
        DoubleToText(feet, 0, false) + "-" + (rest == 0.0 ? "0" : DoubleToText(rest, 4, true));
    return inches < 0.0 ? "-" + text : text;
}

double FeetTextToInches(const CString& text) {
    CString size(withoutLeadingBlanks(text));
    const bool isNegative = size.starts_with('-');
    if (isNegative) size.erase(0, 1);
    const std::size_t dash = size.find('-');
    const double feet = TextToDouble(size.substr(0, dash));
    const double inches = dash == CString::npos ? 0.0 : TextToDouble(size.substr(dash + 1));
    const double total = feet * kInchesAFoot + inches;
    return isNegative ? -total : total;
}

CString SqlQuote(const CString& text) {
    if (text.empty()) return "' '";
    CString quoted = "'";
    for (const char c : text) {
        if (c == '\'') quoted += c;
        quoted += c;
    }
    return quoted + "'";
}

} // namespace plumb
