#pragma once

#include "runtime/VeldrinApi.h"

namespace veldrin {
class Host;
}

namespace veldrin::scripting {

// Gives the host's Lisp its functions over drawings, documents, commands and windows. Called once for a host.
VELDRIN_API void install(Host& host);

} // namespace veldrin::scripting
