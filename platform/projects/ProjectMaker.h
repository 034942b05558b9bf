#pragma once

#include "runtime/VeldrinApi.h"

#include <string>

namespace veldrin {

// Makes a project in a folder, which is made where it is missing: a database with the starter standards. The
// result is its path. Throws CDaoException with one line; nothing is left behind then. A folder that has a
// project already is refused, since with two it would have none.
VELDRIN_API std::string makeProject(const std::string& folder, const std::string& name);

// The same for a standards file, which dialogs open by its path.
VELDRIN_API std::string makeStandardsFile(const std::string& folder, const std::string& name);

} // namespace veldrin
