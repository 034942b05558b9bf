#include "text/TextLayout.h"

#include "text/StrokeFont.h"
#include "text/text_codes.h"

#include <algorithm>
#include <cmath>

namespace veldrin {

namespace {

constexpr double kLineDistance = 5.0 / 3.0; // of baselines, in heights

}

TextLayout::TextLayout(std::string_view contents, const TextLook& look) : m_look(look) {
    if (contents.empty()) return;
    if (!look.multiline)
        addLine(plainLine(contents));
    else
        for (const std::u32string& paragraph : plainLines(contents)) wrap(paragraph);
}

double TextLayout::widthOf(std::u32string_view text) const {
    return lineWidth(text) * m_look.height * m_look.widthFactor;
}

void TextLayout::addLine(std::u32string_view text) {
    m_lines.push_back({std::u32string(text), widthOf(text)});
    m_width = std::max(m_width, m_lines.back().width);
}

// Breaks at the last space that still lets the line fit; a word that is wider than the line stays whole.
void TextLayout::wrap(std::u32string_view paragraph) {
    if (!(m_look.wrapWidth > 0.0)) return addLine(paragraph);
    std::size_t begin = 0;
    std::size_t fits = 0; // end of what is known to fit, 0 for nothing yet
    for (std::size_t at = 0; at <= paragraph.size(); ++at) {
        if (at < paragraph.size() && paragraph[at] != U' ') continue;
        if (fits > begin && widthOf(paragraph.substr(begin, at - begin)) > m_look.wrapWidth) {
            addLine(paragraph.substr(begin, fits - begin));
            begin = fits + 1;
        }
        fits = at;
    }
    addLine(paragraph.substr(begin));
}

double TextLayout::height() const {
    if (m_lines.empty()) return 0.0;
    return m_look.height * (1.0 + kLineDistance * static_cast<double>(m_lines.size() - 1));
}

double TextLayout::baseline(std::size_t line) const {
    if (!m_look.multiline) return 0.0;
    const double below = m_look.height * (1.0 + kLineDistance * static_cast<double>(line)); // below the top
    return height() * row() / 2.0 - below;
}

double TextLayout::lineStart(const Line& line) const {
    return m_look.multiline ? -line.width * column() / 2.0 : 0.0;
}

AcGePoint2d TextLayout::lowerLeft() const {
    if (m_lines.empty()) return {};
    return {m_look.multiline ? -m_width * column() / 2.0 : 0.0, baseline(m_lines.size() - 1)};
}

AcGePoint2d TextLayout::upperRight() const {
    if (m_lines.empty()) return {};
    return {lowerLeft().x + m_width, baseline(0) + m_look.height};
}

void TextLayout::strokes(const std::function<void(std::span<const AcGePoint2d>)>& put) const {
    const double slant = std::tan(m_look.oblique);
    std::vector<AcGePoint2d> placed;
    for (std::size_t i = 0; i < m_lines.size(); ++i) {
        const AcGePoint2d origin(lineStart(m_lines[i]), baseline(i));
        lineStrokes(m_lines[i].text, [&](std::span<const AcGePoint2d> stroke) {
            placed.clear();
            for (const AcGePoint2d& p : stroke) {
                const double y = p.y * m_look.height;
                placed.emplace_back(origin.x + p.x * m_look.height * m_look.widthFactor + y * slant,
                                    origin.y + y);
            }
            put(placed);
        });
    }
}

} // namespace veldrin
