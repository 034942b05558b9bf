// The evaluator's state: variable bindings, the chain of calls, and what is pending.
//
// Variables are bound in their symbols; the binding stack keeps what they had before. It is not unwound
// while an exception passes: whoever catches one (a run, a catch, a C++ border) takes back the bindings down
// to its own mark. So *error* still sees the variables of the function that failed, and calls cost no
// clean-up code.
#pragma once

#include "lisp/Engine.h"
#include "lisp/Objects.h"

#include <array>
#include <set>
#include <unordered_map>
#include <vector>

namespace veldrin::lisp {

class LargeStack;

class Machine {
public:
    explicit Machine(Engine& engine);
    ~Machine();
    Machine(const Machine&) = delete;
    Machine& operator=(const Machine&) = delete;

    Engine& engine;

    // ---- Names
    Symbol& intern(std::string_view name);
    Symbol* find(std::string_view name) const;
    const std::unordered_map<std::string_view, Symbol*>& symbols() const { return symbols_; }
    void defineBuiltin(std::unique_ptr<BuiltinCell> cell);
    const std::string* fileName(std::string_view name); // kept for good; null for none

    // ---- Evaluating
    Value evaluate(const Value& form);
    Value apply(const Value& function, Args args);
    // The function that a call of `function` means: follows symbols, compiles lambda lists.
    Value callee(const Value& function);
    Value callBuiltin(BuiltinCell& builtin, Args args, int line);
    Value callExternal(ExternalCell& external, Args args, int line);
    // Calls a function whose arguments are the topmost `count` temporaries, below them the function itself;
    // takes all of them off.
    Bits enter(FunctionCell& function, std::size_t count, int line);
    Value makeFunction(std::string name, const Value& parameters, const Value& body);

    // `setq`: refuses T and PI with a warning.
    void assign(Symbol& symbol, Value value);

    // ---- Bindings
    void push(Symbol* symbol, Bits value) {
        if (top_ == end_) growBindings();
        *top_++ = {symbol, value};
    }
    void pushTemporary(Bits owned) { push(nullptr, owned); }
    void bind(Symbol* symbol, Bits owned) {
        push(symbol, symbol->value);
        symbol->value = owned;
    }
    std::size_t bindingCount() const { return static_cast<std::size_t>(top_ - bindings_); }
    void unbindTo(std::size_t count) {
        while (bindingCount() > count) {
            const Binding b = *--top_;
            if (b.symbol)
                bits::release(std::exchange(b.symbol->value, b.value));
            else
                bits::release(b.value);
        }
    }

    struct Mark {
        std::size_t bindings, frames, files;
    };
    Mark mark() const { return {bindingCount(), frames_.size(), files_.size()}; }
    void unwind(const Mark& mark);

    // ---- Safety
    bool isInterrupted() const {
        return engine.interrupt_.load(std::memory_order_relaxed) != Engine::Interrupt::None;
    }
    void poll() {
        if (isInterrupted()) interruptNow();
    }
    void checkStack() const {
        if (reinterpret_cast<std::uintptr_t>(__builtin_frame_address(0)) < stackEnd_) stackOverflow();
    }
    [[noreturn]] void interruptNow();
    [[noreturn]] static void stackOverflow();

    // ---- Errors
    // Adds place and call stack where they are still missing.
    void locate(Error& error, std::string_view builtin, int line) const;
    [[noreturn, gnu::cold]] void fail(Error error, std::string_view builtin, int line) const;
    [[noreturn, gnu::cold]] void failCount(const FunctionCell& function, std::size_t count, int line) const;
    std::vector<StackEntry> callStack() const;
    int depth() const { return static_cast<int>(frames_.size()); }

    // ---- Runs and borders
    // Like vl-catch-all-apply: an error or break that `work` throws, with its bindings taken back.
    std::optional<Error> catchAll(const std::function<void()>& work);
    Outcome run(const std::function<Value()>& work);
    Outcome protectedRun(const std::function<Value()>& work, Engine::HoldBack what);
    bool isRunning() const { return isRunning_; }
    void goOnWithPending() {
        if (hasPending_) throwPending();
    }

    // ---- Files being loaded
    void enterFile(const std::string* name) { files_.push_back({name, frames_.size()}); }
    void leaveFile() { files_.pop_back(); }
    // Where the running code was read from; null when not from a file.
    const std::string* currentFile() const { return fileAt(frames_.size()); }

    // What the compiler asks for by pointer.
    Symbol *lambda, *slash, *errorHandler;

private:
    struct Binding {
        Symbol* symbol; // null: a temporary
        Bits value;
    };
    struct Frame {
        FunctionCell* function;
        int line; // of the call
    };
    struct LoadedFile {
        const std::string* name;
        std::size_t depth; // calls that were active when it began
    };
    struct CachedLambda {
        Value form, function;
    };

    const std::string* fileAt(std::size_t depth) const;
    void growBindings();
    void compileBody(FunctionCell& function);
    Value lambdaOf(const Value& list);
    void callErrorHandler(Outcome& outcome);
    void onLargeStack(const std::function<void()>& work);
    Outcome outcomeOf(const std::function<Value()>& work);
    void holdBack(const Outcome& outcome, Engine::HoldBack what);
    bool isLeaving() const;
    [[noreturn]] void throwPending();
    void enterSlow();

    std::unordered_map<std::string_view, Symbol*> symbols_;
    std::vector<std::unique_ptr<Symbol>> ownSymbols_;
    std::vector<Value> builtins_; // kept: a running call may outlive its name's meaning
    std::set<std::string, std::less<>> fileNames_;
    Binding *bindings_, *top_, *end_;
    std::vector<Frame> frames_;
    std::vector<LoadedFile> files_;
    std::size_t depthLimit_;
    std::uintptr_t stackEnd_ = 0;
    std::unique_ptr<LargeStack> stack_;
    std::size_t stackBytes_ = 0; // as asked for
    std::array<CachedLambda, 256> lambdas_;
    bool isRunning_ = false;
    bool hasPending_ = false;
    std::optional<int> pendingQuit_;
    std::optional<Error> pendingError_;
};

} // namespace veldrin::lisp
