#pragma once

#include "runtime/VeldrinApi.h"

#include <string>
#include <string_view>

namespace veldrin {

// Several people may write a project only where the file system keeps them apart by locks, and some network
// file systems do so on one machine alone, or not at all.

// One line for the user when the locks of the file's folder cannot be trusted, the first time that this is
// asked for the folder; empty otherwise.
VELDRIN_API std::string describeLockDoubts(const std::string& path);

// Why locks under this path cannot be trusted, by the system's list of mounts (the form of
// /proc/self/mountinfo): "the share is mounted with nolock". Empty when nothing speaks against them.
VELDRIN_API std::string whyMountIsDoubtful(std::string_view mounts, std::string_view path);

// Whether the path is on a file system that other machines may use as well.
VELDRIN_API bool isOnNetwork(std::string_view mounts, std::string_view path);

} // namespace veldrin
