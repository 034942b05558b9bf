#pragma once

#include "drawing/AcCmColor.h"
#include "drawing/AcDbDwgFiler.h"

namespace veldrin {

// A colour in a record: its index, whether it is a true colour, and that one's value if so.
VELDRIN_API Acad::ErrorStatus writeColor(AcDbDwgFiler& filer, const AcCmColor& color);
// On failure the colour stays as it was.
VELDRIN_API Acad::ErrorStatus readColor(AcDbDwgFiler& filer, AcCmColor& color);

} // namespace veldrin
