// Texts: joining, cutting, converting. Positions count characters, not bytes.
#include "lisp/Builtins.h"
#include "lisp/Characters.h"
#include "lisp/Heap.h"
#include "lisp/Printer.h"
#include "lisp/Reader.h"

#include <algorithm>
#include <fmt/format.h>

namespace veldrin::lisp {

namespace {

constexpr std::int32_t lastCodePoint = 0x10FFFF;

Value strcat(Engine&, Args args) {
    std::size_t size = 0;
    for (std::size_t i = 0; i < args.size(); ++i) size += args.text(i).size();
    Value result = Value::adopt(Heap::instance().newText(size, size));
    char* at = result.cell<TextCell>()->chars();
    for (const Value& part : args) at = std::copy_n(part.asText().data(), part.asText().size(), at);
    return result;
}

std::size_t lengthOf(const Value& text) {
    return text.isAscii() ? text.asText().size() : countCodePoints(text.asText());
}

Value strlen(Engine&, Args args) {
    std::size_t length = 0;
    for (std::size_t i = 0; i < args.size(); ++i) {
        args.text(i);
        length += lengthOf(args[i]);
    }
    return Value::integer(static_cast<std::int32_t>(length));
}

// Byte of a character position in a text.
std::size_t byteOf(const Value& text, std::size_t index) {
    return text.isAscii() ? std::min(index, text.asText().size()) : byteOfCodePoint(text.asText(), index);
}

Value substr(Engine&, Args args) {
    const auto text = args.text(0);
    const std::int32_t start = args.integer(1);
    if (start < 1) throw Error("bad argument value: positive " + std::to_string(start));
    const std::size_t from = byteOf(args[0], static_cast<std::size_t>(start) - 1);
    if (!args.has(2)) return Value::text(text.substr(from));
    const std::int32_t count = args.integer(2);
    if (count < 0) throw Error("bad argument value: non-negative " + std::to_string(count));
    const auto rest = text.substr(from);
    const auto size = static_cast<std::size_t>(count);
    return Value::text(rest.substr(0, args[0].isAscii() ? size : byteOfCodePoint(rest, size)));
}

Value strcase(Engine&, Args args) {
    return Value::text(args.has(1) ? lowerCase(args.text(0)) : upperCase(args.text(0)));
}

Value codeOf(std::string_view text) {
    std::size_t at = 0;
    return Value::integer(text.empty() ? 0 : static_cast<std::int32_t>(nextCodePoint(text, at)));
}

Value ascii(Engine&, Args args) {
    return codeOf(args.text(0));
}

// Code 0 ends a text, so it adds nothing.
void appendCode(std::string& text, std::int32_t code) {
    if (code < 0 || code > lastCodePoint)
        throw Error("bad argument value: character code " + std::to_string(code));
    if (code) appendCodePoint(text, static_cast<char32_t>(code));
}

Value chr(Engine&, Args args) {
    std::string text;
    appendCode(text, args.integer(0));
    return Value::text(text);
}

Value itoa(Engine&, Args args) {
    return Value::text(std::to_string(args.integer(0)));
}

// The number that a text begins with, 0 when there is none.
Value leadingNumber(std::string_view text) {
    text.remove_prefix(std::min(text.find_first_not_of(" \t"), text.size()));
    bool isReal = false;
    const std::size_t length = numberPrefix(text, isReal);
    return length ? numberOfPrefix(text.substr(0, length), isReal) : Value::integer(0);
}

Value atoi(Engine&, Args args) {
    const double n = leadingNumber(args.text(0)).asNumber();
    const double most = std::numeric_limits<std::int32_t>::max();
    return Value::integer(static_cast<std::int32_t>(std::clamp(n, -most - 1, most)));
}

Value atof(Engine&, Args args) {
    return Value::real(leadingNumber(args.text(0)).asNumber());
}

Value prin1ToString(Engine&, Args args) {
    return Value::text(prin1Text(args[0]));
}
Value princToString(Engine&, Args args) {
    return Value::text(princText(args[0]));
}

Value stringToList(Engine&, Args args) {
    const auto text = args.text(0);
    ListBuilder codes;
    for (std::size_t at = 0; at < text.size();) {
        const auto code = static_cast<std::int32_t>(nextCodePoint(text, at));
        codes.add(Value::integer(code));
    }
    return codes.finish();
}

Value listToString(Engine&, Args args) {
    std::string text;
    for (const Value& code : ListView(args.list(0))) appendCode(text, integerOf(code));
    return Value::text(text);
}

Value element(Engine&, Args args) { // vl-string-elt
    const auto text = args.text(0);
    const std::int32_t index = args.integer(1);
    const std::size_t at = index < 0 ? text.size() : byteOf(args[0], static_cast<std::size_t>(index));
    if (at >= text.size()) throw Error("bad argument value: string index " + std::to_string(index));
    return codeOf(text.substr(at));
}

// The characters of a text, or of a list of codes.
std::u32string characterSet(const Value& set) {
    std::u32string codes;
    if (set.isText()) {
        const auto text = set.asText();
        for (std::size_t at = 0; at < text.size();) codes += nextCodePoint(text, at);
    } else {
        if (!set.isList()) throw Error::badArgument("stringp", set);
        for (const Value& code : ListView(set)) codes += static_cast<char32_t>(integerOf(code));
    }
    return codes;
}

template<bool Left, bool Right>
Value trim(Engine&, Args args) {
    const auto set = characterSet(args[0]);
    const auto text = args.text(1);
    const auto isTrimmed = [&](char32_t c) { return set.find(c) != std::u32string::npos; };
    std::size_t from = 0, end = 0;
    bool leading = Left;
    for (std::size_t at = 0; at < text.size();) {
        const bool trimmed = isTrimmed(nextCodePoint(text, at));
        if (leading && trimmed)
            from = at;
        else
            leading = false;
        if (!Right || !trimmed) end = at;
    }
    return Value::text(end > from ? text.substr(from, end - from) : std::string_view());
}

Value translate(Engine&, Args args) {
    const auto from = characterSet(args[0]), to = characterSet(args[1]);
    const auto text = args.text(2);
    std::string result;
    for (std::size_t at = 0; at < text.size();) {
        char32_t c = nextCodePoint(text, at);
        if (const auto i = from.find(c); i != std::u32string::npos && i < to.size()) c = to[i];
        appendCodePoint(result, c);
    }
    return Value::text(result);
}

constexpr BuiltinRow rows[] = {
    {"strcat", 0, anyNumber, strcat},
    {"strlen", 0, anyNumber, strlen},
    {"substr", 2, 3, substr},
    {"strcase", 1, 2, strcase},
    {"ascii", 1, 1, ascii},
    {"chr", 1, 1, chr},
    {"itoa", 1, 1, itoa},
    {"atoi", 1, 1, atoi},
    {"atof", 1, 1, atof},
    {"vl-prin1-to-string", 1, 1, prin1ToString},
    {"vl-princ-to-string", 1, 1, princToString},
    {"vl-string->list", 1, 1, stringToList},
    {"vl-list->string", 1, 1, listToString},
    {"vl-string-elt", 2, 2, element},
    {"vl-string-trim", 2, 2, trim<true, true>},
    {"vl-string-left-trim", 2, 2, trim<true, false>},
    {"vl-string-right-trim", 2, 2, trim<false, true>},
    {"vl-string-translate", 3, 3, translate},
};

} // namespace

std::span<const BuiltinRow> textBuiltins() {
    return rows;
}

} // namespace veldrin::lisp
