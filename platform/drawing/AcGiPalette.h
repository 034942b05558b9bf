#pragma once

#include "runtime/VeldrinApi.h"

#include <cstdint>

namespace veldrin {

// The 255 colours of the drawing palette, 0xRRGGBB: 1 red, 2 yellow, 3 green, 4 cyan, 5 blue, 6 magenta, 7
// the foreground (here white), 8 and 9 greys, 10 to 249 a wheel of 24 hues in five shades, each full and
// pale, 250 to 255 greys. Others than 1 to 255 give the foreground.
VELDRIN_API std::uint32_t paletteColor(int index);
// The index whose colour is closest.
VELDRIN_API std::int16_t nearestIndex(std::uint32_t rgb);

} // namespace veldrin
