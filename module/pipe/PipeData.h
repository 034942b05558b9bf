#pragma once

#include "drawing/AcDbObjectId.h"
#include "geometry/AcGePoint3d.h"
#include "pipe/PipeConstants.h"
#include "runtime/CString.h"

#include <array>
#include <cmath>
#include <vector>

namespace plumb {

// Middles of gaps, as distances along one element of a pipe.
using BreakList = std::vector<double>;
// The same for an elbow or arc: ascending from the first slot, a 0.0 is free.
using BreakSlots = std::array<double, 10>;

// A straight stub at a pipe's end.
class elbowInfo {
public:
    elbowInfo() = default;
    elbowInfo(double length, double angle)
        : dLength(length), dAngle(angle), cosAngle(std::cos(angle)), sinAngle(std::sin(angle)) {}
    virtual ~elbowInfo() = default;
    elbowInfo(const elbowInfo&) = default;
    elbowInfo& operator=(const elbowInfo&) = default;

    double dLength = 0.0;
    double dAngle = 0.0; // turn from the pipe's direction, counter-clockwise; set by the constructor alone
    // Of dAngle, kept because every regeneration needs them.
    double cosAngle = 1.0;
    double sinAngle = 0.0;
    BreakSlots breaks{};
};

// A turn at a pipe's end along a circle of the pipe's dArcRadius.
class arcInfo {
public:
    arcInfo() = default;
    arcInfo(double length, double offset, Adesk::Int32 normal)
        : dLength(length), dOffset(offset), iNormal(normal) {}
    virtual ~arcInfo() = default;
    arcInfo(const arcInfo&) = default;
    arcInfo& operator=(const arcInfo&) = default;

    double dLength = 0.0;     // swept angle: length on a circle of radius 1
    double dOffset = 0.0;     // from the pipe's end back to the arc's first point
    Adesk::Int32 iNormal = 0; // 1 turns left, anything else right
    BreakSlots breaks{};
};

// A gap while it is being drawn; never filed.
struct breakInfo {
    double dPosition = 0.0; // of its middle
    double dWidth = 0.0;

    double low() const { return dPosition - dWidth * 0.5; }
    double high() const { return dPosition + dWidth * 0.5; }
};

// What a pipe stores. Lengths are inches, angles radians.
//
// Start is the tail and end the head of a pipe, except for the ticks, whose names run the other way. What
// every regeneration reads stands first, close together in memory.
struct PipeData {
    AcGePoint3d ptStart; // Z is the pipe's elevation at this end
    AcGePoint3d ptEnd;
    AcDbObjectId hiddenLayerId; // layer of the twins; null for none

    double dOffsetDistance = 0.0; // sideways, positive to the left
    double dTailOffset = 0.0;     // shortens the drawn run at its start
    double dHeadOffset = 0.0;     // and at its end
    BreakList pipeBreaks;         // from the offset start
    CString sText;
    double dTickWidth = 0.0; // across the pipe; 0 for no ticks
    bool bPtrap = false;
    bool bIsometric = false;

    double dElbow45Offset = 0.0; // from the pipe's end back to the base of all elbows
    std::vector<elbowInfo> elbows;
    double dArcRadius = 0.0;
    std::vector<arcInfo> arcs;

    double dBreakWidth = kDefaultBreakWidth;
    double dTickOffsetTail = 0.0; // from the run's end backwards
    double dTickOffsetHead = 0.0; // from the run's start onwards

    Adesk::Int32 iVerticalType = 0; // 0 up, 1 down
    double dVerticalRadius = kDefaultVerticalRadius;
    std::vector<double> verticalAngles; // of the pipes that lead into the riser

    double dTextDistance = 0.0; // between labels along the pipe
    bool bTextAngleIs0 = false;
    AcDbObjectId textStyleId;
    AcDbObjectId textLayerId;

    double dPtrapWidth = 0.0;
    BreakList ptrapLine1Breaks;    // from the run's end downwards
    BreakList ptrapPolylineBreaks; // along the curve
    BreakList ptrapLine2Breaks;    // from the curve's end upwards

    Adesk::Int32 ixPipe = 0; // row of the project's pipe table
    CString sDwg;
    bool bDwgStart = false;
    bool bDwgEnd = false;
    bool bElbow45 = false;
    bool bElbowArc = false;
    bool bTee45 = false;
    bool bTeeArc = false;
};

} // namespace plumb
