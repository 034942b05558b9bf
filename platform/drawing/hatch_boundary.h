#pragma once

#include "geometry/AcGePoint2d.h"
#include "runtime/resbuf.h"

#include <vector>

namespace veldrin {

// What a group of a hatch is when the hatch is moved.
enum class HatchPart { kOther, kPoint, kVector, kLength, kAngle, kClockwiseAngle };

// Goes through a hatch's groups in order. The meaning of a group depends on what stood before it: loops of
// edges or of a polyline, then the lines of the pattern, then seed points.
class HatchWalk {
public:
    HatchPart next(const resbuf& group);

private:
    HatchPart ofEdge(int code);
    HatchPart ofPattern(int code);

    enum class Stage { kHead, kPolyline, kEdges, kPattern, kSeeds } m_stage = Stage::kHead;
    int m_edge = 0; // 1 line, 2 arc, 3 ellipse, 4 spline
    bool m_clockwise = false;
};

// The loops of a boundary as closed rows of points, in the hatch's plane; what is curved in small steps.
std::vector<std::vector<AcGePoint2d>> hatchLoops(const resbuf* groups);

} // namespace veldrin
