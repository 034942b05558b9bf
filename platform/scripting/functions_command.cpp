// command vl-cmdf command-s redraw alert textscr graphscr

#include "editor/CommandLine.h"
#include "editor/CommandRegistry.h"
#include "editor/aced.h"
#include "runtime/Host.h"
#include "scripting/drawing_values.h"
#include "scripting/tables.h"

namespace veldrin::scripting {

namespace {

using lisp::Args;
using lisp::Engine;
using lisp::Kind;
using lisp::Value;

InputToken numberToken(const Value& value) {
    InputToken token;
    token.kind = InputToken::Kind::Number;
    token.number = value.asNumber();
    token.isInteger = value.isInteger();
    return token;
}

InputToken pointToken(const lisp::Point& point) {
    InputToken token;
    token.kind = InputToken::Kind::Point;
    token.point = toPoint(point);
    token.hasElevation = point.dimensions == 3;
    return token;
}

// A name, or a name and the point where it was picked, as entsel gives it.
bool entityToken(const Value& value, InputToken& token) {
    token.kind = InputToken::Kind::Entity;
    if (!value.isCons()) return idOf(value, token.entity);
    lisp::Point pick;
    if (!idOf(value.car(), token.entity) || !lisp::readPoint(value.cdr().car(), pick)) return false;
    token.point = toPoint(pick);
    token.hasPick = token.hasElevation = true;
    return true;
}

InputToken tokenOf(Args args, std::size_t i) {
    const Value& value = args[i];
    lisp::Point point;
    InputToken token;
    if (value.isText())
        return value.asText() == "\\" ? InputToken::ofPause() : InputToken::ofText(args.string(i));
    if (value.isNumber()) return numberToken(value);
    if (lisp::readPoint(value, point)) return pointToken(point);
    if (value.is(Kind::PickSet)) {
        token.kind = InputToken::Kind::Selection;
        token.selection = selectionSetOf(args, i).ids();
        return token;
    }
    if (entityToken(value, token)) return token;
    args.wrong(i, "a command's answer:");
}

// Without arguments, or with nil among them, what waits is cancelled.
bool runCommand(Args args) {
    CommandRegistry& commands = Host::current().commands();
    std::vector<InputToken> tokens;
    bool cancels = args.size() == 0;
    for (std::size_t i = 0; i < args.size() && !cancels; ++i) {
        if (args[i].isNil())
            cancels = true;
        else
            tokens.push_back(tokenOf(args, i));
    }
    const bool well = tokens.empty() || commands.feed(std::move(tokens));
    if (cancels) commands.cancelAll();
    return well;
}

Value command(Engine&, Args args) {
    runCommand(args);
    return {};
}

Value vlCmdf(Engine&, Args args) {
    return Value::boolean(runCommand(args));
}

// Like `command`, but nothing is left waiting.
Value commandS(Engine&, Args args) {
    runCommand(args);
    if (Host::current().commands().isWaiting()) {
        Host::current().commands().cancelAll();
        throw lisp::Error("command-s: the command needs more answers");
    }
    return {};
}

Value redraw(Engine&, Args args) {
    if (args.has(0)) idOf(args, 0);
    if (args.has(1)) args.integer(1);
    return {};
}

Value alert(Engine&, Args args) {
    acedAlert(args.string(0).c_str());
    return {};
}

Value textscr(Engine&, Args) {
    acedTextScr();
    return {};
}

Value graphscr(Engine&, Args) {
    acedGraphScr();
    return {};
}

constexpr lisp::BuiltinRow rows[] = {
    {"command", 0, lisp::anyNumber, command},
    {"vl-cmdf", 0, lisp::anyNumber, vlCmdf},
    {"command-s", 0, lisp::anyNumber, commandS},
    {"redraw", 0, 2, redraw},
    {"alert", 1, 1, alert},
    {"textscr", 0, 0, textscr},
    {"graphscr", 0, 0, graphscr},
};

} // namespace

std::span<const lisp::BuiltinRow> commandFunctions() {
    return rows;
}

} // namespace veldrin::scripting
