#pragma once

#include "geometry/AcGePoint2d.h"

class AcGeLineSeg2d;

// An unbounded line in the plane.
class VELDRIN_GEOMETRY_API AcGeLine2d {
public:
    AcGeLine2d(const AcGePoint2d& point, const AcGeVector2d& direction)
        : m_point(point), m_direction(direction) {}

    const AcGePoint2d& pointOnLine() const { return m_point; }
    const AcGeVector2d& direction() const { return m_direction; }

    // True and the common point when exactly one exists; false for parallel lines.
    bool intersectWith(const AcGeLine2d& line, AcGePoint2d& common,
                       const AcGeTol& tol = AcGeContext::gTol) const;
    // The same with a bounded line, whose ends count by the tolerance.
    bool intersectWith(const AcGeLineSeg2d& segment, AcGePoint2d& common,
                       const AcGeTol& tol = AcGeContext::gTol) const;

private:
    AcGePoint2d m_point;
    AcGeVector2d m_direction;
};

// A line between two points of the plane.
class VELDRIN_GEOMETRY_API AcGeLineSeg2d {
public:
    AcGeLineSeg2d(const AcGePoint2d& start, const AcGePoint2d& end) : m_start(start), m_end(end) {}

    const AcGePoint2d& startPoint() const { return m_start; }
    const AcGePoint2d& endPoint() const { return m_end; }
    double length() const { return m_start.distanceTo(m_end); }

    bool intersectWith(const AcGeLineSeg2d& other, AcGePoint2d& common,
                       const AcGeTol& tol = AcGeContext::gTol) const;

private:
    AcGePoint2d m_start;
    AcGePoint2d m_end;
};
