#pragma once

#include "drawing/AcDb.h"

namespace plumb {

// Database of the current document; null without one.
AcDbDatabase* CurrentDatabase();

// Puts an entity into model space of the current drawing, under a lock of its own. True: the entity is open
// for its caller to close. False: the user has been told and the entity is deleted.
bool AppendToModelSpace(AcDbEntity* entity);

// The same, and closed; it stays in memory with its drawing. Null is nothing to append.
bool appendAndClose(AcDbEntity* entity);

} // namespace plumb
