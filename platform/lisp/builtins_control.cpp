// Evaluating, applying, catching, names and kinds.
#include "lisp/Builtins.h"
#include "lisp/Characters.h"
#include "lisp/Machine.h"
#include "lisp/Reader.h"

#include <array>

namespace veldrin::lisp {

namespace {

Value eval(Engine& e, Args args) {
    e.machine().checkStack();
    return e.evaluate(args[0]);
}

Value apply(Engine& e, Args args) {
    const Value& items = args.list(1);
    std::vector<Value> values;
    for (const Value& item : ListView(items)) values.push_back(item);
    return e.apply(args[0], Args(values.data(), values.size()));
}

// One round of mapcar and its like: the cars of all lists, which step on; false when one has ended.
bool nextItems(std::vector<const Value*>& lists, std::vector<Value>& items) {
    for (std::size_t i = 0; i < lists.size(); ++i) {
        if (!lists[i]->isCons()) return false;
        items[i] = lists[i]->car();
        lists[i] = &lists[i]->cdr();
    }
    return true;
}

template<class Visit>
void mapLists(Engine& e, Args args, Visit visit) {
    std::vector<const Value*> lists;
    for (std::size_t i = 1; i < args.size(); ++i) lists.push_back(&args.list(i));
    std::vector<Value> items(lists.size());
    const Value function = e.machine().callee(args[0]);
    while (nextItems(lists, items)) {
        e.checkBreak();
        if (!visit(e.apply(function, Args(items.data(), items.size())))) return;
    }
}

Value mapcar(Engine& e, Args args) {
    ListBuilder results;
    mapLists(e, args, [&](Value result) {
        results.add(std::move(result));
        return true;
    });
    return results.finish();
}

Value vlSome(Engine& e, Args args) {
    Value found;
    mapLists(e, args, [&](Value result) {
        found = std::move(result);
        return found.isNil();
    });
    return found;
}

Value vlEvery(Engine& e, Args args) {
    bool all = true;
    mapLists(e, args, [&](const Value& result) { return all = !result.isNil(); });
    return Value::boolean(all);
}

Value catchAllApply(Engine& e, Args args) {
    Value result;
    const auto caught = e.machine().catchAll([&] { result = apply(e, args); });
    return caught ? Value::catchError(*caught) : result;
}

Value isCatchError(Engine&, Args args) {
    return Value::boolean(args[0].is(Kind::CatchError));
}

Value catchErrorMessage(Engine&, Args args) {
    if (!args[0].is(Kind::CatchError)) args.wrong(0, "catch-all-apply-error-p");
    return Value::text(args[0].asError().message);
}

Value quit(Engine&, Args args) {
    throw Quit(args.size() ? args.wholeNumber(0) : 0);
}

Value set(Engine& e, Args args) {
    e.machine().assign(args.symbol(0), args[1]);
    return args[1];
}

Value read(Engine& e, Args args) {
    if (args.size() == 0) return {};
    Reader reader(e, args.text(0));
    Value form;
    reader.next(form);
    return form;
}

Value load(Engine& e, Args args) {
    const std::string name = args.string(0);
    std::string path = e.services().findFile(name);
    if (path.empty()) path = e.services().findFile(name + ".lsp");
    if (!path.empty()) return e.loadFile(path);
    if (args.size() > 1)
        return args[1].isText() || !Engine::isCallable(args[1]) ? args[1] : e.apply(args[1], args.from(2));
    throw Error("LOAD failed: \"" + name + "\"");
}

Value type(Engine& e, Args args) {
    static constexpr const char* names[] = {
        nullptr, "INT",      "REAL",  "STR",     "SYM",  "LIST",       "SUBR",
        "USUBR", "EXRXSUBR", "ENAME", "PICKSET", "FILE", "VLA-OBJECT", "VL-CATCH-ALL-APPLY-ERROR"};
    const Value& value = args[0];
    const Kind kind = value.kind();
    if (kind == Kind::Nil) return {};
    if (kind == Kind::PickSet || kind == Kind::File || kind == Kind::Object)
        if (const auto own = value.payload()->typeName(); !own.empty()) return Value::symbol(&e.intern(own));
    return Value::symbol(&e.intern(names[static_cast<std::size_t>(kind)]));
}

Value boundp(Engine&, Args args) {
    return Value::boolean(args[0].isSymbol() && args[0].asSymbol()->value != bits::nil);
}
Value isSymbol(Engine&, Args args) {
    return Value::boolean(args[0].isSymbol());
}
Value symbolName(Engine&, Args args) {
    return Value::text(args.symbol(0).name);
}
Value symbolValue(Engine&, Args args) {
    return args.symbol(0).get();
}
Value eq(Engine&, Args args) {
    return Value::boolean(args[0].isSame(args[1]));
}

Value equal(Engine&, Args args) {
    return Value::boolean(isEqual(args[0], args[1], args.size() > 2 ? args.number(2) : 0.0));
}

Value isNil(Engine&, Args args) {
    return Value::boolean(args[0].isNil());
}
Value nothing(Engine&, Args) {
    return {};
}

Value definitionList(Engine&, Args args) { // defun-q-list-ref
    const Value meaning = args.symbol(0).get();
    return meaning.isCons() ? meaning : Value();
}

Value setDefinitionList(Engine& e, Args args) { // defun-q-list-set
    e.machine().callee(args.list(1));
    e.machine().assign(args.symbol(0), args[1]);
    return args[0];
}

constexpr BuiltinRow rows[] = {
    {"eval", 1, 1, eval},
    {"apply", 2, 2, apply},
    {"mapcar", 2, anyNumber, mapcar},
    {"vl-some", 2, anyNumber, vlSome},
    {"vl-every", 2, anyNumber, vlEvery},
    {"vl-catch-all-apply", 2, 2, catchAllApply},
    {"vl-catch-all-error-p", 1, 1, isCatchError},
    {"vl-catch-all-error-message", 1, 1, catchErrorMessage},
    {"quit", 0, 1, quit},
    {"exit", 0, 1, quit},
    {"set", 2, 2, set},
    {"read", 0, 1, read},
    {"load", 1, 2, load},
    {"type", 1, 1, type},
    {"boundp", 1, 1, boundp},
    {"vl-symbolp", 1, 1, isSymbol},
    {"vl-symbol-name", 1, 1, symbolName},
    {"vl-symbol-value", 1, 1, symbolValue},
    {"eq", 2, 2, eq},
    {"equal", 2, 3, equal},
    {"not", 1, 1, isNil},
    {"null", 1, 1, isNil},
    {"defun-q-list-ref", 1, 1, definitionList},
    {"defun-q-list-set", 2, 2, setDefinitionList},
    {"vl-load-com", 0, 0, nothing},
};

} // namespace

std::span<const BuiltinRow> controlBuiltins() {
    return rows;
}

} // namespace veldrin::lisp
