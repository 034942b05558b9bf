#pragma once

namespace plumb {

// A part of the system that is missing on the user's machine.
struct MissingPart {
    const char* question; // whether to download it, with what went wrong in front
    const char* name;     // "drivers"
    const char* location;
};

// Asks, opens the location in the desktop's own program, and tells the user what comes next or what failed.
void offerDownload(const MissingPart& part);

} // namespace plumb
