#include "editor/CallFrames.h"
#include "editor/aced.h"
#include "runtime/Host.h"
#include "runtime/ModuleLoader.h"

using veldrin::CallFrames;
using veldrin::Host;
namespace lisp = veldrin::lisp;
using lisp::Value;

namespace {

CallFrames& frames() {
    return Host::current().callFrames();
}

int answer(bool done) {
    return done ? RTNORM : RTERROR;
}

int setResult(Value value) {
    return answer(frames().setResult(std::move(value)));
}

} // namespace

int acedDefun(const char* name, short code) {
    return answer(name && frames().define(Host::current().modules().current(), name, code));
}

int acedRegFunc(int (*handler)(), short code) {
    return answer(frames().registerHandler(Host::current().modules().current(), handler, code));
}

int acedUndef(const char* name, short code) {
    return answer(name && frames().undefine(Host::current().modules().current(), name, code));
}

resbuf* acedGetArgs() {
    return frames().arguments().release();
}

int acedRetNil() {
    return setResult({});
}

int acedRetT() {
    return setResult(Value::t());
}

// The symbol without a name, which prints as nothing.
int acedRetVoid() {
    return setResult(Value::symbol(&Host::current().lisp().intern("")));
}

int acedRetInt(int value) {
    return setResult(Value::integer(value));
}

int acedRetReal(double value) {
    return setResult(Value::real(value));
}

int acedRetStr(const char* text) {
    return text ? setResult(Value::text(text)) : RTERROR;
}

int acedRetPoint(const double point[3]) {
    return setResult(lisp::list(Value::real(point[0]), Value::real(point[1]), Value::real(point[2])));
}

int acedRetName(const ads_name name, int type) {
    resbuf item{};
    if (type != RTENAME && type != RTPICKS) return RTERROR;
    item.restype = static_cast<short>(type);
    item.resval.rlname[0] = name[0];
    item.resval.rlname[1] = name[1];
    return acedRetVal(&item);
}

// A chain that is one bracketed list is that list; anything else are the items of one.
int acedRetList(const resbuf* items) {
    try {
        std::vector<Value> values = lisp::fromResbufs(Host::current().lisp(), items);
        if (values.size() == 1 && items->restype == RTLB) return setResult(std::move(values.front()));
        lisp::ListBuilder list;
        for (Value& value : values) list.add(std::move(value));
        return setResult(list.finish());
    } catch (const lisp::Error&) {
        return RTERROR; // unbalanced, or of unknown types
    }
}

int acedRetVal(const resbuf* item) {
    if (!item) return RTERROR;
    resbuf alone = *item;
    alone.rbnext = nullptr;
    try {
        return setResult(lisp::resultFromResbufs(Host::current().lisp(), &alone));
    } catch (const lisp::Error&) {
        return RTERROR; // a bracket, or of an unknown type
    }
}

int acedTextScr() {
    return RTNORM;
}

int acedGraphScr() {
    return RTNORM;
}
