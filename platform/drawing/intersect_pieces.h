#pragma once

#include "drawing/AcDbCurvePath.h"

#include <array>
#include <optional>

namespace veldrin {

// Two pieces meet where they come this close; well below what is drawn, well above the rounding of
// coordinates of some thousand feet.
inline constexpr double kMeets = 1.0e-8;

// Where a piece may be taken beyond its ends.
struct Reach {
    bool start = false;
    bool end = false;
};

// The fraction at which a point lies on a piece.
std::optional<double> fractionOn(const CurvePiece& piece, const Reach& reach, const AcGePoint3d& point);

// Points that the full lines and circles behind two pieces have in common; at most four, unchecked against
// the pieces' ends.
struct Candidates {
    std::array<AcGePoint3d, 4> points;
    std::size_t count = 0;
    bool coincident = false; // one carrier: the points are the pieces' ends

    void add(const AcGePoint3d& p) { points[count++] = p; }
};
Candidates commonPoints(const CurvePiece& a, const CurvePiece& b);

// Whether pieces on one carrier merely touch at a point that lies on both.
bool touchOnly(const CurvePiece& a, const Reach& reachA, const CurvePiece& b, const Reach& reachB,
               const AcGePoint3d& point);

} // namespace veldrin
