#include "lisp/Builtins.h"

namespace veldrin::lisp {

namespace {

Value getEnvironment(Engine& e, Args args) {
    const auto value = e.services().environment(args.text(0));
    return value ? Value::text(*value) : Value();
}

Value setEnvironment(Engine& e, Args args) {
    e.services().setEnvironment(args.text(0), args.text(1));
    return args[1];
}

std::string_view settingName(Args args) {
    return args.has(1) ? args.text(1) : std::string_view();
}

Value readSetting(Engine& e, Args args) {
    return e.services().readSetting(args.text(0), settingName(args));
}

Value writeSetting(Engine& e, Args args) {
    const Value value = args.size() > 2 ? args[2] : Value::text("");
    return e.services().writeSetting(args.text(0), settingName(args), value) ? value : Value();
}

Value deleteSetting(Engine& e, Args args) {
    const auto name = args.has(1) ? std::optional(args.text(1)) : std::nullopt;
    return Value::boolean(e.services().deleteSetting(args.text(0), name));
}

constexpr BuiltinRow rows[] = {
    {"getenv", 1, 1, getEnvironment},
    {"setenv", 2, 2, setEnvironment},
    {"vl-registry-read", 1, 2, readSetting},
    {"vl-registry-write", 1, 3, writeSetting},
    {"vl-registry-delete", 1, 2, deleteSetting},
};

} // namespace

std::span<const BuiltinRow> settingBuiltins() {
    return rows;
}

} // namespace veldrin::lisp
