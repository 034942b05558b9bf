#pragma once

#include "system/SystemApi.h"

#include <filesystem>
#include <string_view>
#include <vector>

namespace veldrin {

// Where the program finds what belongs to it: beside itself in a build folder, or in the folders of an
// installed tree (bin, lib/veldrin, share/veldrin). The working directory plays no part.

// The folder of the running program.
VELDRIN_SYSTEM_API std::filesystem::path programFolder();

// Where modules are looked for, the nearest first. Not all of them need exist.
VELDRIN_SYSTEM_API std::vector<std::filesystem::path> moduleFolders();

// The full path of a data folder ("lisp", "standards"), empty when there is none.
VELDRIN_SYSTEM_API std::filesystem::path findDataFolder(std::string_view name);

} // namespace veldrin
