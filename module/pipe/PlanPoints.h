#pragma once

#include "drawing/AcDb2dPolyline.h"
#include "drawing/AcDbLine.h"
#include "pipe/PipeData.h"
#include "util/PlaneGeometry.h"

#include <memory>

namespace plumb {

// The direction of a pipe in plan, as what drawing needs of it: every point of the picture is a step along,
// across or at an elbow's angle to it. Equal to PolarPoint with the pipe's angle, without computing a sine
// and a cosine for each step.
struct PlanFrame {
    double cosAngle = 1.0; // a pipe of no length in plan points along X
    double sinAngle = 0.0;

    PlanFrame(const AcGePoint3d& start, const AcGePoint3d& end);

    AcGePoint3d along(const AcGePoint3d& p, double distance) const {
        return {p.x + cosAngle * distance, p.y + sinAngle * distance, p.z};
    }
    // A quarter turn to the left or right of the pipe.
    AcGePoint3d left(const AcGePoint3d& p, double distance) const {
        return {p.x + (cosAngle * kQuarterTurnCosine - sinAngle) * distance,
                p.y + (sinAngle * kQuarterTurnCosine + cosAngle) * distance, p.z};
    }
    AcGePoint3d right(const AcGePoint3d& p, double distance) const {
        return {p.x + (cosAngle * kQuarterTurnCosine + sinAngle) * distance,
                p.y + (sinAngle * kQuarterTurnCosine - cosAngle) * distance, p.z};
    }
    AcGePoint3d turned(const AcGePoint3d& p, const elbowInfo& elbow, double distance) const {
        return {p.x + (cosAngle * elbow.cosAngle - sinAngle * elbow.sinAngle) * distance,
                p.y + (sinAngle * elbow.cosAngle + cosAngle * elbow.sinAngle) * distance, p.z};
    }
};

// The ends of a plan pipe, all at the elevation of its start.
struct PlanPoints {
    AcGePoint3d ptOffsetStart; // the ends, shifted sideways
    AcGePoint3d ptOffsetEnd;
    AcGePoint3d ptRunStart; // the ends of the straight run that is drawn
    AcGePoint3d ptRunEnd;
};

PlanPoints getPlanPoints(const PipeData& pipe, const PlanFrame& frame);

// The six points of a trap's curve, appended in order. It hangs towards -Y whatever the pipe's direction is.
void buildPtrapPoints(const PipeData& pipe, const PlanFrame& frame, const AcGePoint3d& ptOffsetEnd,
                      const AcGePoint3d& ptRunEnd, AcGePoint3d& ptCurveStart, AcGePoint3d& ptCurveEnd,
                      AcGePoint3dArray& points);

// The trap flat at elevation 0, as it is measured. The curve is the caller's.
std::unique_ptr<AcDb2dPolyline> getPtrapEntities(const PipeData& pipe, AcDbLine& line1, AcDbLine& line2);

} // namespace plumb
