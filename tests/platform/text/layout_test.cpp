#include "text/TextLayout.h"

#include <algorithm>
#include <cmath>
#include <gtest/gtest.h>
#include <limits>
#include <string_view>

using namespace veldrin;

namespace {

constexpr double kSame = 1e-12;
constexpr double kCapital = 21.0; // font units

TextSize sizeOf(const std::string& contents, double height = 1.0, double wrapWidth = 0.0) {
    TextLook look;
    look.height = height;
    look.wrapWidth = wrapWidth;
    return measure(contents, look);
}

struct Box {
    double left = std::numeric_limits<double>::infinity();
    double low = left;
    double right = -left;
    double high = -left;
};

Box inkOf(const TextLayout& layout) {
    Box box;
    layout.strokes([&](std::span<const AcGePoint2d> stroke) {
        for (const AcGePoint2d& p : stroke) {
            box.left = std::min(box.left, p.x);
            box.right = std::max(box.right, p.x);
            box.low = std::min(box.low, p.y);
            box.high = std::max(box.high, p.y);
        }
    });
    return box;
}

} // namespace

// Advances in the font's units: A 18, a 19, 1 and 2 20 each, space 16, degree 14, diameter 22.
TEST(TextLayout, MeasuresWhatTheCodesSay) {
    struct Case {
        const char* contents;
        double width; // font units
        double height;
    };
    const Case cases[] = {
        {"A", 18, 1},
        {"", 0, 0},
        {"12", 40, 1},
        {"%%c12%%d", 22 + 40 + 14, 1},
        {"\\U+00D812", 62, 1},
        {"1%%%2", 40 + 24, 1},
        {"A\\PA12\\PA", 58, 1 + 10.0 / 3.0},
        {"A\nA", 18, 1 + 5.0 / 3.0},
        {"A\\P\\PA", 18, 1 + 10.0 / 3.0},
        {"{\\H2x;A}A", 36 + 18, 2},
        {"\\H2;A\\H0.5x;A", 36 + 18, 2},
        {"{\\W0.5;A}A", 9 + 18, 1},
        {"\\S1/2;", 20, 2.5},
        {"\\S12^1;", 40, 2.5},
        {"\\S1#2;", 20 + 20 + 0.4 * 21, 1.6},
        {"1{\\H0.5x;\\S1/2;}", 20 + 10, 1.25},
        {"1{\\H0.5x;\\A1;\\S1/2;}", 20 + 10, 1.25},
        {"\\S1\\/2/1;", 20 + 22 + 20, 2.5},
        {"\\S12;A", 40 + 18, 1},
        {"\\{\\}", 28, 1},
        {"\\LA\\lA", 36, 1},
        {"{\\fArial|b0;A}\\C1;A", 36, 1},
    };
    for (const Case& c : cases) {
        const TextSize size = sizeOf(c.contents);
        EXPECT_NEAR(size.width, c.width / kCapital, kSame) << c.contents;
        EXPECT_NEAR(size.height, c.height, kSame) << c.contents;
        const bool hasOwnHeight = std::string_view(c.contents).starts_with("\\H2;");
        EXPECT_NEAR(sizeOf(c.contents, 2.0).height, c.height * (hasOwnHeight ? 1.0 : 2.0), kSame)
            << c.contents;
    }
}

