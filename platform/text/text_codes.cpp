#include "text/text_codes.h"

#include <cmath>
#include <cstdlib>
#include <numbers>

namespace veldrin {

namespace {

constexpr char32_t kDegree = 0xB0;
constexpr char32_t kDiameter = 0xD8;
constexpr char32_t kPlusMinus = 0xB1;
constexpr char32_t kHardSpace = 0xA0;

bool isDigit(char32_t c) {
    return c >= U'0' && c <= U'9';
}

int hexDigit(char32_t c) {
    if (isDigit(c)) return static_cast<int>(c - U'0');
    if (c >= U'A' && c <= U'F') return static_cast<int>(c - U'A') + 10;
    if (c >= U'a' && c <= U'f') return static_cast<int>(c - U'a') + 10;
    return -1;
}

class CodeReader {
public:
    explicit CodeReader(std::u32string text) : m_text(std::move(text)) {}

    std::vector<TextItem> singleLine() {
        while (!done())
            if (!takeSpecial(m_words)) m_words += take();
        endWords();
        return std::move(m_items);
    }

    std::vector<TextItem> multiLine(double textHeight) {
        m_textHeight = textHeight;
        while (!done()) {
            if (takeSpecial(m_words)) continue;
            switch (const char32_t c = take()) {
            case U'\\':
                if (!done()) takeCode();
                break;
            case U'\n': endLine(); break;
            case U'\r': break;
            case U'{': m_outer.push_back(m_format); break;
            case U'}': closeGroup(); break;
            default: m_words += c;
            }
        }
        endWords();
        return std::move(m_items);
    }

private:
    bool done() const { return m_at >= m_text.size(); }
    char32_t peek(std::size_t ahead = 0) const {
        return m_at + ahead < m_text.size() ? m_text[m_at + ahead] : 0;
    }
    char32_t take() { return m_text[m_at++]; }

    // The text up to a semicolon, and past it; to the end without one. A backslash frees the next character.
    std::u32string argument() {
        std::u32string part;
        while (!done()) {
            const char32_t c = take();
            if (c == U';') break;
            if (takenSpecialAt(c, part)) continue;
            if (c == U'\\' && !done())
                part += take();
            else
                part += c;
        }
        return part;
    }

    bool takenSpecialAt(char32_t c, std::u32string& out) {
        if (c != U'%' && c != U'\\') return false;
        --m_at;
        if (takeSpecial(out)) return true;
        ++m_at;
        return false;
    }

    bool takeSpecial(std::u32string& out) { return takePercent(out) || takeUnicode(out); }

    bool takePercent(std::u32string& out) {
        if (peek() != U'%' || peek(1) != U'%') return false;
        switch (peek(2)) {
        case U'c':
        case U'C': out += kDiameter; break;
        case U'd':
        case U'D': out += kDegree; break;
        case U'p':
        case U'P': out += kPlusMinus; break;
        case U'%': out += U'%'; break;
        case U'u':
        case U'U': change(m_format.underlined, !m_format.underlined); break;
        case U'o':
        case U'O': change(m_format.overlined, !m_format.overlined); break;
        case U'k':
        case U'K': change(m_format.struck, !m_format.struck); break;
        default: return takeNumber(out);
        }
        m_at += 3;
        return true;
    }

    bool takeNumber(std::u32string& out) {
        if (!isDigit(peek(2)) || !isDigit(peek(3)) || !isDigit(peek(4))) return false;
        out += (peek(2) - U'0') * 100 + (peek(3) - U'0') * 10 + (peek(4) - U'0');
        m_at += 5;
        return true;
    }

    bool takeUnicode(std::u32string& out) {
        if (peek() != U'\\' || peek(1) != U'U' || peek(2) != U'+') return false;
        int code = 0;
        for (std::size_t i = 3; i < 7; ++i) {
            const int digit = hexDigit(peek(i));
            if (digit < 0) return false;
            code = code * 16 + digit;
        }
        out += static_cast<char32_t>(code);
        m_at += 7;
        return true;
    }

    // What follows a backslash in a multi-line text.
    void takeCode() {
        switch (const char32_t code = take()) {
        case U'P':
        case U'n':
        case U'X': endLine(); break;
        case U'~': m_words += kHardSpace; break;
        case U'L': change(m_format.underlined, true); break;
        case U'l': change(m_format.underlined, false); break;
        case U'O': change(m_format.overlined, true); break;
        case U'o': change(m_format.overlined, false); break;
        case U'K': change(m_format.struck, true); break;
        case U'k': change(m_format.struck, false); break;
        case U'S': takeStack(); break;
        case U'H': takeHeight(); break;
        case U'W': takeWidthFactor(); break;
        case U'Q':
        case U'A': takeNumbered(code); break;
        case U'C':
        case U'c':
        case U'f':
        case U'F':
        case U'p':
        case U'T': argument(); break;
        default: m_words += code; // \\ \{ \} and what is no code
        }
    }

