#include "pipe/TrapCrossings.h"

#include "pipe/PlanPoints.h"

namespace plumb {

bool distanceAlong(const AcDbCurve& curve, const AcGePoint3d& point, double& distance) {
    return curve.getDistAtPoint(point, distance) == Acad::eOk;
}

bool lengthOf(const AcDbCurve& curve, double& length) {
    AcGePoint3d end;
    return curve.getEndPoint(end) == Acad::eOk && distanceAlong(curve, end, length);
}

TrapCrossings::TrapCrossings(const PipeData& pipe, double extension)
    : m_extension(extension), m_curve(getPtrapEntities(pipe, m_line1, m_line2)) {
    const AcGeVector3d up(0.0, extension, 0.0);
    m_line1.setStartPoint(m_line1.startPoint() + up);
    m_line1.setEndPoint(m_line1.endPoint() - up);
    m_line2.setStartPoint(m_line2.startPoint() - up);
    m_line2.setEndPoint(m_line2.endPoint() + up);
}

const AcDbCurve& TrapCrossings::curveOf(Element element) const {
    switch (element) {
    case Element::Line1: return m_line1;
    case Element::Line2: return m_line2;
    case Element::Curve: break;
    }
    return *m_curve;
}

void TrapCrossings::tell(Element element, const AcGePoint3d& point, ResultList& result) const {
    double distance = 0.0;
    switch (element) {
    case Element::Line1: tellOnLine1(point, result); break;
    case Element::Line2: tellOnLine2(point, result); break;
    case Element::Curve:
        if (distanceAlong(*m_curve, point, distance)) result.pairReal("polyline", distance);
    }
}

void TrapCrossings::tellOnLine1(const AcGePoint3d& point, ResultList& result) const {
    double distance = 0.0;
    if (!distanceAlong(m_line1, point, distance)) return;
    const double position = distance - m_extension;
    result.pairReal("line1", position);
    if (nearStart(position)) result.pairReal("polyline", -position);
}

void TrapCrossings::tellOnLine2(const AcGePoint3d& point, ResultList& result) const {
    double distance = 0.0;
    if (!distanceAlong(m_line2, point, distance)) return;
    const double position = distance - m_extension;
    result.pairReal("line2", position);
    double length = 0.0;
    if (nearStart(position) && lengthOf(*m_curve, length)) result.pairReal("polyline", length + position);
}

void TrapCrossings::tellTrap(const TrapCrossings& other, ResultList& result) const {
    constexpr Element kOthers[] = {Element::Curve, Element::Line1, Element::Line2};
    for (const Element element : kElements) {
        AcGePoint3dArray points;
        bool known = true;
        for (const Element theirs : kOthers)
            known = known && curveOf(element).intersectWith(&other.curveOf(theirs), AcDb::kOnBothOperands,
                                                            points) == Acad::eOk;
        if (!known) continue;
        for (const AcGePoint3d& point : points) tell(element, point, result);
    }
}

} // namespace plumb