// The box is what a gap in a line is cut for, so nothing that is drawn may stand outside of it but the tails
// of letters below the last baseline.
TEST(TextLayout, DrawsWithinItsBox) {
    const char* const contents[] = {"A12",
                                    "1{\\H0.7x;\\S1/2;}\" CW",
                                    "\\A1;1{\\H0.7x;\\S15/16;}A",
                                    "\\A2;A{\\H0.5x;\\S1#2;}",
                                    "A\\P{\\H0.7x;\\S1/2;}\\PA",
                                    "{\\H3x;A}\\PA",
                                    "A\\P{\\H3x;A}"};
    for (const char* const text : contents)
        for (int attachment = 1; attachment <= 9; ++attachment) {
            TextLook look;
            look.height = 2.5;
            look.attachment = attachment;
            const TextLayout layout(text, look);
            const Box ink = inkOf(layout);
            constexpr double kTail = 2.5 * 2.0 / 21.0; // of the comma and the like, and of pen strokes
            EXPECT_GE(ink.left, layout.lowerLeft().x - kSame) << text;
            EXPECT_LE(ink.right, layout.upperRight().x + kSame) << text;
            EXPECT_GE(ink.low, layout.lowerLeft().y - kTail) << text << ' ' << attachment;
            EXPECT_LE(ink.high, layout.upperRight().y + kTail) << text << ' ' << attachment;
            EXPECT_NEAR(layout.upperRight().x - layout.lowerLeft().x, layout.width(), kSame);
            EXPECT_NEAR(layout.upperRight().y - layout.lowerLeft().y, layout.height(), kSame);
            EXPECT_NEAR(layout.lowerLeft().x, -layout.width() * ((attachment - 1) % 3) / 2.0, kSame);
            EXPECT_NEAR(layout.upperRight().y, layout.height() * ((attachment - 1) / 3) / 2.0, 1e-9);
        }
}

TEST(TextLayout, BreaksLinesAtSpacesOnly) {
    const double a = 18 / kCapital;
    const double space = 16 / kCapital;
    struct Case {
        const char* contents;
        double wrapWidth;
        std::size_t lines;
    };
    const Case cases[] = {
        {"A A A", 2 * a + space, 2},
        {"A A A", 2 * a + space - 0.01, 3},
        {"AAA A", a, 2},
        {"A {\\W1;A}A", a, 2},
        {"A\\~A", a, 1},
        {"A {\\H0.5x;\\S1/2;}", a, 2},
        {"A A A", 0.0, 1},
    };
    for (const Case& c : cases) {
        TextLook look;
        look.wrapWidth = c.wrapWidth;
        EXPECT_EQ(TextLayout(c.contents, look).lineCount(), c.lines) << c.contents << ' ' << c.wrapWidth;
    }
}

TEST(TextLayout, SurvivesUnfinishedCodes) {
    const std::string contents[] = {"\\",
                                    "\\S",
                                    "\\S1",
                                    "\\S/;",
                                    "{{{",
                                    "}}}",
                                    "\\H",
                                    "\\Hx;",
                                    "\\H0;",
                                    "\\H-1x;",
                                    "\\U+12",
                                    "%%",
                                    "%%12",
                                    "\\W;A",
                                    "\\Hnan;A",
                                    "\\A9;A",
                                    "\\Q90;A",
                                    "\xff\xfe",
                                    std::string(100000, '{'),
                                    std::string(100000, 'A'),
                                    "\\S" + std::string(50000, '/')};
    for (const std::string& text : contents) {
        const TextSize size = sizeOf(text, 2.5, 10.0);
        EXPECT_TRUE(std::isfinite(size.width) && std::isfinite(size.height)) << text.substr(0, 20);
        inkOf(TextLayout(text, TextLook{}));
    }
    EXPECT_NEAR(sizeOf(std::string(100000, 'A')).width, 100000 * 18 / kCapital, 1e-6);
}

// A single line knows the %% codes and no others, and lies on its baseline.
TEST(TextLayout, SingleLinesKeepBackslashes) {
    TextLook look;
    look.multiline = false;
    const TextLayout layout("A\\PA", look);
    EXPECT_EQ(layout.lineCount(), 1U);
    EXPECT_NEAR(layout.width(), (18 + 14 + 21 + 18) / kCapital, kSame);
    EXPECT_NEAR(layout.lowerLeft().y, 0.0, kSame);
    EXPECT_NEAR(layout.upperRight().y, 1.0, kSame);
}
