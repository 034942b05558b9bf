// The Lisp interpreter of one host.
//
// Built-ins come in tables, a row each: name, least and greatest number of arguments (`anyNumber` for no
// limit), function.
//
//     Value add1(Engine&, Args args) { return Value::integer(args.integer(0) + 1); }
//     constexpr BuiltinRow rows[] = {{"add1", 1, 1, add1}};
//     engine.define(rows);
//
// A built-in reads its arguments with `args.text(0)`, `args.number(1)`, `args.point(2)` ..., which throw the
// dialect's complaint by themselves, builds results with `Value::real`, `list`, `pair`, ListBuilder, and
// fails with `throw Error("...")`. It may call Lisp through `engine.apply`; what that throws must be let
// through. C++ code that cannot let it through (handlers of modules, dialogs, reactors) calls
// `engine.protectedApply` instead.
#pragma once

#include "lisp/Args.h"
#include "lisp/Error.h"
#include "lisp/Services.h"
#include "lisp/Value.h"

#include <atomic>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace veldrin::lisp {

class Engine;
class Machine;

inline constexpr int anyNumber = -1;

using BuiltinFunction = Value (*)(Engine&, Args);

struct BuiltinRow {
    const char* name;
    int minArgs;
    int maxArgs;
    BuiltinFunction function;
};

// A form that evaluates its own arguments: gets the whole form, head included.
struct SpecialRow {
    const char* name;
    Value (*function)(Engine&, const Value& form);
};

using ExternalFunction = std::function<Value(Engine&, Args)>;

struct Limits {
    int callDepth = 100'000;                         // nested calls of Lisp functions
    std::size_t stackBytes = std::size_t{512} << 20; // address space; memory only as it is used
    std::size_t heapBytes = std::size_t{4096} << 20; // of all values of the process
};

// How a run from the outside ended.
struct Outcome {
    enum class Status { Done, Failed, Broken, Quit };
    Status status = Status::Done;
    Value value;                // when done
    std::optional<Error> error; // when failed or broken
    int exitStatus = 0;         // when quit
    bool isUndefined = false;   // failed because the function to call does not exist; nothing was run

    explicit operator bool() const { return status == Status::Done; }
};

class VELDRIN_API Engine {
public:
    explicit Engine(Limits limits = {});
    ~Engine();
    Engine(const Engine&) = delete;
    Engine& operator=(const Engine&) = delete;

    // The host behind it; must outlive the engine's use of it. Null: the defaults.
    void setServices(Services* services);
    Services& services() { return *services_; }
    const Limits& limits() const { return limits_; }
    void setLimits(const Limits& limits); // the stack's size counts for the next run from the outside

    // ---- Names
    Symbol& intern(std::string_view name);     // upper-cases
    Symbol* find(std::string_view name) const; // null when never seen
    Value get(std::string_view name) const;
    void set(std::string_view name, Value value);
    // All symbols that begin so, in no order; for completion.
    std::vector<const Symbol*> symbolsWithPrefix(std::string_view prefix) const;

    // ---- Functions written in C++
    void define(std::span<const BuiltinRow> rows);
    void define(std::span<const SpecialRow> rows);
    void defineExternal(std::string_view name, ExternalFunction function);
    // Forgets an external function, if the name still means one.
    void undefineExternal(std::string_view name);
    bool isFunction(std::string_view name) const;
    static bool isCallable(const Value& value);

    // ---- From the outside (program, commands, window): an error or a break is handed to the user's
    // *error* while local variables are still bound; then all bindings are as before.
    Outcome runText(std::string_view text, std::string_view fileName = {}); // all forms; the last value
    Outcome runFile(const std::string& path);
    Outcome runForm(const Value& form);
    Outcome runFunction(const Value& function, Args args);
    Outcome run(const std::function<Value()>& work);

    // ---- At a border of C++ that Lisp has called and that calls Lisp: nothing is thrown. A quit or break is
    // held back and goes on as soon as the C++ function has returned to Lisp; an error only if
    // `holdBackErrors`. With nothing underneath, the outcome is all there is.
    enum class HoldBack { QuitAndBreak, ErrorsToo };
    Outcome protectedApply(const Value& function, Args args, HoldBack what = HoldBack::QuitAndBreak);
    Outcome protectedRun(const std::function<Value()>& work, HoldBack what = HoldBack::QuitAndBreak);

    // ---- From within built-ins; these throw
    Value evaluate(const Value& form);
    Value apply(const Value& function, Args args); // a symbol, function, or lambda list
    template<class... A>
    Value call(const Value& function, A... args) {
        const Value values[] = {Value(std::move(args))..., Value()};
        return apply(function, Args(values, sizeof...(args)));
    }
    Value evaluateText(std::string_view text, std::string_view fileName = {});
    Value loadFile(const std::string& path);

    // ---- While it runs
    // Both from any thread. A break is an error that a script may catch; an end is a `quit` with status 1
    // that holds until the run from the outside is over, so that no handler or loop can go on behind it.
    void requestBreak();
    void requestEnd() { interrupt_.store(Interrupt::End, std::memory_order_relaxed); }
    void clearBreak();
    void checkBreak(); // for loops of long built-ins; throws
    int callDepth() const;
    bool isRunning() const;
    std::vector<StackEntry> callStack() const;
    std::string currentFile() const; // being loaded; empty when none

    void print(std::string_view text) { services_->print(text); }

    Machine& machine() { return *machine_; }

private:
    friend class Machine;
    enum class Interrupt : std::uint8_t { None, Break, End };

    Limits limits_;
    std::unique_ptr<Services> defaultServices_;
    Services* services_;
    std::atomic<Interrupt> interrupt_{Interrupt::None};
    std::unique_ptr<Machine> machine_;
};

} // namespace veldrin::lisp
