#include "editor/CommandRegistry.h"

#include "drawing/AcDbDatabase.h"
#include "editor/Activity.h"
#include "editor/CommandLine.h"
#include "editor/CommandRun.h"
#include "editor/SystemVariables.h"
#include "editor/command_support.h"
#include "editor/command_tables.h"
#include "lisp/Engine.h"
#include "lisp/Error.h"
#include "runtime/CException.h"
#include "runtime/Host.h"
#include "system/AsciiCase.h"

#include <algorithm>
#include <cctype>
#include <fmt/format.h>
#include <set>

namespace veldrin {

namespace {

// Upper case, without the prefixes that ask for the plain, the international or the undialogued command.
std::string plainName(std::string_view typed) {
    while (!typed.empty() && std::string_view("_.-'").find(typed.front()) != std::string_view::npos)
        typed.remove_prefix(1);
    return asciiUpperCase(typed);
}

std::vector<InputToken> wordsOf(std::string_view line) {
    std::vector<InputToken> tokens;
    for (std::size_t at = 0; at < line.size();) {
        if (std::isspace(static_cast<unsigned char>(line[at]))) {
            ++at;
            continue;
        }
        std::size_t end = at;
        while (end < line.size() && !std::isspace(static_cast<unsigned char>(line[end]))) ++end;
        tokens.push_back(InputToken::ofText(std::string(line.substr(at, end - at))));
        at = end;
    }
    return tokens;
}

bool isEmptyAnswer(const InputToken& token) {
    return token.kind == InputToken::Kind::Pause ||
           (token.kind == InputToken::Kind::Text && token.text.empty());
}

// The answers of one (command ...) or of a Lisp command inside it, and the commands that wait for them.
struct CommandSession {
    EditorInput::Session input;
    std::vector<std::unique_ptr<CommandRun>> running; // innermost last
};

} // namespace

struct CommandRegistry::Impl {
    explicit Impl(Host& h)
        : host(h), input([&h](const std::string& prompt) { return h.commandLine().readLine(prompt); }) {
        sessions.push_back(std::make_unique<CommandSession>());
        input.exchangeSession(&sessions.back()->input);
    }

    Host& host;
    EditorInput input;
    SelectionSets sets;
    std::map<std::string, CommandRow, std::less<>> rows;
    std::map<std::string, std::string, std::less<>> aliases;
    std::vector<std::unique_ptr<CommandSession>> sessions; // innermost last

    CommandSession& session() { return *sessions.back(); }
    const CommandRow* rowOf(const std::string& name) const;
    lisp::Value lispCommand(const std::string& name) const;

    bool pump(bool asksUser);
    bool start(const std::string& typed, bool& finishedWell);
    void startRow(const CommandRow& row, const std::string& name);
    void runLisp(const std::string& name, const lisp::Value& function);
    bool startTransparent();
    bool settle();
    void cancelSession();
    bool refuseUnknown(const InputToken& token);
};

const CommandRow* CommandRegistry::Impl::rowOf(const std::string& name) const {
    static constexpr CommandRow variableRow{"", "", setVariableCommand, kCommandTransparent};
    const auto alias = aliases.find(name);
    const auto row = rows.find(alias == aliases.end() ? name : alias->second);
    if (row != rows.end()) return &row->second;
    return host.variables().exists(name) ? &variableRow : nullptr;
}

lisp::Value CommandRegistry::Impl::lispCommand(const std::string& name) const {
    const lisp::Value value = host.lisp().get("C:" + name);
    return lisp::Engine::isCallable(value) && !value.isSymbol() ? value : lisp::Value();
}

// A session of its own for what reads on the spot, with the answers of the one around it; what it leaves goes
// on there.
struct CommandRegistry::SessionLevel {
    explicit SessionLevel(Impl& i) : impl(i) {
        impl.sessions.push_back(std::make_unique<CommandSession>());
        outer = impl.input.exchangeSession(&impl.session().input);
        std::swap(impl.session().input.tokens, outer->tokens);
    }
    SessionLevel(const SessionLevel&) = delete;
    SessionLevel& operator=(const SessionLevel&) = delete;
    ~SessionLevel() {
        std::swap(impl.session().input.tokens, outer->tokens);
        const std::unique_ptr<CommandSession> level = std::move(impl.sessions.back());
        impl.sessions.pop_back();
        impl.input.exchangeSession(outer);
        // A command that was left waiting goes on waiting outside.
        if (!impl.session().running.empty()) return;
        impl.session().running = std::move(level->running);
        impl.session().input.waiting = std::move(level->input.waiting);
    }

