// Compiled calls of the functions that programs spend their time in.
#include "lisp/Compiler.h"
#include "lisp/NumberOps.h"

#include <string_view>
#include <type_traits>
#include <utility>

namespace veldrin::lisp {

namespace {

constexpr bool isNumberBits(Bits b) {
    return b < bits::nil;
}
double toNumber(Bits b) {
    return bits::isInteger(b) ? bits::toInteger(b) : bits::toReal(b);
}
Bits truth(bool b) {
    return b ? Symbol::t().value : bits::nil;
}

template<class Op>
class ArithmeticNode final : public GuardedNode {
public:
    ArithmeticNode(const Value& form, Operand a, Operand b)
        : GuardedNode(form), a_(std::move(a)), b_(std::move(b)) {}
    Bits eval(Machine& m) override {
        if (!isIntact()) return detour(m);
        const Bits x = a_.get(m);
        if (!isNumberBits(x)) wrongType(m, "numberp:", x);
        const Bits y = b_.get(m);
        if (!isNumberBits(y)) wrongType(m, "numberp:", y);
        if constexpr (std::is_same_v<Op, Divide>) {
            if (toNumber(y) == 0) divideByZero(m);
        }
        if (bits::isInteger(x) && bits::isInteger(y))
            return bits::ofInteger(Op::of(bits::toInteger(x), bits::toInteger(y)));
        return bits::ofReal(Op::of(toNumber(x), toNumber(y)));
    }

private:
    [[noreturn, gnu::cold]] void divideByZero(Machine& m) { m.fail(Error::divideByZero(), name(), line()); }
    Operand a_, b_;
};

template<class Op>
class CompareNode final : public GuardedNode {
public:
    CompareNode(const Value& form, Operand a, Operand b)
        : GuardedNode(form), a_(std::move(a)), b_(std::move(b)) {}
    Bits eval(Machine& m) override { return isIntact() ? truth(holds(m)) : detour(m); }
    bool test(Machine& m) override {
        return isIntact() ? holds(m) : Value::adopt(detour(m)).raw() != bits::nil;
    }

private:
    bool holds(Machine& m) {
        const Bits x = a_.get(m);
        if (!isNumberBits(x)) return slow(m, x);
        const Bits y = b_.get(m);
        if (bits::isInteger(x) && bits::isInteger(y)) return Op::of(bits::toInteger(x), bits::toInteger(y));
        if (isNumberBits(y)) return Op::of(toNumber(x), toNumber(y));
        return compare(m, Value::adopt(x), Value::adopt(y));
    }
    [[gnu::noinline]] bool slow(Machine& m, Bits x) {
        const Value first = Value::adopt(x);
        return compare(m, first, b_.value(m));
    }
    [[gnu::noinline]] bool compare(Machine& m, const Value& x, const Value& y) {
        try {
            return compares<Op>(x, y);
        } catch (Error& error) {
            m.locate(error, name(), line());
            throw;
        }
    }
    Operand a_, b_;
};

template<int Step>
class StepNode final : public GuardedNode { // 1+ and 1-
public:
    StepNode(const Value& form, Operand a) : GuardedNode(form), a_(std::move(a)) {}
    Bits eval(Machine& m) override {
        if (!isIntact()) return detour(m);
        const Bits x = a_.get(m);
        if (bits::isInteger(x)) return bits::ofInteger(Plus::of(bits::toInteger(x), Step));
        if (bits::isReal(x)) return bits::ofReal(bits::toReal(x) + Step);
        wrongType(m, "numberp:", x);
    }

private:
    Operand a_;
};

class NotNode final : public GuardedNode {
public:
    NotNode(const Value& form, Operand a) : GuardedNode(form), a_(std::move(a)) {}
    Bits eval(Machine& m) override { return isIntact() ? truth(!a_.test(m)) : detour(m); }
    bool test(Machine& m) override {
        return isIntact() ? !a_.test(m) : Value::adopt(detour(m)).raw() != bits::nil;
    }

private:
    Operand a_;
};

// car, cdr and their combinations: the letters between c and r, taken from the last to the first.
class PathNode final : public GuardedNode {
public:
    PathNode(const Value& form, Operand a)
        : GuardedNode(form), path_(name().substr(1, name().size() - 2)), a_(std::move(a)) {}
    Bits eval(Machine& m) override {
        if (!isIntact()) return detour(m);
        if (const Symbol* variable = a_.variable()) return follow(m, variable->value);
        const Value list = a_.value(m);
        return follow(m, list.raw());
    }

private:
    Bits follow(Machine& m, Bits b) {
        for (std::size_t i = path_.size(); i-- > 0;) {
            if (bits::isCons(b)) {
                const auto* cons = bits::toPointer<Cons>(b);
                b = (path_[i] == 'A' ? cons->car : cons->cdr).raw();
            } else if (b != bits::nil) {
                wrongType(m, i + 1 == path_.size() ? "listp" : "consp", Value::share(b).detach());
            }
        }
        bits::retain(b);
        return b;
    }
    std::string_view path_;
    Operand a_;
};

class ConsNode final : public GuardedNode {
public:
    ConsNode(const Value& form, Operand a, Operand b)
        : GuardedNode(form), a_(std::move(a)), b_(std::move(b)) {}
    Bits eval(Machine& m) override {
        if (!isIntact()) return detour(m);
        Value first = a_.value(m);
        Value second = b_.value(m);
        return Heap::instance().newCons(std::move(first), std::move(second));
    }

private:
    Operand a_, b_;
};

class EqNode final : public GuardedNode {
public:
    EqNode(const Value& form, Operand a, Operand b) : GuardedNode(form), a_(std::move(a)), b_(std::move(b)) {}
    Bits eval(Machine& m) override {
        if (!isIntact()) return detour(m);
        const Value first = a_.value(m);
        return truth(first.isSame(b_.value(m)));
    }

private:
    Operand a_, b_;
};

template<class N>
NodePtr one(Compiler& c, const Value& form) {
    return std::make_unique<N>(form, c.operand(form.cdr().car()));
}
template<class N>
NodePtr two(Compiler& c, const Value& form) {
    Operand first = c.operand(form.cdr().car());
    return std::make_unique<N>(form, std::move(first), c.operand(form.cdr().cdr().car()));
}

struct InlineRow {
    std::string_view name;
    std::size_t args;
    NodePtr (*make)(Compiler&, const Value&);
};

constexpr InlineRow inlineRows[] = {
    {"+", 2, two<ArithmeticNode<Plus>>},
    {"-", 2, two<ArithmeticNode<Minus>>},
    {"*", 2, two<ArithmeticNode<Times>>},
    {"/", 2, two<ArithmeticNode<Divide>>},
    {"1+", 1, one<StepNode<1>>},
    {"1-", 1, one<StepNode<-1>>},
    {"=", 2, two<CompareNode<Equal>>},
    {"/=", 2, two<CompareNode<NotEqual>>},
    {"<", 2, two<CompareNode<Less>>},
    {"<=", 2, two<CompareNode<LessOrEqual>>},
    {">", 2, two<CompareNode<Greater>>},
    {">=", 2, two<CompareNode<GreaterOrEqual>>},
    {"NOT", 1, one<NotNode>},
    {"NULL", 1, one<NotNode>},
    {"CONS", 2, two<ConsNode>},
    {"EQ", 2, two<EqNode>},
    {"CAR", 1, one<PathNode>},
    {"CDR", 1, one<PathNode>},
    {"CAAR", 1, one<PathNode>},
    {"CADR", 1, one<PathNode>},
    {"CDDR", 1, one<PathNode>},
    {"CDAR", 1, one<PathNode>},
    {"CADDR", 1, one<PathNode>},
};

} // namespace

NodePtr inlineCall(Compiler& compiler, const BuiltinCell& builtin, const Value& form, std::size_t count) {
    // A name that was given another built-in (setq plus +) keeps to the plain call.
    if (form.car().asSymbol()->name != builtin.name) return nullptr;
    for (const InlineRow& row : inlineRows)
        if (row.name == builtin.name && row.args == count) return row.make(compiler, form);
    return nullptr;
}

} // namespace veldrin::lisp
