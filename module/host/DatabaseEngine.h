#pragma once

namespace plumb {

// Starts the engine of the project databases unless somebody in this process has; `owned` is then set, and
// the one who set it stops it. False when it cannot be started: the user has been told and offered a
// download.
bool startDatabaseEngine(bool& owned);
void stopDatabaseEngine(bool& owned);

} // namespace plumb
