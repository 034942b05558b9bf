#pragma once

#include "runtime/VeldrinApi.h"

#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace veldrin {

// The command line: everything that is printed passes here, and what the user types comes from here. Text
// goes to the sink as it is, nothing is added; without a sink it goes nowhere. While something captures, the
// sink sees nothing.
class VELDRIN_API CommandLine {
public:
    using Sink = std::function<void(std::string_view)>;
    using LineSource = std::function<std::optional<std::string>(const std::string& prompt)>;

    // `flush` is called when a person or another program should see at once what was printed.
    void setSink(Sink sink, std::function<void()> flush = {});
    // Where typed lines come from: asked with the prompt, which the source shows. Nothing at the end of
    // input.
    void setLineSource(LineSource source) { m_source = std::move(source); }
    bool hasLineSource() const { return static_cast<bool>(m_source); }

    void print(std::string_view text);
    // Ends the line that is begun, if any, so that what follows starts on a line of its own.
    void freshLine();
    void flush();
    // Code points on the line that is begun.
    int column() const { return m_column; }
    // The last line that was printed, complete or not: LASTPROMPT.
    const std::string& lastLine() const { return m_lastLine; }

    // Shows the prompt on a fresh line and gives what is typed; nothing at the end of input or without a
    // source.
    std::optional<std::string> readLine(const std::string& prompt = {});

    // Arguments of the script that runs.
    void setArguments(std::vector<std::string> arguments) { m_arguments = std::move(arguments); }
    const std::vector<std::string>& arguments() const { return m_arguments; }

    // Collects what is printed during its life. Captures nest: the innermost gets the text, alone.
    class VELDRIN_API Capture {
    public:
        [[nodiscard]] explicit Capture(CommandLine& line);
        ~Capture();
        Capture(const Capture&) = delete;
        Capture& operator=(const Capture&) = delete;
        const std::string& text() const { return m_text; }

    private:
        friend class CommandLine;
        CommandLine& m_line;
        Capture* m_outer;
        std::string m_text;
        int m_outerColumn;
        std::string m_outerLastLine;
    };

private:
    void follow(std::string_view text);

    Sink m_sink;
    std::function<void()> m_flush;
    LineSource m_source;
    Capture* m_capture = nullptr;
    int m_column = 0;
    std::string m_lastLine;
    std::vector<std::string> m_arguments;
};

} // namespace veldrin
