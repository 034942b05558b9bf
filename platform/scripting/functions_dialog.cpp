// ui-caption ui-controls ui-get ui-set ui-items ui-click ui-double-click ui-enabled ui-focused

#include "scripting/drawing_values.h"
#include "scripting/headless.h"
#include "scripting/tables.h"
#include "ui/CAcUiDialog.h"

namespace veldrin::scripting {

namespace {

using lisp::Args;
using lisp::Engine;
using lisp::Error;
using lisp::Value;

const char* kindWord(ControlKind kind) {
    switch (kind) {
    case ControlKind::kText: return "text";
    case ControlKind::kEdit: return "edit";
    case ControlKind::kButton: return "button";
    case ControlKind::kCheck: return "check";
    case ControlKind::kList: return "list";
    case ControlKind::kCombo: return "combo";
    case ControlKind::kGrid: return "grid";
    case ControlKind::kImage: return "image";
    case ControlKind::kFrame: return "frame";
    }
    return "";
}

Value caption(Engine&, Args) {
    return Value::text(openDialog().caption());
}

Value controls(Engine&, Args) {
    lisp::ListBuilder list;
    for (const auto& control : openDialog().controls())
        list.add(lisp::list(Value::integer(control->id()), Value::text(kindWord(control->kind())),
                            Value::text(control->GetWindowText()),
                            Value::boolean(control->IsWindowEnabled())));
    return list.finish();
}

Value get(Engine&, Args args) {
    DialogControl& control = controlOf(args);
    if (const auto* check = dynamic_cast<CheckControl*>(&control))
        return Value::text(check->GetCheck() ? "1" : "0");
    return Value::text(control.GetWindowText());
}

Value set(Engine&, Args args) {
    DialogControl& control = controlOf(args);
    const std::string value = args.string(1);
    CAcUiDialog& dialog = openDialog();
    if (dynamic_cast<CheckControl*>(&control))
        return Value::boolean(dialog.userChecks(control.id(), value != "0"));
    if (const auto* list = dynamic_cast<ListControl*>(&control))
        return Value::boolean(dialog.userSelects(control.id(), list->FindStringExact(value)));
    return Value::boolean(dialog.userTypes(control.id(), value));
}

Value items(Engine&, Args args) {
    lisp::ListBuilder texts;
    if (const auto* list = dynamic_cast<ListControl*>(&controlOf(args)))
        for (int at = 0; at < list->GetCount(); ++at) texts.add(Value::text(list->GetText(at)));
    return texts.finish();
}

Value click(Engine&, Args args) {
    return Value::boolean(openDialog().userClicks(controlOf(args).id()));
}

Value doubleClick(Engine&, Args args) {
    return Value::boolean(openDialog().userDoubleClicks(controlOf(args).id()));
}

Value enabled(Engine&, Args args) {
    return Value::boolean(openDialog().IsWindowEnabled() && controlOf(args).IsWindowEnabled());
}

Value focused(Engine&, Args) {
    const int id = openDialog().focus();
    return id == 0 ? Value() : Value::integer(id);
}

constexpr lisp::BuiltinRow rows[] = {
    {"ui-caption", 0, 0, caption},
    {"ui-controls", 0, 0, controls},
    {"ui-get", 1, 1, get},
    {"ui-set", 2, 2, set},
    {"ui-items", 1, 1, items},
    {"ui-click", 1, 1, click},
    {"ui-double-click", 1, 1, doubleClick},
    {"ui-enabled", 1, 1, enabled},
    {"ui-focused", 0, 0, focused},
};

} // namespace

std::span<const lisp::BuiltinRow> dialogFunctions() {
    return rows;
}

} // namespace veldrin::scripting
