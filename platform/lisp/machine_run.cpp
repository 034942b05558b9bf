// How errors, breaks and `quit` travel: placed where they happen, handed to *error*, stopped at borders.
#include "lisp/LargeStack.h"
#include "lisp/Machine.h"

#include <algorithm>
#include <exception>
#include <new>

namespace veldrin::lisp {

namespace {
constexpr std::size_t stackEntriesShown = 40;
constexpr std::size_t depthForErrorHandler = 2000; // on top of the limit that the error may have met
} // namespace

// ---- Places

std::vector<StackEntry> Machine::callStack() const {
    std::vector<StackEntry> stack;
    for (std::size_t i = frames_.size(); i-- > 0 && stack.size() < stackEntriesShown;) {
        const std::string* file = fileAt(i);
        const std::string& name = frames_[i].function->name;
        stack.push_back({name.empty() ? "lambda" : name, file ? *file : std::string(), frames_[i].line});
    }
    return stack;
}

void Machine::locate(Error& error, std::string_view builtin, int line) const {
    if (error.isLocated) return;
    error.isLocated = true;
    const std::string* file = currentFile();
    if (error.line == 0) {
        error.line = line;
        if (file && line) error.file = *file;
    }
    error.stack = callStack();
    if (!builtin.empty())
        error.stack.insert(error.stack.begin(), {std::string(builtin), file ? *file : std::string(), line});
}

void Machine::fail(Error error, std::string_view builtin, int line) const {
    locate(error, builtin, line);
    throw error;
}

void Machine::failCount(const FunctionCell& function, std::size_t count, int line) const {
    const bool few = count < function.parameters.size();
    fail(few ? Error::tooFewArguments() : Error::tooManyArguments(), function.name, line);
}

// ---- Runs

void Machine::onLargeStack(const std::function<void()>& work) {
    if (isRunning_) return work();
    const std::size_t wanted = engine.limits().stackBytes;
    if (!stack_ || stackBytes_ != wanted) {
        stack_ = std::make_unique<LargeStack>(wanted);
        stackBytes_ = wanted;
    }
    const std::uintptr_t outerEnd = std::exchange(stackEnd_, stack_->softEnd());
    isRunning_ = true;
    stack_->run(work);
    isRunning_ = false;
    stackEnd_ = outerEnd;
    auto end = Engine::Interrupt::End;
    engine.interrupt_.compare_exchange_strong(end, Engine::Interrupt::None);
}

// Runs `work` and catches everything; bindings stay as they were at the failure.
Outcome Machine::outcomeOf(const std::function<Value()>& work) {
    Outcome outcome;
    const auto failed = [&](Error error) {
        outcome.status =
            error.reason == Error::Reason::Break ? Outcome::Status::Broken : Outcome::Status::Failed;
        locate(error, {}, 0);
        outcome.error = std::move(error);
    };
    try {
        outcome.value = work();
        goOnWithPending();
    } catch (const Error& error) {
        failed(error);
    } catch (const Quit& quit) {
        outcome.status = Outcome::Status::Quit;
        outcome.exitStatus = quit.status;
    } catch (const std::bad_alloc&) {
        failed(Error("insufficient node space"));
    } catch (const std::exception& error) {
        failed(Error(error.what()));
    } catch (...) { // the stack that Lisp runs on ends here: nothing may pass
        failed(Error("unknown C++ exception"));
    }
    if (!outcome) outcome.value = {};
    return outcome;
}

Outcome Machine::run(const std::function<Value()>& work) {
    if (isRunning_) return protectedRun(work, Engine::HoldBack::ErrorsToo);
    Outcome outcome;
    depthLimit_ = static_cast<std::size_t>(engine.limits().callDepth);
    onLargeStack([&] {
        const Mark before = mark();
        outcome = outcomeOf(work);
        if (!outcome) callErrorHandler(outcome);
        unwind(before);
    });
    return outcome;
}

void Machine::callErrorHandler(Outcome& outcome) {
    const Value handler = errorHandler->get();
    if (!Engine::isCallable(handler)) return;
    const Value message = Value::text(outcome.error ? std::string_view(outcome.error->message)
                                                    : std::string_view(Quit::message));
    depthLimit_ += depthForErrorHandler;
    const Outcome handled = outcomeOf([&] { return apply(handler, Args(&message, 1)); });
    depthLimit_ -= depthForErrorHandler;
    if (handled.status == Outcome::Status::Quit) {
        outcome.status = Outcome::Status::Quit;
        outcome.exitStatus = handled.exitStatus;
    } else if (handled.error) {
        engine.print("\n; error: *error* failed: " + handled.error->message + "\n");
    }
}

// A quit or break is waited for; after an error C++ code may go on calling, and the first error counts.
bool Machine::isLeaving() const {
    return hasPending_ && (pendingQuit_ || pendingError_->reason == Error::Reason::Break);
}

Outcome Machine::protectedRun(const std::function<Value()>& work, Engine::HoldBack what) {
    Outcome outcome;
    if (isLeaving()) { // the C++ function underneath has not yet returned to pass it on
        outcome.status = pendingQuit_ ? Outcome::Status::Quit : Outcome::Status::Broken;
        outcome.exitStatus = pendingQuit_.value_or(0);
        outcome.error = pendingError_;
        return outcome;
    }
    hasPending_ = false;
    std::optional<Error> earlier = std::exchange(pendingError_, std::nullopt);
    const bool hasLispBelow = isRunning_;
    onLargeStack([&] {
        const Mark before = mark();
        outcome = outcomeOf(work);
        unwind(before);
    });
    if (hasLispBelow && !outcome) holdBack(outcome, what);
    if (earlier && !isLeaving()) {
        hasPending_ = true;
        pendingError_ = std::move(earlier);
    }
    return outcome;
}

void Machine::holdBack(const Outcome& outcome, Engine::HoldBack what) {
    if (outcome.status == Outcome::Status::Failed && what != Engine::HoldBack::ErrorsToo) return;
    hasPending_ = true;
    pendingError_ = outcome.error;
    if (outcome.status == Outcome::Status::Quit) pendingQuit_ = outcome.exitStatus;
}

void Machine::throwPending() {
    hasPending_ = false;
    auto error = std::exchange(pendingError_, std::nullopt);
    if (const auto status = std::exchange(pendingQuit_, std::nullopt)) throw Quit(*status);
    throw Error(std::move(*error));
}

std::optional<Error> Machine::catchAll(const std::function<void()>& work) {
    const Mark before = mark();
    std::optional<Error> caught;
    try {
        work();
    } catch (const Error& error) {
        caught = error;
    } catch (const std::bad_alloc&) {
        caught = Error("insufficient node space");
    } catch (const std::exception& error) {
        caught = Error(error.what());
    }
    if (caught) unwind(before);
    return caught;
}

} // namespace veldrin::lisp
