#pragma once

#include "geometry/AcGePoint2d.h"
#include "runtime/VeldrinApi.h"

#include <functional>
#include <span>
#include <string_view>

namespace veldrin {

// Letters as pen strokes. All text is measured and drawn with this one font, whatever file a text style
// names, so that a drawing looks the same everywhere.

// Width of a line of text from its first advance to its last, for capitals of height 1.
VELDRIN_API double lineWidth(std::u32string_view line);
VELDRIN_API double lineWidth(std::string_view ascii);

// Strokes of a line for capitals of height 1 on a baseline that begins at the origin.
VELDRIN_API void lineStrokes(std::u32string_view line,
                             const std::function<void(std::span<const AcGePoint2d>)>& put);

} // namespace veldrin
