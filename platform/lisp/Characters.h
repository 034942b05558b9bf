// UTF-8 text by code points, and its upper and lower case for the alphabets of Europe. Bytes that are no
// UTF-8 count as one character each and pass unchanged.
#pragma once

#include "runtime/VeldrinApi.h"

#include <cstddef>
#include <string>
#include <string_view>

namespace veldrin::lisp {

// The code point that begins at `at`, which moves behind it.
char32_t nextCodePoint(std::string_view text, std::size_t& at);
void appendCodePoint(std::string& text, char32_t code);

std::size_t countCodePoints(std::string_view text);
// The byte on which the code point number `index` begins; the size of the text when there are fewer.
std::size_t byteOfCodePoint(std::string_view text, std::size_t index);

char32_t upperCase(char32_t code);
char32_t lowerCase(char32_t code);
std::string upperCase(std::string_view text);
std::string lowerCase(std::string_view text);

} // namespace veldrin::lisp
