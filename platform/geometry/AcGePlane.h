#pragma once

#include "geometry/AcGePoint3d.h"

// An unbounded plane through a point with a unit normal.
class AcGePlane {
public:
    AcGePlane() = default; // the XY plane
    AcGePlane(const AcGePoint3d& origin, const AcGeVector3d& normal)
        : m_origin(origin), m_normal(normal.normal()) {}

    const AcGePoint3d& pointOnPlane() const { return m_origin; }
    const AcGeVector3d& normal() const { return m_normal; }

private:
    AcGePoint3d m_origin;
    AcGeVector3d m_normal{0.0, 0.0, 1.0};
};
