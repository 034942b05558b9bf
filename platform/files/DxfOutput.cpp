#include "files/DxfOutput.h"

#include "files/dxf_texts.h"

#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <charconv>
#include <cmath>
#include <cstring>

namespace veldrin {

namespace {

constexpr std::size_t kBufferSize = std::size_t{1} << 18;
constexpr std::size_t kLongestLine = 64;  // of a code, or of a number in the usual notation
constexpr std::size_t kLongestReal = 400; // with all digits before the point
constexpr std::size_t kHandleDigits = 16;
constexpr std::size_t kBytesPerLine = 127;
constexpr int kYStep = 10;
constexpr int kZStep = 20;

// Lines of the codes that are in use, right-aligned as is the custom.
struct CodeLine {
    std::array<char, 6> text{};
    std::size_t size = 0;
};

constexpr std::size_t kCodes = 1072;

const std::array<CodeLine, kCodes>& codeLines() {
    static const auto lines = [] {
        std::array<CodeLine, kCodes> made;
        for (std::size_t code = 0; code < kCodes; ++code) {
            std::array<char, 6> digits{};
            const auto end = std::to_chars(digits.data(), digits.data() + digits.size(), code).ptr;
            const auto count = static_cast<std::size_t>(end - digits.data());
            const std::size_t blanks = count < 3 ? 3 - count : 0;
            char* const begin = made[code].text.data();
            std::fill_n(begin, blanks, ' ');
            std::copy(digits.data(), end, begin + blanks);
            begin[blanks + count] = '\n';
            made[code].size = blanks + count + 1;
        }
        return made;
    }();
    return lines;
}

void hexDigits(std::uint64_t value, std::size_t count, char* to) {
    for (std::size_t i = count; i-- > 0; value >>= 4) to[i] = "0123456789ABCDEF"[value & 0xF];
}

} // namespace

DxfOutput::DxfOutput(const std::string& path, DxfVersion version, int decimals)
    : m_version(version)
    , m_decimals(decimals)
    , m_file(open(path.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0666))
    , m_buffer(kBufferSize) {
    if (m_file < 0) m_error = errno;
}

DxfOutput::~DxfOutput() {
    if (m_file >= 0) close(m_file);
}

void DxfOutput::flush() {
    std::size_t done = 0;
    while (m_error == 0 && done < m_used) {
        const ssize_t count = write(m_file, m_buffer.data() + done, m_used - done);
        if (count >= 0)
            done += static_cast<std::size_t>(count);
        else if (errno != EINTR)
            m_error = errno;
    }
    m_written += m_used;
    m_used = 0;
}

char* DxfOutput::room(std::size_t size) {
    if (m_buffer.size() - m_used < size) flush();
    if (m_buffer.size() < size) m_buffer.resize(size);
    return m_buffer.data() + m_used;
}

char* DxfOutput::writeCode(char* at, int code) const {
    const CodeLine& line = codeLines()[static_cast<std::size_t>(code)];
    std::memcpy(at, line.text.data(), line.text.size());
    return at + line.size;
}

void DxfOutput::symbol(int code, std::string_view name) {
    char* at = writeCode(room(kLongestLine + name.size()), code);
    at = std::copy(name.begin(), name.end(), at);
    *at++ = '\n';
    put(at);
}

void DxfOutput::text(int code, std::string_view text) {
    if (isPlainDxfText(text)) return symbol(code, text);
    m_text.clear();
    (m_version == DxfVersion::kR2000 ? appendAsAnsi : appendAsUtf8)(text, m_text);
    symbol(code, m_text);
}

void DxfOutput::integer(int code, std::int64_t value) {
    char* at = writeCode(room(kLongestLine), code);
    at = std::to_chars(at, at + kLongestLine / 2, value).ptr;
    *at++ = '\n';
    put(at);
}

// Always with a decimal point, by which readers tell reals from integers.
char* DxfOutput::writeReal(char* at, double value) {
    if (!std::isfinite(value)) {
        ++m_senseless;
        value = 0.0;
    }
    char* end = nullptr;
    if (m_decimals >= kDxfFullPrecision) {
        end = std::to_chars(at, at + kLongestReal, value).ptr;
        char* const exponent = std::find(at, end, 'e');
        if (std::find(at, exponent, '.') == exponent) {
            std::copy_backward(exponent, end, end + 2);
            exponent[0] = '.';
            exponent[1] = '0';
            end += 2;
        }
    } else {
        end = std::to_chars(at, at + kLongestReal, value, std::chars_format::fixed, m_decimals).ptr;
        if (m_decimals == 0) *end++ = '.';
        while (end[-1] == '0' && end[-2] == '0') --end;
        if (end[-1] == '0' && end[-2] != '.') --end;
        if (end[-1] == '.') *end++ = '0';
    }
    *end++ = '\n';
    return end;
}

void DxfOutput::real(int code, double value) {
    put(writeReal(writeCode(room(kLongestLine + kLongestReal), code), value));
}

void DxfOutput::point(int code, const AcGePoint3d& p) {
    char* at = room(3 * (kLongestLine + kLongestReal));
    at = writeReal(writeCode(at, code), p.x);
    at = writeReal(writeCode(at, code + kYStep), p.y);
    put(writeReal(writeCode(at, code + kZStep), p.z));
}

void DxfOutput::point(int code, const AcGePoint2d& p) {
    char* at = room(2 * (kLongestLine + kLongestReal));
    at = writeReal(writeCode(at, code), p.x);
    put(writeReal(writeCode(at, code + kYStep), p.y));
}

void DxfOutput::handle(int code, std::uint64_t handle) {
    char* at = writeCode(room(kLongestLine), code);
    std::size_t digits = 1;
    while (digits < kHandleDigits && handle >> (4 * digits) != 0) ++digits;
    hexDigits(handle, digits, at);
    at[digits] = '\n';
    put(at + digits + 1);
}

void DxfOutput::bytes(int code, std::string_view bytes) {
    for (std::size_t at = 0; at < bytes.size(); at += kBytesPerLine) {
        const std::string_view part = bytes.substr(at, kBytesPerLine);
        char* to = writeCode(room(kLongestLine + 2 * part.size()), code);
        for (const char byte : part) {
            hexDigits(static_cast<unsigned char>(byte), 2, to);
            to += 2;
        }
        *to++ = '\n';
        put(to);
    }
}

std::size_t DxfOutput::openHandle(int code) {
    char* at = writeCode(room(kLongestLine), code);
    const std::size_t place = m_written + static_cast<std::size_t>(at - m_buffer.data());
    hexDigits(0, kHandleDigits, at);
    at[kHandleDigits] = '\n';
    put(at + kHandleDigits + 1);
    return place;
}

void DxfOutput::setHandle(std::size_t place, std::uint64_t handle) {
    std::array<char, kHandleDigits> digits{};
    hexDigits(handle, kHandleDigits, digits.data());
    flush();
    if (m_error == 0 &&
        pwrite(m_file, digits.data(), digits.size(), static_cast<off_t>(place)) != ssize_t{kHandleDigits})
        m_error = errno;
}

std::string DxfOutput::finish() {
    flush();
    if (m_error == 0 && fsync(m_file) != 0 && errno != EINVAL) m_error = errno;
    if (m_file >= 0 && close(m_file) != 0 && m_error == 0) m_error = errno;
    m_file = -1;
    return m_error == 0 ? std::string() : std::strerror(m_error);
}

} // namespace veldrin
