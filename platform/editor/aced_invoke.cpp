#include "dao/CDaoDatabase.h"
#include "editor/CommandLine.h"
#include "editor/CommandRegistry.h"
#include "editor/SelectionSet.h"
#include "editor/aced.h"
#include "lisp/Engine.h"
#include "lisp/marshal.h"
#include "runtime/Host.h"

#include <cstdarg>
#include <fmt/format.h>
#include <vector>

using veldrin::Host;
using veldrin::InputToken;
using veldrin::SelectionSet;
namespace lisp = veldrin::lisp;

namespace {

// With Lisp underneath the error goes on there once the C++ code has returned; else the user is told here.
void tellError(const lisp::Outcome& outcome) {
    if (outcome.status != lisp::Outcome::Status::Failed || outcome.isUndefined || !outcome.error) return;
    if (Host::current().lisp().isRunning()) return;
    veldrin::CommandLine& line = Host::current().commandLine();
    line.freshLine();
    line.print(fmt::format("; error: {}\n", outcome.error->message));
}

} // namespace

int acedInvoke(const resbuf* call, resbuf** result) {
    if (result) *result = nullptr;
    if (!call || call->restype != RTSTR || !call->resval.rstring) return RTERROR;
    lisp::Engine& engine = Host::current().lisp();
    if (!engine.isFunction(call->resval.rstring)) return RTERROR;
    std::vector<lisp::Value> arguments;
    try {
        arguments = lisp::fromResbufs(engine, call->rbnext);
    } catch (const lisp::Error&) {
        return RTERROR; // unbalanced, or of unknown types
    }
    const lisp::Value function = lisp::Value::symbol(&engine.intern(call->resval.rstring));
    const lisp::Outcome outcome = engine.protectedApply(
        function, lisp::Args(arguments.data(), arguments.size()), lisp::Engine::HoldBack::ErrorsToo);
    CDaoDatabase::noteTurn();
    if (!outcome) {
        tellError(outcome);
        return outcome.status == lisp::Outcome::Status::Broken ? RTCAN : RTERROR;
    }
    if (!result || outcome.value.isNil()) return RTNORM;
    try {
        *result = lisp::resultToResbufs(engine, outcome.value).release();
    } catch (const lisp::Error&) {
        return RTERROR; // something in it has no form outside of Lisp
    }
    return RTNORM;
}

namespace {

// One answer of a command from the variable arguments; false for a type that commands do not take.
bool readToken(int type, std::va_list& arguments, std::vector<InputToken>& tokens) {
    InputToken token;
    switch (type) {
    case RTSTR: token = InputToken::ofText(va_arg(arguments, const char*)); break;
    case RTREAL:
    case RTANG:
    case RTORINT:
        token.kind = InputToken::Kind::Number;
        token.number = va_arg(arguments, double);
        break;
    case RTSHORT:
    case RTLONG:
        token.kind = InputToken::Kind::Number;
        token.number = va_arg(arguments, int);
        token.isInteger = true;
        break;
    case RTPOINT:
    case RT3DPOINT: {
        const double* point = va_arg(arguments, const double*);
        token.kind = InputToken::Kind::Point;
        token.hasElevation = type == RT3DPOINT;
        token.point.set(point[0], point[1], token.hasElevation ? point[2] : 0.0);
        break;
    }
    case RTENAME: {
        token.kind = InputToken::Kind::Entity;
        if (acdbGetObjectId(token.entity, va_arg(arguments, const std::int64_t*)) != Acad::eOk) return false;
        break;
    }
    case RTPICKS: {
        const std::int64_t* name = va_arg(arguments, const std::int64_t*);
        const lisp::Value value = Host::current().lisp().services().pickSetOf({{name[0], name[1]}});
        const auto* set =
            value.is(lisp::Kind::PickSet) ? dynamic_cast<SelectionSet*>(value.payload().get()) : nullptr;
        if (!set) return false;
        token.kind = InputToken::Kind::Selection;
        token.selection = set->ids();
        break;
    }
    default: return false;
    }
    tokens.push_back(std::move(token));
    return true;
}

} // namespace

int acedCommand(int type, ...) {
    std::vector<InputToken> tokens;
    std::va_list arguments;
    va_start(arguments, type);
    bool wellFormed = true;
    for (int next = type; next != 0 && wellFormed; next = wellFormed ? va_arg(arguments, int) : 0)
        wellFormed = readToken(next, arguments, tokens);
    va_end(arguments);
    if (!wellFormed) return RTERROR;

    Host& host = Host::current();
    bool done = false;
    // A Lisp command among them may fail or quit; that goes on behind the C++ code that called us.
    const lisp::Outcome outcome = host.lisp().protectedRun(
        [&] {
            done = host.commands().feed(std::move(tokens));
            return lisp::Value();
        },
        lisp::Engine::HoldBack::ErrorsToo);
    tellError(outcome);
    return outcome && done ? RTNORM : RTERROR;
}
