// atoms-family mem gc alloc expand

#include "lisp/Builtins.h"
#include "lisp/Heap.h"
#include "lisp/Machine.h"

#include <algorithm>

namespace veldrin::lisp {

namespace {

bool isBound(const Symbol& symbol) {
    return symbol.value != bits::nil;
}

// (atoms-family FORMAT [NAMES]): the names that have a value, as symbols (0) or texts (1). With names, those
// that have one, and nil in the place of each that has none.
Value atomsFamily(Engine& e, Args args) {
    const bool asText = args.integer(0) != 0;
    const auto shown = [&](Symbol& symbol) {
        return asText ? Value::text(symbol.name) : Value::symbol(&symbol);
    };
    ListBuilder list;
    if (args.size() > 1) {
        for (const Value& name : ListView(args.list(1))) {
            Symbol* symbol = e.find(textOf(name));
            list.add(symbol && isBound(*symbol) ? shown(*symbol) : Value());
        }
        return list.finish();
    }
    std::vector<Symbol*> bound;
    for (const auto& [name, symbol] : e.machine().symbols())
        if (isBound(*symbol)) bound.push_back(symbol);
    std::ranges::sort(bound, {}, [](const Symbol* symbol) { return std::string_view(symbol->name); });
    for (Symbol* symbol : bound) list.add(shown(*symbol));
    return list.finish();
}

// Memory is given back as soon as nothing uses it, so there is nothing to collect or to set aside.
Value nothing(Engine&, Args) {
    return {};
}
Value segments(Engine&, Args args) {
    args.integer(0);
    return args[0];
}

Value memory(Engine& e, Args) {
    e.print("\nMemory in use by values: " + std::to_string(Heap::instance().liveBytes()) + " bytes of " +
            std::to_string(e.limits().heapBytes) + "\n");
    return {};
}

constexpr BuiltinRow rows[] = {
    {"atoms-family", 1, 2, atomsFamily}, {"mem", 0, 0, memory},      {"gc", 0, 0, nothing},
    {"alloc", 1, 1, segments},           {"expand", 1, 1, segments},
};

} // namespace

std::span<const BuiltinRow> sessionBuiltins() {
    return rows;
}

} // namespace veldrin::lisp
