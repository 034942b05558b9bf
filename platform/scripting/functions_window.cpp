// ui-next ui-log

#include "scripting/drawing_values.h"
#include "scripting/headless.h"
#include "scripting/tables.h"

namespace veldrin::scripting {

namespace {

using lisp::Args;
using lisp::Engine;
using lisp::Error;
using lisp::Value;

Value describe(const WindowRequest& window) {
    lisp::ListBuilder buttons;
    for (const std::string& button : window.buttons) buttons.add(Value::text(button));
    return lisp::list(lisp::pair("kind", Value::text(window.kind)),
                      lisp::pair("caption", Value::text(window.caption)),
                      lisp::pair("text", Value::text(window.text)), lisp::pair("buttons", buttons.finish()));
}

// An error in the function goes on behind the C++ code that showed the window, which sees the default button.
Value next(Engine& engine, Args args) {
    const Value function = args[0];
    headlessUi().queue([&engine, function](const WindowRequest& window) -> std::optional<std::string> {
        const Value arguments[] = {describe(window)};
        const lisp::Outcome outcome = engine.protectedRun(
            [&] { return engine.apply(function, Args(arguments, 1)); }, Engine::HoldBack::ErrorsToo);
        if (!outcome || !outcome.value.isText()) return {};
        return std::string(outcome.value.asText());
    });
    return {};
}

Value log(Engine&, Args) {
    lisp::ListBuilder list;
    for (const WindowLogEntry& entry : headlessUi().takeLog())
        list.add(lisp::list(Value::text(entry.kind), Value::text(entry.caption), Value::text(entry.text),
                            Value::text(entry.answer)));
    return list.finish();
}

constexpr lisp::BuiltinRow rows[] = {
    {"ui-next", 1, 1, next},
    {"ui-log", 0, 0, log},
};

} // namespace

std::span<const lisp::BuiltinRow> windowFunctions() {
    return rows;
}

} // namespace veldrin::scripting
