#include "drawing/AcDbPathCurve.h"

#include <numbers>

namespace veldrin {

namespace {

void addEnds(const CurvePath& path, AcGePoint3dArray& points) {
    const auto& pieces = path.pieces();
    if (path.isClosed() && pieces.size() == 1) return; // a circle has none
    for (const CurvePiece& piece : pieces) points.push_back(piece.start);
    if (!path.isClosed()) points.push_back(pieces.back().end);
}

void addQuadrants(const CurvePiece& piece, AcGePoint3dArray& points) {
    if (!piece.isArc()) return;
    const AcGeVector3d x = piece.normal().perpVector();
    const double startAngle = std::atan2(x.dotProduct(piece.toSide), x.dotProduct(piece.toStart));
    for (int quarter = 0; quarter < 4; ++quarter) {
        const double angle = startAngle + quarter * std::numbers::pi / 2.0;
        if (piece.holdsAngle(angle))
            points.push_back(piece.center +
                             (piece.toStart * std::cos(angle) + piece.toSide * std::sin(angle)) *
                                 piece.radius);
    }
}

void addFoot(const CurvePiece& piece, bool openEnds, const AcGePoint3d& from, AcGePoint3dArray& points) {
    const AcGePoint3d foot = piece.pointAt(piece.closest(from, openEnds, openEnds));
    const AcGeVector3d along = piece.derivativeAt(piece.closest(from, openEnds, openEnds)).normal();
    constexpr double kSquare = 1.0e-6;
    if (std::abs((from - foot).normal().dotProduct(along)) <= kSquare) points.push_back(foot);
}

// Where lines from a point touch the arc, as seen along its normal.
void addTouching(const CurvePiece& piece, const AcGePoint3d& from, AcGePoint3dArray& points) {
    if (!piece.isArc()) return;
    const AcGeVector3d v = from - piece.center;
    const double x = v.dotProduct(piece.toStart);
    const double y = v.dotProduct(piece.toSide);
    const double distance = std::hypot(x, y);
    if (distance <= piece.radius) return;
    const double half = std::acos(piece.radius / distance);
    for (const double angle : {std::atan2(y, x) + half, std::atan2(y, x) - half})
        if (piece.holdsAngle(angle))
            points.push_back(piece.center +
                             (piece.toStart * std::cos(angle) + piece.toSide * std::sin(angle)) *
                                 piece.radius);
}

} // namespace

Acad::ErrorStatus PathCurve::subGetOsnapPoints(AcDb::OsnapMode mode, Adesk::GsMarker,
                                               const AcGePoint3d& pickPoint, const AcGePoint3d& lastPoint,
                                               const AcGeMatrix3d&, AcGePoint3dArray& snapPoints,
                                               AcGeIntArray&) const {
    const auto curve = path();
    if (!curve || curve->isEmpty()) return Acad::eDegenerateGeometry;
    const bool single = curve->pieces().size() == 1;
    if (mode == AcDb::kOsModeEnd) addEnds(*curve, snapPoints);
    if (mode == AcDb::kOsModeNear)
        snapPoints.push_back(curve->pointAt(curve->closestAlong(pickPoint, AcGeVector3d::kZAxis)));
    for (const CurvePiece& piece : curve->pieces()) switch (mode) {
        case AcDb::kOsModeMid:
            if (!(single && isClosed())) snapPoints.push_back(piece.pointAt(0.5));
            break;
        case AcDb::kOsModeCen:
            if (piece.isArc()) snapPoints.push_back(piece.center);
            break;
        case AcDb::kOsModeQuad: addQuadrants(piece, snapPoints); break;
        case AcDb::kOsModePerp: addFoot(piece, single && !piece.isArc(), lastPoint, snapPoints); break;
        case AcDb::kOsModeTan: addTouching(piece, lastPoint, snapPoints); break;
        default: break;
        }
    return Acad::eOk;
}

} // namespace veldrin
