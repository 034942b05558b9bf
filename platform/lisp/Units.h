// Lengths and angles as text, in the notations that drafters use, and back.
#pragma once

#include "runtime/VeldrinApi.h"

#include <optional>
#include <string>
#include <string_view>

namespace veldrin::lisp {

enum class LengthUnits { Scientific = 1, Decimal, Engineering, Architectural, Fractional }; // LUNITS
enum class AngleUnits { Degrees, DegreesMinutesSeconds, Grads, Radians, Surveyor };         // AUNITS

// `precision`: decimals, or the power of two of the smallest fraction. `zeros` is DIMZIN: 4 drops the zero in
// front of the point, 8 the zeros at the end, 0 to 3 say which zero feet and inches are shown.
VELDRIN_API std::string formatLength(double inches, LengthUnits units, int precision, int zeros);

// Any angle in radians, brought into one turn.
VELDRIN_API std::string formatAngle(double radians, AngleUnits units, int precision, int zeros);

// 17.5, 1.75e1, 1'-5 1/2", 1'5.5", 17 1/2, 1/2; none when it is not a length.
VELDRIN_API std::optional<double> parseLength(std::string_view text);

// In radians: 45.5, 45d30'15", 50g, 0.78r, N 45d30' E, whatever the units; they say what a plain number
// means.
VELDRIN_API std::optional<double> parseAngle(std::string_view text, AngleUnits units);

} // namespace veldrin::lisp
