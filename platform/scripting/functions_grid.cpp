// ui-rows ui-cell ui-edit ui-toggle ui-pick ui-cell-items ui-cell-look ui-focus ui-select-rows ui-editing
// ui-type ui-key ui-expand ui-collapse ui-row-visible

#include "scripting/headless.h"
#include "scripting/tables.h"
#include "system/AsciiCase.h"
#include "ui/CAcUiDialog.h"
#include "ui/DialogKeys.h"
#include "ui/UiTable.h"

#include <algorithm>

namespace veldrin::scripting {

namespace {

using lisp::Args;
using lisp::Engine;
using lisp::Error;
using lisp::Value;

// The table of the grid that the first argument names.
UiTable& gridOf(Args args) {
    auto* control = dynamic_cast<TableControl*>(&controlOf(args));
    if (!control || !control->table())
        throw Error("control " + std::to_string(args.integer(0)) + " is no grid");
    return *control->table();
}

int rowOf(const UiTable& table, Args args, std::size_t at) {
    const int row = args.integer(at);
    if (row < 0 || row >= table.rowCount()) throw Error("the grid has no row " + std::to_string(row));
    return row;
}

int columnOf(const UiTable& table, Args args, std::size_t at) {
    if (args[at].isText()) {
        const std::string field = args.string(at);
        const int column = table.fieldColumn(field);
        if (column < 0) throw Error("the grid has no column of that name: " + field);
        return column;
    }
    const int column = args.integer(at);
    if (column < 0 || column >= table.columnCount())
        throw Error("the grid has no column " + std::to_string(column));
    return column;
}

TableCell cellOf(const UiTable& table, Args args) {
    return {rowOf(table, args, 1), columnOf(table, args, 2)};
}

// Whether the user's hand gets to the grid. What is being edited elsewhere is ended on the way.
bool reach(Args args) {
    return openDialog().userFocuses(args.integer(0));
}

bool focusOn(UiTable& table, TableCell cell) {
    table.userPresses(cell, false);
    return table.focusCell() == cell;
}

Value rows(Engine&, Args args) {
    const UiTable& table = gridOf(args);
    lisp::ListBuilder list;
    for (int row = 0; row < table.rowCount(); ++row) {
        lisp::ListBuilder texts;
        for (int column = 0; column < table.columnCount(); ++column)
            texts.add(Value::text(table.cellText(row, column)));
        list.add(texts.finish());
    }
    return list.finish();
}

Value cell(Engine&, Args args) {
    const UiTable& table = gridOf(args);
    const TableCell at = cellOf(table, args);
    return Value::text(table.cellText(at.row, at.column));
}

Value cellItems(Engine&, Args args) {
    const UiTable& table = gridOf(args);
    const TableCell at = cellOf(table, args);
    lisp::ListBuilder texts;
    for (const std::string& item : table.cellItems(at.row, at.column)) texts.add(Value::text(item));
    return texts.finish();
}

Value color(const std::optional<Color>& given) {
    return given ? Value::integer(static_cast<std::int32_t>(*given)) : Value();
}

Value cellLook(Engine&, Args args) {
    const UiTable& table = gridOf(args);
    const TableCell at = cellOf(table, args);
    const CellLook look = table.cellLook(at.row, at.column);
    return lisp::list(color(look.text), color(look.background), Value::boolean(look.isBold),
                      Value::integer(std::max(look.span, 1)));
}

// Ends with Return what a double click or a key has begun.
bool finishEdit(UiTable& table, TableCell at) {
    const bool isStored = table.userEndsEdit();
    const CellEditor* editor = table.editor();
    return isStored && !(editor && editor->cell == at);
}

bool isEditing(const UiTable& table, TableCell at) {
    return table.editor() && table.editor()->cell == at;
}

// Opens the editor over a cell as a user does who is free to go there.
bool openEditor(UiTable& table, TableCell at, Args args) {
    if (!reach(args) || !focusOn(table, at)) return false;
    if (!isEditing(table, at)) table.userKeys(TableKey::kF2, {});
    return isEditing(table, at);
}

Value edit(Engine&, Args args) {
    UiTable& table = gridOf(args);
    const TableCell at = cellOf(table, args);
    const std::string text = args.string(3);
    if (!openEditor(table, at, args)) return Value();
    const int end = static_cast<int>(text.size());
    if (!table.userEdits(text, end, end)) {
        table.userKeys(TableKey::kEscape, {});
        return Value();
    }
    return Value::boolean(finishEdit(table, at));
}

Value pick(Engine&, Args args) {
    UiTable& table = gridOf(args);
    const TableCell at = cellOf(table, args);
    const std::string text = args.string(3);
    const std::vector<CString> items = table.cellItems(at.row, at.column);
    const auto item = std::find(items.begin(), items.end(), text);
    if (item == items.end() || !openEditor(table, at, args)) return Value();
    const bool isPicked = table.userPicks(static_cast<int>(item - items.begin()));
    return Value::boolean(finishEdit(table, at) && isPicked);
}

Value toggle(Engine&, Args args) {
    UiTable& table = gridOf(args);
    const TableCell at = cellOf(table, args);
    if (table.cellKind(at.row, at.column) != CellKind::kCheck) return Value();
    if (!reach(args) || !focusOn(table, at)) return Value();
    const std::string before = table.cellText(at.row, at.column);
    table.userReleases(at, CellPart::kCheckBox);
    return Value::boolean(table.cellText(at.row, at.column) != before);
}

Value focus(Engine&, Args args) {
    UiTable& table = gridOf(args);
    if (args.size() > 1) {
        const TableCell at = cellOf(table, args);
        return Value::boolean(reach(args) && focusOn(table, at));
    }
    const TableCell at = table.focusCell();
    if (at == kNoCell) return Value();
    return lisp::list(Value::integer(at.row), Value::integer(at.column));
}

int firstFreeColumn(const UiTable& table) {
    for (int column = table.fixedColumnCount(); column < table.columnCount(); ++column)
        if (table.columnWidth(column) > 0) return column;
    return -1;
}

Value selectRows(Engine&, Args args) {
    UiTable& table = gridOf(args);
    const int first = rowOf(table, args, 1);
    const int last = rowOf(table, args, 2);
    if (!reach(args)) return Value();
    const int column = firstFreeColumn(table);
    table.userPresses({first, column}, false);
    table.userPresses({last, column}, true);
    return Value::boolean(table.isSelected(first, column) && table.isSelected(last, column));
}

Value editing(Engine&, Args args) {
    const CellEditor* editor = gridOf(args).editor();
    if (!editor) return Value();
    return lisp::list(Value::integer(editor->cell.row), Value::integer(editor->cell.column),
                      Value::text(editor->text));
}

Value type(Engine&, Args args) {
    return Value::boolean(typeIntoDialog(openDialog(), args.string(0)));
}

Value key(Engine&, Args args) {
    struct Name {
        const char* name;
        TableKey key;
    };
    static constexpr Name kNames[] = {
        {"RETURN", TableKey::kReturn}, {"ESCAPE", TableKey::kEscape},       {"TAB", TableKey::kTab},
        {"UP", TableKey::kUp},         {"DOWN", TableKey::kDown},           {"LEFT", TableKey::kLeft},
        {"RIGHT", TableKey::kRight},   {"HOME", TableKey::kHome},           {"END", TableKey::kEnd},
        {"PAGEUP", TableKey::kPageUp}, {"PAGEDOWN", TableKey::kPageDown},   {"DELETE", TableKey::kDelete},
        {"SPACE", TableKey::kSpace},   {"BACKSPACE", TableKey::kBackspace}, {"F2", TableKey::kF2}};
    const std::string wanted = asciiUpperCase(args.string(0));
    for (const Name& row : kNames)
        if (wanted == row.name) return Value::boolean(pressDialogKey(openDialog(), row.key));
    throw Error("there is no key of that name: " + args.string(0));
}

// Clicks the box in front of a row, unless the row is already as wanted.
Value clickBox(Args args, bool expand) {
    UiTable& table = gridOf(args);
    const int row = rowOf(table, args, 1);
    if (!table.hasBranch(row) || table.isExpanded(row) == expand) return Value();
    int column = 0;
    while (column < table.columnCount() && !table.isTreeColumn(column)) ++column;
    if (!reach(args)) return Value();
    table.userPresses({row, column}, false);
    table.userReleases({row, column}, CellPart::kExpandBox);
    return Value::boolean(table.isExpanded(row) == expand);
}

Value expand(Engine&, Args args) {
    return clickBox(args, true);
}

Value collapse(Engine&, Args args) {
    return clickBox(args, false);
}

Value rowVisible(Engine&, Args args) {
    const UiTable& table = gridOf(args);
    return Value::boolean(table.positionOfRow(rowOf(table, args, 1)) >= 0);
}

constexpr lisp::BuiltinRow table[] = {
    {"ui-rows", 1, 1, rows},          {"ui-cell", 3, 3, cell},         {"ui-edit", 4, 4, edit},
    {"ui-toggle", 3, 3, toggle},      {"ui-pick", 4, 4, pick},         {"ui-cell-items", 3, 3, cellItems},
    {"ui-cell-look", 3, 3, cellLook}, {"ui-focus", 1, 3, focus},       {"ui-select-rows", 3, 3, selectRows},
    {"ui-editing", 1, 1, editing},    {"ui-type", 1, 1, type},         {"ui-key", 1, 1, key},
    {"ui-expand", 2, 2, expand},      {"ui-collapse", 2, 2, collapse}, {"ui-row-visible", 2, 2, rowVisible},
};

} // namespace

std::span<const lisp::BuiltinRow> gridFunctions() {
    return table;
}

} // namespace veldrin::scripting
