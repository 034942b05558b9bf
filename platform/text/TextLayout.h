#pragma once

#include "geometry/AcGePoint2d.h"
#include "runtime/VeldrinApi.h"

#include <functional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace veldrin {

// How a text is set.
struct TextLook {
    double height = 1.0; // of a capital
    double widthFactor = 1.0;
    double oblique = 0.0;   // radians to the right
    double wrapWidth = 0.0; // at which lines break between words; 0 for none
    int attachment = 1;     // 1 top left ... 9 bottom right, row by row
    bool multiline = true;  // false: one line, attached at its baseline's left end
};

// A text laid out in its own plane: the origin is the attachment point, x runs along the lines, y up. Lines
// stand five thirds of the height apart; the box reaches from the last baseline to the top of the first
// line's capitals.
class VELDRIN_API TextLayout {
public:
    TextLayout(std::string_view contents, const TextLook& look);

    double width() const { return m_width; } // of the widest line
    double height() const;                   // 0 for a text of nothing
    std::size_t lineCount() const { return m_lines.size(); }
    AcGePoint2d lowerLeft() const;
    AcGePoint2d upperRight() const;
    void strokes(const std::function<void(std::span<const AcGePoint2d>)>& put) const;

private:
    struct Line {
        std::u32string text;
        double width;
    };

    void wrap(std::u32string_view paragraph);
    void addLine(std::u32string_view text);
    double widthOf(std::u32string_view text) const;
    double baseline(std::size_t line) const;
    double lineStart(const Line& line) const;
    int column() const { return (m_look.attachment - 1) % 3; }
    int row() const { return (m_look.attachment - 1) / 3; }

    TextLook m_look;
    std::vector<Line> m_lines;
    double m_width = 0.0;
};

} // namespace veldrin
