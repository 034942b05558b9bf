// arx arxload arxunload

#include "runtime/Host.h"
#include "runtime/ModuleLoader.h"
#include "scripting/drawing_values.h"
#include "scripting/tables.h"

namespace veldrin::scripting {

namespace {

using lisp::Args;
using lisp::Engine;
using lisp::Error;
using lisp::Value;

Value loaded(Engine&, Args) {
    lisp::ListBuilder list;
    for (const std::string& name : Host::current().modules().names()) list.add(Value::text(name));
    return list.finish();
}

// A failure is an error, or gives the second argument where there is one.
Value answer(ModuleStatus status, Args args, const char* what) {
    if (status == ModuleStatus::kDone) return args[0];
    if (args.size() > 1) return args[1];
    throw Error(std::string(what) + " failed: " + args.string(0));
}

Value load(Engine&, Args args) {
    const std::string name = args.string(0);
    return answer(Host::current().modules().load(name), args, "arxload");
}

Value unload(Engine&, Args args) {
    const std::string name = args.string(0);
    return answer(Host::current().modules().unload(name), args, "arxunload");
}

constexpr lisp::BuiltinRow rows[] = {
    {"arx", 0, 0, loaded},
    {"arxload", 1, 2, load},
    {"arxunload", 1, 2, unload},
};

} // namespace

std::span<const lisp::BuiltinRow> moduleFunctions() {
    return rows;
}

} // namespace veldrin::scripting
