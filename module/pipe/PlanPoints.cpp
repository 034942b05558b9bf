#include "pipe/PlanPoints.h"

namespace plumb {

PlanFrame::PlanFrame(const AcGePoint3d& start, const AcGePoint3d& end) {
    const double dx = end.x - start.x;
    const double dy = end.y - start.y;
    double length = std::sqrt(dx * dx + dy * dy);
    // Squares of what is very small or large leave the range of numbers.
    if (!(length > 1.0e-140 && length < 1.0e140)) length = std::hypot(dx, dy);
    if (length == 0.0) return;
    cosAngle = dx / length;
    sinAngle = dy / length;
}

PlanPoints getPlanPoints(const PipeData& pipe, const PlanFrame& frame) {
    PlanPoints p{pipe.ptStart, pipe.ptEnd, {}, {}};
    if (pipe.dOffsetDistance != 0.0) {
        p.ptOffsetStart = frame.left(pipe.ptStart, pipe.dOffsetDistance);
        p.ptOffsetEnd = frame.left(pipe.ptEnd, pipe.dOffsetDistance);
    }
    p.ptOffsetEnd.z = p.ptOffsetStart.z;

    p.ptRunStart = pipe.dTailOffset != 0.0 ? frame.along(p.ptOffsetStart, pipe.dTailOffset) : p.ptOffsetStart;
    if (pipe.bPtrap)
        p.ptRunEnd = frame.along(p.ptOffsetEnd, -pipe.dPtrapWidth);
    else if (pipe.dHeadOffset != 0.0)
        p.ptRunEnd = frame.along(p.ptOffsetEnd, -pipe.dHeadOffset);
    else
        p.ptRunEnd = p.ptOffsetEnd;
    return p;
}

void buildPtrapPoints(const PipeData& pipe, const PlanFrame& frame, const AcGePoint3d& ptOffsetEnd,
                      const AcGePoint3d& ptRunEnd, AcGePoint3d& ptCurveStart, AcGePoint3d& ptCurveEnd,
                      AcGePoint3dArray& points) {
    const double w = pipe.dPtrapWidth;
    const AcGeVector3d drop(0.0, -0.5 * w, 0.0);
    const AcGeVector3d step(0.0, -kTrapStep, 0.0);
    ptCurveStart = ptRunEnd + drop;
    ptCurveEnd = ptOffsetEnd + drop;
    points.reserve(points.size() + 6);
    points.push_back(ptCurveStart);
    points.push_back(ptCurveStart + step);
    points.push_back(frame.along(ptCurveStart, (0.5 - kTrapStep) * w) + drop);
    points.push_back(frame.along(ptCurveStart, (0.5 + kTrapStep) * w) + drop);
    points.push_back(ptCurveEnd + step);
    points.push_back(ptCurveEnd);
}

std::unique_ptr<AcDb2dPolyline> getPtrapEntities(const PipeData& pipe, AcDbLine& line1, AcDbLine& line2) {
    const PlanFrame frame(pipe.ptStart, pipe.ptEnd);
    PlanPoints p = getPlanPoints(pipe, frame);
    p.ptRunEnd.z = 0.0;
    p.ptOffsetEnd.z = 0.0;
    AcGePoint3dArray points;
    AcGePoint3d curveStart;
    AcGePoint3d curveEnd;
    buildPtrapPoints(pipe, frame, p.ptOffsetEnd, p.ptRunEnd, curveStart, curveEnd, points);
    line1.setStartPoint(p.ptRunEnd);
    line1.setEndPoint(curveStart);
    line2.setStartPoint(curveEnd);
    line2.setEndPoint(p.ptOffsetEnd);
    return std::make_unique<AcDb2dPolyline>(AcDb::k2dFitCurvePoly, points);
}

} // namespace plumb
