#include "files/DxfInput.h"

#include <fmt/format.h>

#include <charconv>
#include <cstring>

namespace veldrin {

namespace {

constexpr std::size_t kSentinelSize = 22;
constexpr std::string_view kSentinelEnd(" Binary DXF\r\n\x1a\0", 15); // behind the name of a program
constexpr int kComment = 999;
constexpr int kLastCode = 1071;
constexpr std::size_t kMostProblems = 20;

std::string_view trimmed(std::string_view text) {
    const std::size_t first = text.find_first_not_of(" \t");
    if (first == std::string_view::npos) return {};
    return text.substr(first, text.find_last_not_of(" \t") - first + 1);
}

bool readCode(std::string_view line, int& code) {
    const std::string_view text = trimmed(line);
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), code);
    return error == std::errc() && end == text.data() + text.size() && code >= -5 && code <= kLastCode;
}

bool isKeyword(std::string_view line) {
    const std::string_view text = trimmed(line);
    if (text.empty() || text.size() > 64) return false;
    for (const char c : text)
        if (!((c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '_')) return false;
    return true;
}

// How a binary file holds the value of a code.
enum class Form { kText, kReal, kInt16, kInt32, kInt64, kByte, kBytes };

Form formOf(int code) {
    const auto within = [code](int first, int last) { return code >= first && code <= last; };
    if (within(10, 59) || within(110, 149) || within(210, 239) || within(460, 469) || within(1010, 1059))
        return Form::kReal;
    if (within(60, 79) || within(170, 179) || within(270, 289) || within(370, 389) || within(400, 409) ||
        within(1060, 1070))
        return Form::kInt16;
    if (within(90, 99) || within(420, 429) || within(440, 459) || code == kLastCode) return Form::kInt32;
    if (within(160, 169)) return Form::kInt64;
    if (within(290, 299)) return Form::kByte;
    if (within(310, 319) || code == 1004) return Form::kBytes;
    return Form::kText;
}

} // namespace

DxfInput::DxfInput(std::string_view bytes) : m_bytes(bytes) {
    m_isBinary = bytes.size() > kSentinelSize + 1 &&
                 bytes.substr(kSentinelSize - kSentinelEnd.size(), kSentinelEnd.size()) == kSentinelEnd;
    if (m_isBinary) {
        m_at = kSentinelSize;
        m_hasShortCodes = bytes[kSentinelSize + 1] != '\0';
    } else if (bytes.starts_with("\xEF\xBB\xBF")) {
        m_at = 3; // the mark of UTF-8
    }
}

bool DxfInput::looksLikeDrawing() {
    const Place start = place();
    DxfGroup group;
    bool isDrawing = next(group) && group.is(0, "SECTION") && m_problems.empty();
    m_problems.clear();
    goTo(start);
    return isDrawing;
}

bool DxfInput::next(DxfGroup& group) {
    do {
        if (!(m_isBinary ? nextBinary(group) : nextText(group))) return false;
    } while (group.code == kComment);
    return true;
}

bool DxfInput::takeLine(std::string_view& line) {
    if (m_at >= m_bytes.size()) return false;
    const char* const from = m_bytes.data() + m_at;
    const std::size_t left = m_bytes.size() - m_at;
    const void* const end = std::memchr(from, '\n', left);
    const std::size_t size = end ? static_cast<std::size_t>(static_cast<const char*>(end) - from) : left;
    line = {from, size};
    if (line.ends_with('\r')) line.remove_suffix(1);
    m_at += end ? size + 1 : size;
    ++m_line;
    return true;
}

// A line of blanks and up to four digits, which nearly all codes are.
bool DxfInput::takeUsualCode(int& code) {
    const char* at = m_bytes.data() + m_at;
    const char* const end = m_bytes.data() + m_bytes.size();
    while (at < end && *at == ' ') ++at;
    const char* const digits = at;
    int value = 0;
    for (; at < end && at - digits < 4 && *at >= '0' && *at <= '9'; ++at) value = value * 10 + (*at - '0');
    if (at == digits || value > kLastCode) return false;
    if (at < end && *at == '\r') ++at;
    if (at >= end || *at != '\n') return false;
    code = value;
    m_at = static_cast<std::size_t>(at + 1 - m_bytes.data());
    ++m_line;
    return true;
}

