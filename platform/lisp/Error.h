// What stops a Lisp evaluation: an error, a break by the user, or `quit`. Thrown by value, caught by
// reference; nothing else may pass through Lisp from a built-in.
#pragma once

#include "runtime/VeldrinApi.h"

#include <string>
#include <string_view>
#include <vector>

namespace veldrin::lisp {

class Value;

// Where a call stood when an error happened.
struct StackEntry {
    std::string function;
    std::string file; // empty when not read from a file
    int line = 0;     // 0 when unknown
};

class VELDRIN_API Error {
public:
    enum class Reason { Failure, Break };

    explicit Error(std::string text, Reason why = Reason::Failure) : message(std::move(text)), reason(why) {}

    // "bad argument type: numberp: nil"; `expected` is the predicate as the dialect words it ("numberp:",
    // "stringp").
    static Error badArgument(std::string_view expected, const Value& got);
    static Error badFunction(const Value& got);
    static Error tooFewArguments() { return Error("too few arguments"); }
    static Error tooManyArguments() { return Error("too many arguments"); }
    static Error divideByZero() { return Error("divide by zero"); }
    static Error breakRequested() { return Error("Function cancelled", Reason::Break); }

    std::string message;
    Reason reason;
    std::string file; // where it happened, as far as known
    int line = 0;
    std::vector<StackEntry> stack; // innermost call first, cut when very deep
    bool isLocated = false;        // file, line and stack have been looked for

    // Message, place and call stack, a line each, as the program shows an uncaught error.
    std::string report() const;
};

// `(quit N)` and `(exit N)` on their way out.
class VELDRIN_API Quit {
public:
    explicit Quit(int exitStatus) : status(exitStatus) {}
    int status;
    static constexpr const char* message = "quit / exit abort";
};

} // namespace veldrin::lisp
