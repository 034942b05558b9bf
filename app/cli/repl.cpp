#include "cli/Session.h"
#include "cli/Subcommands.h"
#include "cli/input.h"
#include "drawing/AcDbDatabase.h"
#include "drawing/UndoLog.h"
#include "editor/Activity.h"
#include "editor/CommandLine.h"
#include "editor/CommandRegistry.h"
#include "editor/EditorEvents.h"
#include "lisp/Printer.h"
#include "lisp/Reader.h"
#include "system/AsciiCase.h"

#include <algorithm>
#include <memory>
#include <optional>

namespace lisp = veldrin::lisp;

namespace {

constexpr const char* kPrompt = "Command: ";
constexpr const char* kContinuation = "_> ";

// The prompt: forms are evaluated and their values shown, anything else is a command.
class Prompt {
public:
    explicit Prompt(Session& session) : m_session(session), m_host(session.host()) {
        setCompleter(
            [this](const std::string& word, const std::string& before) { return candidates(word, before); });
    }
    ~Prompt() { setCompleter({}); }
    Prompt(const Prompt&) = delete;
    Prompt& operator=(const Prompt&) = delete;

    int run() {
        veldrin::CommandLine& line = m_host.commandLine();
        while (std::optional<std::string> typed = line.readLine(kPrompt)) {
            const std::string text = trimmed(*typed);
            if (text.empty() && !isTypedByHand()) continue;
            if (const std::optional<int> status = take(text)) return *status;
        }
        if (isTypedByHand()) line.print("\n");
        return m_unfinished ? kFailed : kDone;
    }

private:
    static std::string trimmed(const std::string& text) {
        const std::size_t first = text.find_first_not_of(" \t\r");
        if (first == std::string::npos) return {};
        return text.substr(first, text.find_last_not_of(" \t\r") - first + 1);
    }

    // In a form the names that have a value, at the line's beginning those of commands; in the case of what
    // was typed.
    std::vector<std::string> candidates(const std::string& word, const std::string& before) const {
        const bool isForm = before.find_first_of("(!'") != std::string::npos;
        std::vector<std::string> found;
        if (isForm) {
            for (const lisp::Symbol* symbol : m_host.lisp().symbolsWithPrefix(word))
                if (!m_host.lisp().get(symbol->name).isNil()) found.push_back(symbol->name);
        } else if (trimmed(before).empty()) {
            found = m_host.commands().names();
        }
        const std::string upper = veldrin::asciiUpperCase(word);
        std::erase_if(found, [&](const std::string& name) { return !name.starts_with(upper); });
        if (upper != word)
            for (std::string& name : found) name = veldrin::asciiLowerCase(name);
        std::sort(found.begin(), found.end());
        return found;
    }

    // The exit status when the line ends the program.
    std::optional<int> take(const std::string& text) {
        if (text.empty()) return m_lastCommand.empty() ? std::nullopt : command(m_lastCommand);
        if (text.front() == '!') return form(text.substr(1));
        if (text.front() == '(' || text.front() == '\'') return form(text);
        m_lastCommand = text.substr(0, text.find(' '));
        return command(text);
    }

    std::optional<int> form(std::string text) {
        while (!lisp::isComplete(text)) {
            const std::optional<std::string> more = m_host.commandLine().readLine(kContinuation);
            if (!more) {
                m_session.tell("the input ends inside of a list: " + text.substr(0, text.find('\n')));
                m_unfinished = true;
                return std::nullopt;
            }
            text += '\n' + *more;
        }
        const veldrin::UndoStep step("LISP");
        m_host.editorEvents().tell(&AcEditorReactor::lispWillStart, text.c_str());
        const lisp::Outcome outcome = m_host.lisp().runText(text);
        m_host.editorEvents().tell(outcome ? &AcEditorReactor::lispEnded : &AcEditorReactor::lispCancelled);
        if (outcome)
            show(outcome.value);
        else
            endOpenGroup();
        return ending(outcome);
    }

    // A group that a script began and could not end would swallow all that follows.
    static void endOpenGroup() {
        if (AcDbDatabase* database = acdbHostApplicationServices()->workingDatabase())
            database->undoLog().endGroup();
    }

    std::optional<int> command(const std::string& text) {
        return ending(m_host.lisp().run([&] {
            m_host.commands().runTyped(text);
            return lisp::Value();
        }));
    }

    void show(const lisp::Value& value) {
        veldrin::CommandLine& line = m_host.commandLine();
        line.freshLine();
        const std::string text = lisp::prin1Text(value);
        if (!text.empty()) line.print(text + "\n");
    }

    std::optional<int> ending(const lisp::Outcome& outcome) {
        const int status = m_session.statusOf(outcome);
        if (outcome.status == lisp::Outcome::Status::Quit) return status;
        return std::nullopt;
    }

    Session& m_session;
    veldrin::Host& m_host;
    std::string m_lastCommand;
    bool m_unfinished = false;
};

int repl(bool bare, const std::string& drawing) {
    Session session;
    if (!session.start({bare, drawing, {}})) return session.finish(kFailed);
    return session.finish(Prompt(session).run());
}

} // namespace

Subcommand addRepl(CLI::App& program) {
    struct Options {
        bool bare = false;
        std::string drawing;
    };
    auto options = std::make_shared<Options>();
    CLI::App* app = program.add_subcommand("repl", "Asks for Lisp forms and commands");
    app->add_flag("--bare", options->bare, "loads neither the module nor the Lisp layer");
    app->add_option("--drawing", options->drawing, "opens, or makes, this drawing first")->type_name("FILE");
    return {app, [=] { return repl(options->bare, options->drawing); }};
}
