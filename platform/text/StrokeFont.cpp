#include "text/StrokeFont.h"

#include "text/simplex_glyphs.h"

#include <vector>

namespace veldrin {

namespace {

constexpr int kZero = 'R';
constexpr int kBaseline = 9;
constexpr double kCapital = 21.0; // height of a capital in the font's units
constexpr char32_t kDegree = 0xB0;
constexpr char32_t kDiameter = 0xD8;
constexpr char32_t kDiameterSign = 0x2300;
constexpr char32_t kEmptySet = 0x2205;
constexpr char32_t kPlusMinus = 0xB1;
constexpr char32_t kHardSpace = 0xA0;

std::string_view glyph(char32_t c) {
    constexpr std::size_t kDegreeGlyph = 127 - kFirstGlyph;
    switch (c) {
    case kDegree: return kSimplexGlyphs[kDegreeGlyph];
    case kDiameter:
    case kDiameterSign:
    case kEmptySet: return kDiameterGlyph;
    case kPlusMinus: return kPlusMinusGlyph;
    case kHardSpace: return kSimplexGlyphs[0];
    default: break;
    }
    const bool known = c >= char32_t{kFirstGlyph} && c < 127;
    return kSimplexGlyphs[(known ? c : U'?') - char32_t{kFirstGlyph}];
}

int number(char c) {
    return static_cast<unsigned char>(c) - kZero;
}

} // namespace

namespace {

template<class Text>
double widthOf(Text line) {
    long sum = 0;
    for (const auto c : line) {
        const std::string_view g = glyph(static_cast<char32_t>(c));
        sum += number(g[1]) - number(g[0]);
    }
    return static_cast<double>(sum) / kCapital;
}

} // namespace

double lineWidth(std::u32string_view line) {
    return widthOf(line);
}
double lineWidth(std::string_view ascii) {
    return widthOf(ascii);
}

void lineStrokes(std::u32string_view line, const std::function<void(std::span<const AcGePoint2d>)>& put) {
    std::vector<AcGePoint2d> stroke;
    const auto finish = [&] {
        if (!stroke.empty()) put(stroke);
        stroke.clear();
    };
    int pen = 0;
    for (const char32_t c : line) {
        const std::string_view g = glyph(c);
        const int left = number(g[0]);
        for (std::size_t i = 2; i + 1 < g.size(); i += 2) {
            if (g[i] == ' ')
                finish();
            else
                stroke.emplace_back((pen + number(g[i]) - left) / kCapital,
                                    (kBaseline - number(g[i + 1])) / kCapital);
        }
        finish();
        pen += number(g[1]) - left;
    }
}

} // namespace veldrin
