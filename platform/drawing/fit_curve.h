#pragma once

#include "geometry/AcGeArrays.h"

namespace veldrin {

// A smooth row of arcs through points that lie in one plane square to the Z axis: two arcs between each pair
// of neighbours, met in a vertex of its own. One bulge a vertex. Points closer than 1e-9 to their
// predecessor are dropped; fewer than three stay as they are, joined straight.
//
// The direction at a point is that of the circle through it and its neighbours; at a free end it mirrors
// the neighbour's over the chord, so that the end piece is one circular arc.
VELDRIN_GEOMETRY_API void fitCurve(const AcGePoint3dArray& definition, bool closed,
                                   AcGePoint3dArray& vertices, AcGeDoubleArray& bulges);

} // namespace veldrin
