#include "lisp/Machine.h"

#include "lisp/Characters.h"
#include "lisp/Compiler.h"
#include "lisp/LargeStack.h"

#include <algorithm>
#include <cstdlib>
#include <new>

namespace veldrin::lisp {

namespace {
constexpr std::size_t firstBindings = 4096;
constexpr std::size_t mostBindings = std::size_t{1} << 26;
} // namespace

Machine::Machine(Engine& e)
    : engine(e)
    , bindings_(static_cast<Binding*>(std::malloc(firstBindings * sizeof(Binding))))
    , top_(bindings_)
    , end_(bindings_ + firstBindings)
    , depthLimit_(static_cast<std::size_t>(e.limits().callDepth)) {
    if (!bindings_) throw std::bad_alloc();
    symbols_.emplace(Symbol::t().name, &Symbol::t());
    lambda = &intern("LAMBDA");
    slash = &intern("/");
    errorHandler = &intern("*ERROR*");
    stackEnd_ = threadStackSoftEnd();
}

Machine::~Machine() {
    unbindTo(0);
    for (auto& entry : lambdas_) entry = {};
    for (auto& symbol : ownSymbols_) symbol->set({});
    builtins_.clear();
    std::free(bindings_);
}

Symbol& Machine::intern(std::string_view name) {
    std::string upper = upperCase(name);
    if (const auto it = symbols_.find(upper); it != symbols_.end()) return *it->second;
    auto& symbol = *ownSymbols_.emplace_back(std::make_unique<Symbol>(std::move(upper)));
    symbols_.emplace(symbol.name, &symbol);
    return symbol;
}

Symbol* Machine::find(std::string_view name) const {
    const auto it = symbols_.find(upperCase(name));
    return it == symbols_.end() ? nullptr : it->second;
}

const std::string* Machine::fileName(std::string_view name) {
    if (name.empty()) return nullptr;
    return &*fileNames_.emplace(name).first;
}

// The source of the code that runs with `depth` calls active: of a file that began to load at that depth,
// else of the innermost function.
const std::string* Machine::fileAt(std::size_t depth) const {
    for (std::size_t i = files_.size(); i-- > 0 && files_[i].depth >= depth;)
        if (files_[i].depth == depth) return files_[i].name;
    return depth == 0 ? nullptr : frames_[depth - 1].function->file;
}

void Machine::defineBuiltin(std::unique_ptr<BuiltinCell> cell) {
    Symbol& symbol = intern(cell->name);
    cell->name = symbol.name;
    symbol.set(builtins_.emplace_back(ownObject(cell.release())));
}

void Machine::growBindings() {
    const auto count = bindingCount();
    if (count * 2 > mostBindings) stackOverflow();
    auto* grown = static_cast<Binding*>(std::realloc(bindings_, 2 * count * sizeof(Binding)));
    if (!grown) throw std::bad_alloc();
    bindings_ = grown;
    top_ = grown + count;
    end_ = grown + 2 * count;
}

// ---- Evaluating

Value Machine::evaluate(const Value& form) {
    if (form.isSymbol()) return form.asSymbol()->get();
    if (!form.isCons()) return form;
    const NodePtr node = Compiler(*this).node(form);
    return Value::adopt(node->eval(*this));
}

void Machine::enterSlow() {
    if (frames_.size() >= depthLimit_) stackOverflow();
    checkStack();
    poll();
}

Bits Machine::enter(FunctionCell& function, std::size_t count, int line) {
    if (frames_.size() >= depthLimit_ ||
        reinterpret_cast<std::uintptr_t>(__builtin_frame_address(0)) < stackEnd_ || isInterrupted())
        [[unlikely]]
        enterSlow();
    const std::size_t base = bindingCount() - count;
    frames_.push_back({&function, line});
    if (!function.isCompiled) compileBody(function);
    Binding* binding = bindings_ + base;
    for (Symbol* parameter : function.parameters) {
        std::swap(binding->value, parameter->value);
        binding->symbol = parameter;
        ++binding;
    }
    for (Symbol* local : function.locals) bind(local, bits::nil);
    Bits result = bits::nil;
    if (!function.body.empty()) {
        const auto last = function.body.end() - 1;
        for (auto it = function.body.begin(); it != last; ++it) (*it)->run(*this);
        result = (*last)->eval(*this);
    }
    frames_.pop_back();
    unbindTo(base - 1);
    return result;
}

void Machine::compileBody(FunctionCell& function) {
    Compiler compiler(*this);
    std::vector<NodePtr> body;
    for (const Value& form : ListView(function.forms)) body.push_back(compiler.node(form));
    function.body = std::move(body);
    function.isCompiled = true;
}

Value Machine::makeFunction(std::string name, const Value& parameters, const Value& body) {
    if (!parameters.isList()) throw Error::badArgument("listp", parameters);
    auto* cell = new FunctionCell;
    Value function = ownObject(cell);
    cell->name = std::move(name);
    cell->file = currentFile();
    cell->forms = body;
    bool areLocals = false;
    for (const Value& item : ListView(parameters)) {
        if (!item.isSymbol()) throw Error::badArgument("symbolp", item);
        if (item.asSymbol() == slash)
            areLocals = true;
        else
            (areLocals ? cell->locals : cell->parameters).push_back(item.asSymbol());
    }
    return function;
}

// A quoted lambda list is compiled once, however often it is applied: lists do not change, so a list that
// is kept alive stands for its function for good.
Value Machine::lambdaOf(const Value& list) {
    auto& slot = lambdas_[(list.raw() >> 4) % lambdas_.size()];
    if (slot.form.raw() == list.raw()) return slot.function;
    const bool named = list.car().isSymbol() && list.car().asSymbol() == lambda;
    const Value& rest = named ? list.cdr() : list;
    if (!rest.car().isList() || (named && !rest.isCons())) throw Error::badFunction(list);
    Value function = makeFunction({}, rest.car(), rest.cdr());
    slot.form = list;
    slot.function = function;
    return function;
}

Value Machine::callee(const Value& function) {
    Value f = function;
    for (int step = 0; f.isSymbol() && step < 100; ++step) {
        Symbol& symbol = *f.asSymbol();
        if (symbol.value == bits::nil) throw Error("no function definition: " + symbol.name);
        if (symbol.value == f.raw()) break;
        f = symbol.get();
    }
    if (f.isCons()) return lambdaOf(f);
    if (!f.is(Kind::Function) && !f.is(Kind::Builtin) && !f.is(Kind::External)) throw Error::badFunction(f);
    return f;
}

Value Machine::callBuiltin(BuiltinCell& builtin, Args args, int line) {
    try {
        if (!builtin.takes(args.size())) {
            const bool few = args.size() < static_cast<std::size_t>(builtin.minArgs);
            throw few ? Error::tooFewArguments() : Error::tooManyArguments();
        }
        Value result = builtin.function(engine, args);
        goOnWithPending();
        return result;
    } catch (Error& error) {
        locate(error, builtin.name, line);
        throw;
    }
}

Value Machine::callExternal(ExternalCell& external, Args args, int line) {
    const Value keep = Value::share(bits::ofPointer(bits::tagObject, static_cast<Cell*>(&external)));
    checkStack();
    try {
        Value result = external.function(engine, args);
        goOnWithPending();
        return result;
    } catch (Error& error) {
        locate(error, external.name, line);
        throw;
    }
}

Value Machine::apply(const Value& function, Args args) {
    const Value f = callee(function);
    checkStack();
    auto* cell = f.cell<Cell>();
    if (f.is(Kind::Builtin)) {
        auto& builtin = *static_cast<BuiltinCell*>(cell);
        if (!builtin.isSpecial()) return callBuiltin(builtin, args, 0);
        ListBuilder form; // (and 'a 'b)
        form.add(Value::symbol(&intern(builtin.name)));
        for (const Value& arg : args) form.add(list(Value::symbol(&intern("QUOTE")), arg));
        const Value call = form.finish();
        if (builtin.special) return builtin.special(engine, call);
        Compiler compiler(*this);
        const NodePtr node = builtin.compile(compiler, call);
        return Value::adopt(node->eval(*this));
    }
    if (f.is(Kind::External)) return callExternal(*static_cast<ExternalCell*>(cell), args, 0);
    auto& target = *static_cast<FunctionCell*>(cell);
    if (args.size() != target.parameters.size()) failCount(target, args.size(), 0);
    pushTemporary(Value(f).detach());
    for (const Value& arg : args) pushTemporary(Value(arg).detach());
    return Value::adopt(enter(target, args.size(), 0));
}

void Machine::assign(Symbol& symbol, Value value) {
    if (symbol.isProtected()) {
        engine.print("\n; warning: assignment to protected symbol: " + symbol.name + "\n");
        return;
    }
    symbol.set(std::move(value));
}

// ---- Safety

void Machine::interruptNow() {
    if (engine.interrupt_.load(std::memory_order_relaxed) == Engine::Interrupt::End) throw Quit(1);
    engine.clearBreak();
    throw Error::breakRequested();
}

void Machine::stackOverflow() {
    throw Error("hard error occurred ***<internal stack limit reached>");
}

void Machine::unwind(const Mark& mark) {
    unbindTo(mark.bindings);
    while (frames_.size() > mark.frames) frames_.pop_back();
    while (files_.size() > mark.files) files_.pop_back();
}

} // namespace veldrin::lisp
