#pragma once

#include "drawing/AcDbDatabase.h"
#include "drawing/AcDbEntity.h"
#include "editor/Activity.h"
#include "editor/SelectionSet.h"
#include "geometry/AcGeArrays.h"
#include "lisp/Args.h"
#include "lisp/Value.h"

#include <string>

namespace veldrin::scripting {

// Between Lisp values and what drawings are made of. What does not fit is a Lisp error.

// The drawing that functions work on; an error when none is open.
AcDbDatabase& currentDatabase();

// nil for a null id.
lisp::Value enameOf(AcDbObjectId id);
// The object that an entity name means, erased or not. A name of a drawing that is closed is a wrong
// argument.
AcDbObjectId idOf(lisp::Args args, std::size_t i);
bool idOf(const lisp::Value& value, AcDbObjectId& id); // false when it is no name of a living drawing
// The object open that way; an error when it is none, or erased.
AcDbObjectPointer<AcDbEntity> openEntity(lisp::Args args, std::size_t i,
                                         AcDb::OpenMode mode = AcDb::kForRead);

lisp::Value pointValue(const AcGePoint3d& point);
lisp::Value pointsValue(const AcGePoint3dArray& points);
AcGePoint3d pointOf(lisp::Args args, std::size_t i);
AcGePoint3d toPoint(const lisp::Point& point);
AcGeIntArray integersOf(lisp::Args args, std::size_t i);

// In the user coordinate system, as users give and read them.
AcGePoint3d userToWorld(const AcGePoint3d& point);
AcGePoint3d worldToUser(const AcGePoint3d& point);

// T, or the number of the failing status.
lisp::Value statusValue(Acad::ErrorStatus status);

SelectionSet& selectionSetOf(lisp::Args args, std::size_t i);
lisp::Value selectionSetValue(const std::vector<AcDbObjectId>& ids); // nil when empty

} // namespace veldrin::scripting
