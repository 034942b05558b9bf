#pragma once

#include "geometry/AcGePoint3d.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace veldrin {

enum class DxfVersion {
    kR2000, // AC1015, texts in ANSI_1252
    kR2018, // AC1032, texts in UTF-8
};

inline constexpr int kDxfFullPrecision = 16;

// The groups of an exchange file as lines of text, through a buffer. The first failure stays and is told at
// the end.
class DxfOutput {
public:
    // Decimal places: from 0 to 16, which means all that a number has.
    DxfOutput(const std::string& path, DxfVersion version, int decimals);
    ~DxfOutput();
    DxfOutput(const DxfOutput&) = delete;
    DxfOutput& operator=(const DxfOutput&) = delete;

    DxfVersion version() const { return m_version; }

    void text(int code, std::string_view text);   // any text
    void symbol(int code, std::string_view name); // plain letters, as they are
    void integer(int code, std::int64_t value);
    void real(int code, double value); // a value that is no finite number is written as 0 and counted
    void point(int code, const AcGePoint3d& p);
    void point(int code, const AcGePoint2d& p);
    void handle(int code, std::uint64_t handle);
    void bytes(int code, std::string_view bytes); // lines of hexadecimal digits

    // A handle that is not known yet, and its value later.
    std::size_t openHandle(int code);
    void setHandle(std::size_t place, std::uint64_t handle);

    std::size_t senselessNumbers() const { return m_senseless; }
    // Brings all of it to the disk. What failed, in words; empty when nothing did.
    std::string finish();

private:
    char* room(std::size_t size); // for so many bytes; put says how many were used
    void put(const char* end) { m_used = static_cast<std::size_t>(end - m_buffer.data()); }
    char* writeCode(char* at, int code) const;
    char* writeReal(char* at, double value);
    void flush();

    DxfVersion m_version;
    int m_decimals;
    int m_file;
    int m_error = 0;
    std::vector<char> m_buffer;
    std::size_t m_used = 0;
    std::size_t m_written = 0; // before the buffer
    std::size_t m_senseless = 0;
    std::string m_text;
};

} // namespace veldrin
