#include "dao/SqlText.h"

#include "system/AsciiCase.h"

#include <algorithm>
#include <array>
#include <cctype>

namespace veldrin::dao {

namespace {

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
    char quote = 0;       // of texts
    bool isClosed = true; // texts and names that reach to the end may lack their last quote
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
        return {kind, raw, quote, length != std::string_view::npos};
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

bool isSpace(const Token& token) {
    return token.kind == Kind::kComment || (token.kind == Kind::kOther && isBlank(token.raw.front()));
}

// What stands between the quotes, as a literal in single ones.
CString asTextLiteral(const Token& token) {
    if (token.quote == '\'') return CString(token.raw);
    std::string_view inside = token.raw.substr(1);
    if (token.isClosed) inside.remove_suffix(1);
    CString text;
    for (std::size_t i = 0; i < inside.size(); ++i) {
        if (inside[i] == '"') ++i; // doubled, or it would have ended the text
        text += inside[i];
    }
    CString literal = quoted(text);
    if (!token.isClosed) literal.pop_back();
    return literal;
}

std::string_view bareName(std::string_view raw) {
    if (raw.size() >= 2 && (raw.front() == '[' || raw.front() == '`')) return raw.substr(1, raw.size() - 2);
    return raw;
}

// "PARAMETERS name type, name type;" in front of a query. What remains is the query.
std::vector<CString> takeParameters(std::string_view& sql) {
    const std::string_view rest = sql;
    Pieces pieces(rest);
    Token token = pieces.next();
    while (token.kind != Kind::kEnd && isSpace(token)) token = pieces.next();
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

std::vector<Token> allPieces(std::string_view sql) {
    std::vector<Token> tokens;
    Pieces pieces(sql);
    for (Token token = pieces.next(); token.kind != Kind::kEnd; token = pieces.next())
        tokens.push_back(token);
    return tokens;
}

// The next token that says something, from the given one on.
std::size_t significant(const std::vector<Token>& tokens, std::size_t at) {
    while (at < tokens.size() && isSpace(tokens[at])) ++at;
    return at;
}

bool definesTable(const std::vector<Token>& tokens) {
    const std::size_t verb = significant(tokens, 0);
    const std::size_t object = significant(tokens, verb + 1);
    return object < tokens.size() && isOneOf(tokens[verb].raw, {"create", "alter"}) &&
           equalNames(tokens[object].raw, "table");
}

// Index of the last token of a field's type: the word, or the bracket behind its size.
std::size_t endOfType(const std::vector<Token>& tokens, std::size_t word) {
    std::size_t at = significant(tokens, word + 1);
    if (at >= tokens.size() || tokens[at].raw != "(") return word;
    while (at < tokens.size() && tokens[at].raw != ")") ++at;
    return std::min(at, tokens.size() - 1);
}

// Fields that are declared as texts compare without case. The engine has no such kind of text, so their
// definition says it.
CString withTextComparison(const CString& sql) {
    const std::vector<Token> tokens = allPieces(sql);
    if (!definesTable(tokens)) return sql;
    CString out;
    std::array<Token, 2> before; // the last two that said something: where a field begins, and its name
    for (std::size_t at = 0; at < tokens.size(); ++at) {
        const Token& token = tokens[at];
        const bool isType = token.kind == Kind::kWord &&
                            isOneOf(token.raw, {"text", "varchar", "char", "longtext", "memo"}) &&
                            (before[1].kind == Kind::kWord || before[1].kind == Kind::kName) &&
                            isOneOf(before[0].raw, {"(", ",", "add", "column"});
        if (!isSpace(token)) before = {before[1], token};
        out += isType && equalNames(token.raw, "memo") ? std::string_view("LONGTEXT") : token.raw;
        if (!isType) continue;
        for (const std::size_t end = endOfType(tokens, at); at < end;) out += tokens[++at].raw;
        const std::size_t next = significant(tokens, at + 1);
        if (next >= tokens.size() || !equalNames(tokens[next].raw, "collate")) out += " COLLATE NOCASE";
    }
    return out;
}

} // namespace

bool equalNames(std::string_view a, std::string_view b) {
    return asciiEqual(a, b);
}

bool isOneOf(std::string_view name, std::initializer_list<std::string_view> names) {
    return std::any_of(names.begin(), names.end(),
                       [&](std::string_view other) { return equalNames(name, other); });
}

std::string_view firstWord(std::string_view sql) {
    Pieces pieces(sql);
    Token token = pieces.next();
    while (token.kind != Kind::kEnd && (isSpace(token) || token.raw == "(" || token.raw == ";"))
        token = pieces.next();
    return token.raw;
}

bool saysNothing(std::string_view sql) {
    return firstWord(sql).empty();
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

int SqlText::parameterNumber(std::string_view name) const {
    for (std::size_t i = 0; i < parameters.size(); ++i)
        if (equalNames(parameters[i], name)) return static_cast<int>(i) + 1;
    return 0;
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
            if (const int number = result.parameterNumber(bareName(token.raw))) {
                out += "?" + std::to_string(number);
                continue;
            }
        }
        if (token.kind == Kind::kWord && before != "." && equalNames(token.raw, "true"))
            out += "-1";
        else
            out += token.raw;
    }
    out = withTextComparison(out);
    return result;
}

} // namespace veldrin::dao
