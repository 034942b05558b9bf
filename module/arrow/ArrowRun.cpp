#include "arrow/ArrowRun.h"

#include "util/PlaneGeometry.h"

namespace plumb {

ArrowRun::ArrowRun(const ArrowData& data)
    : m_data(data)
    , m_length(planDistance(data.ptStart, data.ptEnd))
    , m_angle(AngleBetween(data.ptStart, data.ptEnd))
    , m_arrowLength(data.dArrowLength > m_length ? 0.5 * m_length : data.dArrowLength) {}

AcGePoint3d ArrowRun::tail() const {
    return m_data.dTailOffset != 0.0 ? PolarPoint(m_data.ptStart, m_angle, m_data.dTailOffset)
                                     : m_data.ptStart;
}

AcGePoint3d ArrowRun::head() const {
    return m_data.dHeadOffset != 0.0 ? PolarPoint(m_data.ptEnd, m_angle, -m_data.dHeadOffset) : m_data.ptEnd;
}

bool ArrowRun::hangerPoint(double distance, AcGePoint3d& point) const {
    const double d = std::abs(distance);
    if (!(d < m_length)) return false;
    point = PolarPoint(m_data.ptStart, m_angle, d);
    const double z1 = m_data.ptStart.z;
    const double z2 = m_data.ptEnd.z;
    if (z1 != z2) point.z = (z2 - z1) * d / m_length + z1;
    return true;
}

} // namespace plumb
