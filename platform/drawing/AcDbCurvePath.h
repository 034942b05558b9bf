#pragma once

#include "geometry/AcDbExtents.h"
#include "geometry/AcGeArrays.h"

#include <vector>

namespace veldrin {

// How far a point may lie off a curve and still count as on it; what users type and scripts round stays
// well within it.
inline constexpr double kOnCurve = 1.0e-6;

// One straight or circular piece of a curve. A place on it is a fraction: 0 at its start, 1 at its end,
// beyond those where the piece is taken longer than it is.
struct VELDRIN_GEOMETRY_API CurvePiece {
    AcGePoint3d start;
    AcGePoint3d end;
    AcGePoint3d center;   // of an arc
    double radius = 0.0;  // 0 for a straight piece
    AcGeVector3d toStart; // unit vector from the centre
    AcGeVector3d toSide;  // unit vector a quarter turn counter-clockwise from it
    double sweep = 0.0;   // radians, negative for clockwise

    static CurvePiece line(const AcGePoint3d& start, const AcGePoint3d& end);
    // `toStart` is a unit vector square to the normal.
    static CurvePiece arc(const AcGePoint3d& center, double radius, const AcGeVector3d& normal,
                          const AcGeVector3d& toStart, double sweep);
    // An arc from its chord; the bulge is the tangent of a quarter of the sweep. Straight when it is next to
    // 0.
    static CurvePiece bulged(const AcGePoint3d& start, const AcGePoint3d& end, double bulge,
                             const AcGeVector3d& normal);

    bool isArc() const { return radius > 0.0; }
    AcGeVector3d normal() const { return toStart.crossProduct(toSide); }
    double length() const;
    AcGePoint3d pointAt(double fraction) const;
    AcGeVector3d derivativeAt(double fraction) const; // by the fraction
    // The closest place. Past an end only where that end is open; on an arc then up to a full turn.
    double closest(const AcGePoint3d& point, bool openStart = false, bool openEnd = false) const;
    // The place closest as seen along a direction.
    double closestAlong(const AcGePoint3d& point, const AcGeVector3d& direction, bool openStart = false,
                        bool openEnd = false) const;
    void addTo(AcDbExtents& extents) const;
    // Angle from the start counter-clockwise, from 0 up to a full turn, as a fraction of the sweep.
    bool holdsAngle(double angleFromStart) const;
};

// Pieces in a row. A position counts pieces: 2.5 is the middle of the third one.
class VELDRIN_GEOMETRY_API CurvePath {
public:
    CurvePath() = default;
    CurvePath(std::vector<CurvePiece> pieces, bool closed) : m_pieces(std::move(pieces)), m_closed(closed) {}
    // Vertices with one bulge each; a closed row ends where it began.
    CurvePath(const AcGePoint3dArray& vertices, const AcGeDoubleArray& bulges, bool closed,
              const AcGeVector3d& normal);

    const std::vector<CurvePiece>& pieces() const { return m_pieces; }
    bool isEmpty() const { return m_pieces.empty(); }
    bool isClosed() const { return m_closed; }
    double endPosition() const { return static_cast<double>(m_pieces.size()); }
    double length() const;

    // Positions outside of the path are taken on its first or last piece. The path must not be empty.
    AcGePoint3d pointAt(double position) const;
    AcGeVector3d derivativeAt(double position) const;
    double distanceAt(double position) const;
    double positionAt(double distance) const;
    // The closest position, the first of several; with `extend` an open path goes on beyond its ends.
    double closest(const AcGePoint3d& point, bool extend = false) const;
    double closestAlong(const AcGePoint3d& point, const AcGeVector3d& direction, bool extend = false) const;
    void addTo(AcDbExtents& extents) const;

private:
    // Piece and fraction of a position.
    std::pair<const CurvePiece*, double> at(double position) const;
    template<class Closest, class Distance>
    double best(bool extend, Closest closestOn, Distance distanceTo) const;

    std::vector<CurvePiece> m_pieces;
    bool m_closed = false;
};

} // namespace veldrin
