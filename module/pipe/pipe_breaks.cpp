#include "pipe/PipeBreaks.h"

#include <algorithm>

namespace plumb {

void insertBreak(BreakList& breaks, double position) {
    const auto at = std::find_if(breaks.begin(), breaks.end(), [=](double held) { return held >= position; });
    if (at != breaks.end() && *at == position) return;
    breaks.insert(at, position);
}

void insertBreak(BreakSlots& breaks, double position) {
    const auto at = std::find_if(breaks.begin(), breaks.end(),
                                 [=](double held) { return held > position || held == 0.0; });
    if (at == breaks.end()) return;
    std::move_backward(at, breaks.end() - 1, breaks.end());
    *at = position;
}

} // namespace plumb