bool DxfInput::nextText(DxfGroup& group) {
    std::string_view line;
    group.line = m_line;
    const bool isUsual = takeUsualCode(group.code);
    if (!isUsual && !takeLine(line)) return false;
    if (!isUsual && !readCode(line, group.code)) {
        const bool isEmptyRest =
            trimmed(line).empty() &&
            trimmed(m_bytes.substr(m_at)).find_first_not_of("\r\n\x1a") == std::string_view::npos;
        if (isEmptyRest) return false;
        if (m_problems.size() < kMostProblems)
            m_problems.push_back(fmt::format("line {}: a group code was expected instead of \"{}\"",
                                             group.line, line.substr(0, 40)));
        return resync() && nextText(group);
    }
    if (!takeLine(group.value)) {
        if (m_problems.size() < kMostProblems)
            m_problems.push_back(fmt::format("line {}: a value was expected, but the file ends", m_line));
        return false;
    }
    if (group.code == 0 || group.code == 9 || group.code == 2) group.value = trimmed(group.value);
    return true;
}

// To the next line that holds a 0 alone, with a word in capitals behind it.
bool DxfInput::resync() {
    std::string_view line;
    for (;;) {
        const Place before = place();
        if (!takeLine(line)) return false;
        if (trimmed(line) != "0") continue;
        const Place behind = place();
        std::string_view value;
        if (!takeLine(value)) return false;
        if (isKeyword(value)) {
            goTo(before);
            return true;
        }
        goTo(behind);
    }
}

template<class Number>
bool DxfInput::takeNumber(Number& number) {
    if (m_bytes.size() - m_at < sizeof number) return false;
    std::memcpy(&number, m_bytes.data() + m_at, sizeof number);
    m_at += sizeof number;
    return true;
}

std::string_view DxfInput::keep(std::string text) {
    return m_kept.emplace_back(std::move(text));
}

bool DxfInput::nextBinary(DxfGroup& group) {
    constexpr unsigned char kLongCode = 255;
    group.line = static_cast<std::uint32_t>(m_at);
    std::uint8_t shortCode = 0;
    std::int16_t code = 0;
    const bool isShort = m_hasShortCodes && takeNumber(shortCode) && shortCode != kLongCode;
    if (isShort)
        code = shortCode;
    else if (!takeNumber(code))
        return false;
    group.code = code;
    bool isWhole = code >= 0 && code <= kLastCode;
    const auto number = [&](auto value) {
        isWhole = takeNumber(value);
        if (isWhole) group.value = keep(fmt::format("{}", value));
    };
    if (isWhole) switch (formOf(code)) {
        case Form::kReal: number(double{}); break;
        case Form::kInt16: number(std::int16_t{}); break;
        case Form::kInt32: number(std::int32_t{}); break;
        case Form::kInt64: number(std::int64_t{}); break;
        case Form::kByte: {
            std::uint8_t byte = 0;
            isWhole = takeNumber(byte);
            group.value = byte == 0 ? "0" : "1";
            break;
        }
        case Form::kBytes: {
            std::uint8_t size = 0;
            isWhole = takeNumber(size) && m_bytes.size() - m_at >= size;
            if (!isWhole) break;
            std::string hex;
            for (const char byte : m_bytes.substr(m_at, size))
                hex += fmt::format("{:02X}", static_cast<unsigned char>(byte));
            group.value = keep(std::move(hex));
            m_at += size;
            break;
        }
        case Form::kText: {
            const std::size_t end = m_bytes.find('\0', m_at);
            isWhole = end != std::string_view::npos;
            if (!isWhole) break;
            group.value = m_bytes.substr(m_at, end - m_at);
            m_at = end + 1;
            break;
        }
        }
    if (isWhole) return true;
    m_problems.push_back(fmt::format("byte {}: a group was expected", group.line));
    m_at = m_bytes.size(); // nothing behind it can be found again
    return false;
}

std::string DxfInput::describe(std::uint32_t line) const {
    return fmt::format("{} {}", m_isBinary ? "byte" : "line", line);
}

} // namespace veldrin
