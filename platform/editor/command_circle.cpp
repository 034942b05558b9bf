#include "editor/command_circle.h"

#include <cmath>

namespace veldrin {

std::optional<AcGePoint3d> circleCenter(const AcGePoint3d& a, const AcGePoint3d& b, const AcGePoint3d& c,
                                        const AcGeVector3d& normal) {
    const auto flat = [&normal](const AcGeVector3d& v) { return v - normal * v.dotProduct(normal); };
    const AcGeVector3d u = flat(b - a), v = flat(c - a);
    const double area = u.crossProduct(v).dotProduct(normal);
    if (std::abs(area) <= 1.0e-12 * (u.lengthSqrd() + v.lengthSqrd())) return std::nullopt;
    // In the frame of a: the point that is as far from b and c as from a.
    const AcGeVector3d offset =
        (normal.crossProduct(v) * -u.lengthSqrd() + normal.crossProduct(u) * v.lengthSqrd()) / (2.0 * area);
    return a + offset;
}

AcGePoint3d centerOfSweep(const AcGePoint3d& from, const AcGePoint3d& to, double sweep,
                          const AcGeVector3d& normal) {
    const AcGeVector3d chord = to - from;
    return from + chord * 0.5 + normal.crossProduct(chord) * (0.5 / std::tan(sweep * 0.5));
}

} // namespace veldrin
