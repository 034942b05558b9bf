#pragma once

#include "drawing/AcDbDatabase.h"
#include "geometry/AcGePoint3d.h"

#include <vector>

namespace veldrin {

// Finding entities of the current space by where they are drawn, as seen from above. What is invisible or
// lies on a layer that is off or frozen is not found.

// The topmost entity within the pick box around a point of the world; null when there is none.
AcDbObjectId entityAt(AcDbDatabase& database, const AcGePoint3d& point);

enum class RegionKind {
    Inside,   // all that is drawn lies in the polygon
    Crossing, // some of it does
    Fence,    // some of it crosses the open line
};
// In drawing order.
std::vector<AcDbObjectId> entitiesInRegion(AcDbDatabase& database, RegionKind kind,
                                           const std::vector<AcGePoint3d>& polygon);

// The corners of a box along the axes of the user coordinate system.
std::vector<AcGePoint3d> boxCorners(const AcDbDatabase& database, const AcGePoint3d& from,
                                    const AcGePoint3d& to);

// Whether a point lies in a polygon or on its border.
bool isInRegion(const std::vector<AcGePoint3d>& polygon, const AcGePoint3d& point);

std::vector<AcDbObjectId> visibleEntities(AcDbDatabase& database); // on layers that are thawed
AcDbObjectId lastEntity(AcDbDatabase& database);                   // not erased; null without any
bool isOnLockedLayer(AcDbObjectId entity);

} // namespace veldrin
