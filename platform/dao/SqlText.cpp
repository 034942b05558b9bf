#include "dao/SqlText.h"

#include <algorithm>
#include <cctype>

namespace veldrin::dao {

namespace {

char lower(char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

bool isWordStart(char c) {
    return std::isalpha(static_cast<unsigned char>(c)) || c == '_' || (c & 0x80);
}
bool isWordPart(char c) {
    return isWordStart(c) || (c >= '0' && c <= '9') || c == '$';
}
bool isBlank(char c) {
    return c == ' ' || c == '\t' || c == '\n' || c == '\r' || c == '\f' || c == '\v';
}

enum class Kind { kText, kName, kWord, kComment, kOther, kEnd };

struct Token {
    Kind kind = Kind::kEnd;
    std::string_view raw;
    char quote = 0; // of texts
};

// Cuts a statement into pieces. A quote that is never closed reaches to the end, where the engine complains.
class Pieces {
public:
    explicit Pieces(std::string_view sql) : m_rest(sql) {}

    Token next() {
        if (m_rest.empty()) return {};
        const char c = m_rest.front();
        if (c == '\'' || c == '"') return take(Kind::kText, closing(c), c);
        if (c == '[') return take(Kind::kName, closing(']'));
        if (c == '`') return take(Kind::kName, closing('`'));
        if (m_rest.starts_with("--")) return take(Kind::kComment, m_rest.find('\n'));
        if (m_rest.starts_with("/*")) return take(Kind::kComment, endOfBlock());
        if (isWordStart(c)) return take(Kind::kWord, lengthOf(isWordPart));
        if (isWordPart(c)) return take(Kind::kOther, lengthOf(isWordPart)); // a number, 1e5 whole
        if (isBlank(c)) return take(Kind::kOther, lengthOf(isBlank));
        return take(Kind::kOther, 1);
    }

private:
    Token take(Kind kind, std::size_t length, char quote = 0) {
        const std::string_view raw = m_rest.substr(0, length);
        m_rest.remove_prefix(raw.size());
        return {kind, raw, quote};
    }
    template<class Test>
    std::size_t lengthOf(Test test) const {
        std::size_t n = 0;
        while (n < m_rest.size() && test(m_rest[n])) ++n;
        return n;
    }
    std::size_t closing(char quote) const {
        for (std::size_t at = 1; at < m_rest.size(); ++at) {
            if (m_rest[at] != quote) continue;
            const bool doubled = at + 1 < m_rest.size() && m_rest[at + 1] == quote && quote != ']';
            if (!doubled) return at + 1;
            ++at;
        }
        return std::string_view::npos;
    }
    std::size_t endOfBlock() const {
        const std::size_t end = m_rest.find("*/", 2);
        return end == std::string_view::npos ? end : end + 2;
    }

    std::string_view m_rest;
};

// What stands between the quotes, as a literal in single ones.
CString asTextLiteral(const Token& token) {
    if (token.quote == '\'') return CString(token.raw);
    std::string_view inside = token.raw.substr(1);
    const bool isClosed = !inside.empty() && inside.back() == '"';
    if (isClosed) inside.remove_suffix(1);
    CString text;
    for (std::size_t i = 0; i < inside.size(); ++i) {
        if (inside[i] == '"') ++i; // doubled, or it would have ended the text
        text += inside[i];
    }
    CString literal = quoted(text);
    if (!isClosed) literal.pop_back();
    return literal;
}

std::string_view bareName(std::string_view raw) {
    if (raw.size() >= 2 && (raw.front() == '[' || raw.front() == '`')) return raw.substr(1, raw.size() - 2);
    return raw;
}

// "PARAMETERS name type, name type;" in front of a query. What remains is the query.
std::vector<CString> takeParameters(std::string_view& sql) {
    std::string_view rest = sql;
    while (!rest.empty() && isBlank(rest.front())) rest.remove_prefix(1);
    Pieces pieces(rest);
    Token token = pieces.next();
    if (token.kind != Kind::kWord || !equalNames(token.raw, "PARAMETERS")) return {};
    std::vector<CString> names;
    bool wantsName = true;
    for (token = pieces.next(); token.kind != Kind::kEnd; token = pieces.next()) {
        if (token.raw == ";") {
            sql = rest.substr(static_cast<std::size_t>(token.raw.data() + 1 - rest.data()));
            return names;
        }
        if (token.raw == ",") wantsName = true;
        if (wantsName && (token.kind == Kind::kWord || token.kind == Kind::kName)) {
            names.emplace_back(bareName(token.raw));
            wantsName = false;
        }
    }
    return {}; // no end: the engine refuses the word
}

} // namespace

bool equalNames(std::string_view a, std::string_view b) {
    return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                      [](char x, char y) { return lower(x) == lower(y); });
}

CString quoted(std::string_view text) {
    CString literal = "'";
    for (const char c : text) {
        if (c == '\'') literal += c;
        literal += c;
    }
    return literal + "'";
}

CString bracketed(std::string_view name) {
    CString text = "[";
    for (const char c : name)
        if (c != '[' && c != ']') text += c;
    return text + "]";
}

SqlText translateSql(std::string_view sql) {
    SqlText result;
    result.parameters = takeParameters(sql);
    CString& out = result.engine;
    out.reserve(sql.size());
    Pieces pieces(sql);
    std::string_view before;
    for (Token token = pieces.next(); token.kind != Kind::kEnd; before = token.raw, token = pieces.next()) {
        if (token.kind == Kind::kText) {
            out += asTextLiteral(token);
            continue;
        }
        const bool isName = token.kind == Kind::kWord || token.kind == Kind::kName;
        if (isName && before != ".") {
            const auto parameter =
                std::find_if(result.parameters.begin(), result.parameters.end(),
                             [&](const CString& name) { return equalNames(name, bareName(token.raw)); });
            if (parameter != result.parameters.end()) {
                out += "?" + std::to_string(parameter - result.parameters.begin() + 1);
                continue;
            }
        }
        if (token.kind == Kind::kWord && before != "." && equalNames(token.raw, "true"))
            out += "-1";
        else
            out += token.raw;
    }
    return result;
}

} // namespace veldrin::dao
