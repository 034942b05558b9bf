#include "text/TextLayout.h"

#include "text/StrokeFont.h"

#include <algorithm>
#include <cmath>

namespace veldrin {

namespace {

constexpr double kLineDistance = 5.0 / 3.0; // of baselines, in heights
constexpr double kLineGap = 1.0 / 3.0;      // least space between the boxes of two lines, in heights
// Lines drawn with letters, in heights of the letters.
constexpr double kUnderline = -0.2;
constexpr double kOverline = 1.2;
constexpr double kStrike = 0.5;
constexpr double kFractionGap = 0.25; // between a fraction's line and its parts
constexpr double kDiagonalRise = 0.6; // of the part in front of a diagonal
constexpr double kDiagonalWidth = 0.4;

bool isWide(const TextLook& look) {
    return look.wrapWidth > 0.0 && look.multiline;
}

} // namespace

TextSize measure(std::string_view contents, const TextLook& look) {
    if (contents.empty()) return {};
    const bool ascii = std::all_of(contents.begin(), contents.end(),
                                   [](char c) { return static_cast<unsigned char>(c) < 128; });
    if (ascii && isPlain(contents) && !isWide(look))
        return {lineWidth(contents) * look.height * look.widthFactor, look.height};
    const TextLayout layout(contents, look);
    return {layout.width(), layout.height()};
}

TextLayout::TextLayout(std::string_view contents, const TextLook& look) : m_look(look) {
    if (contents.empty()) return;
    place(look.multiline ? multiLineItems(contents, look.height) : singleLineItems(contents));
    stackLines();
}

void TextLayout::place(const std::vector<TextItem>& items) {
    std::vector<Block> row;
    double emptyHeight = m_look.height;
    for (const TextItem& item : items) {
        emptyHeight = item.format.height * m_look.height;
        if (item.kind == TextItem::kLineEnd) {
            wrap(row, emptyHeight);
            row.clear();
        } else if (item.kind == TextItem::kWords) {
            addWords(item, row);
        } else {
            row.push_back(stackBlock(item));
        }
    }
    wrap(row, emptyHeight);
}

double TextLayout::widthOf(std::u32string_view text, const TextFormat& format) const {
    return lineWidth(text) * m_look.height * format.height * m_look.widthFactor * format.widthFactor;
}

TextLayout::Piece TextLayout::letters(const std::u32string& text, const TextFormat& format) const {
    Piece piece;
    piece.text = text;
    piece.height = m_look.height * format.height;
    piece.widthFactor = m_look.widthFactor * format.widthFactor;
    piece.oblique = m_look.oblique + format.oblique;
    return piece;
}

// Where lines may break, words and spaces become blocks of their own; elsewhere all is one.
void TextLayout::addWords(const TextItem& item, std::vector<Block>& row) const {
    if (!isWide(m_look)) {
        row.push_back(wordBlock(item.text, item.format));
        return;
    }
    std::size_t begin = 0;
    while (begin < item.text.size()) {
        const bool isSpace = item.text[begin] == U' ';
        const std::size_t end = isSpace ? begin + 1 : std::min(item.text.find(U' ', begin), item.text.size());
        row.push_back(wordBlock(item.text.substr(begin, end - begin), item.format));
        row.back().isSpace = isSpace;
        begin = end;
    }
}

TextLayout::Block TextLayout::wordBlock(std::u32string text, const TextFormat& format) const {
    Block block;
    block.width = widthOf(text, format);
    block.high = m_look.height * format.height;
    block.alignment = format.alignment;
    const auto line = [&](bool drawn, double height) {
        if (!drawn) return;
        Piece piece;
        piece.at = {0.0, height * block.high};
        piece.to = {block.width, height * block.high};
        block.pieces.push_back(piece);
    };
    line(format.underlined, kUnderline);
    line(format.overlined, kOverline);
    line(format.struck, kStrike);
    block.pieces.push_back(letters(text, format));
    return block;
}

TextLayout::Block TextLayout::stackBlock(const TextItem& item) const {
    Block block;
    const double h = m_look.height * item.format.height;
    const double first = widthOf(item.text, item.format);
    const double second = widthOf(item.below, item.format);
    block.isStack = true;
    block.alignment = item.format.alignment;
    Piece above = letters(item.text, item.format);
    Piece below = letters(item.below, item.format);
    Piece line;
    if (item.kind == TextItem::kDiagonal) {
        const double slant = h * kDiagonalWidth;
        block.high = h * (1.0 + kDiagonalRise);
        above.at = {0.0, h * kDiagonalRise};
        below.at = {first + slant, 0.0};
        line.at = {first, 0.0};
        line.to = {first + slant, block.high};
        block.width = first + slant + second;
    } else {
        const double middle = h * (1.0 + kFractionGap);
        const bool centered = item.kind == TextItem::kFraction;
        block.width = std::max(first, second);
        block.high = h * 2.0 * (1.0 + kFractionGap);
        above.at = {centered ? (block.width - first) / 2.0 : 0.0, middle + h * kFractionGap};
        below.at = {centered ? (block.width - second) / 2.0 : 0.0, 0.0};
        line.at = {0.0, middle};
        line.to = {block.width, middle};
    }
    block.pieces = {above, below};
    if (item.kind != TextItem::kTolerance) block.pieces.push_back(line);
    return block;
}

// Breaks at the last space that still lets the line fit; a word that is wider than the line stays whole.
void TextLayout::wrap(std::vector<Block>& row, double emptyHeight) {
    std::size_t begin = 0;
    if (isWide(m_look)) {
        double width = 0.0;
        std::size_t space = 0; // the last one behind a word of this line, `begin` for none
        for (std::size_t i = 0; i < row.size(); ++i) {
            width += row[i].width;
            if (row[i].isSpace) {
                if (i > begin) space = i;
            } else if (width > m_look.wrapWidth && space > begin) {
                addLine(std::span(row).subspan(begin, space - begin), emptyHeight);
                begin = space + 1;
                space = begin;
                width = 0.0;
                for (std::size_t k = begin; k <= i; ++k) width += row[k].width;
            }
        }
    }
    addLine(std::span(row).subspan(begin), emptyHeight);
}

void TextLayout::addLine(std::span<Block> row, double emptyHeight) {
    Line line;
    for (const Block& block : row)
        if (!block.isStack) line.letters = std::max(line.letters, block.high);
    const double reference = line.letters;
    for (const Block& block : row)
        if (block.isStack) line.letters = std::max(line.letters, block.pieces.front().height);
    if (row.empty()) line.high = line.letters = emptyHeight;
    for (Block& block : row) {
        const double against = reference > 0.0 ? reference : block.high;
        const double lift = (against - block.high) * block.alignment / 2.0;
        for (Piece& piece : block.pieces) {
            piece.at = piece.at + AcGeVector2d(line.width, lift);
            piece.to = piece.to + AcGeVector2d(line.width, lift);
            line.pieces.push_back(std::move(piece));
        }
        line.width += block.width;
        line.low = std::min(line.low, block.low + lift);
        line.high = std::max(line.high, block.high + lift);
    }
    m_width = std::max(m_width, line.width);
    m_lines.push_back(std::move(line));
}

// Sets the baselines from the top of the box downwards, then moves all to the attachment point.
void TextLayout::stackLines() {
    double baseline = 0.0;
    for (std::size_t i = 0; i < m_lines.size(); ++i) {
        Line& line = m_lines[i];
        if (i == 0) {
            baseline = -line.high;
        } else {
            const double room = -m_lines[i - 1].low + line.high + kLineGap * line.letters;
            baseline -= std::max(kLineDistance * line.letters, room);
        }
        line.baseline = baseline;
    }
    m_height = -(baseline + m_lines.back().low);
    const double lift = m_look.multiline ? m_height * row() / 2.0 : m_lines.front().high;
    for (Line& line : m_lines) line.baseline += lift;
}

double TextLayout::lineStart(const Line& line) const {
    return m_look.multiline ? -line.width * column() / 2.0 : 0.0;
}

AcGePoint2d TextLayout::lowerLeft() const {
    if (m_lines.empty()) return {};
    const Line& last = m_lines.back();
    return {m_look.multiline ? -m_width * column() / 2.0 : 0.0, last.baseline + last.low};
}

AcGePoint2d TextLayout::upperRight() const {
    if (m_lines.empty()) return {};
    return {lowerLeft().x + m_width, lowerLeft().y + m_height};
}

void TextLayout::strokes(const std::function<void(std::span<const AcGePoint2d>)>& put) const {
    std::vector<AcGePoint2d> placed;
    for (const Line& line : m_lines) {
        const AcGeVector2d start(lineStart(line), line.baseline);
        for (const Piece& piece : line.pieces) {
            const AcGePoint2d origin = piece.at + start;
            if (piece.text.empty()) {
                placed = {origin, piece.to + start};
                if (piece.height == 0.0) put(placed);
                continue;
            }
            const double slant = std::tan(piece.oblique);
            lineStrokes(piece.text, [&](std::span<const AcGePoint2d> stroke) {
                placed.clear();
                for (const AcGePoint2d& p : stroke) {
                    const double y = p.y * piece.height;
                    placed.emplace_back(origin.x + p.x * piece.height * piece.widthFactor + y * slant,
                                        origin.y + y);
                }
                put(placed);
            });
        }
    }
}

// Words are pieces of their own; on a baseline they are one text again.
void TextLayout::rows(const PutLetters& putLetters, const PutLine& putLine) const {
    Piece row;
    const auto flush = [&] {
        while (row.text.ends_with(U' ')) row.text.pop_back();
        if (!row.text.empty()) putLetters(row.text, row.at, row.height, row.widthFactor, row.oblique);
        row = Piece();
    };
    for (const Line& line : m_lines) {
        const AcGeVector2d start(lineStart(line), line.baseline);
        for (const Piece& piece : line.pieces) {
            if (piece.text.empty()) {
                if (piece.height == 0.0) putLine(piece.at + start, piece.to + start);
                continue;
            }
            const bool goesOn = !row.text.empty() && piece.height == row.height &&
                                piece.widthFactor == row.widthFactor && piece.oblique == row.oblique &&
                                piece.at.y + start.y == row.at.y && piece.at.x + start.x > row.at.x;
            if (goesOn) {
                row.text += piece.text;
                continue;
            }
            flush();
            row = piece;
            row.at = piece.at + start;
        }
        flush();
    }
}

} // namespace veldrin
