#include "editor/CommandLine.h"

#include <algorithm>
#include <utility>

namespace veldrin {

namespace {

constexpr std::size_t kLongestKeptLine = 4096;

int countCharacters(std::string_view text) {
    return static_cast<int>(std::count_if(
        text.begin(), text.end(), [](char c) { return (static_cast<unsigned char>(c) & 0xC0) != 0x80; }));
}

} // namespace

void CommandLine::setSink(Sink sink, std::function<void()> flush) {
    m_sink = std::move(sink);
    m_flush = std::move(flush);
}

void CommandLine::print(std::string_view text) {
    if (text.empty()) return;
    follow(text);
    if (m_capture)
        m_capture->m_text.append(text);
    else if (m_sink)
        m_sink(text);
}

void CommandLine::follow(std::string_view text) {
    if (m_column == 0) m_lastLine.clear();
    // A carriage return starts the line anew, as progress texts use it.
    const std::size_t end = text.find_last_of("\n\r");
    if (end == std::string_view::npos) {
        m_column += countCharacters(text);
        if (m_lastLine.size() < kLongestKeptLine) m_lastLine.append(text);
        return;
    }
    const std::string_view open = text.substr(end + 1);
    m_column = countCharacters(open);
    if (!open.empty()) {
        m_lastLine = open.substr(0, kLongestKeptLine);
        return;
    }
    // The text ends with its line: that line is the last one, and the next text starts another.
    const std::string_view before = text.substr(0, end);
    const std::size_t start = before.find_last_of("\n\r");
    if (start == std::string_view::npos)
        m_lastLine.append(before);
    else
        m_lastLine = before.substr(start + 1);
}

void CommandLine::freshLine() {
    if (m_column > 0) print("\n");
}

void CommandLine::flush() {
    if (m_flush) m_flush();
}

std::optional<std::string> CommandLine::readLine(const std::string& prompt) {
    if (!m_source) return std::nullopt;
    if (!prompt.empty()) freshLine();
    if (m_capture) print(prompt); // then the source shows none
    flush();
    std::optional<std::string> typed = m_source(m_capture ? std::string() : prompt);
    if (m_capture) print("\n");
    m_column = 0;
    m_lastLine = prompt + typed.value_or(std::string());
    return typed;
}

CommandLine::Capture::Capture(CommandLine& line)
    : m_line(line)
    , m_outer(line.m_capture)
    , m_outerColumn(std::exchange(line.m_column, 0))
    , m_outerLastLine(std::exchange(line.m_lastLine, {})) {
    line.m_capture = this;
}

CommandLine::Capture::~Capture() {
    m_line.m_capture = m_outer;
    m_line.m_column = m_outerColumn;
    m_line.m_lastLine = std::move(m_outerLastLine);
}

} // namespace veldrin
