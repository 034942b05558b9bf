#include "text/text_codes.h"

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

// Reads through a text; both kinds of contents share the codes that begin with %% and \U+.
class Reader {
public:
    explicit Reader(std::u32string text) : m_text(std::move(text)) {}

    bool done() const { return m_at >= m_text.size(); }
    char32_t peek(std::size_t ahead = 0) const {
        return m_at + ahead < m_text.size() ? m_text[m_at + ahead] : 0;
    }
    char32_t take() { return m_text[m_at++]; }
    void skip(std::size_t count) { m_at += count; }

    // The text up to a mark, and past it; to the end without one.
    std::u32string upTo(char32_t mark) {
        const std::size_t end = m_text.find(mark, m_at);
        std::u32string part = m_text.substr(m_at, end == std::u32string::npos ? end : end - m_at);
        m_at = end == std::u32string::npos ? m_text.size() : end + 1;
        return part;
    }

    bool takeSpecial(std::u32string& out) { return takePercent(out) || takeUnicode(out); }

private:
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
        case U'U':
        case U'o':
        case U'O': break; // lines above and below are not drawn
        default: return takeNumber(out);
        }
        skip(3);
        return true;
    }

    bool takeNumber(std::u32string& out) {
        if (!isDigit(peek(2)) || !isDigit(peek(3)) || !isDigit(peek(4))) return false;
        out += (peek(2) - U'0') * 100 + (peek(3) - U'0') * 10 + (peek(4) - U'0');
        skip(5);
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
        skip(7);
        return true;
    }

    std::u32string m_text;
    std::size_t m_at = 0;
};

// What follows a backslash in a multi-line text.
void takeCode(Reader& reader, std::vector<std::u32string>& lines) {
    std::u32string& line = lines.back();
    switch (const char32_t code = reader.take()) {
    case U'P':
    case U'n':
    case U'X': lines.emplace_back(); break;
    case U'~': line += kHardSpace; break;
    case U'\\':
    case U'{':
    case U'}': line += code; break;
    case U'L':
    case U'l':
    case U'O':
    case U'o':
    case U'K':
    case U'k': break;
    case U'S':
        for (const char32_t c : reader.upTo(U';')) line += c == U'^' || c == U'#' ? U'/' : c;
        break;
    case U'A':
    case U'C':
    case U'c':
    case U'f':
    case U'F':
    case U'H':
    case U'p':
    case U'Q':
    case U'T':
    case U'W': reader.upTo(U';'); break;
    default: line += code;
    }
}

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

std::u32string plainLine(std::string_view contents) {
    Reader reader(toCodePoints(contents));
    std::u32string line;
    while (!reader.done())
        if (!reader.takeSpecial(line)) line += reader.take();
    return line;
}

std::vector<std::u32string> plainLines(std::string_view contents) {
    Reader reader(toCodePoints(contents));
    std::vector<std::u32string> lines(1);
    while (!reader.done()) {
        if (reader.takeSpecial(lines.back())) continue;
        const char32_t c = reader.take();
        if (c == U'\\' && !reader.done())
            takeCode(reader, lines);
        else if (c == U'\n')
            lines.emplace_back();
        else if (c != U'{' && c != U'}' && c != U'\r')
            lines.back() += c;
    }
    return lines;
}

} // namespace veldrin
