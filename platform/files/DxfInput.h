#pragma once

#include <cstdint>
#include <deque>
#include <string>
#include <string_view>
#include <vector>

namespace veldrin {

// One group as it stands in an exchange file.
struct DxfGroup {
    int code = 0;
    std::string_view value; // of a text file the line without its end
    std::uint32_t line = 0; // of the code, from 1; of a binary file the place of the code

    bool is(int wantedCode, std::string_view wantedValue) const {
        return code == wantedCode && value == wantedValue;
    }
};

// The groups of an exchange file in memory, text or binary, one after the other. Where a code cannot be read
// the input goes on at the next object, and tells.
class DxfInput {
public:
    // `bytes` outlive the input.
    explicit DxfInput(std::string_view bytes);

    bool isBinary() const { return m_isBinary; }
    // The first group is the beginning of a section, maybe behind comments.
    bool looksLikeDrawing();
    // False at the end of the file.
    bool next(DxfGroup& group);
    // Where the next group begins, for going back there.
    struct Place {
        std::size_t at = 0;
        std::uint32_t line = 1;
    };
    Place place() const { return {m_at, m_line}; }
    void goTo(Place place) {
        m_at = place.at;
        m_line = place.line;
    }
    // "line 12" or, of a binary file, "byte 700".
    std::string describe(std::uint32_t line) const;
    // What could not be read, a line each.
    const std::vector<std::string>& problems() const { return m_problems; }

private:
    bool takeLine(std::string_view& line);
    bool takeUsualCode(int& code);
    bool nextText(DxfGroup& group);
    bool nextBinary(DxfGroup& group);
    bool resync();
    template<class Number>
    bool takeNumber(Number& number);
    std::string_view keep(std::string text);

    std::string_view m_bytes;
    std::size_t m_at = 0;
    std::uint32_t m_line = 1;
    bool m_isBinary = false;
    bool m_hasShortCodes = false;   // binary files of old
    std::deque<std::string> m_kept; // values of a binary file as text
    std::vector<std::string> m_problems;
};

} // namespace veldrin
