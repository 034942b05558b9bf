#pragma once

#include <cstdint>
#include <string>

namespace veldrin {

// A file of its own that goes, with its journal, when its scope ends.
class Scratch {
public:
    Scratch(const std::string& beside, const char* ending) : m_path(beside + ending) { remove(); }
    ~Scratch() { remove(); }
    Scratch(const Scratch&) = delete;
    Scratch& operator=(const Scratch&) = delete;
    const std::string& path() const { return m_path; }

private:
    void remove() const;
    std::string m_path;
};

// The length that a database file says it has, by its first bytes; 0 when it is too short to say, or says
// nonsense.
std::uintmax_t statedLength(const std::string& path);

// A copy that the engine will touch: zeros stand for an end that is missing. What went wrong, in words.
std::string copyLengthened(const std::string& path, const std::string& into);

} // namespace veldrin
