#pragma once

#include "editor/CommandTask.h"
#include "editor/EditorInput.h"
#include "editor/SelectionSet.h"
#include "runtime/VeldrinApi.h"

#include <map>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <vector>

class AcDbDatabase;

namespace veldrin {

class Host;

// What a command works with while it runs.
struct CommandContext {
    Host& host;
    AcDbDatabase& database; // of the document that was current when it started
    EditorInput& input;
    const std::string& name;
};

using CommandFunction = Task<void> (*)(CommandContext& context);

enum CommandFlags : int {
    kCommandTransparent = 1, // may run inside another one, with an apostrophe
    kCommandWithoutStep = 2, // changes no drawing: no undo step, no lock
};

struct CommandRow {
    const char* name;
    const char* aliases; // separated by blanks
    CommandFunction function;
    int flags;
};

// The commands of a host, its own and the c: functions of Lisp, and where their input comes from.
//
// A command is one undo step and is told to the editor's reactors. It may be given its answers in several
// calls of `feed`; between them it waits, and what else changes the drawing meanwhile belongs to its step.
class VELDRIN_API CommandRegistry {
public:
    explicit CommandRegistry(Host& host);
    ~CommandRegistry();
    CommandRegistry(const CommandRegistry&) = delete;
    CommandRegistry& operator=(const CommandRegistry&) = delete;

    void define(std::span<const CommandRow> rows);
    // Upper-case names without aliases, c: functions included; for completion.
    std::vector<std::string> names() const;
    // Whether a text that was typed at the prompt begins with a command's name; prefixes and aliases count.
    bool isCommand(std::string_view typed) const;

    // What (command ...) does: the tokens are answers to the command that waits, else the first one names a
    // command, and so on. Empty answers behind a finished command are swallowed. Lisp errors of a c: function
    // pass through. False when a name was unknown (told on the command line; the tokens behind it are
    // dropped) or a command was cancelled or failed.
    bool feed(std::vector<InputToken> tokens);
    // A line typed at the prompt: a command's name and, behind blanks, its first answers. Further ones are
    // asked from the user. Gives false like `feed`.
    bool runTyped(std::string_view line);
    bool isWaiting() const;
    void cancelAll(); // what waits, innermost first

    EditorInput& input();
    // Asks for objects by the select-objects prompt, on the spot: the queue first, then the user; `single`
    // ends with the first. Throws InputCancelled.
    std::vector<AcDbObjectId> selectNow(bool single);

    SelectionSets& selectionSets();

private:
    struct Impl;
    struct SessionLevel;
    std::unique_ptr<Impl> m_impl;
};

} // namespace veldrin
