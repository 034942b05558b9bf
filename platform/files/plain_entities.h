#pragma once

#include "drawing/AcDbEntity.h"
#include "graphics/DisplayList.h"

#include <memory>
#include <vector>

namespace veldrin {

// Plain entities that look like a picture, in its order, in no drawing; for a primitive that no plain entity
// can be, none.
std::vector<std::unique_ptr<AcDbEntity>> plainEntities(const DisplayList& list);

} // namespace veldrin
