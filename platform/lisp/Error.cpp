#include "lisp/Error.h"

#include "lisp/Printer.h"

#include <fmt/format.h>

namespace veldrin::lisp {

namespace {

std::string place(const std::string& file, int line) {
    if (line <= 0) return {};
    return file.empty() ? fmt::format("line {}", line) : fmt::format("{}:{}", file, line);
}

} // namespace

Error Error::badArgument(std::string_view expected, const Value& got) {
    return Error(fmt::format("bad argument type: {} {}", expected, shortText(got)));
}

Error Error::badFunction(const Value& got) {
    return Error("bad function: " + shortText(got));
}

std::string Error::report() const {
    std::string text = message;
    if (const auto where = place(file, line); !where.empty()) text += " (" + where + ")";
    for (const StackEntry& entry : stack) {
        text += "\n  in " + entry.function;
        if (const auto where = place(entry.file, entry.line); !where.empty()) text += ", called at " + where;
    }
    return text;
}

} // namespace veldrin::lisp