    // The parts of a stack are divided by the first of its three signs that no backslash frees.
    void takeStack() {
        TextItem stack;
        std::u32string* part = &stack.text;
        while (!done()) {
            const char32_t c = take();
            if (c == U';') break;
            if (takenSpecialAt(c, *part)) continue;
            const bool divides = c == U'/' || c == U'#' || c == U'^';
            if (c == U'\\' && !done()) {
                *part += take();
            } else if (divides && part == &stack.text) {
                stack.kind = c == U'/'   ? TextItem::kFraction
                             : c == U'#' ? TextItem::kDiagonal
                                         : TextItem::kTolerance;
                part = &stack.below;
            } else {
                *part += c;
            }
        }
        if (stack.kind == TextItem::kWords) {
            m_words += stack.text;
            return;
        }
        endWords();
        stack.format = m_format;
        m_items.push_back(std::move(stack));
    }

    // A number, and whether an x behind it makes it a factor. False for what is no usable number.
    static bool readNumber(const std::u32string& text, double& number, bool& isFactor) {
        std::string plain;
        for (const char32_t c : text) plain += c < 128 ? static_cast<char>(c) : '?';
        char* end = nullptr;
        number = std::strtod(plain.c_str(), &end);
        isFactor = *end == 'x' || *end == 'X';
        return end != plain.c_str() && std::isfinite(number);
    }

    void takeHeight() {
        double number = 0.0;
        bool isFactor = false;
        if (!readNumber(argument(), number, isFactor) || !(number > 0.0)) return;
        if (isFactor)
            change(m_format.height, m_format.height * number);
        else if (m_textHeight > 0.0)
            change(m_format.height, number / m_textHeight);
    }

    void takeWidthFactor() {
        double number = 0.0;
        bool isFactor = false;
        if (!readNumber(argument(), number, isFactor) || !(number > 0.0)) return;
        change(m_format.widthFactor, isFactor ? m_format.widthFactor * number : number);
    }

    void takeNumbered(char32_t code) {
        double number = 0.0;
        bool isFactor = false;
        if (!readNumber(argument(), number, isFactor)) return;
        constexpr double kSteepest = 85.0; // degrees; what styles allow
        if (code == U'Q' && std::abs(number) <= kSteepest)
            change(m_format.oblique, number * std::numbers::pi / 180.0);
        else if (code == U'A' && number >= 0.0 && number <= 2.0)
            change(m_format.alignment, static_cast<int>(number));
    }

    template<class T>
    void change(T& member, T value) {
        if (member == value) return;
        endWords();
        member = value;
    }

    void closeGroup() {
        if (m_outer.empty()) return;
        if (!(m_format == m_outer.back())) endWords();
        m_format = m_outer.back();
        m_outer.pop_back();
    }

    void endWords() {
        if (m_words.empty()) return;
        m_items.push_back({TextItem::kWords, m_format, std::move(m_words), {}});
        m_words.clear();
    }

    void endLine() {
        endWords();
        m_items.push_back({TextItem::kLineEnd, m_format, {}, {}});
    }

    std::u32string m_text;
    std::size_t m_at = 0;
    double m_textHeight = 1.0;
    TextFormat m_format;
    std::vector<TextFormat> m_outer;
    std::u32string m_words;
    std::vector<TextItem> m_items;
};

} // namespace

std::u32string toCodePoints(std::string_view utf8) {
    std::u32string points;
    points.reserve(utf8.size());
    for (std::size_t i = 0; i < utf8.size();) {
        const auto lead = static_cast<unsigned char>(utf8[i]);
        const std::size_t extra = lead >= 0xF0 ? 3 : lead >= 0xE0 ? 2 : lead >= 0xC0 ? 1 : 0;
        char32_t code = extra == 0 ? lead : lead & (0x3F >> extra);
        bool whole = i + extra < utf8.size();
        for (std::size_t k = 1; whole && k <= extra; ++k) {
            const auto next = static_cast<unsigned char>(utf8[i + k]);
            whole = (next & 0xC0) == 0x80;
            code = (code << 6) | (next & 0x3F);
        }
        points += whole ? code : lead;
        i += whole ? extra + 1 : 1;
    }
    return points;
}

std::vector<TextItem> singleLineItems(std::string_view contents) {
    return CodeReader(toCodePoints(contents)).singleLine();
}

std::vector<TextItem> multiLineItems(std::string_view contents, double textHeight) {
    return CodeReader(toCodePoints(contents)).multiLine(textHeight);
}

bool isPlain(std::string_view contents) {
    return contents.find_first_of("\\{}%\n\r") == std::string_view::npos;
}

} // namespace veldrin
