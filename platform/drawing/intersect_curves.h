#pragma once

#include "drawing/AcDbCurvePath.h"
#include "geometry/AcGePlane.h"

namespace veldrin {

// Appends the common points of two paths in order along the first, each place once; they lie on the first.
// An extended path goes on beyond its free ends: straight pieces without end, arcs to the full circle.
// Curves that run along each other have no single common points there; where such stretches merely touch,
// the touching point counts. With a plane the paths meet where they do as seen along its normal, without
// one in space.
VELDRIN_GEOMETRY_API void intersectPaths(const CurvePath& a, const CurvePath& b, bool extendA, bool extendB,
                                         const AcGePlane* plane, AcGePoint3dArray& points);

} // namespace veldrin
