#pragma once

#include "runtime/VeldrinApi.h"

#include <ostream>
#include <string>

namespace veldrin {

// Writes all of a project database as text, a line for each field, tables by name and records by key; so two
// dumps of the same contents are the same text. Throws CDaoException.
VELDRIN_API void dumpProject(const std::string& path, std::ostream& out);

} // namespace veldrin
