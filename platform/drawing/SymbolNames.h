#pragma once

#include "runtime/VeldrinApi.h"

#include <string>
#include <string_view>

namespace veldrin {

// Names of table records and applications are equal without regard to case, which is that of A to Z.
VELDRIN_API std::string symbolKey(std::string_view name); // in upper case
VELDRIN_API bool sameSymbolName(std::string_view a, std::string_view b);
// False for an empty or overlong name, and for characters that exchange files cannot carry. A star may only
// stand in front, as in the names of model space and of unnamed blocks.
VELDRIN_API bool isSymbolName(std::string_view name);

} // namespace veldrin
