#pragma once

#include "drawing/AcGi.h"
#include "text/TextLayout.h"

#include <array>

namespace veldrin {

// What a text style gives; a null or missing one gives nothing.
VELDRIN_API void takeStyle(AcDbObjectId style, TextLook& look);
// The layout of a drawn text. Multi-line text has width and slant from its style, a single line its own.
VELDRIN_API TextLayout layoutOf(const AcGiText& text);
// Moves a text with what is around it. Text that gets slanted or wider keeps its slant and width factor where
// it has its own, as a single line does.
VELDRIN_API void transformText(AcGiText& text, const AcGeMatrix3d& matrix);
// Lays a point of the layout's plane into the world.
VELDRIN_API AcGePoint3d placeOf(const AcGiText& text, const AcGePoint2d& inLayout);
// Corners of the box around the text, in the world, around from the lower left.
VELDRIN_API std::array<AcGePoint3d, 4> cornersOf(const AcGiText& text);

} // namespace veldrin
