#include "files/dxf_texts.h"

#include "system/AsciiCase.h"

#include <fmt/format.h>
#include <iconv.h>

#include <algorithm>
#include <array>
#include <cctype>
#include <cstdint>

namespace veldrin {

namespace {

constexpr char32_t kReplacement = 0xFFFD;

// Windows code page 1252 from 0x80 on: where it differs from Latin 1.
constexpr std::array<char32_t, 32> kAnsiUpper = {
    0x20AC, 0,      0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0,      0x017D, 0,      0,      0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0,      0x017E, 0x0178};

void appendUtf8(char32_t c, std::string& out) {
    if (c < 0x80) {
        out += static_cast<char>(c);
    } else if (c < 0x800) {
        out += static_cast<char>(0xC0 | (c >> 6));
        out += static_cast<char>(0x80 | (c & 0x3F));
    } else if (c < 0x10000) {
        out += static_cast<char>(0xE0 | (c >> 12));
        out += static_cast<char>(0x80 | ((c >> 6) & 0x3F));
        out += static_cast<char>(0x80 | (c & 0x3F));
    } else {
        out += static_cast<char>(0xF0 | (c >> 18));
        out += static_cast<char>(0x80 | ((c >> 12) & 0x3F));
        out += static_cast<char>(0x80 | ((c >> 6) & 0x3F));
        out += static_cast<char>(0x80 | (c & 0x3F));
    }
}

// The next character of a text in UTF-8, which is cut off; a byte that begins none is U+FFFD.
char32_t takeCharacter(std::string_view& text) {
    const auto byte = [&](std::size_t i) { return static_cast<unsigned char>(text[i]); };
    const unsigned char first = byte(0);
    const std::size_t length = first < 0x80       ? 1
                               : first >> 5 == 6  ? 2
                               : first >> 4 == 14 ? 3
                               : first >> 3 == 30 ? 4
                                                  : 0;
    char32_t c = length == 1 ? first : first & (0xFFU >> (length + 1));
    bool isWhole = length != 0 && length <= text.size();
    for (std::size_t i = 1; isWhole && i < length; ++i) {
        isWhole = (byte(i) & 0xC0) == 0x80;
        c = (c << 6) | (byte(i) & 0x3F);
    }
    text.remove_prefix(isWhole ? length : 1);
    return isWhole ? c : kReplacement;
}

// The four digits of \U+XXXX at the front, which are cut off with it.
bool takeCoded(std::string_view& text, char letter, char32_t& c, std::size_t digits) {
    const std::size_t size = 3 + digits;
    if (text.size() < size || text[0] != '\\' || (text[1] != letter && text[1] != letter + ('a' - 'A')) ||
        text[2] != '+')
        return false;
    char32_t value = 0;
    for (const char digit : text.substr(3, digits)) {
        if (!std::isxdigit(static_cast<unsigned char>(digit))) return false;
        const char lower = static_cast<char>(std::tolower(static_cast<unsigned char>(digit)));
        value = value * 16 + static_cast<char32_t>(lower <= '9' ? lower - '0' : lower - 'a' + 10);
    }
    c = value;
    text.remove_prefix(size);
    return true;
}

bool isHighSurrogate(char32_t c) {
    return c >= 0xD800 && c < 0xDC00;
}
bool isLowSurrogate(char32_t c) {
    return c >= 0xDC00 && c < 0xE000;
}

// One character as \U+XXXX tells it, in one piece or in two.
bool takeUnicode(std::string_view& text, char32_t& c) {
    if (!takeCoded(text, 'U', c, 4)) return false;
    std::string_view rest = text;
    char32_t low = 0;
    if (isHighSurrogate(c) && takeCoded(rest, 'U', low, 4) && isLowSurrogate(low)) {
        c = 0x10000 + ((c - 0xD800) << 10) + (low - 0xDC00);
        text = rest;
    }
    if (isHighSurrogate(c) || isLowSurrogate(c)) c = kReplacement;
    return true;
}

// Control characters and what means one.
bool appendControl(char c, std::string& out) {
    const auto code = static_cast<unsigned char>(c);
    if (c == '^')
        out += "^ ";
    else if (code < 0x20) {
        out += '^';
        out += static_cast<char>(code + 0x40);
    } else
        return false;
    return true;
}

// A text may carry \U+XXXX itself; both files get the character in the form that is theirs.
template<class Append>
void appendCharacters(std::string_view text, std::string& out, Append append) {
    while (!text.empty()) {
        char32_t c = 0;
        if (text.front() == '\\' && takeUnicode(text, c)) {
            append(c, out);
            continue;
        }
        if (appendControl(text.front(), out)) {
            text.remove_prefix(1);
            continue;
        }
        append(takeCharacter(text), out);
    }
}

void appendAnsi(char32_t c, std::string& out) {
    if (c < 0x80 || (c >= 0xA0 && c <= 0xFF)) {
        out += static_cast<char>(c);
        return;
    }
    const auto found = std::ranges::find(kAnsiUpper, c);
    if (found != kAnsiUpper.end())
        out += static_cast<char>(0x80 + (found - kAnsiUpper.begin()));
    else if (c < 0x10000)
        out += fmt::format("\\U+{:04X}", static_cast<std::uint32_t>(c));
    else
        out += fmt::format("\\U+{:04X}\\U+{:04X}", 0xD800 + ((static_cast<std::uint32_t>(c) - 0x10000) >> 10),
                           0xDC00 + (static_cast<std::uint32_t>(c) & 0x3FF));
}

// What the library that converts calls a code page.
std::string converterName(std::string_view codePage) {
    const std::string name = asciiUpperCase(codePage);
    if (name.starts_with("ANSI_")) return "CP" + name.substr(5);
    if (name.starts_with("DOS")) return "CP" + name.substr(3);
    if (name == "ASCII") return "CP1252";
    if (name.starts_with("ISO8859-") || name.starts_with("ISO_8859-"))
        return "ISO-8859-" + name.substr(name.find('-') + 1);
    return name;
}

} // namespace

bool isPlainDxfText(std::string_view text) {
    return std::ranges::all_of(text, [](char c) { return c >= 0x20 && c != '^' && c != '\\' && c != 0x7F; });
}

void appendAsAnsi(std::string_view text, std::string& out) {
    if (isPlainDxfText(text)) {
        out += text;
        return;
    }
    appendCharacters(text, out, appendAnsi);
}

void appendAsUtf8(std::string_view text, std::string& out) {
    if (isPlainDxfText(text)) {
        out += text;
        return;
    }
    appendCharacters(text, out, appendUtf8);
}

struct DxfTextDecoder::Converter {
    explicit Converter(const std::string& name) : handle(iconv_open("UTF-8", name.c_str())) {
        if (!isOpen()) handle = iconv_open("UTF-8", "CP1252");
    }
    ~Converter() {
        if (isOpen()) iconv_close(handle);
    }
    Converter(const Converter&) = delete;
    Converter& operator=(const Converter&) = delete;
    bool isOpen() const { return handle != reinterpret_cast<iconv_t>(-1); }

