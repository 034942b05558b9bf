#include "cli/input.h"

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <unistd.h>

#ifdef VELDRIN_EDITLINE
#include <editline/readline.h>
#endif

namespace {

// As std::getline, without losing what an interrupted read had.
std::optional<std::string> readPlainLine() {
    std::string line;
    for (;;) {
        const int c = std::getc(stdin);
        if (c == '\n') break;
        if (c != EOF) {
            line += static_cast<char>(c);
            continue;
        }
        if (std::ferror(stdin) && errno == EINTR) {
            std::clearerr(stdin);
            continue;
        }
        if (line.empty()) return std::nullopt;
        break;
    }
    if (!line.empty() && line.back() == '\r') line.pop_back();
    return line;
}

} // namespace

bool isTypedByHand() {
    return isatty(STDIN_FILENO) != 0 && isatty(STDOUT_FILENO) != 0;
}

std::optional<std::string> readTypedLine(const std::string& prompt) {
#ifdef VELDRIN_EDITLINE
    if (isTypedByHand()) {
        char* typed = readline(prompt.c_str());
        if (!typed) return std::nullopt;
        std::string line(typed);
        std::free(typed);
        if (!line.empty()) add_history(line.c_str());
        return line;
    }
#endif
    std::fwrite(prompt.data(), 1, prompt.size(), stdout);
    std::fflush(stdout);
    std::optional<std::string> line = readPlainLine();
    // A terminal shows what is typed; what comes through a pipe is written behind its prompt.
    if (line && !isatty(STDIN_FILENO)) std::fprintf(stdout, "%s\n", line->c_str());
    return line;
}
