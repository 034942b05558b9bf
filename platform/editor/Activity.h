#pragma once

#include "runtime/VeldrinApi.h"

#include <cstdint>
#include <string>
#include <vector>

class AcDbDatabase;

namespace veldrin {

// What is at work in the host right now, in the order in which it began: commands that wait for input too.
// Without any of it, and without a modal window, the host is quiescent.
class VELDRIN_API ActivityStack {
public:
    enum class Kind { Command, Handler };

    bool isEmpty() const { return m_entries.empty(); }
    std::uint32_t innermost() const { return m_entries.empty() ? 0 : m_entries.back().serial; } // 0: none
    // Names of the commands that run, outermost first.
    std::vector<std::string> commandNames() const;

private:
    friend class ActivityScope;
    struct Entry {
        Kind kind;
        std::uint32_t serial;
        std::string name;
    };
    std::vector<Entry> m_entries;
    std::uint32_t m_lastSerial = 0;
};

// A command, or a function of a module that Lisp has called, for as long as it runs.
class VELDRIN_API ActivityScope {
public:
    [[nodiscard]] ActivityScope(ActivityStack::Kind kind, std::string name);
    ~ActivityScope();
    ActivityScope(const ActivityScope&) = delete;
    ActivityScope& operator=(const ActivityScope&) = delete;

private:
    ActivityStack& m_stack;
    std::uint32_t m_serial;
};

// One step of undo on the working database at the time, for as long as it lives; inside an outer one a part
// of it. The drawing may be closed meanwhile.
class VELDRIN_API UndoStep {
public:
    [[nodiscard]] explicit UndoStep(const std::string& label);
    ~UndoStep();
    UndoStep(const UndoStep&) = delete;
    UndoStep& operator=(const UndoStep&) = delete;

private:
    std::uint32_t m_generation = 0;
};

} // namespace veldrin
