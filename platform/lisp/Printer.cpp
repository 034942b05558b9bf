#include "lisp/Printer.h"

#include "lisp/Characters.h"
#include "lisp/Heap.h"
#include "lisp/Objects.h"

#include <fmt/format.h>
#include <vector>

namespace veldrin::lisp {

namespace {

constexpr std::size_t messageLength = 200;

void appendEscaped(std::string& out, std::string_view text) {
    out += '"';
    for (const char c : text) {
        switch (c) {
        case '"': out += "\\\""; break;
        case '\\': out += "\\\\"; break;
        case '\n': out += "\\n"; break;
        case '\r': out += "\\r"; break;
        case '\t': out += "\\t"; break;
        case '\x1b': out += "\\e"; break;
        default:
            if (static_cast<unsigned char>(c) < 0x20 || c == 0x7F)
                out += fmt::format("\\{:03o}", static_cast<unsigned>(static_cast<unsigned char>(c)));
            else
                out += c;
        }
    }
    out += '"';
}

std::string functionText(const char* kind, const Cell* cell, const std::string& name) {
    return fmt::format("#<{} @{:x} {}>", kind, reinterpret_cast<std::uintptr_t>(cell), name);
}

std::string objectText(const Value& value) {
    auto* cell = value.cell<Cell>();
    switch (value.kind()) {
    case Kind::Builtin: return functionText("SUBR", cell, static_cast<BuiltinCell*>(cell)->name);
    case Kind::External: return functionText("EXRXSUBR", cell, static_cast<ExternalCell*>(cell)->name);
    case Kind::Function: {
        const auto& name = static_cast<FunctionCell*>(cell)->name;
        return functionText("USUBR", cell, name.empty() ? "-lambda-" : name);
    }
    case Kind::Ename:
        return fmt::format("<Entity name: {:x}>", static_cast<std::uint64_t>(value.asEname().words[0]));
    case Kind::CatchError: return "#<%catch-all-apply-error%>";
    default: return value.payload()->describe();
    }
}

void appendAtom(std::string& out, const Value& value, bool isQuoted) {
    if (value.isReal())
        out += realText(value.asReal());
    else if (value.isInteger())
        out += std::to_string(value.asInteger());
    else if (value.isNil())
        out += "nil";
    else if (value.isSymbol())
        out += value.asSymbol()->name;
    else if (!value.isText())
        out += objectText(value);
    else if (isQuoted)
        appendEscaped(out, value.asText());
    else
        out += value.asText();
}

// Without recursion: lists may be nested deeper than any stack. A list that holds another one twice, which
// does so too, and so on, fits into no memory when it is written out.
void append(std::string& out, const Value& value, bool isQuoted, std::size_t longest) {
    if (!value.isCons()) return appendAtom(out, value, isQuoted);
    std::vector<const Value*> rests{&value}; // what is still to print of each open list
    out += '(';
    bool isFirst = true;
    std::size_t nextCheck = std::size_t{1} << 20;
    while (!rests.empty() && out.size() < longest) {
        if (out.size() > nextCheck) {
            nextCheck *= 2;
            Heap::instance().checkText(nextCheck);
        }
        const Value& rest = *rests.back();
        if (!rest.isCons()) {
            if (!rest.isNil()) {
                out += " . ";
                appendAtom(out, rest, isQuoted);
            }
            out += ')';
            rests.pop_back();
            isFirst = false;
            continue;
        }
        if (!isFirst) out += ' ';
        const Value& item = rest.car();
        rests.back() = &rest.cdr();
        isFirst = item.isCons();
        if (item.isCons()) {
            out += '(';
            rests.push_back(&item);
        } else {
            appendAtom(out, item, isQuoted);
        }
    }
}

} // namespace

std::string princText(const Value& value) {
    std::string out;
    append(out, value, false, out.max_size());
    return out;
}

std::string prin1Text(const Value& value) {
    std::string out;
    append(out, value, true, out.max_size());
    return out;
}

std::string shortText(const Value& value) {
    std::string out;
    append(out, value, true, messageLength);
    if (out.size() > messageLength) out = out.substr(0, byteOfCodePoint(out, messageLength)) + "...";
    return out;
}

std::string realText(double value) {
    std::string text = fmt::format("{:.6g}", value);
    if (text.find_first_of(".ni") != std::string::npos) return text;
    const auto exponent = text.find('e');
    text.insert(exponent == std::string::npos ? text.size() : exponent, ".0");
    return text;
}

} // namespace veldrin::lisp