    Impl& impl;
    EditorInput::Session* outer;
};

void CommandRegistry::Impl::runLisp(const std::string& name, const lisp::Value& function) {
    const ActivityScope activity(ActivityStack::Kind::Command, name);
    const UndoStep step(name);
    const SessionLevel level(*this);
    if (!host.lisp().isRunning()) {
        host.lisp().runFunction(function, lisp::Args(nullptr, 0));
        return;
    }
    try {
        host.lisp().apply(function, lisp::Args(nullptr, 0));
    } catch (...) {
        session().input.tokens.clear(); // nobody reads on
        throw;
    }
}

void CommandRegistry::Impl::startRow(const CommandRow& row, const std::string& name) {
    AcDbDatabase* database = acdbHostApplicationServices()->workingDatabase();
    if (!database) throw CException("No drawing is open.");
    auto run = std::make_unique<CommandRun>(host, *database, input, row, *row.name ? row.name : name);
    CommandRun& running = *run;
    session().running.push_back(std::move(run));
    running.start();
}

// Finishes the innermost command if it is done. False when it did not end well.
bool CommandRegistry::Impl::settle() {
    if (session().running.empty() || !session().running.back()->isDone()) return true;
    const std::unique_ptr<CommandRun> done = std::move(session().running.back());
    session().running.pop_back();
    return done->finish();
}

bool CommandRegistry::Impl::refuseUnknown(const InputToken& token) {
    host.commandLine().freshLine();
    host.commandLine().print(fmt::format("Unknown command \"{}\".\n", plainName(token.echo())));
    session().input.tokens.clear();
    return false;
}

bool CommandRegistry::Impl::start(const std::string& typed, bool& finishedWell) {
    const std::string name = plainName(typed);
    const bool builtInOnly =
        typed.find('.') != std::string::npos && typed.find('.') < typed.find(name.front());
    if (!builtInOnly)
        if (const lisp::Value function = lispCommand(name)) {
            runLisp(name, function);
            return true;
        }
    const CommandRow* row = rowOf(name);
    if (!row) return false;
    startRow(*row, name);
    finishedWell = settle();
    return true;
}

bool CommandRegistry::Impl::startTransparent() {
    std::deque<InputToken>& tokens = session().input.tokens;
    if (tokens.empty() || tokens.front().kind != InputToken::Kind::Text) return false;
    const std::string& text = tokens.front().text;
    if (text.size() < 2 || text.find('\'') > 1) return false;
    const std::string name = plainName(text);
    const CommandRow* row = rowOf(name);
    if (!row || !(row->flags & kCommandTransparent)) return false;
    tokens.pop_front();
    startRow(*row, name);
    return true;
}

bool CommandRegistry::Impl::pump(bool asksUser) {
    bool well = true;
    session().input.asksUser = asksUser;
    for (;;) {
        CommandSession& now = session();
        if (!now.running.empty()) {
            if (!startTransparent() && !input.step()) return well;
            well = settle() && well;
            continue;
        }
        std::deque<InputToken>& tokens = now.input.tokens;
        while (!tokens.empty() && isEmptyAnswer(tokens.front())) tokens.pop_front();
        if (tokens.empty()) return well;
        const InputToken token = std::move(tokens.front());
        tokens.pop_front();
        bool finishedWell = true;
        if (token.kind != InputToken::Kind::Text || plainName(token.text).empty() ||
            !start(token.text, finishedWell))
            return refuseUnknown(token);
        well = well && finishedWell;
    }
}

void CommandRegistry::Impl::cancelSession() {
    session().input.tokens.clear();
    while (!session().running.empty()) {
        input.cancelWaiting();
        settle();
    }
}

CommandRegistry::CommandRegistry(Host& host) : m_impl(std::make_unique<Impl>(host)) {
    for (const auto rows : builtInCommands()) define(rows);
}

CommandRegistry::~CommandRegistry() = default;

void CommandRegistry::define(std::span<const CommandRow> rows) {
    for (const CommandRow& row : rows) {
        m_impl->rows.insert_or_assign(row.name, row);
        for (const InputToken& alias : wordsOf(row.aliases))
            m_impl->aliases.insert_or_assign(alias.text, row.name);
    }
}

std::vector<std::string> CommandRegistry::names() const {
    std::set<std::string> names;
    for (const auto& [name, row] : m_impl->rows) names.insert(name);
    for (const lisp::Symbol* symbol : m_impl->host.lisp().symbolsWithPrefix("C:"))
        if (m_impl->lispCommand(symbol->name.substr(2))) names.insert(symbol->name.substr(2));
    return {names.begin(), names.end()};
}

bool CommandRegistry::isCommand(std::string_view typed) const {
    const std::vector<InputToken> words = wordsOf(typed);
    if (words.empty()) return false;
    const std::string name = plainName(words.front().text);
    return !name.empty() && (m_impl->rowOf(name) || m_impl->lispCommand(name));
}

// What stands in the queue already is for the Lisp command that called, not for the command that it calls.
bool CommandRegistry::feed(std::vector<InputToken> tokens) {
    struct OwnQueue {
        std::deque<InputToken>& queue;
        std::deque<InputToken> before;
        explicit OwnQueue(std::deque<InputToken>& q) : queue(q), before(std::exchange(q, {})) {}
        ~OwnQueue() { queue = std::move(before); }
    };
    const OwnQueue own(m_impl->session().input.tokens);
    own.queue = {std::make_move_iterator(tokens.begin()), std::make_move_iterator(tokens.end())};
    return m_impl->pump(false);
}

bool CommandRegistry::runTyped(std::string_view line) {
    std::ranges::move(wordsOf(line), std::back_inserter(m_impl->session().input.tokens));
    return m_impl->pump(true);
}

bool CommandRegistry::isWaiting() const {
    return !m_impl->session().running.empty();
}

void CommandRegistry::cancelAll() {
    m_impl->cancelSession();
}

std::vector<AcDbObjectId> CommandRegistry::selectNow(bool single) {
    AcDbDatabase* database = acdbHostApplicationServices()->workingDatabase();
    if (!database) throw InputCancelled();
    static const std::string name = "SELECT";
    CommandContext context{m_impl->host, *database, m_impl->input, name};
    const SessionLevel level(*m_impl);
    m_impl->session().input.asksUser = true;
    const SelectFor purpose = SelectFor::Looking;
    const Task<std::vector<AcDbObjectId>> task =
        single ? selectSingle(context) : selectObjects(context, purpose);
    task.handle().resume();
    while (!task.isDone()) m_impl->input.step();
    return task.handle().promise().take();
}

EditorInput& CommandRegistry::input() {
    return m_impl->input;
}

SelectionSets& CommandRegistry::selectionSets() {
    return m_impl->sets;
}

} // namespace veldrin