    iconv_t handle;
};

DxfTextDecoder::DxfTextDecoder() : m_codePage(std::make_unique<Converter>("CP1252")) {}
DxfTextDecoder::~DxfTextDecoder() = default;

void DxfTextDecoder::setCodePage(std::string_view name) {
    const std::string converter = converterName(name);
    m_codePage =
        converter == "UTF-8" || converter == "UTF8" ? nullptr : std::make_unique<Converter>(converter);
}

void DxfTextDecoder::appendConverted(Converter* converter, std::string_view bytes, std::string& text) {
    if (!converter || !converter->isOpen()) {
        while (!bytes.empty()) appendUtf8(takeCharacter(bytes), text);
        return;
    }
    std::array<char, 512> out{};
    char* from = const_cast<char*>(bytes.data()); // the interface is older than const
    std::size_t left = bytes.size();
    while (left > 0) {
        char* to = out.data();
        std::size_t room = out.size();
        const std::size_t result = iconv(converter->handle, &from, &left, &to, &room);
        text.append(out.data(), out.size() - room);
        if (result != static_cast<std::size_t>(-1) || room < 8) continue;
        if (left > 0) { // bytes that mean nothing
            appendUtf8(kReplacement, text);
            ++from;
            --left;
        }
        iconv(converter->handle, nullptr, nullptr, nullptr, nullptr);
    }
}

// \M+N: the number stands for a code page of the far east.
DxfTextDecoder::Converter* DxfTextDecoder::multibyte(char number) {
    static constexpr const char* names[] = {"", "CP932", "CP950", "CP949", "CP1361", "CP936"};
    if (number < '1' || number > '5') return nullptr;
    const auto index = static_cast<std::size_t>(number - '0');
    if (!m_multibyte[index]) m_multibyte[index] = std::make_unique<Converter>(names[index]);
    return m_multibyte[index].get();
}

void DxfTextDecoder::decode(std::string_view bytes, std::string& text) {
    text.clear();
    if (isPlainDxfText(bytes)) {
        text = bytes;
        return;
    }
    std::size_t begin = 0;
    const auto flush = [&](std::size_t end) {
        appendConverted(m_codePage.get(), bytes.substr(begin, end - begin), text);
    };
    for (std::size_t at = 0; at < bytes.size();) {
        std::string_view rest = bytes.substr(at);
        char32_t c = 0;
        if (rest.front() == '\\' && takeUnicode(rest, c)) {
            flush(at);
            appendUtf8(c, text);
        } else if (rest.front() == '\\' && rest.size() > 3 && multibyte(rest[3]) &&
                   takeCoded(rest, 'M', c, 5)) {
            flush(at);
            const char pair[] = {static_cast<char>(c >> 8), static_cast<char>(c)};
            appendConverted(multibyte(bytes[at + 3]), {pair, 2}, text);
        } else if (rest.front() == '^' && rest.size() > 1 &&
                   (rest[1] == ' ' || (rest[1] >= '@' && rest[1] <= '_'))) {
            flush(at);
            text += rest[1] == ' ' ? '^' : static_cast<char>(rest[1] - '@');
            rest.remove_prefix(2);
        } else {
            ++at;
            continue;
        }
        begin = at = bytes.size() - rest.size();
    }
    flush(bytes.size());
    std::erase(text, '\0');
}

} // namespace veldrin
