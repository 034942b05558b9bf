#pragma once

#include "runtime/CString.h"

namespace plumb {

// A number with that many decimals (at most 10), trimmed of trailing zeros and a trailing point if asked.
// What vanishes at that precision without being 0 keeps its zeros: 0.001 with two decimals is 0.00, trimmed
// or not.
CString DoubleToText(double value, int decimals, bool trim);

} // namespace plumb
