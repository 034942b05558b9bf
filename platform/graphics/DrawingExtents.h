#pragma once

#include "geometry/AcDbExtents.h"
#include "runtime/VeldrinApi.h"

class AcDbDatabase;

namespace veldrin {

// The box around what the drawing shows in model space; empty when it shows nothing. Entities that are erased
// or invisible, and those on layers that are off or frozen, do not count.
VELDRIN_API AcDbExtents drawnExtents(AcDbDatabase& database);

} // namespace veldrin
