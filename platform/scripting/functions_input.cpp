// initget getpoint getcorner getdist getangle getorient getreal getint getstring getkword entsel nentsel

#include "editor/CommandRegistry.h"
#include "editor/SystemVariables.h"
#include "runtime/Host.h"
#include "scripting/drawing_values.h"
#include "scripting/tables.h"

namespace veldrin::scripting {

namespace {

using lisp::Args;
using lisp::Engine;
using lisp::Error;
using lisp::Value;

EditorInput& input() {
    return Host::current().commands().input();
}

// Bits and keywords, in either order of being given; both may be left out.
Value initget(Engine&, Args args) {
    EditorInput::Rules rules;
    std::size_t next = 0;
    if (args.size() > 0 && (args[0].isInteger() || args[0].isNil())) {
        if (args.has(0)) rules.refusals = args.integer(0);
        next = 1;
    }
    if (next < args.size()) rules.keywords = args.string(next);
    if (next + 1 < args.size()) throw Error::tooManyArguments();
    input().setRules(std::move(rules));
    return {};
}

// Which of initget's bits a function heeds.
constexpr int heedsNull = kRefuseNull;
constexpr int heedsNumbers = kRefuseZero | kRefuseNegative;

// The last argument if it is a text is the prompt, the first one if it is a point the base.
struct Request {
    std::string prompt;
    AcGePoint3d base;
    bool hasBase = false;
};

Request requestOf(Args args) {
    Request request;
    for (std::size_t i = 0; i < args.size(); ++i) {
        if (args[i].isNil()) continue;
        if (args[i].isText())
            request.prompt = args.string(i);
        else {
            request.base = userToWorld(pointOf(args, i));
            request.hasBase = true;
        }
    }
    return request;
}

Answer askNow(Want want, const Request& request, int heeds) {
    const EditorInput::Rules rules = input().takeRules();
    const Question question{want, request.prompt, rules.keywords, rules.refusals & (heeds | kArbitraryText),
                            request.hasBase ? &request.base : nullptr};
    try {
        return input().askNow(question);
    } catch (const InputCancelled&) {
        throw Error::breakRequested();
    }
}

Value answerValue(const Answer& answer) {
    switch (answer.kind) {
    case Answer::Kind::None: return {};
    case Answer::Kind::Keyword:
    case Answer::Kind::Text: return Value::text(answer.text);
    case Answer::Kind::Integer: return Value::integer(answer.integer);
    case Answer::Kind::Real: return Value::real(answer.real);
    case Answer::Kind::Point: return pointValue(worldToUser(answer.point));
    case Answer::Kind::Entity:
        return lisp::list(enameOf(answer.entity), pointValue(worldToUser(answer.point)));
    case Answer::Kind::Selection: return selectionSetValue(answer.selection);
    }
    return {};
}

Value getpoint(Engine&, Args args) {
    currentDatabase();
    return answerValue(askNow(Want::Point, requestOf(args), heedsNull));
}

Value getcorner(Engine&, Args args) {
    args.point(0);
    return answerValue(askNow(Want::Corner, requestOf(args), heedsNull));
}

Value getdist(Engine&, Args args) {
    return answerValue(askNow(Want::Distance, requestOf(args), heedsNull | heedsNumbers | kFlatDistance));
}

Value getangle(Engine&, Args args) {
    return answerValue(askNow(Want::Angle, requestOf(args), heedsNull | kRefuseZero));
}

Value getorient(Engine&, Args args) {
    return answerValue(askNow(Want::Orientation, requestOf(args), heedsNull | kRefuseZero));
}

Request promptOf(Args args, std::size_t i) {
    Request request;
    if (args.has(i)) request.prompt = args.string(i);
    return request;
}

Value getreal(Engine&, Args args) {
    return answerValue(askNow(Want::Real, promptOf(args, 0), heedsNull | heedsNumbers));
}

Value getint(Engine&, Args args) {
    return answerValue(askNow(Want::Integer, promptOf(args, 0), heedsNull | heedsNumbers));
}

// Without the flag a blank ends the text, as Enter does.
Value getstring(Engine&, Args args) {
    const bool onlyPrompt = args.size() == 1 && args[0].isText();
    const bool blanks = !onlyPrompt && args.has(0);
    const Answer answer = askNow(blanks ? Want::Line : Want::String, promptOf(args, onlyPrompt ? 0 : 1), 0);
    const std::string_view text = answer.text;
    return Value::text(blanks ? text : text.substr(0, text.find(' ')));
}

Value getkword(Engine&, Args args) {
    return answerValue(askNow(Want::Keyword, promptOf(args, 0), heedsNull));
}

} // namespace

// nil and ERRNO 7 when nothing is there, 52 for an empty answer.
Value selectEntity(Engine&, Args args) {
    SystemVariables& variables = Host::current().variables();
    currentDatabase();
    Request request = promptOf(args, 0);
    if (request.prompt.empty()) request.prompt = "Select object:";
    const EditorInput::Rules rules = input().takeRules();
    const Question question{Want::Entity, request.prompt, rules.keywords,
                            (rules.refusals & kArbitraryText) | kAcceptMiss, nullptr};
    try {
        const Answer answer = input().askNow(question);
        const bool missed = answer.kind == Answer::Kind::Entity && answer.entity.isNull();
        variables.put("ERRNO", missed ? 7 : answer.isNone() ? 52 : 0);
        return missed ? Value() : answerValue(answer);
    } catch (const InputCancelled&) {
        throw Error::breakRequested();
    }
}

namespace {

constexpr lisp::BuiltinRow rows[] = {
    {"initget", 0, 2, initget},   {"getpoint", 0, 2, getpoint},   {"getcorner", 1, 2, getcorner},
    {"getdist", 0, 2, getdist},   {"getangle", 0, 2, getangle},   {"getorient", 0, 2, getorient},
    {"getreal", 0, 1, getreal},   {"getint", 0, 1, getint},       {"getstring", 0, 2, getstring},
    {"getkword", 0, 1, getkword}, {"entsel", 0, 1, selectEntity}, {"nentsel", 0, 1, selectEntity},
};

} // namespace

std::span<const lisp::BuiltinRow> inputFunctions() {
    return rows;
}

} // namespace veldrin::scripting
