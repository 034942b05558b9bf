#pragma once

// Marks what this room shows to the program and to modules. The room stands below `runtime`, so it has a mark
// of its own.
#define VELDRIN_SYSTEM_API __attribute__((visibility("default")))
