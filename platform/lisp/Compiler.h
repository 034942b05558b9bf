// Forms to nodes.
#pragma once

#include "lisp/Machine.h"
#include "lisp/Node.h"

#include <vector>

namespace veldrin::lisp {

class Compiler {
public:
    explicit Compiler(Machine& m) : machine(m) {}

    Machine& machine;

    NodePtr node(const Value& form);
    Operand operand(const Value& form);
    std::vector<Operand> operands(const Value& forms);
    // A call of whatever the head means at the time, without looking at what it means now.
    NodePtr plainCall(const Value& form);

private:
    NodePtr call(const Value& form);
    void countNode();

    int depth_ = 0;
    int nodes_ = 0;
};

inline int lineOf(const Value& form) {
    return form.isCons() ? static_cast<int>(form.cell<Cons>()->info) : 0;
}

// A node whose form meant a built-in when it was compiled. When the name means something else by the time it
// runs, the form is compiled anew, as a plain call.
class GuardedNode : public Node {
protected:
    GuardedNode(const Value& form, const Value& meaning)
        : form_(form), head_(form.car().asSymbol()), meaning_(meaning) {}
    explicit GuardedNode(const Value& form) : GuardedNode(form, form.car().asSymbol()->get()) {}

    bool isIntact() const { return head_->value == meaning_.raw(); }
    Bits detour(Machine& m);
    // Complains of a value and gives it up. Kept out of the callers, whose stack frames recursion multiplies.
    [[noreturn, gnu::cold]] void wrongType(Machine& m, const char* expected, Bits owned) const;
    std::string_view name() const { return head_->name; }
    int line() const { return lineOf(form_); }
    const Value& form() const { return form_; }

private:
    Value form_;
    Symbol* head_;
    Value meaning_;
    NodePtr detour_;
};

// Nodes for calls that are worth their own: arithmetic, comparing, taking lists apart. Null when there is
// none for this function and number of arguments.
NodePtr inlineCall(Compiler& compiler, const BuiltinCell& builtin, const Value& form, std::size_t count);

// A node for (setq s (strcat s ...)); null when the form is another one.
NodePtr appendInPlace(Compiler& compiler, const Value& form);

// The special forms of the language, by name.
struct FormRow {
    const char* name;
    FormCompiler compile;
};
std::span<const FormRow> languageForms();

} // namespace veldrin::lisp
