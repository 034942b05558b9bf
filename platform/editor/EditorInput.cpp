#include "editor/EditorInput.h"

#include "editor/CommandLine.h"
#include "editor/SystemVariables.h"
#include "runtime/Host.h"

#include <fmt/format.h>

namespace veldrin {

InputToken InputToken::ofText(std::string text) {
    InputToken token;
    token.text = std::move(text);
    return token;
}

InputToken InputToken::ofPause() {
    InputToken token;
    token.kind = Kind::Pause;
    return token;
}

std::string InputToken::echo() const {
    switch (kind) {
    case Kind::Text: return text;
    case Kind::Number:
        return isInteger ? fmt::format("{}", static_cast<long>(number)) : fmt::format("{:g}", number);
    case Kind::Point: return fmt::format("{:g},{:g},{:g}", point.x, point.y, point.z);
    case Kind::Entity: return "<entity>";
    case Kind::Selection: return "<selection>";
    case Kind::Pause: break;
    }
    return {};
}

namespace {

void complain(const std::string& text) {
    if (text.empty()) return;
    CommandLine& line = Host::current().commandLine();
    line.freshLine();
    line.print(text + "\n");
}

void echo(const Question& question, const InputToken& token) {
    Host& host = Host::current();
    if (host.variables().integer("CMDECHO") == 0) return;
    host.commandLine().freshLine();
    host.commandLine().print(fmt::format("{} {}\n", question.prompt, token.echo()));
}

} // namespace

EditorInput::EditorInput(LineReader reader) : m_reader(std::move(reader)) {}

bool EditorInput::nextToken(const Question& question, bool mayAskUser, InputToken& token) {
    std::deque<InputToken>& queue = m_session->tokens;
    const bool paused = !queue.empty() && queue.front().kind == InputToken::Kind::Pause;
    if (!queue.empty() && !paused) {
        token = std::move(queue.front());
        queue.pop_front();
        echo(question, token);
        return true;
    }
    if (!paused && !mayAskUser) return false;
    std::optional<std::string> line = m_reader ? m_reader(std::string(question.prompt) + " ") : std::nullopt;
    if (!line) {
        if (paused) queue.pop_front();
        throw InputCancelled();
    }
    token = InputToken::ofText(std::move(*line));
    return true;
}

bool EditorInput::accept(Question& question, const InputToken& token, Answer& answer) {
    std::string complaint;
    Answer given;
    switch (interpretInput(question, token, given, complaint)) {
    case InputMeaning::Accepted: answer = std::move(given); return true;
    case InputMeaning::FirstPoint:
        answer.firstPoint = given.point;
        question.base = &answer.firstPoint;
        question.prompt = "Specify second point:";
        return false;
    case InputMeaning::Refused: break;
    }
    complain(complaint);
    return false;
}

Answer EditorInput::askNow(const Question& asked) {
    Question question = asked;
    Answer answer;
    InputToken token;
    for (;;) {
        std::deque<InputToken>& queue = m_session->tokens;
        const bool paused = !queue.empty() && queue.front().kind == InputToken::Kind::Pause;
        nextToken(question, true, token);
        if (!accept(question, token, answer)) continue;
        if (paused) queue.pop_front();
        return answer;
    }
}

int EditorInput::nextKey() {
    constexpr int kEnter = 13;
    if (m_keys.empty()) {
        const std::optional<std::string> line = m_reader ? m_reader("") : std::nullopt;
        if (!line) throw InputCancelled();
        for (const char c : *line) m_keys.push_back(static_cast<unsigned char>(c));
        m_keys.push_back(kEnter);
    }
    const int key = m_keys.front();
    m_keys.pop_front();
    return key;
}

bool EditorInput::step() {
    Session& session = *m_session;
    if (session.waiting.empty()) return false;
    const Waiting waiting = session.waiting.back();
    InputToken token;
    const bool paused = !session.tokens.empty() && session.tokens.front().kind == InputToken::Kind::Pause;
    try {
        if (!nextToken(*waiting.question, session.asksUser, token)) return false;
    } catch (const InputCancelled&) {
        cancelWaiting();
        return true;
    }
    if (!accept(*waiting.question, token, *waiting.answer)) return true;
    if (paused) session.tokens.pop_front();
    session.waiting.pop_back();
    waiting.asking.resume();
    return true;
}

void EditorInput::cancelWaiting() {
    if (m_session->waiting.empty()) return;
    const Waiting waiting = m_session->waiting.back();
    m_session->waiting.pop_back();
    waiting.answer->isCancelled = true;
    waiting.asking.resume();
}

} // namespace veldrin
