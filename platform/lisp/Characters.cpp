#include "lisp/Characters.h"

#include <algorithm>

namespace veldrin::lisp {

namespace {

bool isContinuation(char c) {
    return (static_cast<unsigned char>(c) & 0xC0) == 0x80;
}

// Bytes of the sequence that a first byte announces; 1 for what cannot begin one.
std::size_t announcedLength(unsigned char first) {
    if (first >= 0xF0 && first < 0xF8) return 4;
    if (first >= 0xE0 && first < 0xF0) return 3;
    if (first >= 0xC2 && first < 0xE0) return 2;
    return 1;
}

std::size_t sequenceLength(std::string_view text, std::size_t at) {
    const std::size_t length = announcedLength(static_cast<unsigned char>(text[at]));
    if (at + length > text.size()) return 1;
    for (std::size_t i = 1; i < length; ++i)
        if (!isContinuation(text[at + i])) return 1;
    return length;
}

template<class Map>
std::string mapCase(std::string_view text, Map map) {
    std::string result;
    result.reserve(text.size());
    for (std::size_t at = 0; at < text.size();) {
        if (static_cast<unsigned char>(text[at]) < 0x80) {
            result += static_cast<char>(map(static_cast<char32_t>(text[at++])));
        } else if (sequenceLength(text, at) == 1) {
            result += text[at++];
        } else {
            appendCodePoint(result, map(nextCodePoint(text, at)));
        }
    }
    return result;
}

bool isIn(char32_t c, char32_t first, char32_t last) {
    return c >= first && c <= last;
}

// Blocks in which capital and small letters alternate, the capital on an even or an odd code.
bool capitalsAreEven(char32_t c) {
    return isIn(c, 0x100, 0x137) || isIn(c, 0x14A, 0x177) || isIn(c, 0x460, 0x481);
}
bool capitalsAreOdd(char32_t c) {
    return isIn(c, 0x139, 0x148) || isIn(c, 0x179, 0x17E);
}

} // namespace

char32_t nextCodePoint(std::string_view text, std::size_t& at) {
    const auto first = static_cast<unsigned char>(text[at]);
    const std::size_t length = sequenceLength(text, at);
    char32_t code = first;
    if (length > 1) code = first & (0x7Fu >> length);
    for (std::size_t i = 1; i < length; ++i)
        code = (code << 6) | (static_cast<unsigned char>(text[at + i]) & 0x3Fu);
    at += length;
    return code;
}

void appendCodePoint(std::string& text, char32_t code) {
    const auto put = [&text](char32_t byte) { text += static_cast<char>(static_cast<unsigned char>(byte)); };
    if (code < 0x80) {
        put(code);
    } else if (code < 0x800) {
        put(0xC0 | (code >> 6));
        put(0x80 | (code & 0x3F));
    } else if (code < 0x10000) {
        put(0xE0 | (code >> 12));
        put(0x80 | ((code >> 6) & 0x3F));
        put(0x80 | (code & 0x3F));
    } else {
        put(0xF0 | ((code >> 18) & 0x07));
        put(0x80 | ((code >> 12) & 0x3F));
        put(0x80 | ((code >> 6) & 0x3F));
        put(0x80 | (code & 0x3F));
    }
}

std::size_t countCodePoints(std::string_view text) {
    std::size_t count = 0;
    for (std::size_t at = 0; at < text.size(); ++count) at += sequenceLength(text, at);
    return count;
}

std::size_t byteOfCodePoint(std::string_view text, std::size_t index) {
    std::size_t at = 0;
    while (index-- > 0 && at < text.size()) at += sequenceLength(text, at);
    return at;
}

char32_t upperCase(char32_t c) {
    if (isIn(c, 'a', 'z')) return c - 32;
    if (c < 0x80) return c;
    if ((isIn(c, 0xE0, 0xFE) && c != 0xF7) || isIn(c, 0x3B1, 0x3C1) || isIn(c, 0x3C3, 0x3CB) ||
        isIn(c, 0x430, 0x44F))
        return c - 32;
    if (isIn(c, 0x450, 0x45F)) return c - 80;
    if (c == 0xFF) return 0x178;
    if (c == 0x131) return 'I';
    if (capitalsAreEven(c)) return c & ~char32_t{1};
    if (capitalsAreOdd(c)) return (c & 1) ? c : c - 1;
    return c;
}

char32_t lowerCase(char32_t c) {
    if (isIn(c, 'A', 'Z')) return c + 32;
    if (c < 0x80) return c;
    if ((isIn(c, 0xC0, 0xDE) && c != 0xD7) || isIn(c, 0x391, 0x3A1) || isIn(c, 0x3A3, 0x3AB) ||
        isIn(c, 0x410, 0x42F))
        return c + 32;
    if (isIn(c, 0x400, 0x40F)) return c + 80;
    if (c == 0x178) return 0xFF;
    if (c == 0x130) return 'i';
    if (capitalsAreEven(c)) return c | 1;
    if (capitalsAreOdd(c)) return (c & 1) ? c + 1 : c;
    return c;
}

std::string upperCase(std::string_view text) {
    return mapCase(text, [](char32_t c) { return upperCase(c); });
}

std::string lowerCase(std::string_view text) {
    return mapCase(text, [](char32_t c) { return lowerCase(c); });
}

} // namespace veldrin::lisp
