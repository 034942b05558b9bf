#pragma once

#include "geometry/AcGePoint3d.h"

#include <algorithm>
#include <limits>

// A box along the axes that grows by what is added; empty until then.
class AcDbExtents {
public:
    const AcGePoint3d& minPoint() const { return m_min; }
    const AcGePoint3d& maxPoint() const { return m_max; }
    bool isEmpty() const { return m_min.x > m_max.x; }

    void addPoint(const AcGePoint3d& p) {
        m_min.set(std::min(m_min.x, p.x), std::min(m_min.y, p.y), std::min(m_min.z, p.z));
        m_max.set(std::max(m_max.x, p.x), std::max(m_max.y, p.y), std::max(m_max.z, p.z));
    }
    void addExt(const AcDbExtents& other) {
        if (other.isEmpty()) return;
        addPoint(other.m_min);
        addPoint(other.m_max);
    }

private:
    static constexpr double kFar = std::numeric_limits<double>::infinity();
    AcGePoint3d m_min{kFar, kFar, kFar};
    AcGePoint3d m_max{-kFar, -kFar, -kFar};
};
