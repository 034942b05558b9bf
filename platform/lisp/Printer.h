// Values as text.
#pragma once

#include "lisp/Value.h"

#include <string>

namespace veldrin::lisp {

VELDRIN_API std::string princText(const Value& value); // for people
VELDRIN_API std::string prin1Text(const Value& value); // as `read` takes it: texts quoted and escaped

// As prin1Text, cut after a line's length: for messages.
std::string shortText(const Value& value);

// A real as both show it: six significant digits, always with a decimal point.
VELDRIN_API std::string realText(double value);

} // namespace veldrin::lisp
