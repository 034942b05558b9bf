#pragma once

#include "drawing/AcDbDatabase.h"

#include <memory>
#include <optional>
#include <string>
#include <variant>

// Drawings in files. What fails is told in one line that names the file, and nothing is changed by it: a save
// that fails, or that is cut short by a crash at any moment, leaves the file that was there.
namespace veldrin {

// Writes the drawing into this file, which is its file from then on; nothing is "modified" afterwards. Into
// the file that it was read from, or saved to last, only what changed is written; any other is made anew. A
// drawing that stood there and is none of this session's own saves is kept as ".bak" beside it. The name that
// the drawing goes by is the caller's to set. The result is the line about what failed.
[[nodiscard]] VELDRIN_API std::optional<std::string> saveDrawing(AcDbDatabase& database,
                                                                 const std::string& path);

// Writes the whole drawing under this name, as a copy: the drawing keeps its file, and what is modified stays
// so.
[[nodiscard]] VELDRIN_API std::optional<std::string> saveDrawingCopy(const AcDbDatabase& database,
                                                                     const std::string& path);

// The drawing of a file, or the line about what failed. Objects of classes that are not here, and records
// that are newer than their class, become proxies; ids that name nothing are null.
[[nodiscard]] VELDRIN_API std::variant<std::unique_ptr<AcDbDatabase>, std::string>
openDrawing(const std::string& path);

} // namespace veldrin
