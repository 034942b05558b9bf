#include "lisp/WildMatch.h"

#include "lisp/Characters.h"

#include <optional>
#include <string>

namespace veldrin::lisp {

namespace {

bool isDigit(char32_t c) {
    return c >= '0' && c <= '9';
}
bool isLetter(char32_t c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= 0xC0 && c != 0xD7 && c != 0xF7);
}

// Where the bracket that opens at `at` ends; none when it never closes, then it is a plain character.
std::optional<std::size_t> bracketEnd(std::string_view pattern, std::size_t at) {
    std::size_t i = at + 1;
    if (i < pattern.size() && pattern[i] == '~') ++i;
    for (bool first = true; i < pattern.size(); ++i, first = false) {
        if (pattern[i] == ']' && !first) return i;
        if (pattern[i] == '`') ++i;
    }
    return std::nullopt;
}

bool isInBracket(char32_t c, std::string_view inside) {
    std::size_t at = 0;
    const bool negated = !inside.empty() && inside[0] == '~';
    if (negated) ++at;
    const auto take = [&] {
        if (inside[at] == '`' && at + 1 < inside.size()) ++at;
        return nextCodePoint(inside, at);
    };
    bool found = false;
    while (at < inside.size()) {
        const char32_t first = take();
        char32_t last = first;
        if (at + 1 < inside.size() && inside[at] == '-') {
            ++at;
            last = take();
        }
        found = found || (c >= first && c <= last);
    }
    return found != negated;
}

// Whether the pattern's element at `at` takes the character; moves `at` behind the element.
bool takes(std::string_view pattern, std::size_t& at, char32_t c) {
    switch (pattern[at]) {
    case '#': ++at; return isDigit(c);
    case '@': ++at; return isLetter(c);
    case '.': ++at; return !isDigit(c) && !isLetter(c);
    case '?': ++at; return true;
    case '[':
        if (const auto end = bracketEnd(pattern, at)) {
            const auto inside = pattern.substr(at + 1, *end - at - 1);
            at = *end + 1;
            return isInBracket(c, inside);
        }
        break;
    case '`':
        if (at + 1 < pattern.size()) ++at;
        break;
    default: break;
    }
    return nextCodePoint(pattern, at) == c;
}

// When the rest fails, the last star takes one character more; earlier stars never need to.
bool matchesOne(std::string_view text, std::string_view pattern) {
    std::size_t t = 0, p = 0, starPattern = std::string_view::npos, starText = 0;
    for (;;) {
        if (p < pattern.size() && pattern[p] == '*') {
            starPattern = ++p;
            starText = t;
            continue;
        }
        if (t >= text.size() && p >= pattern.size()) return true;
        if (t < text.size() && p < pattern.size()) {
            std::size_t nextT = t, nextP = p;
            const char32_t c = nextCodePoint(text, nextT);
            if (takes(pattern, nextP, c)) {
                t = nextT;
                p = nextP;
                continue;
            }
        }
        if (starPattern == std::string_view::npos || starText >= text.size()) return false;
        nextCodePoint(text, starText);
        t = starText;
        p = starPattern;
    }
}

std::size_t alternativeEnd(std::string_view pattern, std::size_t at) {
    while (at < pattern.size() && pattern[at] != ',') {
        if (pattern[at] == '[')
            at = bracketEnd(pattern, at).value_or(at);
        else if (pattern[at] == '`')
            ++at;
        ++at;
    }
    return at < pattern.size() ? at : pattern.size();
}

} // namespace

bool wildMatch(std::string_view text, std::string_view pattern) {
    for (std::size_t at = 0; at <= pattern.size();) {
        const std::size_t end = alternativeEnd(pattern, at);
        auto one = pattern.substr(at, end - at);
        const bool negated = one.starts_with('~');
        if (negated) one.remove_prefix(1);
        if (matchesOne(text, one) != negated) return true;
        at = end + 1;
    }
    return false;
}

} // namespace veldrin::lisp
