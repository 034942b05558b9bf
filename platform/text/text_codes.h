#pragma once

#include "runtime/VeldrinApi.h"

#include <string>
#include <string_view>
#include <vector>

namespace veldrin {

// UTF-8 to code points; a broken byte stands for itself.
VELDRIN_API std::u32string toCodePoints(std::string_view utf8);

// A single-line text as it is read: %%c diameter, %%d degree, %%p plus-minus, %%% per cent, %%nnn a character
// by its number, \U+XXXX.
VELDRIN_API std::u32string plainLine(std::string_view contents);

// A multi-line text as it is read, line by line: \P and line ends part lines, \~ is a space at which no line
// breaks, \\ \{ \} stand for the characters, braces group, \S shows a fraction as top/bottom. Codes for
// font, height, colour and the like are passed over.
VELDRIN_API std::vector<std::u32string> plainLines(std::string_view contents);

} // namespace veldrin
