#pragma once

#include "runtime/VeldrinApi.h"

#include <string>
#include <vector>

class AcDbDatabase;

namespace veldrin {

// Puts a drawing in order of which objects are missing, as after the reading of a damaged file: tables and
// records that every drawing has come anew, records and entities that nothing lists any more go back to their
// table, their block or, without it, into model space; entities without a layer go to layer 0. The objects
// must be read and the drawing's roots not yet found. What was done is told, a line each; nothing for a sound
// drawing.
VELDRIN_API std::vector<std::string> mendDrawing(AcDbDatabase& database);

} // namespace veldrin
