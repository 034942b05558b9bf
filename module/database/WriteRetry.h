#pragma once

namespace plumb {

// Whether an operation that failed with this number may succeed when it is tried again: it met another user's
// lock.
bool isRetryable(int errorNumber);

inline constexpr int kWriteAttempts = 20;

// Blocks for 10 to 499 milliseconds, as chance has it, so that two users do not meet again.
void pauseBeforeRetry();

} // namespace plumb
