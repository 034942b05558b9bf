#pragma once

#include "drawing/AcDb2dPolyline.h"
#include "drawing/AcDbLine.h"
#include "host/LispResults.h"
#include "pipe/PipeData.h"

#include <memory>

namespace plumb {

// Where a trap is crossed, flat at elevation 0, as distances along its elements: "line1" from its top,
// "line2" from its foot, "polyline" along the curve. These are the positions at which the trap takes breaks.
//
// An extension lengthens both lines at both ends for the search, so that a crossing just past an end counts;
// distances still count from the line's true start and may be negative. A crossing that close behind the
// start of a line is also told as one on the curve, before its start or past its end.
class TrapCrossings {
public:
    TrapCrossings(const PipeData& pipe, double extension);

    // Of what is asked about with line 1, the curve and line 2, in this order; along(point) tells each first,
    // as the pair "entity", which is left out where it gives no distance. An element that cannot be
    // intersected is passed over.
    template<class Along>
    void tellAcross(const AcDbEntity& entity, ResultList& result, Along along) const {
        for (const Element element : kElements) {
            AcGePoint3dArray points;
            if (entity.intersectWith(&curveOf(element), AcDb::kOnBothOperands, points) != Acad::eOk) continue;
            for (const AcGePoint3d& point : points) {
                double distance = 0.0;
                if (along(point, distance)) result.pairReal("entity", distance);
                tell(element, point, result);
            }
        }
    }

    // With another trap, as positions on this one alone.
    void tellTrap(const TrapCrossings& other, ResultList& result) const;

private:
    enum class Element { Line1, Curve, Line2 };
    static constexpr Element kElements[] = {Element::Line1, Element::Curve, Element::Line2};

    const AcDbCurve& curveOf(Element element) const;
    void tell(Element element, const AcGePoint3d& point, ResultList& result) const;
    void tellOnLine1(const AcGePoint3d& point, ResultList& result) const;
    void tellOnLine2(const AcGePoint3d& point, ResultList& result) const;
    bool nearStart(double position) const { return position > 0.0 && position < m_extension; }

    double m_extension;
    AcDbLine m_line1;
    AcDbLine m_line2;
    std::unique_ptr<AcDb2dPolyline> m_curve;
};

// Distance of a point along a curve; false where the curve knows none.
bool distanceAlong(const AcDbCurve& curve, const AcGePoint3d& point, double& distance);
// Length as a curve measures it itself.
bool lengthOf(const AcDbCurve& curve, double& length);

} // namespace plumb
