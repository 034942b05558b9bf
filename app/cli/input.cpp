#include "cli/input.h"

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <unistd.h>

#ifdef VELDRIN_EDITLINE
#include <editline/readline.h>
#endif

namespace {

// The line editor calls back through plain functions, so what it completes with stands here.
Completer& completer() {
    static Completer installed;
    return installed;
}

#ifdef VELDRIN_EDITLINE
constexpr const char* kWordBreaks = " \t\n()'\"`;";

// One candidate a call, from the first call's list; the editor frees them.
char* nextCandidate(const char* word, int state) {
    static std::vector<std::string> candidates;
    static std::size_t next = 0;
    if (state == 0) {
        next = 0;
        const std::string before(rl_line_buffer, static_cast<std::size_t>(rl_point) - std::strlen(word));
        candidates = completer() ? completer()(word, before) : std::vector<std::string>();
    }
    return next < candidates.size() ? strdup(candidates[next++].c_str()) : nullptr;
}

char** complete(const char* word, int, int) {
    rl_attempted_completion_over = 1; // no names of files where there are no names of functions
    return rl_completion_matches(word, nextCandidate);
}

void prepareEditor() {
    static const bool isPrepared = [] {
        rl_attempted_completion_function = complete;
        rl_completer_word_break_characters = const_cast<char*>(kWordBreaks);
        return true;
    }();
    static_cast<void>(isPrepared);
}
#endif

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
        prepareEditor();
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

void setCompleter(Completer given) {
    completer() = std::move(given);
}
