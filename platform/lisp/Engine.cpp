#include "lisp/Engine.h"

#include "lisp/Builtins.h"
#include "lisp/Characters.h"
#include "lisp/Compiler.h"
#include "lisp/Machine.h"
#include "lisp/Reader.h"

#include <fstream>
#include <numbers>
#include <sstream>

namespace veldrin::lisp {

Engine::Engine(Limits limits)
    : limits_(limits)
    , defaultServices_(std::make_unique<Services>())
    , services_(defaultServices_.get())
    , machine_(std::make_unique<Machine>(*this)) {
    Heap::instance().setLimit(limits_.heapBytes);
    for (const FormRow& row : languageForms()) {
        auto cell = std::make_unique<BuiltinCell>();
        cell->name = row.name;
        cell->compile = row.compile;
        machine_->defineBuiltin(std::move(cell));
    }
    for (const auto rows :
         {controlBuiltins(), numberBuiltins(), geometryBuiltins(), listBuiltins(), listSearchBuiltins(),
          textBuiltins(), textSearchBuiltins(), unitBuiltins(), outputBuiltins(), fileBuiltins(),
          fileNameBuiltins(), settingBuiltins(), sessionBuiltins()})
        define(rows);
    Symbol& pi = intern("PI");
    pi.value = pi.protectedValue = bits::ofReal(std::numbers::pi);
}

Engine::~Engine() = default;

void Engine::setServices(Services* services) {
    services_ = services ? services : defaultServices_.get();
}

void Engine::setLimits(const Limits& limits) {
    limits_ = limits;
    Heap::instance().setLimit(limits_.heapBytes);
}

// ---- Names

Symbol& Engine::intern(std::string_view name) {
    return machine_->intern(name);
}
Symbol* Engine::find(std::string_view name) const {
    return machine_->find(name);
}

Value Engine::get(std::string_view name) const {
    const Symbol* symbol = find(name);
    return symbol ? symbol->get() : Value();
}

void Engine::set(std::string_view name, Value value) {
    machine_->assign(intern(name), std::move(value));
}

std::vector<const Symbol*> Engine::symbolsWithPrefix(std::string_view prefix) const {
    const std::string upper = upperCase(prefix);
    std::vector<const Symbol*> result;
    for (const auto& [name, symbol] : machine_->symbols())
        if (name.starts_with(upper)) result.push_back(symbol);
    return result;
}

// ---- Functions written in C++

void Engine::define(std::span<const BuiltinRow> rows) {
    for (const BuiltinRow& row : rows) {
        auto cell = std::make_unique<BuiltinCell>();
        cell->name = row.name;
        cell->minArgs = row.minArgs;
        cell->maxArgs = row.maxArgs;
        cell->function = row.function;
        machine_->defineBuiltin(std::move(cell));
    }
}

void Engine::define(std::span<const SpecialRow> rows) {
    for (const SpecialRow& row : rows) {
        auto cell = std::make_unique<BuiltinCell>();
        cell->name = row.name;
        cell->special = row.function;
        machine_->defineBuiltin(std::move(cell));
    }
}

void Engine::defineExternal(std::string_view name, ExternalFunction function) {
    Symbol& symbol = intern(name);
    auto* cell = new ExternalCell;
    symbol.set(ownObject(cell));
    cell->name = symbol.name;
    cell->function = std::move(function);
}

void Engine::undefineExternal(std::string_view name) {
    Symbol* symbol = find(name);
    if (symbol && symbol->get().is(Kind::External)) symbol->set({});
}

bool Engine::isCallable(const Value& value) {
    if (value.isSymbol()) {
        const Value meaning = value.asSymbol()->get();
        return !meaning.isSymbol() && isCallable(meaning);
    }
    return value.is(Kind::Function) || value.is(Kind::Builtin) || value.is(Kind::External) || value.isCons();
}

bool Engine::isFunction(std::string_view name) const {
    const Value value = get(name);
    return value.is(Kind::Function) || value.is(Kind::Builtin) || value.is(Kind::External);
}

// ---- From the outside

Outcome Engine::run(const std::function<Value()>& work) {
    return machine_->run(work);
}

Outcome Engine::runText(std::string_view text, std::string_view fileName) {
    return run([&] { return evaluateText(text, fileName); });
}

Outcome Engine::runFile(const std::string& path) {
    return run([&] { return loadFile(path); });
}

Outcome Engine::runForm(const Value& form) {
    return run([&] { return evaluate(form); });
}

Outcome Engine::runFunction(const Value& function, Args args) {
    return run([&] { return apply(function, args); });
}

Outcome Engine::protectedRun(const std::function<Value()>& work, HoldBack what) {
    return machine_->protectedRun(work, what);
}

Outcome Engine::protectedApply(const Value& function, Args args, HoldBack what) {
    if (isCallable(function)) return protectedRun([&] { return apply(function, args); }, what);
    Outcome outcome;
    outcome.status = Outcome::Status::Failed;
    outcome.isUndefined = true;
    outcome.error = function.isSymbol() ? Error("no function definition: " + function.asSymbol()->name)
                                        : Error::badFunction(function);
    return outcome;
}

// ---- From within built-ins

Value Engine::evaluate(const Value& form) {
    return machine_->evaluate(form);
}
Value Engine::apply(const Value& function, Args args) {
    return machine_->apply(function, args);
}

// Everything is read before anything runs: a file with a parenthesis missing does nothing at all.
Value Engine::evaluateText(std::string_view text, std::string_view fileName) {
    Reader reader(*this, text, fileName);
    std::vector<Value> forms;
    for (Value form; reader.next(form);) forms.push_back(std::move(form));
    machine_->enterFile(machine_->fileName(fileName));
    Value result;
    for (Value& form : forms) result = evaluate(std::exchange(form, {}));
    machine_->leaveFile();
    return result;
}

Value Engine::loadFile(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    std::ostringstream text;
    if (!file || !(text << file.rdbuf())) {
        // An empty file sets the stream's failure too; only one that cannot be read is an error.
        if (!file.is_open() || file.bad()) throw Error("cannot read file: " + path);
    }
    return evaluateText(text.str(), path);
}

// ---- While it runs

void Engine::requestBreak() {
    auto none = Interrupt::None;
    interrupt_.compare_exchange_strong(none, Interrupt::Break, std::memory_order_relaxed);
}

void Engine::clearBreak() {
    auto asked = Interrupt::Break;
    interrupt_.compare_exchange_strong(asked, Interrupt::None, std::memory_order_relaxed);
}

void Engine::checkBreak() {
    machine_->poll();
}
int Engine::callDepth() const {
    return machine_->depth();
}
bool Engine::isRunning() const {
    return machine_->isRunning();
}
std::vector<StackEntry> Engine::callStack() const {
    return machine_->callStack();
}

std::string Engine::currentFile() const {
    const std::string* file = machine_->currentFile();
    return file ? *file : std::string();
}

} // namespace veldrin::lisp
