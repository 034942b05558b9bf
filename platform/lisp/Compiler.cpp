#include "lisp/Compiler.h"

namespace veldrin::lisp {

namespace {

constexpr int deepestNesting = 4000; // of parentheses in code
constexpr int mostNodes = 1'000'000; // of one form: a list that holds others many times over may have endless

class OperandNode : public Node { // an atom that stands where a node is asked for
public:
    explicit OperandNode(Operand operand) : operand_(std::move(operand)) {}
    Bits eval(Machine& m) override { return operand_.get(m); }
    bool test(Machine& m) override { return operand_.test(m); }
    void run(Machine&) override {}

private:
    Operand operand_;
};

class FailingNode : public Node { // a form that is wrong, but an error only if it is ever reached
public:
    FailingNode(Error error, std::string name, int line)
        : error_(std::move(error)), name_(std::move(name)), line_(line) {}
    Bits eval(Machine& m) override { m.fail(error_, name_, line_); }

private:
    Error error_;
    std::string name_;
    int line_;
};

class SpecialNode : public Node { // a special form of another room, which evaluates by itself
public:
    SpecialNode(const Value& form, const Value& builtin) : form_(form), builtin_(builtin) {}
    Bits eval(Machine& m) override {
        const auto& cell = *static_cast<BuiltinCell*>(builtin_.cell<Cell>());
        try {
            return cell.special(m.engine, form_).detach();
        } catch (Error& error) {
            m.locate(error, cell.name, lineOf(form_));
            throw;
        }
    }

private:
    Value form_, builtin_;
};

class CallNode : public Node {
public:
    CallNode(const Value& form, Symbol* head, std::vector<Operand> args)
        : form_(form), head_(head), args_(std::move(args)) {}
    Bits eval(Machine& m) override;

private:
    Bits callFunction(Machine& m, FunctionCell& function);
    template<std::size_t N>
    Bits callWith(Machine& m, BuiltinCell& builtin);
    Bits callBuiltin(Machine& m, BuiltinCell& builtin);
    Bits callSpecial(Machine& m, const Value& special);
    Bits callOther(Machine& m);
    int line() const { return lineOf(form_); }

