#pragma once

#include <cmath>
#include <numbers>

namespace veldrin {

// The angle of the same direction from 0 up to a full turn.
inline double withinTurn(double angle) {
    constexpr double kFullTurn = 2.0 * std::numbers::pi;
    double a = std::fmod(angle, kFullTurn);
    if (a < 0.0) a += kFullTurn;
    return a >= kFullTurn ? 0.0 : a + 0.0; // no minus in front of a zero
}

} // namespace veldrin
