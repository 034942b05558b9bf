#pragma once

#include "editor/Activity.h"
#include "editor/CommandRegistry.h"

#include <memory>
#include <optional>
#include <string>

class AcApDocument;

namespace veldrin {

// One command from its start to its end: its work, what it holds meanwhile (its place among the activities,
// the document's lock, the undo step), and what the editor's reactors are told.
class CommandRun {
public:
    CommandRun(Host& host, AcDbDatabase& database, EditorInput& input, const CommandRow& row,
               std::string name);
    ~CommandRun();
    CommandRun(const CommandRun&) = delete;
    CommandRun& operator=(const CommandRun&) = delete;

    void start(); // up to the first question
    bool isDone() const { return m_task.isDone(); }
    // Lets go of everything. False when the command was cancelled or has failed, which is told.
    bool finish();

private:
    void release();

    const std::string m_name;
    CommandContext m_context;
    CommandRow m_row;
    std::optional<ActivityScope> m_activity;
    std::optional<UndoStep> m_step;
    AcApDocument* m_lockedDocument = nullptr;
    Task<void> m_task;
};

} // namespace veldrin
