#pragma once

#include "runtime/VeldrinApi.h"

#include <string>
#include <string_view>
#include <vector>

namespace veldrin {

// How a stretch of text looks beside the text that it stands in.
struct TextFormat {
    double height = 1.0; // of a capital, in units of the text's own height
    double widthFactor = 1.0;
    double oblique = 0.0; // radians to the right
    int alignment = 0;    // of what is less high than its line: 0 bottom, 1 middle, 2 top
    bool underlined = false;
    bool overlined = false;
    bool struck = false;

    bool operator==(const TextFormat&) const = default;
};

// What a text consists of once its codes are understood.
struct TextItem {
    enum Kind {
        kWords,
        kLineEnd,
        kFraction, // one above the other with a line between
        kDiagonal, // side by side with a slanted line between
        kTolerance // one above the other without a line
    };
    Kind kind = kWords;
    TextFormat format;
    std::u32string text;  // the words, or what stands above or in front
    std::u32string below; // what stands below or behind
};

// UTF-8 to code points; a broken byte stands for itself.
VELDRIN_API std::u32string toCodePoints(std::string_view utf8);

// A single-line text as it is read: %%c diameter, %%d degree, %%p plus-minus, %%% per cent, %%nnn a character
// by its number, \U+XXXX. %%u, %%o and %%k switch lines under, over and through the text.
VELDRIN_API std::vector<TextItem> singleLineItems(std::string_view contents);

// A multi-line text. Besides the codes of a single line: \P and line ends part lines; \~ is a space at which
// no line breaks; \\ \{ \} stand for the characters; \Sa/b; \Sa#b; \Sa^b; are a fraction, a diagonal
// fraction and a tolerance; \H2.5; \H0.7x; set the height in drawing units or beside the present one,
// \W0.8; \W0.8x; the width factor, \Q15; the slant in degrees, \A0; \A1; \A2; the alignment; \L \O \K and
// \l \o \k switch lines under, over and through on and off; braces hold the changes inside. Codes for font,
// colour, tracking and paragraphs are passed over. `textHeight` is the text's own, in drawing units.
VELDRIN_API std::vector<TextItem> multiLineItems(std::string_view contents, double textHeight);

// True when a text has no code, brace or line end at all, so that it reads as it is written.
VELDRIN_API bool isPlain(std::string_view contents);

} // namespace veldrin
