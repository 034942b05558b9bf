#include "lisp/Reader.h"

#include "lisp/Characters.h"
#include "lisp/Engine.h"
#include "lisp/Heap.h"

#include <charconv>
#include <cstdlib>
#include <vector>

namespace veldrin::lisp {

namespace {

bool isBlank(char c) {
    return static_cast<unsigned char>(c) <= ' ';
}
bool isDigit(char c) {
    return c >= '0' && c <= '9';
}
bool endsToken(char c) {
    return isBlank(c) || c == '(' || c == ')' || c == '\'' || c == '"' || c == ';';
}

std::size_t skipDigits(std::string_view s, std::size_t at) {
    while (at < s.size() && isDigit(s[at])) ++at;
    return at;
}

} // namespace

std::size_t numberPrefix(std::string_view s, bool& isReal) {
    isReal = false;
    const std::size_t start = !s.empty() && (s[0] == '+' || s[0] == '-') ? 1 : 0;
    std::size_t at = skipDigits(s, start);
    std::size_t digits = at - start;
    if (at < s.size() && s[at] == '.') {
        const std::size_t end = skipDigits(s, at + 1);
        digits += end - at - 1;
        if (digits == 0) return 0;
        isReal = true;
        at = end;
    }
    if (digits == 0) return 0;
    if (at < s.size() && (s[at] == 'e' || s[at] == 'E')) {
        std::size_t from = at + 1;
        if (from < s.size() && (s[from] == '+' || s[from] == '-')) ++from;
        if (const std::size_t end = skipDigits(s, from); end > from) {
            isReal = true;
            at = end;
        }
    }
    return at;
}

Value numberOfPrefix(std::string_view digits, bool isReal) {
    if (!isReal) {
        const auto* first = digits.data() + (digits[0] == '+' ? 1 : 0);
        std::int32_t whole = 0;
        const auto [end, problem] = std::from_chars(first, digits.data() + digits.size(), whole);
        if (problem == std::errc()) return Value::integer(whole);
    }
    return Value::real(std::strtod(std::string(digits).c_str(), nullptr));
}

struct Reader::OpenList {
    ListBuilder items;
    Value tail;
    int line = 0;
    bool isQuote = false;                       // 'x: closes by itself behind its one item
    enum { Items, Dot, Closing } state = Items; // Dot: the tail comes; Closing: the tail has come
};

Reader::Reader(Engine& engine, std::string_view text, std::string_view fileName)
    : engine_(engine), text_(text), file_(fileName) {
    if (text_.starts_with("\xEF\xBB\xBF")) at_ = 3;
}

Error Reader::failure(const char* message, int line) const {
    Error error(message);
    error.file = file_;
    error.line = line;
    return error;
}

void Reader::skipBlank() {
    while (at_ < text_.size()) {
        const char c = text_[at_];
        if (c == '\n') ++line_;
        if (isBlank(c)) {
            ++at_;
        } else if (text_.substr(at_, 2) == ";|") {
            const int began = line_;
            const std::size_t end = text_.find("|;", at_ + 2);
            if (end == std::string_view::npos) throw failure("malformed comment on input", began);
            for (; at_ < end + 2; ++at_)
                if (text_[at_] == '\n') ++line_;
        } else if (c == ';') {
            at_ = std::min(text_.find('\n', at_), text_.size());
        } else {
            return;
        }
    }
}

bool Reader::next(Value& form) {
    std::vector<OpenList> open;
    for (;;) {
        skipBlank();
        if (at_ >= text_.size()) {
            if (open.empty()) return false;
            throw failure("malformed list on input", open.back().line);
        }
        Value item;
        const char c = text_[at_];
        if (c == '(' || c == '\'') {
            ++at_;
            auto& list = open.emplace_back();
            list.line = line_;
            list.isQuote = c == '\'';
            if (list.isQuote) list.items.add(Value::symbol(&engine_.intern("QUOTE")));
            continue;
        }
        if (c == ')') {
            if (open.empty()) throw failure("extra right paren on input", line_);
            auto& list = open.back();
            if (list.isQuote) throw failure("syntax error: quote without a form", line_);
            if (list.state == OpenList::Dot) throw failure("misplaced dot on input", line_);
            ++at_;
            item = closeList(list);
            open.pop_back();
        } else if (c == '"') {
            item = readText();
        } else {
            const std::size_t start = at_;
            while (at_ < text_.size() && !endsToken(text_[at_])) ++at_;
            const auto token = text_.substr(start, at_ - start);
            if (token == ".") {
                if (open.empty() || open.back().isQuote || open.back().items.isEmpty() ||
                    open.back().state != OpenList::Items)
                    throw failure("misplaced dot on input", line_);
                open.back().state = OpenList::Dot;
                continue;
            }
            item = atomOf(token);
        }
        // Give the finished item to the list around it; a quote is finished by that and goes on outwards.
        for (;;) {
            if (open.empty()) {
                form = std::move(item);
                return true;
            }
            auto& list = open.back();
            if (list.state == OpenList::Closing) throw failure("misplaced dot on input", line_);
            if (list.state == OpenList::Dot) {
                list.tail = std::move(item);
                list.state = OpenList::Closing;
                break;
            }
            list.items.add(std::move(item));
            if (!list.isQuote) break;
            item = closeList(list);
            open.pop_back();
        }
    }
}

Value Reader::closeList(OpenList& list) {
    Value result = list.items.finish(std::move(list.tail));
    if (result.isCons()) result.cell<Cons>()->info = static_cast<std::uint32_t>(list.line);
    return result;
}

Value Reader::atomOf(std::string_view token) {
    bool isReal = false;
    if (numberPrefix(token, isReal) == token.size()) return numberOfPrefix(token, isReal);
    if (token.size() == 3 && (token[0] | 32) == 'n' && (token[1] | 32) == 'i' && (token[2] | 32) == 'l')
        return {};
    return Value::symbol(&engine_.intern(token));
}

Value Reader::readText() {
    const int began = line_;
    std::string text;
    for (++at_; at_ < text_.size(); ++at_) {
        const char c = text_[at_];
        if (c == '"') {
            ++at_;
            return Value::text(text);
        }
        if (c == '\n') ++line_;
        if (c != '\\') {
            if (c) text += c; // a text cannot hold the character 0, however it is written
        } else if (at_ + 1 < text_.size()) {
            ++at_;
            readEscape(text);
        }
    }
    throw failure("malformed string on input", began);
}

// At the character behind the backslash; stays on the last one that belongs to it.
void Reader::readEscape(std::string& into) {
    const char c = text_[at_];
    const auto digits = [this](std::size_t from, std::size_t most, int base) {
        std::size_t end = from;
        unsigned code = 0;
        while (end < text_.size() && end - from < most) {
            unsigned digit = 0;
            const auto [next, problem] = std::from_chars(&text_[end], &text_[end] + 1, digit, base);
            if (problem != std::errc()) break;
            code = code * static_cast<unsigned>(base) + digit;
            ++end;
        }
        return std::pair(code, end);
    };
    switch (c) {
    case 'n': into += '\n'; return;
    case 'r': into += '\r'; return;
    case 't': into += '\t'; return;
    case 'e': into += '\x1b'; return;
    case 'U':
        if (const auto [code, end] = digits(at_ + 2, 4, 16);
            text_.substr(at_ + 1, 1) == "+" && end == at_ + 6) {
            if (code) appendCodePoint(into, code);
            at_ = end - 1;
            return;
        }
        break;
    default: break;
    }
    if (c >= '0' && c <= '7') {
        const auto [code, end] = digits(at_, 3, 8);
        if (code) appendCodePoint(into, code);
        at_ = end - 1;
        return;
    }
    if (c == '\n') ++line_;
    if (c) into += c;
}

bool isComplete(std::string_view text) {
    int depth = 0;
    for (std::size_t at = 0; at < text.size(); ++at) {
        const char c = text[at];
        if (c == '"') {
            for (++at; at < text.size() && text[at] != '"'; ++at)
                if (text[at] == '\\') ++at;
            if (at >= text.size()) return false;
        } else if (text.substr(at, 2) == ";|") {
            at = text.find("|;", at + 2);
            if (at == std::string_view::npos) return false;
            ++at;
        } else if (c == ';') {
            at = text.find('\n', at);
            if (at == std::string_view::npos) break;
        } else if (c == '(') {
            ++depth;
        } else if (c == ')') {
            --depth;
        }
    }
    return depth <= 0;
}

} // namespace veldrin::lisp
