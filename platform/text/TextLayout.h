#pragma once

#include "geometry/AcGePoint2d.h"
#include "runtime/VeldrinApi.h"
#include "text/text_codes.h"

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

struct TextSize {
    double width = 0.0;
    double height = 0.0;
};

// Size of a text that is not drawn; what the layout below has. A text without codes costs no allocation.
VELDRIN_API TextSize measure(std::string_view contents, const TextLook& look);

// A text laid out in its own plane: the origin is the attachment point, x runs along the lines, y up.
//
// Baselines stand five thirds of the line's height apart, and further where a fraction needs it. The box
// reaches from the top of what stands highest in the first line (its capitals, or a fraction) down to the
// last baseline, or to the foot of a fraction below it. Fractions are as high as the codes around them say;
// they stand on the baseline unless \A centres them on the line's capitals or hangs them from their top.
class VELDRIN_API TextLayout {
public:
    TextLayout(std::string_view contents, const TextLook& look);

    double width() const { return m_width; }   // of the widest line
    double height() const { return m_height; } // 0 for a text of nothing
    std::size_t lineCount() const { return m_lines.size(); }
    AcGePoint2d lowerLeft() const;
    AcGePoint2d upperRight() const;
    void strokes(const std::function<void(std::span<const AcGePoint2d>)>& put) const;
    // The same for who draws letters: what stands on one baseline in one look, from its left end, and the
    // lines drawn under, over and through letters and in fractions.
    using PutLetters = std::function<void(std::u32string_view text, const AcGePoint2d& at, double height,
                                          double widthFactor, double oblique)>;
    using PutLine = std::function<void(const AcGePoint2d& from, const AcGePoint2d& to)>;
    void rows(const PutLetters& putLetters, const PutLine& putLine) const;

private:
    // Characters in one look, or a drawn line when there are none. Places count from the line's start and
    // baseline, sizes are drawing units.
    struct Piece {
        std::u32string text;
        AcGePoint2d at;
        AcGePoint2d to; // other end of a drawn line
        double height = 0.0;
        double widthFactor = 1.0;
        double oblique = 0.0;
    };
    // What is never broken: a word, a space, a stack.
    struct Block {
        std::vector<Piece> pieces;
        double width = 0.0;
        double low = 0.0; // beside the baseline
        double high = 0.0;
        int alignment = 0;
        bool isSpace = false;
        bool isStack = false;
    };
    struct Line {
        std::vector<Piece> pieces;
        double width = 0.0;
        double low = 0.0;
        double high = 0.0;
        double letters = 0.0; // height of the highest letters
        double baseline = 0.0;
    };

    void place(const std::vector<TextItem>& items);
    void addWords(const TextItem& item, std::vector<Block>& row) const;
    Block wordBlock(std::u32string text, const TextFormat& format) const;
    Block stackBlock(const TextItem& item) const;
    Piece letters(const std::u32string& text, const TextFormat& format) const;
    double widthOf(std::u32string_view text, const TextFormat& format) const;
    void wrap(std::vector<Block>& row, double emptyHeight);
    void addLine(std::span<Block> row, double emptyHeight);
    void stackLines();
    double lineStart(const Line& line) const;
    int column() const { return (m_look.attachment - 1) % 3; }
    int row() const { return (m_look.attachment - 1) / 3; }

    TextLook m_look;
    std::vector<Line> m_lines;
    double m_width = 0.0;
    double m_height = 0.0;
};

} // namespace veldrin
