#include "pipe/PipePicture.h"

namespace plumb {

// A riser: a circle about its start. One that goes down and has connections is open where they come in; the
// angles are taken in stored order and should ascend within a turn.
void PipePicture::drawVerticalPipe() {
    const AcGePoint3d& center = m_data.ptStart;
    const double radius = m_data.dVerticalRadius;
    if (m_data.iVerticalType == 0 || m_data.verticalAngles.empty()) {
        emitCircle(center, radius);
        return;
    }
    const double first = m_data.verticalAngles.front();
    double next = first + kSixthTurn; // where the arc that comes next may begin
    const auto arcTo = [&](double angle) {
        if (angle - kSixthTurn > next)
            emitArc(PolarPoint(center, next, radius), center, radius, 1, (angle - next) - kSixthTurn);
        next = angle + kSixthTurn;
    };
    for (std::size_t i = 1; i < m_data.verticalAngles.size(); ++i) arcTo(m_data.verticalAngles[i]);
    arcTo(first + kFullTurn);
}

} // namespace plumb
