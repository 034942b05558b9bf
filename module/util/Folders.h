#pragma once

#include "runtime/CString.h"

#include <string_view>

namespace plumb {

// The path up to, and without, its last '\'; with none, its last '/'; with neither, "".
CString GetFolder(std::string_view path);
// The part behind that separator; "" with neither.
CString GetShortName(std::string_view path);

} // namespace plumb
