#pragma once

#include "drawing/AcDbDatabase.h"

#include <string>
#include <string_view>

namespace veldrin {

// The linetypes that every drawing can have without a file: CENTER, DASHED, DASHDOT, DIVIDE, DOT, HIDDEN,
// PHANTOM and BORDER, each in half and double size too (HIDDEN2, HIDDENX2).

// The drawing's linetype of that name; a standard one is added when the drawing lacks it. Null when there is
// none.
AcDbObjectId findOrLoadLinetype(AcDbDatabase& database, const std::string& name);

// Adds those that match the patterns; gives their number.
int loadLinetypes(AcDbDatabase& database, std::string_view patterns);

} // namespace veldrin
