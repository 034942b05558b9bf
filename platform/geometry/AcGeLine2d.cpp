#include "geometry/AcGeLine2d.h"

#include <optional>

namespace {

// Where along a (in units of its direction) it meets b; nothing when they are parallel or have no direction.
std::optional<double> meeting(const AcGePoint2d& a, const AcGeVector2d& alongA, const AcGePoint2d& b,
                              const AcGeVector2d& alongB, const AcGeTol& tol) {
    const double cross = alongA.crossProduct(alongB);
    const double scale = alongA.length() * alongB.length();
    if (!(std::abs(cross) > tol.equalVector * scale)) return std::nullopt;
    return (b - a).crossProduct(alongB) / cross;
}

bool within(const AcGeLineSeg2d& segment, const AcGePoint2d& point, const AcGeTol& tol) {
    const AcGeVector2d along = segment.endPoint() - segment.startPoint();
    const double distance = (point - segment.startPoint()).dotProduct(along.normal());
    return distance >= -tol.equalPoint && distance <= along.length() + tol.equalPoint;
}

} // namespace

bool AcGeLine2d::intersectWith(const AcGeLine2d& line, AcGePoint2d& common, const AcGeTol& tol) const {
    const auto t = meeting(m_point, m_direction, line.m_point, line.m_direction, tol);
    if (!t) return false;
    common = m_point + m_direction * *t;
    return true;
}

bool AcGeLine2d::intersectWith(const AcGeLineSeg2d& segment, AcGePoint2d& common, const AcGeTol& tol) const {
    const AcGeLine2d carrier(segment.startPoint(), segment.endPoint() - segment.startPoint());
    AcGePoint2d meet;
    if (!intersectWith(carrier, meet, tol) || !within(segment, meet, tol)) return false;
    common = meet;
    return true;
}

bool AcGeLineSeg2d::intersectWith(const AcGeLineSeg2d& other, AcGePoint2d& common, const AcGeTol& tol) const {
    const AcGeLine2d carrier(m_start, m_end - m_start);
    AcGePoint2d meet;
    if (!carrier.intersectWith(other, meet, tol) || !within(*this, meet, tol)) return false;
    common = meet;
    return true;
}
