// (setq s (strcat s ...)): a text that only its variable holds grows in place, so that building a text piece
// by piece takes time in proportion to its length.
#include "lisp/Compiler.h"

#include <algorithm>

namespace veldrin::lisp {

namespace {

class AppendNode final : public GuardedNode {
public:
    AppendNode(const Value& form, const Value& call, std::vector<Operand> parts)
        : GuardedNode(form)
        , target_(form.cdr().car().asSymbol())
        , call_(call)
        , strcat_(call.car().asSymbol())
        , meaning_(strcat_->get())
        , parts_(std::move(parts)) {}
    Bits eval(Machine& m) override {
        if (!isIntact() || strcat_->value != meaning_.raw()) return detour(m);
        std::vector<Value> texts;
        texts.reserve(parts_.size() + 1);
        texts.push_back(target_->get());
        for (const Operand& part : parts_) texts.push_back(part.value(m));
        if (canGrow(texts)) {
            texts[0] = {};
            grow(texts);
        } else {
            auto& builtin = *static_cast<BuiltinCell*>(meaning_.cell<Cell>());
            m.assign(*target_, m.callBuiltin(builtin, Args(texts.data(), texts.size()), lineOf(call_)));
        }
        return target_->get().detach();
    }

private:
    // The variable and `texts` are the only holders, and the variable was not set anew by the other parts.
    bool canGrow(const std::vector<Value>& texts) const {
        return texts[0].raw() == target_->value && texts[0].isText() && texts[0].cell<Cell>()->refs == 2 &&
               std::all_of(texts.begin(), texts.end(), [](const Value& t) { return t.isText(); });
    }
    void grow(const std::vector<Value>& texts) {
        std::size_t added = 0;
        bool isAscii = true;
        for (std::size_t i = 1; i < texts.size(); ++i) {
            added += texts[i].asText().size();
            isAscii = isAscii && texts[i].isAscii();
        }
        auto* cell = bits::toPointer<TextCell>(target_->value);
        const std::size_t size = cell->size + added;
        if (size > cell->capacity) {
            target_->value = Heap::instance().growText(target_->value, 2 * size);
            cell = bits::toPointer<TextCell>(target_->value);
        }
        char* at = cell->chars() + cell->size;
        for (std::size_t i = 1; i < texts.size(); ++i)
            at = std::copy_n(texts[i].asText().data(), texts[i].asText().size(), at);
        *at = '\0';
        cell->size = static_cast<std::uint32_t>(size);
        if (!isAscii) cell->info = 0;
    }

    Symbol* target_;
    Value call_;
    Symbol* strcat_;
    Value meaning_;
    std::vector<Operand> parts_;
};

} // namespace

NodePtr appendInPlace(Compiler& compiler, const Value& form) {
    constexpr std::int64_t kOnePair = 3; // setq, the variable and its value
    if (listLength(form) != kOnePair) return nullptr;
    const Value &target = form.cdr().car(), &call = form.cdr().cdr().car();
    if (!call.isCons() || listLength(call) < 3 || !call.car().isSymbol() || !target.isSymbol())
        return nullptr;
    if (call.cdr().car().raw() != target.raw() || target.asSymbol()->isProtected()) return nullptr;
    const Value meaning = call.car().asSymbol()->get();
    if (!meaning.is(Kind::Builtin) || static_cast<BuiltinCell*>(meaning.cell<Cell>())->name != "STRCAT")
        return nullptr;
    return std::make_unique<AppendNode>(form, call, compiler.operands(call.cdr().cdr()));
}

} // namespace veldrin::lisp
