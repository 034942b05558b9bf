#pragma once

#include "geometry/AcGePoint3d.h"
#include "runtime/VeldrinApi.h"

#include <vector>

namespace veldrin {

// Points along a B-spline, rational where there are weights, in small steps between its knots; the first and
// the last are its ends. Empty for data that makes no spline: fewer control points than the degree needs,
// another number of knots than controls + degree + 1, knots out of order.
//
// By de Boor's algorithm (C. de Boor, On calculating with B-splines, 1972).
VELDRIN_API std::vector<AcGePoint3d> splinePoints(int degree, const std::vector<double>& knots,
                                                  const std::vector<AcGePoint3d>& controls,
                                                  const std::vector<double>& weights);

// Points along a smooth curve through fit points, where a file has no control points: a Catmull-Rom curve.
VELDRIN_API std::vector<AcGePoint3d> pointsThrough(const std::vector<AcGePoint3d>& fitPoints, bool closed);

} // namespace veldrin
