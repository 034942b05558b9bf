// Finding, dropping and replacing items of lists.
#include "lisp/Builtins.h"
#include "lisp/Machine.h"

namespace veldrin::lisp {

namespace {

Value member(Engine&, Args args) {
    const Value* at = &args.list(1);
    while (at->isCons() && !isEqual(args[0], at->car())) at = &at->cdr();
    return at->isCons() ? *at : Value();
}

Value assoc(Engine&, Args args) {
    for (const Value& entry : ListView(args.list(1))) {
        if (entry.isNil()) continue;
        if (!entry.isCons()) throw Error::badArgument("listp", entry);
        if (isEqual(args[0], entry.car())) return entry;
    }
    return {};
}

Value position(Engine&, Args args) {
    std::int32_t index = 0;
    for (const Value& item : ListView(args.list(1))) {
        if (isEqual(args[0], item)) return Value::integer(index);
        ++index;
    }
    return {};
}

Value subst(Engine&, Args args) {
    ListBuilder items;
    const Value* at = &args.list(2);
    for (; at->isCons(); at = &at->cdr()) items.add(isEqual(at->car(), args[1]) ? args[0] : at->car());
    return items.finish(*at);
}

// Calls a one-argument predicate.
class Predicate {
public:
    Predicate(Engine& e, const Value& function) : engine_(e), function_(e.machine().callee(function)) {}
    bool operator()(const Value& item) const {
        engine_.checkBreak();
        return !engine_.apply(function_, Args(&item, 1)).isNil();
    }

private:
    Engine& engine_;
    Value function_;
};

template<class Drop>
Value without(const Value& items, Drop drop) {
    ListBuilder kept;
    for (const Value& item : ListView(items))
        if (!drop(item)) kept.add(item);
    return kept.finish();
}

Value remove(Engine&, Args args) {
    return without(args.list(1), [&](const Value& item) { return isEqual(args[0], item); });
}

Value removeIf(Engine& e, Args args) {
    return without(args.list(1), Predicate(e, args[0]));
}

Value removeIfNot(Engine& e, Args args) {
    const Predicate keep(e, args[0]);
    return without(args.list(1), [&](const Value& item) { return !keep(item); });
}

template<bool Wanted>
Value memberIf(Engine& e, Args args) {
    const Predicate holds(e, args[0]);
    const Value* at = &args.list(1);
    while (at->isCons() && holds(at->car()) != Wanted) at = &at->cdr();
    return at->isCons() ? *at : Value();
}

constexpr BuiltinRow rows[] = {
    {"member", 2, 2, member},
    {"assoc", 2, 2, assoc},
    {"vl-position", 2, 2, position},
    {"subst", 3, 3, subst},
    {"vl-remove", 2, 2, remove},
    {"vl-remove-if", 2, 2, removeIf},
    {"vl-remove-if-not", 2, 2, removeIfNot},
    {"vl-member-if", 2, 2, memberIf<true>},
    {"vl-member-if-not", 2, 2, memberIf<false>},
};

} // namespace

std::span<const BuiltinRow> listSearchBuiltins() {
    return rows;
}

} // namespace veldrin::lisp
