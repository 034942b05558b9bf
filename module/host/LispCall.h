#pragma once

#include "runtime/resbuf.h"

#include <memory>

namespace plumb {

struct ChainRelease {
    void operator()(resbuf* head) const { acutRelRb(head); }
};
using ResbufChain = std::unique_ptr<resbuf, ChainRelease>;

// What a Lisp function answered. A list comes without its outermost brackets: its items are the chain.
struct LispAnswer {
    bool succeeded = false; // there is such a function, and it ended without an error
    ResbufChain items;      // null for nil

    bool isNil() const { return !items || (items->restype == RTNIL && !items->rbnext); }
};

// Calls a function of the Lisp layer. The chain begins with its name and goes on with its arguments, as
// acutBuildList makes it. A function that does not exist fails without a word.
LispAnswer callLisp(ResbufChain call);
LispAnswer callLisp(const char* name);

} // namespace plumb
