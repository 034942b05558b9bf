// Looking for texts inside texts. Positions count characters from 0.
#include "lisp/Builtins.h"
#include "lisp/Characters.h"
#include "lisp/WildMatch.h"

#include <algorithm>

namespace veldrin::lisp {

namespace {

// The byte on which a search begins that is asked to start at argument `i`'s position; 0 when left out.
std::size_t startByte(Args args, std::size_t i, std::string_view text) {
    if (!args.has(i)) return 0;
    const std::int32_t start = args.integer(i);
    if (start < 0) throw Error("bad argument value: non-negative " + std::to_string(start));
    return byteOfCodePoint(text, static_cast<std::size_t>(start));
}

Value positionOfByte(std::string_view text, std::size_t byte) {
    return Value::integer(static_cast<std::int32_t>(countCodePoints(text.substr(0, byte))));
}

Value search(Engine&, Args args) {
    const auto pattern = args.text(0), text = args.text(1);
    const std::size_t found = text.find(pattern, startByte(args, 2, text));
    return found == std::string_view::npos ? Value() : positionOfByte(text, found);
}

Value substitute(Engine&, Args args) { // the first one only
    const auto fresh = args.text(0), pattern = args.text(1), text = args.text(2);
    const std::size_t found = text.find(pattern, startByte(args, 3, text));
    if (found == std::string_view::npos) return args[2];
    std::string result(text.substr(0, found));
    result += fresh;
    result += text.substr(found + pattern.size());
    return Value::text(result);
}

// A character by its code, from the front, or from the back when the fourth argument says so.
Value position(Engine&, Args args) {
    const std::int32_t wanted = args.integer(0);
    const auto text = args.text(1);
    Value found;
    std::int32_t index = args.has(2) ? args.integer(2) : 0;
    for (std::size_t at = startByte(args, 2, text); at < text.size(); ++index) {
        if (static_cast<std::int32_t>(nextCodePoint(text, at)) != wanted) continue;
        found = Value::integer(index);
        if (!args.has(3)) break;
    }
    return found;
}

// How many characters two texts have in common, from given positions on.
Value mismatch(Engine&, Args args) {
    const auto a = args.text(0), b = args.text(1);
    std::size_t x = startByte(args, 2, a), y = startByte(args, 3, b);
    std::string left = args.has(4) ? upperCase(a.substr(x)) : std::string(a.substr(x));
    std::string right = args.has(4) ? upperCase(b.substr(y)) : std::string(b.substr(y));
    std::int32_t same = 0;
    for (x = y = 0; x < left.size() && y < right.size(); ++same)
        if (nextCodePoint(left, x) != nextCodePoint(right, y)) break;
    return Value::integer(same);
}

Value wcmatch(Engine&, Args args) {
    return Value::boolean(wildMatch(args.text(0), args.text(1)));
}

constexpr BuiltinRow rows[] = {
    {"vl-string-search", 2, 3, search},
    {"vl-string-subst", 3, 4, substitute},
    {"vl-string-position", 2, 4, position},
    {"vl-string-mismatch", 2, 5, mismatch},
    {"wcmatch", 2, 2, wcmatch},
};

} // namespace

std::span<const BuiltinRow> textSearchBuiltins() {
    return rows;
}

} // namespace veldrin::lisp
