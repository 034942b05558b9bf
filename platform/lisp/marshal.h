// Lisp values as result buffers and back: the one place where the two meet.
//
// Towards C++: integers are RTSHORT where they fit and RTLONG where not, reals RTREAL, texts RTSTR, T RTT,
// other symbols RTSTR with their name, nil RTNIL, entity names RTENAME, selection sets RTPICKS. A list of two
// or three numbers is a point (RTPOINT, RT3DPOINT), any other list stands between RTLB and RTLE. A dotted
// list ends in its last value and RTDOTE, without RTLE:
//
//     ("a" . 5)                 RTLB "a" 5 RTDOTE
//     ("P1" (1.0 2.0 3.0))      RTLB "P1" RT3DPOINT RTLE
//
// From C++ the written form RTLB "a" RTDOTE 5 RTLE is understood as well as that one.
#pragma once

#include "lisp/Args.h"
#include "lisp/Value.h"
#include "runtime/ResbufChain.h"

#include <vector>

namespace veldrin::lisp {

class Engine;

using ResbufChain = veldrin::ResbufPtr;

// Arguments of a C++ function, one after the other; null when there are none. Throws an Error when one of
// them cannot leave Lisp (a function, a file).
VELDRIN_API ResbufChain toResbufs(Engine& engine, Args values);

// The result of a Lisp function for the C++ code that called it: a list without its outermost brackets.
VELDRIN_API ResbufChain resultToResbufs(Engine& engine, const Value& result);

// The items of a chain, each a value. Throws an Error when its brackets do not match or a type is unknown.
VELDRIN_API std::vector<Value> fromResbufs(Engine& engine, const resbuf* chain);

// What a C++ function left as its result: one item is the result, several are a list, none is nil.
VELDRIN_API Value resultFromResbufs(Engine& engine, const resbuf* chain);

} // namespace veldrin::lisp
