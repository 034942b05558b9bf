#pragma once

#include "geometry/AcGePoint3d.h"

#include <optional>

namespace veldrin {

// Circles in a plane that is given by its normal; the result lies at the height of the first point.

// The centre of the circle through three points; none when they are on a line.
std::optional<AcGePoint3d> circleCenter(const AcGePoint3d& a, const AcGePoint3d& b, const AcGePoint3d& c,
                                        const AcGeVector3d& normal);
// The centre of the arc from one point to another that turns by the sweep (radians, counter-clockwise above
// 0).
AcGePoint3d centerOfSweep(const AcGePoint3d& from, const AcGePoint3d& to, double sweep,
                          const AcGeVector3d& normal);

} // namespace veldrin
