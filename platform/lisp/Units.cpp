#include "lisp/Units.h"

#include "lisp/Characters.h"
#include "lisp/Reader.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <fmt/format.h>
#include <numbers>

namespace veldrin::lisp {

namespace {

constexpr int dropLeadingZero = 4, dropTrailingZeros = 8;
constexpr int mostDecimals = 16, mostFractionBits = 8;
constexpr int reliableDigits = 14;
constexpr double pi = std::numbers::pi;

void dropZeros(std::string& number, int zeros) {
    const auto point = number.find('.');
    if (point == std::string::npos) return;
    const auto exponent = std::min(number.find('E'), number.size());
    if (zeros & dropTrailingZeros) {
        auto last = number.find_last_not_of('0', exponent - 1);
        if (last == point) --last;
        number.erase(last + 1, exponent - last - 1);
    }
    const std::size_t first = number[0] == '-' ? 1 : 0;
    if ((zeros & dropLeadingZero) && number.compare(first, 2, "0.") == 0) number.erase(first, 1);
}

// Halves go up, also where the binary number lies a hair below the half that was meant.
std::string decimals(double value, int precision) {
    const double digits = std::log10(std::max(std::abs(value), 1.0)) + precision;
    if (digits < reliableDigits) value *= 1 + 4 * std::numeric_limits<double>::epsilon();
    std::string text = fmt::format("{:.{}f}", value, precision);
    if (text[0] == '-' && text.find_first_not_of("-0.") == std::string::npos) text.erase(0, 1);
    return text;
}

std::string decimal(double value, int precision, int zeros) {
    std::string text = decimals(value, precision);
    dropZeros(text, zeros);
    return text;
}

struct Fraction {
    double whole;
    long numerator, denominator; // numerator 0: none
};

Fraction toFraction(double value, int bits) {
    const double parts = std::ldexp(1.0, bits);
    const double rounded = std::floor(value * parts + 0.5);
    Fraction f{std::floor(rounded / parts), 0, static_cast<long>(parts)};
    f.numerator = static_cast<long>(rounded - f.whole * parts);
    while (f.numerator && f.numerator % 2 == 0) {
        f.numerator /= 2;
        f.denominator /= 2;
    }
    return f;
}

std::string fractionText(const Fraction& f, bool showWhole) {
    if (f.numerator == 0) return fmt::format("{:.0f}", f.whole);
    const std::string part = fmt::format("{}/{}", f.numerator, f.denominator);
    return showWhole ? fmt::format("{:.0f} {}", f.whole, part) : part;
}

// Feet and what is left in inches as text, put together as DIMZIN's two lowest bits want it.
std::string feetAndInches(double feet, bool noInches, const std::string& inches, int zeros) {
    const int shown = zeros & 3;
    const bool showFeet = feet != 0 || shown == 1 || shown == 2;
    const bool showInches = !noInches || shown == 1 || shown == 3 || !showFeet;
    std::string text;
    if (showFeet) text = fmt::format("{:.0f}'", feet);
    if (showFeet && showInches) text += '-';
    if (showInches) text += inches + '"';
    return text;
}

std::string engineering(double size, int precision, int zeros) {
    const double step = std::pow(10.0, -precision);
    double feet = std::floor(size / 12);
    double inches = size - 12 * feet;
    if (inches + step / 2 >= 12) {
        ++feet;
        inches = 0;
    }
    const bool noInches = inches < step / 2;
    return feetAndInches(feet, noInches, decimal(inches, precision, zeros & ~dropLeadingZero), zeros);
}

std::string architectural(double size, int precision, int zeros) {
    Fraction f = toFraction(size, precision);
    const double feet = std::floor(f.whole / 12);
    f.whole -= 12 * feet;
    const bool noInches = f.whole == 0 && f.numerator == 0;
    const bool showWhole = f.whole != 0 || feet != 0 || (zeros & 3) == 1 || (zeros & 3) == 2;
    return feetAndInches(feet, noInches, fractionText(f, showWhole), zeros);
}

} // namespace

std::string formatLength(double inches, LengthUnits units, int precision, int zeros) {
    if (!std::isfinite(inches)) return fmt::format("{}", inches);
    const bool isFraction = units == LengthUnits::Architectural || units == LengthUnits::Fractional;
    precision = std::clamp(precision, 0, isFraction ? mostFractionBits : mostDecimals);
    if (units == LengthUnits::Decimal) return decimal(inches, precision, zeros);
    if (units == LengthUnits::Scientific) {
        std::string text = fmt::format("{:.{}E}", inches, precision);
        dropZeros(text, zeros);
        return text;
    }
    const double size = std::abs(inches);
    std::string text;
    if (units == LengthUnits::Engineering)
        text = engineering(size, precision, zeros);
    else if (units == LengthUnits::Architectural)
        text = architectural(size, precision, zeros);
    else {
        const Fraction f = toFraction(size, precision);
        text = fractionText(f, f.whole != 0);
    }
    const bool isZero = text.find_first_of("123456789") == std::string::npos;
    return inches < 0 && !isZero ? "-" + text : text;
}

namespace {

double withinTurn(double degrees) {
    degrees = std::fmod(degrees, 360.0);
    return degrees < 0 ? degrees + 360 : degrees;
}

// Precision 0 shows degrees, 1 and 2 minutes, 3 and 4 seconds, above that decimals of seconds.
std::string degreesMinutesSeconds(double degrees, int precision, bool wrapsTurn) {
    const int decimalsOfSeconds = std::max(precision - 4, 0);
    const double unit = precision == 0 ? 1 : precision <= 2 ? 60 : 3600 * std::pow(10.0, decimalsOfSeconds);
    double parts = std::floor(degrees * unit * (1 + 4 * std::numeric_limits<double>::epsilon()) + 0.5);
    if (wrapsTurn && parts >= 360 * unit) parts -= 360 * unit;
    const double whole = std::floor(parts / unit);
    std::string text = fmt::format("{:.0f}d", whole);
    if (precision == 0) return text;
    const double seconds = (parts - whole * unit) * (3600 / unit);
    const double minutes = std::floor(seconds / 60 + 1e-9);
    text += fmt::format("{:.0f}'", minutes);
    if (precision > 2)
        text += fmt::format("{:.{}f}\"", std::max(0.0, seconds - 60 * minutes), decimalsOfSeconds);
    return text;
}

std::string surveyor(double degrees, int precision) {
    static constexpr const char* axes[] = {"E", "N", "W", "S"};
    const double quarter = degrees / 90;
    const double nearest = std::floor(quarter + 0.5);
    if (std::abs(quarter - nearest) < 1e-10) return axes[static_cast<int>(nearest) % 4];
    const bool north = degrees < 180, east = degrees < 90 || degrees > 270;
    const double fromAxis = std::abs((north ? 90 : 270) - degrees);
    return fmt::format("{} {} {}", north ? "N" : "S", degreesMinutesSeconds(fromAxis, precision, false),
                       east ? "E" : "W");
}

// A plain angle that rounds up to the whole turn is shown as 0.
std::string plainAngle(double value, double turn, int precision, int zeros) {
    if (value + std::pow(10.0, -precision) / 2 >= turn) value = 0;
    return decimal(value, precision, zeros);
}

} // namespace

std::string formatAngle(double radians, AngleUnits units, int precision, int zeros) {
    if (!std::isfinite(radians)) return fmt::format("{}", radians);
    precision = std::clamp(precision, 0, mostDecimals);
    const double degrees = withinTurn(radians * 180 / pi);
    switch (units) {
    case AngleUnits::DegreesMinutesSeconds: return degreesMinutesSeconds(degrees, precision, true);
    case AngleUnits::Grads: return plainAngle(degrees / 0.9, 400, precision, zeros) + "g";
    case AngleUnits::Radians: return plainAngle(degrees * pi / 180, 2 * pi, precision, zeros) + "r";
    case AngleUnits::Surveyor: return surveyor(degrees, precision);
    case AngleUnits::Degrees: break;
    }
    return plainAngle(degrees, 360, precision, zeros);
}

// ---- From text

namespace {

class Scanner {
public:
    explicit Scanner(std::string_view text) : text_(text) {}

