// The special forms of the language as nodes.
#include "lisp/Compiler.h"

#include <algorithm>

namespace veldrin::lisp {

namespace {

using Body = std::vector<Operand>;

// Runs all and answers the last value, nil for none.
Bits evalBody(const Body& body, Machine& m) {
    if (body.empty()) return bits::nil;
    const auto last = body.end() - 1;
    for (auto it = body.begin(); it != last; ++it) it->run(m);
    return last->get(m);
}

void need(const Value& form, std::int64_t least, std::int64_t most = -1) {
    const std::int64_t count = listLength(form) - 1;
    if (count < least) throw Error::tooFewArguments();
    if (most >= 0 && count > most) throw Error::tooManyArguments();
}

const Value& argument(const Value& form, int index) {
    const Value* at = &form.cdr();
    for (; index > 0; --index) at = &at->cdr();
    return at->car();
}

class QuoteNode final : public GuardedNode {
public:
    explicit QuoteNode(const Value& form) : GuardedNode(form), quoted_(argument(form, 0)) {}
    Bits eval(Machine& m) override { return isIntact() ? Value(quoted_).detach() : detour(m); }

private:
    Value quoted_;
};

class SetqNode final : public GuardedNode {
public:
    SetqNode(const Value& form, Symbol* target, Operand value)
        : GuardedNode(form), target_(target), value_(std::move(value)) {}
    Bits eval(Machine& m) override {
        if (!isIntact()) return detour(m);
        const Bits value = value_.get(m);
        bits::retain(value);
        store(m, value);
        return value;
    }
    void run(Machine& m) override {
        if (!isIntact()) return bits::release(detour(m));
        store(m, value_.get(m));
    }

private:
    void store(Machine& m, Bits value) {
        if (target_->protectedValue == bits::nil)
            bits::release(std::exchange(target_->value, value));
        else
            m.assign(*target_, Value::adopt(value));
    }
    Symbol* target_;
    Operand value_;
};

class SetqManyNode final : public GuardedNode {
public:
    SetqManyNode(const Value& form, std::vector<std::pair<Symbol*, Operand>> pairs)
        : GuardedNode(form), pairs_(std::move(pairs)) {}
    Bits eval(Machine& m) override {
        if (!isIntact()) return detour(m);
        Value value;
        for (const auto& [target, source] : pairs_) {
            value = source.value(m);
            m.assign(*target, value);
        }
        return value.detach();
    }

private:
    std::vector<std::pair<Symbol*, Operand>> pairs_;
};

class IfNode final : public GuardedNode {
public:
    IfNode(const Value& form, Operand test, Operand yes, Operand no)
        : GuardedNode(form), test_(std::move(test)), yes_(std::move(yes)), no_(std::move(no)) {}
    Bits eval(Machine& m) override {
        if (!isIntact()) return detour(m);
        return test_.test(m) ? yes_.get(m) : no_.get(m);
    }
    void run(Machine& m) override {
        if (!isIntact()) return bits::release(detour(m));
        (test_.test(m) ? yes_ : no_).run(m);
    }

private:
    Operand test_, yes_, no_;
};

class CondNode final : public GuardedNode {
public:
    struct Clause {
        Operand test;
        Body body;
    };
    CondNode(const Value& form, std::vector<Clause> clauses)
        : GuardedNode(form), clauses_(std::move(clauses)) {}
    Bits eval(Machine& m) override {
        if (!isIntact()) return detour(m);
        for (const Clause& clause : clauses_) {
            if (clause.body.empty()) {
                if (const Bits value = clause.test.get(m); value != bits::nil) return value;
            } else if (clause.test.test(m)) {
                return evalBody(clause.body, m);
            }
        }
        return bits::nil;
    }

private:
    std::vector<Clause> clauses_;
};

template<bool IsAnd>
class LogicNode final : public GuardedNode {
public:
    LogicNode(const Value& form, Body items) : GuardedNode(form), items_(std::move(items)) {}
    Bits eval(Machine& m) override {
        if (!isIntact()) return detour(m);
        return holds(m) ? Symbol::t().value : bits::nil;
    }
    bool test(Machine& m) override {
        return isIntact() ? holds(m) : Value::adopt(detour(m)).raw() != bits::nil;
    }

private:
    bool holds(Machine& m) const {
        for (const Operand& item : items_)
            if (item.test(m) != IsAnd) return !IsAnd;
        return IsAnd;
    }
    Body items_;
};

class PrognNode final : public GuardedNode {
public:
    PrognNode(const Value& form, Body body) : GuardedNode(form), body_(std::move(body)) {}
    Bits eval(Machine& m) override { return isIntact() ? evalBody(body_, m) : detour(m); }
    void run(Machine& m) override {
        if (!isIntact()) return bits::release(detour(m));
        for (const Operand& item : body_) item.run(m);
    }

private:
    Body body_;
};

class WhileNode final : public GuardedNode {
public:
    WhileNode(const Value& form, Operand test, Body body)
        : GuardedNode(form), test_(std::move(test)), body_(std::move(body)) {}
    Bits eval(Machine& m) override {
        if (!isIntact()) return detour(m);
        Value last;
        while (test_.test(m)) {
            m.poll();
            last = {}; // a text that grows in place has no other holder
            last = Value::adopt(evalBody(body_, m));
        }
        return last.detach();
    }
    void run(Machine& m) override {
        if (!isIntact()) return bits::release(detour(m));
        while (test_.test(m)) {
            m.poll();
            for (const Operand& item : body_) item.run(m);
        }
    }

private:
    Operand test_;
    Body body_;
};

class RepeatNode final : public GuardedNode {
public:
    RepeatNode(const Value& form, Operand count, Body body)
        : GuardedNode(form), count_(std::move(count)), body_(std::move(body)) {}
    Bits eval(Machine& m) override {
        if (!isIntact()) return detour(m);
        const Bits count = count_.get(m);
        if (!bits::isInteger(count)) wrongType(m, "fixnump:", count);
        Value last;
        for (std::int32_t left = bits::toInteger(count); left > 0; --left) {
            m.poll();
            last = {};
            last = Value::adopt(evalBody(body_, m));
        }
        return last.detach();
    }

private:
    Operand count_;
    Body body_;
};

class ForeachNode final : public GuardedNode {
public:
    ForeachNode(const Value& form, Symbol* variable, Operand list, Body body)
        : GuardedNode(form), variable_(variable), list_(std::move(list)), body_(std::move(body)) {}
    Bits eval(Machine& m) override {
        if (!isIntact()) return detour(m);
        Value items = list_.value(m);
        if (!items.isList()) wrongType(m, "listp", items.detach());
        const std::size_t outer = m.bindingCount();
        m.bind(variable_, bits::nil);
        Value last;
        for (const Value& item : ListView(items)) {
            m.poll();
            variable_->set(item);
            last = {};
            last = Value::adopt(evalBody(body_, m));
        }
        m.unbindTo(outer);
        return last.detach();
    }

private:
    Symbol* variable_;
    Operand list_;
    Body body_;
};

class LambdaNode final : public GuardedNode { // there are no closures: one function serves all evaluations
public:
    LambdaNode(Machine& m, const Value& form)
        : GuardedNode(form), function_(m.makeFunction({}, argument(form, 0), form.cdr().cdr())) {}
    Bits eval(Machine& m) override { return isIntact() ? Value(function_).detach() : detour(m); }

private:
    Value function_;
};

class DefunNode final : public GuardedNode {
public:
    DefunNode(const Value& form, Symbol* target, Value meaning)
        : GuardedNode(form), target_(target), function_(std::move(meaning)) {}
    Bits eval(Machine& m) override {
        if (!isIntact()) return detour(m);
        m.assign(*target_, function_);
        return Value::symbol(target_).detach();
    }

private:
    Symbol* target_;
    Value function_;
};

// ---- From forms

NodePtr compileQuote(Compiler&, const Value& form) {
    need(form, 1, 1);
    return std::make_unique<QuoteNode>(form);
}

NodePtr compileFunction(Compiler& c, const Value& form) {
    need(form, 1, 1);
    const Value& quoted = argument(form, 0);
    const bool isLambda =
        quoted.isCons() && quoted.car().isSymbol() && quoted.car().asSymbol() == c.machine.lambda;
    return isLambda ? c.node(quoted) : std::make_unique<QuoteNode>(form);
}

Symbol* target(const Value& name) {
    if (!name.isSymbol()) throw Error::badArgument("symbolp", name);
    return name.asSymbol();
}

NodePtr compileProgn(Compiler& c, const Value& form);

NodePtr compileSetq(Compiler& c, const Value& form) {
    if (form.cdr().isNil()) return compileProgn(c, form);
    if (listLength(form) % 2 == 0 || !form.cdr().isCons()) throw Error::tooFewArguments();
    if (NodePtr node = appendInPlace(c, form)) return node;
    std::vector<std::pair<Symbol*, Operand>> pairs;
    for (const Value* at = &form.cdr(); at->isCons(); at = &at->cdr().cdr())
        pairs.emplace_back(target(at->car()), c.operand(at->cdr().car()));
    if (pairs.size() != 1) return std::make_unique<SetqManyNode>(form, std::move(pairs));
    return std::make_unique<SetqNode>(form, pairs[0].first, std::move(pairs[0].second));
}

NodePtr compileIf(Compiler& c, const Value& form) {
    need(form, 2, 3);
    Operand test = c.operand(argument(form, 0));
    Operand yes = c.operand(argument(form, 1));
    return std::make_unique<IfNode>(form, std::move(test), std::move(yes), c.operand(argument(form, 2)));
}

NodePtr compileCond(Compiler& c, const Value& form) {
    std::vector<CondNode::Clause> clauses;
    for (const Value& clause : ListView(form.cdr())) {
        if (!clause.isCons()) throw Error::badArgument("listp", clause);
        clauses.push_back({c.operand(clause.car()), c.operands(clause.cdr())});
    }
    return std::make_unique<CondNode>(form, std::move(clauses));
}

template<bool IsAnd>
NodePtr compileLogic(Compiler& c, const Value& form) {
    return std::make_unique<LogicNode<IsAnd>>(form, c.operands(form.cdr()));
}

NodePtr compileProgn(Compiler& c, const Value& form) {
    return std::make_unique<PrognNode>(form, c.operands(form.cdr()));
}

template<class Loop>
NodePtr compileLoop(Compiler& c, const Value& form) {
    need(form, 1);
    Operand head = c.operand(argument(form, 0));
    return std::make_unique<Loop>(form, std::move(head), c.operands(form.cdr().cdr()));
}

NodePtr compileForeach(Compiler& c, const Value& form) {
    need(form, 2);
    Symbol* variable = target(argument(form, 0));
    Operand items = c.operand(argument(form, 1));
    return std::make_unique<ForeachNode>(form, variable, std::move(items),
                                         c.operands(form.cdr().cdr().cdr()));
}

NodePtr compileLambda(Compiler& c, const Value& form) {
    need(form, 1);
    return std::make_unique<LambdaNode>(c.machine, form);
}

NodePtr compileDefun(Compiler& c, const Value& form) {
    need(form, 2);
    Symbol* name = target(argument(form, 0));
    return std::make_unique<DefunNode>(
        form, name, c.machine.makeFunction(name->name, argument(form, 1), form.cdr().cdr().cdr()));
}

NodePtr compileDefunQ(Compiler& c, const Value& form) { // keeps the definition as a list
    need(form, 2);
    c.machine.makeFunction({}, argument(form, 1), Value());
    return std::make_unique<DefunNode>(form, target(argument(form, 0)), form.cdr().cdr());
}

constexpr FormRow rows[] = {
    {"quote", compileQuote},
    {"function", compileFunction},
    {"setq", compileSetq},
    {"if", compileIf},
    {"cond", compileCond},
    {"and", compileLogic<true>},
    {"or", compileLogic<false>},
    {"progn", compileProgn},
    {"while", compileLoop<WhileNode>},
    {"repeat", compileLoop<RepeatNode>},
    {"foreach", compileForeach},
    {"lambda", compileLambda},
    {"defun", compileDefun},
    {"defun-q", compileDefunQ},
};

} // namespace

std::span<const FormRow> languageForms() {
    return rows;
}

} // namespace veldrin::lisp
