#pragma once

#include <string>

namespace veldrin {

// A file that is written beside another and takes its place when it is whole, so that at any moment the one
// or the other is there. What was not committed at the end of its life is removed.
class [[nodiscard]] FileReplacement {
public:
    explicit FileReplacement(std::string target);
    ~FileReplacement();
    FileReplacement(const FileReplacement&) = delete;
    FileReplacement& operator=(const FileReplacement&) = delete;

    const std::string& path() const { return m_path; } // where to write; there is no such file at first
    // Call it when nobody has the new file open. What went wrong, in words; empty when it took its place.
    std::string commit();

    // What a program that was killed left of a new file for this target goes.
    static void dropLeftovers(const std::string& target);

private:
    std::string m_target;
    std::string m_path;
};

// Why nothing can be written under this name, in words; empty when it seems to be possible.
std::string whyNotWritable(const std::string& path);

// The file that is meant, behind all links, by its absolute name.
std::string realPath(const std::string& path);

} // namespace veldrin
