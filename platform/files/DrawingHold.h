#pragma once

#include "runtime/VeldrinApi.h"

#include <memory>
#include <string>

namespace veldrin {

// A session's hold on a drawing file: a lock file beside it that says who holds it, and that the system keeps
// locked for as long as the process lives. So a hold ends with its process, however that ends; a lock file
// that nobody keeps locked is what a killed program left.
class VELDRIN_API DrawingHold {
public:
    struct Attempt {
        std::unique_ptr<DrawingHold> hold; // null without success
        std::string holder;                // who has it, in words; empty when nobody was found to have it
        bool afterCrash = false;           // the last one who held it did not let go of it
        bool isDenied = false;             // nothing may be written into the folder
        bool isUnlockable = false;         // the file system keeps no locks
    };
    // The drawing need not be there yet.
    static Attempt take(const std::string& drawing);

    ~DrawingHold();
    DrawingHold(const DrawingHold&) = delete;
    DrawingHold& operator=(const DrawingHold&) = delete;

private:
    DrawingHold(std::string path, int file) : m_path(std::move(path)), m_file(file) {}

    std::string m_path;
    int m_file;
};

} // namespace veldrin
