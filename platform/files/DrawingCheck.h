#pragma once

#include "runtime/VeldrinApi.h"

#include <string>
#include <vector>

namespace veldrin {

struct DrawingReport {
    std::string failure;               // the line that tells why nothing could be done; empty otherwise
    std::vector<std::string> problems; // what is wrong, or was lost or mended, a line each
    int objects = 0;                   // that can be read
    std::string kept;                  // after a repair: where the damaged file is now
};

// Reads all of a drawing file and tells what is wrong. The file stays as it is.
[[nodiscard]] VELDRIN_API DrawingReport checkDrawing(const std::string& path);

// Saves what can be read of a damaged drawing under its name, and keeps the damaged file beside it as
// "NAME.damaged.vqd". A sound drawing is left alone.
[[nodiscard]] VELDRIN_API DrawingReport repairDrawing(const std::string& path);

} // namespace veldrin
