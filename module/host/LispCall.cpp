#include "host/LispCall.h"

#include "editor/aced.h"

#include <utility>

namespace plumb {

LispAnswer callLisp(ResbufChain call) {
    LispAnswer answer;
    resbuf* result = nullptr;
    answer.succeeded = call && acedInvoke(call.get(), &result) == RTNORM;
    answer.items.reset(result);
    return answer;
}

LispAnswer callLisp(const char* name) {
    return callLisp(ResbufChain(acutBuildList(RTSTR, name, 0)));
}

} // namespace plumb
