#pragma once

#include "platform/editor/HostTest.h"
#include "scripting/Scripting.h"

#include <deque>
#include <optional>

// A host with all functions of Lisp, an open drawing, and a user who types lines.
class ScriptingTest : public HostTest {
protected:
    ScriptingTest() {
        veldrin::scripting::install(*host);
        host->commandLine().setLineSource([this](const std::string& prompt) -> std::optional<std::string> {
            prompts.push_back(prompt);
            if (typed.empty()) return std::nullopt;
            const std::string line = typed.front();
            typed.pop_front();
            return line;
        });
        documents().newDocument();
        lisp("(setvar \"CMDECHO\" 0)");
    }

    // What the form gives when the user types these lines.
    std::string answer(std::deque<std::string> lines, const std::string& form) {
        typed = std::move(lines);
        const std::string result = lisp(form);
        return typed.empty() ? result : result + " (" + std::to_string(typed.size()) + " lines left)";
    }

    std::deque<std::string> typed;
    std::vector<std::string> prompts;
};
