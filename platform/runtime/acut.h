#pragma once

#include "runtime/VeldrinApi.h"

// Prints on the command line; the format is that of printf. Entities list themselves through it, so it is
// declared below the editor, which implements it.
VELDRIN_API int acutPrintf(const char* format, ...) __attribute__((format(printf, 1, 2)));