    Value form_;
    Symbol* head_;
    std::vector<Operand> args_;
    Value special_; // what special form `specialNode_` was compiled for
    std::shared_ptr<Node> specialNode_;
};

Bits CallNode::eval(Machine& m) {
    const Bits f = head_->value;
    if (bits::isObject(f)) {
        auto* cell = bits::toPointer<Cell>(f);
        if (cell->info == static_cast<std::uint32_t>(Kind::Function))
            return callFunction(m, *static_cast<FunctionCell*>(cell));
        if (cell->info == static_cast<std::uint32_t>(Kind::Builtin))
            return callBuiltin(m, *static_cast<BuiltinCell*>(cell));
    }
    return callOther(m);
}

Bits CallNode::callFunction(Machine& m, FunctionCell& function) {
    const std::size_t count = args_.size();
    if (count != function.parameters.size()) m.failCount(function, count, line());
    ++function.refs;
    m.pushTemporary(bits::ofPointer(bits::tagObject, static_cast<Cell*>(&function)));
    for (const Operand& arg : args_) {
        const Bits value = arg.get(m);
        m.pushTemporary(value);
    }
    return m.enter(function, count, line());
}

template<std::size_t N>
Bits CallNode::callWith(Machine& m, BuiltinCell& builtin) {
    Value values[N ? N : 1];
    for (std::size_t i = 0; i < N; ++i) values[i] = args_[i].value(m);
    return m.callBuiltin(builtin, Args(values, N), line()).detach();
}

Bits CallNode::callBuiltin(Machine& m, BuiltinCell& builtin) {
    if (builtin.isSpecial()) return callSpecial(m, head_->get());
    switch (args_.size()) {
    case 0: return callWith<0>(m, builtin);
    case 1: return callWith<1>(m, builtin);
    case 2: return callWith<2>(m, builtin);
    case 3: return callWith<3>(m, builtin);
    default: break;
    }
    std::vector<Value> values;
    values.reserve(args_.size());
    for (const Operand& arg : args_) values.push_back(arg.value(m));
    return m.callBuiltin(builtin, Args(values.data(), values.size()), line()).detach();
}

Bits CallNode::callSpecial(Machine& m, const Value& special) {
    if (special_.raw() != special.raw()) {
        specialNode_ = Compiler(m).node(form_);
        special_ = special;
    }
    const auto running = specialNode_;
    return running->eval(m);
}

Bits CallNode::callOther(Machine& m) {
    Value function;
    try {
        function = m.callee(Value::symbol(head_));
    } catch (Error& error) {
        m.locate(error, {}, line());
        throw;
    }
    if (function.is(Kind::Function))
        return callFunction(m, *static_cast<FunctionCell*>(function.cell<Cell>()));
    if (function.is(Kind::Builtin)) {
        auto& builtin = *static_cast<BuiltinCell*>(function.cell<Cell>());
        if (!builtin.isSpecial()) return callBuiltin(m, builtin);
        return m.apply(function, Args(nullptr, 0)).detach();
    }
    std::vector<Value> values;
    values.reserve(args_.size());
    for (const Operand& arg : args_) values.push_back(arg.value(m));
    auto& external = *static_cast<ExternalCell*>(function.cell<Cell>());
    return m.callExternal(external, Args(values.data(), values.size()), line()).detach();
}

class ComputedCallNode : public Node { // ((lambda (x) ...) 1)
public:
    ComputedCallNode(const Value& form, std::vector<Operand> args) : form_(form), args_(std::move(args)) {}
    Bits eval(Machine& m) override {
        try {
            if (!function_) function_ = m.callee(form_.car());
        } catch (Error& error) {
            m.locate(error, {}, lineOf(form_));
            throw;
        }
        std::vector<Value> values;
        values.reserve(args_.size());
        for (const Operand& arg : args_) values.push_back(arg.value(m));
        return m.apply(function_, Args(values.data(), values.size())).detach();
    }

private:
    Value form_, function_;
    std::vector<Operand> args_;
};

} // namespace

Bits GuardedNode::detour(Machine& m) {
    if (!detour_) detour_ = Compiler(m).plainCall(form_);
    return detour_->eval(m);
}

void GuardedNode::wrongType(Machine& m, const char* expected, Bits owned) const {
    m.fail(Error::badArgument(expected, Value::adopt(owned)), name(), line());
}

Operand Compiler::operand(const Value& form) {
    if (form.isSymbol()) return Operand(form.asSymbol());
    if (form.isCons()) return Operand(node(form));
    return Operand(form);
}

std::vector<Operand> Compiler::operands(const Value& forms) {
    std::vector<Operand> result;
    for (const Value& form : ListView(forms)) result.push_back(operand(form));
    return result;
}

void Compiler::countNode() {
    machine.poll();
    if (++nodes_ >= mostNodes) throw Error("hard error occurred ***<code too large>");
}

NodePtr Compiler::node(const Value& form) {
    if (!form.isCons()) return std::make_unique<OperandNode>(operand(form));
    machine.checkStack();
    countNode();
    if (depth_ >= deepestNesting) throw Error("hard error occurred ***<code nested too deeply>");
    ++depth_;
    NodePtr result;
    try {
        result = call(form);
    } catch (Error& error) {
        if (nodes_ >= mostNodes || error.reason == Error::Reason::Break) throw;
        const Value& head = form.car();
        result =
            std::make_unique<FailingNode>(error, head.isSymbol() ? head.asSymbol()->name : "", lineOf(form));
    }
    --depth_;
    return result;
}

NodePtr Compiler::plainCall(const Value& form) {
    return std::make_unique<CallNode>(form, form.car().asSymbol(), operands(form.cdr()));
}

NodePtr Compiler::call(const Value& form) {
    const Value& head = form.car();
    if (listLength(form) < 0) throw Error("bad argument list");
    if (!head.isSymbol()) return std::make_unique<ComputedCallNode>(form, operands(form.cdr()));
    const Value meaning = head.asSymbol()->get();
    if (!meaning.is(Kind::Builtin)) return plainCall(form);
    const auto& builtin = *static_cast<BuiltinCell*>(meaning.cell<Cell>());
    if (builtin.compile) return builtin.compile(*this, form);
    if (builtin.special) return std::make_unique<SpecialNode>(form, meaning);
    const auto count = static_cast<std::size_t>(listLength(form)) - 1;
    if (NodePtr node = inlineCall(*this, builtin, form, count)) return node;
    return plainCall(form);
}

} // namespace veldrin::lisp
