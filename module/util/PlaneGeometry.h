#pragma once

#include "geometry/AcGePoint3d.h"

#include <cmath>

namespace plumb {

// Steps and angles on the sheet. Angles are radians from the X axis, counter-clockwise; lengths are inches.

// The point at a distance from `p` in the direction of an angle, at p's elevation. A negative distance steps
// backwards.
inline AcGePoint3d PolarPoint(const AcGePoint3d& p, double angle, double distance) {
    return {p.x + std::cos(angle) * distance, p.y + std::sin(angle) * distance, p.z};
}

inline AcGePoint2d PolarPoint(const AcGePoint2d& p, double angle, double distance) {
    return {p.x + std::cos(angle) * distance, p.y + std::sin(angle) * distance};
}

// Direction from p to q, from 0 up to but not including a full turn. Elevations play no part; two points at
// one place give 0.
inline double AngleBetween(const AcGePoint3d& p, const AcGePoint3d& q) {
    return AcGeVector2d(q.x - p.x, q.y - p.y).angle();
}

inline double planDistance(const AcGePoint3d& p, const AcGePoint3d& q) {
    return std::hypot(q.x - p.x, q.y - p.y);
}

} // namespace plumb
