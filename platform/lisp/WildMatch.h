// Wild-card patterns of the language, for `wcmatch`, selection filters and table searches:
// # a digit, @ a letter, . neither of both, * any run, ? any one, [...] one of, [~...] none of, with ranges,
// ~ in front: anything but, comma: one of several patterns, ` takes the next character as it is.
#pragma once

#include "runtime/VeldrinApi.h"

#include <string_view>

namespace veldrin::lisp {

// Case counts.
VELDRIN_API bool wildMatch(std::string_view text, std::string_view pattern);

} // namespace veldrin::lisp
