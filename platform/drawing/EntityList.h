#pragma once

#include "drawing/AcDbObjectId.h"
#include "runtime/ResbufChain.h"

#include <string>
#include <vector>

// Objects as Lisp sees them: a chain of groups, -1 (the name), 0 (the type), 330 (the owner), 5 (the handle),
// then what the classes write, subclass by subclass. Extended data, of the applications that were asked for,
// is an item of code -3 without a value and behind it, for each application, 1001 with its name and its data.
// The same for entities, table records, dictionaries and their entries.

// Null when there is no such object, it is erased, or somebody is changing it. Applications compare without
// regard to case and may have stars and question marks for any text and any character. The caller frees it.
VELDRIN_API resbuf* acdbEntGet(AcDbObjectId id, const std::vector<std::string>& applications = {});

// Changes the object in place by the groups that the list has; those of -1, 330, 5 and of the extension
// dictionary are passed over. On failure the object is as it was. Errors: eInvalidInput for a list of another
// type, eOnLockedLayer, eKeyNotFound for a linetype, style or application that is not there, what opening
// for write answers. A layer that is not there is made.
VELDRIN_API Acad::ErrorStatus acdbEntMod(AcDbObjectId id, const resbuf* list);

namespace veldrin {

// The type of the object in such a list: "LINE", "LAYER" ...
VELDRIN_API std::string dxfNameOf(const AcDbObject& object);
// The list of an object that is open; what its classes answered. Without an id, as a temporary is, it has
// no name, owner and handle.
VELDRIN_API Acad::ErrorStatus entityListOut(const AcDbObject& object,
                                            const std::vector<std::string>& applications, ResbufPtr& list);
// Reads a list into an object that is open for write, or that is to be added to the database. On failure part
// of it may have been read.
VELDRIN_API Acad::ErrorStatus entityListIn(AcDbObject& object, AcDbDatabase& database, const resbuf* list);

} // namespace veldrin
