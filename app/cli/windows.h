#pragma once

#include "runtime/Host.h"

#include <string>

// Lets the host show its windows on the display. What is wrong with a library that cannot be loaded is told.
enum class Windows { kShown, kNotBuilt, kNotLoaded, kNoDisplay };
Windows showWindows(veldrin::Host& host, std::string& problem);
