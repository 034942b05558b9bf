// Compiled code: a tree of nodes, made from a form when it is first evaluated.
//
// A node answers bits that carry one reference, which the caller owns. Bits that wait while other code runs
// must stand where an exception finds them: in a Value, or on the machine's binding stack. Integers and reals
// carry no reference and may wait anywhere.
#pragma once

#include "lisp/Value.h"

#include <memory>
#include <utility>

namespace veldrin::lisp {

class Machine;

class Node {
public:
    virtual ~Node() = default;
    virtual Bits eval(Machine& m) = 0;
    // Only whether the value is other than nil.
    virtual bool test(Machine& m) {
        const Bits b = eval(m);
        bits::release(b);
        return b != bits::nil;
    }
    // Only what it does.
    virtual void run(Machine& m) { bits::release(eval(m)); }
};

using NodePtr = std::unique_ptr<Node>;

// Where a node gets a value from: variables and constants are read without a call.
class Operand {
public:
    explicit Operand(Symbol* variable) : kind_(From::Variable), symbol_(variable) {}
    explicit Operand(const Value& constant) : kind_(From::Constant), bits_(Value(constant).detach()) {}
    explicit Operand(NodePtr node) : kind_(From::Node), node_(node.release()) {}
    Operand(Operand&& other) noexcept : kind_(other.kind_), bits_(other.bits_) {
        other.kind_ = From::Constant;
        other.bits_ = bits::nil;
    }
    Operand& operator=(Operand&&) = delete;
    ~Operand() {
        if (kind_ == From::Node) delete node_;
        if (kind_ == From::Constant) bits::release(bits_);
    }

    Bits get(Machine& m) const {
        if (kind_ == From::Node) return node_->eval(m);
        const Bits b = kind_ == From::Variable ? symbol_->value : bits_;
        bits::retain(b);
        return b;
    }
    Value value(Machine& m) const { return Value::adopt(get(m)); }
    bool test(Machine& m) const {
        if (kind_ == From::Node) return node_->test(m);
        return (kind_ == From::Variable ? symbol_->value : bits_) != bits::nil;
    }
    void run(Machine& m) const {
        if (kind_ == From::Node) node_->run(m);
    }
    // The variable that it reads; null for others.
    Symbol* variable() const { return kind_ == From::Variable ? symbol_ : nullptr; }

private:
    enum class From : std::uint8_t { Variable, Constant, Node };
    From kind_;
    union {
        Symbol* symbol_;
        Bits bits_;
        Node* node_;
    };
};

} // namespace veldrin::lisp
