#pragma once

#include "ui/UiBackend.h"

// The door to the windows, which are a library of their own: a program that shows none needs no window
// system.

// A back end that shows windows on the display; the caller owns it. Null when the display cannot be reached.
extern "C" __attribute__((visibility("default"))) veldrin::UiBackend* veldrinMakeWindows();

inline constexpr const char* kWindowLibrary = "libveldrin-window.so";
inline constexpr const char* kWindowEntry = "veldrinMakeWindows";