    void skipBlanks() { text_.remove_prefix(std::min(text_.find_first_not_of(' '), text_.size())); }
    bool isAtEnd() {
        skipBlanks();
        return text_.empty();
    }
    bool take(std::string_view oneOf) {
        if (text_.empty() || oneOf.find(text_[0]) == std::string_view::npos) return false;
        text_.remove_prefix(1);
        return true;
    }
    bool startsWithDigit() const { return !text_.empty() && (isDigit(text_[0]) || text_[0] == '.'); }
    // An unsigned number; an exponent only where wanted, since d and e may be units.
    std::optional<double> number() {
        if (!startsWithDigit()) return std::nullopt;
        bool isReal = false;
        const std::size_t length = numberPrefix(text_, isReal);
        if (length == 0) return std::nullopt;
        const double value = std::strtod(std::string(text_.substr(0, length)).c_str(), nullptr);
        text_.remove_prefix(length);
        return value;
    }

private:
    static bool isDigit(char c) { return c >= '0' && c <= '9'; }
    std::string_view text_;
};

// 5, 5.5, 5 1/2, 5-1/2 or 1/2, from the number on that was already read.
std::optional<double> mixedFraction(Scanner& s, double first) {
    if (s.take("/")) {
        const auto divisor = s.number();
        if (!divisor || *divisor == 0) return std::nullopt;
        return first / *divisor;
    }
    s.skipBlanks();
    s.take("-");
    if (!s.startsWithDigit()) return first;
    const auto numerator = s.number();
    if (!numerator || !s.take("/")) return std::nullopt;
    const auto divisor = s.number();
    if (!divisor || *divisor == 0) return std::nullopt;
    return first + *numerator / *divisor;
}

} // namespace

std::optional<double> parseLength(std::string_view text) {
    Scanner s(text);
    s.skipBlanks();
    const bool isNegative = s.take("-");
    if (!isNegative) s.take("+");
    double size = 0;
    auto number = s.number();
    if (!number) return std::nullopt;
    if (s.take("'")) {
        size = *number * 12;
        s.skipBlanks();
        s.take("-");
        if (s.isAtEnd()) return isNegative ? -size : size;
        number = s.number();
        if (!number) return std::nullopt;
    }
    const auto inches = mixedFraction(s, *number);
    if (!inches) return std::nullopt;
    s.take("\"");
    if (!s.isAtEnd()) return std::nullopt;
    size += *inches;
    return isNegative ? -size : size;
}

namespace {

// Degrees of what may be 45, 45.5d, 45d30', 45d30'15.5".
std::optional<double> parseDegrees(Scanner& s, AngleUnits units) {
    const auto first = s.number();
    if (!first) return std::nullopt;
    if (s.take("gG")) return *first * 0.9;
    if (s.take("rR")) return *first * 180 / pi;
    if (!s.take("dD")) {
        if (units == AngleUnits::Grads) return *first * 0.9;
        if (units == AngleUnits::Radians) return *first * 180 / pi;
        return first;
    }
    double degrees = *first;
    if (!s.startsWithDigit()) return degrees;
    auto part = s.number();
    if (s.take("'")) {
        degrees += part.value_or(0) / 60;
        if (!s.startsWithDigit()) return degrees;
        part = s.number();
    }
    if (!s.take("\"") || !part) return std::nullopt;
    return degrees + *part / 3600;
}

std::optional<double> parseBearing(Scanner& s, AngleUnits units) {
    const bool north = s.take("nN"), south = !north && s.take("sS");
    if (!north && !south) {
        if (s.take("eE")) return 0.0;
        return s.take("wW") ? std::optional(180.0) : std::nullopt;
    }
    const double axis = north ? 90 : 270;
    if (s.isAtEnd()) return axis;
    const auto off = parseDegrees(s, units == AngleUnits::Surveyor ? AngleUnits::Degrees : units);
    if (!off) return std::nullopt;
    s.skipBlanks();
    if (s.take("eE")) return north ? axis - *off : axis + *off;
    if (s.take("wW")) return north ? axis + *off : axis - *off;
    return std::nullopt;
}

} // namespace

std::optional<double> parseAngle(std::string_view text, AngleUnits units) {
    Scanner s(text);
    s.skipBlanks();
    const bool isNegative = s.take("-");
    if (!isNegative) s.take("+");
    s.skipBlanks();
    const auto degrees = s.startsWithDigit() ? parseDegrees(s, units) : parseBearing(s, units);
    if (!degrees || !s.isAtEnd()) return std::nullopt;
    return (isNegative ? -*degrees : *degrees) * pi / 180;
}

} // namespace veldrin::lisp
