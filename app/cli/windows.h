#pragma once

#include "runtime/Host.h"

// Lets the host show its windows on the display.
enum class Windows { kShown, kNotBuilt, kNoDisplay };
Windows showWindows(veldrin::Host& host);
