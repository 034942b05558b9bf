// grread grvecs grdraw grtext grclear menucmd menugroup layoutlist getfiled textpage textbox initdia ver
// vports setview tablet snvalid nentselp
//
// There is no digitizer and no display of its own behind a host without a window: what would draw on the
// screen checks its arguments and shows nothing, what would read the device reads keys from the input.

#include "drawing/AcDbTextStyleTable.h"
#include "drawing/AcGiTextLook.h"
#include "drawing/SymbolNames.h"
#include "editor/CommandRegistry.h"
#include "editor/command_names.h"
#include "editor/command_pick.h"
#include "runtime/Host.h"
#include "scripting/drawing_values.h"
#include "scripting/entity_lists.h"
#include "scripting/tables.h"
#include "ui/UiBackend.h"

#include <filesystem>

namespace veldrin::scripting {

namespace {

using lisp::Args;
using lisp::Engine;
using lisp::Error;
using lisp::Value;

// (2 CODE) for a key. A line that was typed gives its characters one by one, and 13 for Enter.
Value grread(Engine&, Args args) {
    if (args.has(1)) args.integer(1);
    if (args.has(2)) args.integer(2);
    constexpr std::int32_t kKeyboard = 2;
    try {
        return lisp::list(Value::integer(kKeyboard),
                          Value::integer(Host::current().commands().input().nextKey()));
    } catch (const InputCancelled&) {
        throw Error::breakRequested();
    }
}

// Colours and pairs of points by turns.
Value grvecs(Engine&, Args args) {
    for (const Value& item : lisp::ListView(args.list(0))) {
        lisp::Point point;
        if (!item.isInteger() && !lisp::readPoint(item, point)) args.wrong(0, "a list of vectors:");
    }
    if (args.has(1)) args.list(1);
    return {};
}

Value grdraw(Engine&, Args args) {
    args.point(0);
    args.point(1);
    args.integer(2);
    return {};
}

Value grtext(Engine&, Args args) {
    if (args.size() == 0) return {};
    args.integer(0);
    return Value::text(args.text(1));
}

Value nothing(Engine&, Args) {
    return {};
}

// There are no menus to load or to switch; a question about one has no answer.
Value menuText(Engine&, Args args) {
    args.text(0);
    return {};
}

Value layoutlist(Engine&, Args) {
    return lisp::list(Value::text("Layout1"));
}

std::string withExtension(std::string path, const std::string& extension) {
    const bool single = !extension.empty() && extension.find(';') == std::string::npos;
    if (single && !std::filesystem::path(path).has_extension()) path += "." + extension;
    return path;
}

// (getfiled TITLE PROPOSAL EXTENSION FLAGS): the path chosen, nil when cancelled. Of the flags 1 is for a new
// file, 4 allows any extension; a file to be opened must be there.
Value getfiled(Engine&, Args args) {
    constexpr int kNewFile = 1;
    constexpr int kAnyExtension = 4;
    const int flags = args.integer(3);
    const FileWindow window{args.string(0), args.string(1), args.string(2), (flags & kNewFile) != 0};
    Host& host = Host::current();
    std::optional<std::string> path = host.ui().showFile(window);
    if (!path || path->empty()) return {};
    if (!(flags & kAnyExtension)) path = withExtension(*path, window.extension);
    std::error_code error;
    if (!window.isSaving && !std::filesystem::is_regular_file(*path, error)) return {};
    return Value::text(*path);
}

// Two corners of a text's box, from its insertion point, as if it were not turned. Nil for what is no text.
Value textbox(Engine&, Args args) {
    const Value* contents = groupOf(args.list(0), 1);
    const Value* height = groupOf(args.list(0), 40);
    const Value* style = groupOf(args.list(0), 7);
    if (!contents || !contents->isText()) return {};
    AcDbDatabase& database = currentDatabase();
    TextLook look;
    look.multiline = false;
    look.height = height && height->isNumber() ? height->asNumber() : database.header().textsize;
    AcDbObjectId styleId = database.header().textstyle;
    if (style && style->isText())
        styleId = recordNamed(database.textStyleTableId(), std::string(style->asText()));
    takeStyle(styleId, look);
    if (const Value* factor = groupOf(args.list(0), 41); factor && factor->isNumber())
        look.widthFactor = factor->asNumber();
    const TextSize size = measure(contents->asText(), look);
    return lisp::list(pointValue({}), pointValue({size.width, size.height, 0.0}));
}

Value ver(Engine&, Args) {
    return Value::text("Veldrin Lisp");
}

// One viewport that covers the sheet.
Value vports(Engine&, Args) {
    const auto corner = [](double at) { return lisp::list(Value::real(at), Value::real(at)); };
    return lisp::list(lisp::list(Value::integer(2), corner(0.0), corner(1.0)));
}

// True for what may be the name of a layer, style and so on; a second argument of 1 allows the bar of names
// that came from another drawing.
Value snvalid(Engine&, Args args) {
    std::string name = args.string(0);
    if (args.has(1) && args.integer(1) == 1) std::erase(name, '|');
    return Value::boolean(isSymbolName(name));
}

// (nentselp PROMPT) as entsel; (nentselp [PROMPT] POINT) asks nobody.
Value nentselp(Engine& engine, Args args) {
    const std::size_t last = args.size() - 1;
    lisp::Point given;
    if (args.size() == 0 || !lisp::readPoint(args[last], given)) return selectEntity(engine, args);
    AcDbDatabase& database = currentDatabase();
    const AcGePoint3d point = toPoint(given);
    const AcDbObjectId hit = entityAt(database, userToWorld(point));
    return hit.isNull() ? Value() : lisp::list(enameOf(hit), pointValue(point));
}

constexpr lisp::BuiltinRow rows[] = {
    {"grread", 0, 3, grread},
    {"grvecs", 1, 2, grvecs},
    {"grdraw", 3, 4, grdraw},
    {"grtext", 0, 3, grtext},
    {"grclear", 0, 0, nothing},
    {"menucmd", 1, 1, menuText},
    {"menugroup", 1, 1, menuText},
    {"layoutlist", 0, 0, layoutlist},
    {"getfiled", 4, 4, getfiled},
    {"textpage", 0, 0, nothing},
    {"textbox", 1, 1, textbox},
    {"initdia", 0, 1, nothing},
    {"ver", 0, 0, ver},
    {"vports", 0, 0, vports},
    {"snvalid", 1, 2, snvalid},
    {"nentselp", 0, 2, nentselp},
};

} // namespace

std::span<const lisp::BuiltinRow> screenFunctions() {
    return rows;
}

} // namespace veldrin::scripting
