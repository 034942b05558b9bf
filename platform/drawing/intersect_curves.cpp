#include "drawing/intersect_curves.h"

#include "drawing/intersect_pieces.h"

#include <numbers>

namespace veldrin {

namespace {

// A piece as it takes part in the search: itself, or its picture in the plane of view. An arc that is seen
// askew stands there as chords, whose meetings are then made exact.
struct Part {
    CurvePiece piece;
    Reach reach;
    std::size_t source = 0;
    double from = 0.0; // fractions of the source that the part covers
    double to = 1.0;
    bool isChord = false;
};

struct Place {
    double position;
    AcGePoint3d point;
};

Reach reachOf(const CurvePath& path, std::size_t index, bool extend) {
    const bool open = extend && !path.isClosed();
    return {open && index == 0, open && index + 1 == path.pieces().size()};
}

AcGePoint3d dropped(const AcGePoint3d& p, const AcGePlane& plane) {
    return p - plane.normal() * (p - plane.pointOnPlane()).dotProduct(plane.normal());
}

void addChords(const CurvePiece& arc, std::size_t source, const AcGePlane& plane, std::vector<Part>& parts) {
    constexpr double kChordAngle = std::numbers::pi / 64.0;
    const int count = std::max(1, static_cast<int>(std::ceil(std::abs(arc.sweep) / kChordAngle)));
    for (int i = 0; i < count; ++i) {
        Part part;
        part.from = i / double(count);
        part.to = (i + 1) / double(count);
        part.piece =
            CurvePiece::line(dropped(arc.pointAt(part.from), plane), dropped(arc.pointAt(part.to), plane));
        part.source = source;
        part.isChord = true;
        parts.push_back(part);
    }
}

std::vector<Part> partsOf(const CurvePath& path, bool extend, const AcGePlane* plane) {
    std::vector<Part> parts;
    parts.reserve(path.pieces().size());
    constexpr double kFlat = 1.0e-10;
    for (std::size_t i = 0; i < path.pieces().size(); ++i) {
        Part part;
        part.piece = path.pieces()[i];
        part.reach = reachOf(path, i, extend);
        part.source = i;
        if (plane && part.piece.isArc() &&
            part.piece.normal().crossProduct(plane->normal()).length() > kFlat) {
            addChords(part.piece, i, *plane, parts);
            continue;
        }
        if (plane) {
            part.piece.start = dropped(part.piece.start, *plane);
            part.piece.end = dropped(part.piece.end, *plane);
            part.piece.center = dropped(part.piece.center, *plane);
        }
        parts.push_back(part);
    }
    return parts;
}

// Newton's steps from where two chords meet to where the curves behind them do, as seen along the normal.
// False when they do not lead to a place on both.
bool sharpen(const CurvePiece& a, const CurvePiece& b, const AcGePlane& plane, double& onA, double& onB) {
    const AcGeVector3d u = plane.normal().perpVector();
    const AcGeVector3d v = plane.normal().crossProduct(u);
    constexpr int kSteps = 20;
    for (int i = 0; i < kSteps; ++i) {
        const AcGeVector3d gap = b.pointAt(onB) - a.pointAt(onA);
        const AcGeVector2d miss(gap.dotProduct(u), gap.dotProduct(v));
        if (miss.length() <= kMeets / 10.0) return true;
        const AcGeVector3d alongA = a.derivativeAt(onA);
        const AcGeVector3d alongB = b.derivativeAt(onB);
        const AcGeVector2d da(alongA.dotProduct(u), alongA.dotProduct(v));
        const AcGeVector2d db(alongB.dotProduct(u), alongB.dotProduct(v));
        const double det = da.crossProduct(db);
        if (det == 0.0) return false;
        onA += miss.crossProduct(db) / det;
        onB += miss.crossProduct(da) / det;
    }
    return false;
}

bool isOn(double fraction, const Reach& reach) {
    constexpr double kEnd = 1.0e-9;
    return (reach.start || fraction >= -kEnd) && (reach.end || fraction <= 1.0 + kEnd);
}

double onSource(const Part& part, double fraction) {
    return part.from + fraction * (part.to - part.from);
}

class Search {
public:
    Search(const CurvePath& a, const CurvePath& b, const AcGePlane* plane) : m_a(a), m_b(b), m_plane(plane) {}

    void meet(const Part& a, const Part& b) {
        const Candidates found = commonPoints(a.piece, b.piece);
        for (std::size_t i = 0; i < found.count; ++i) {
            const AcGePoint3d& point = found.points[i];
            const auto onA = fractionOn(a.piece, a.reach, point);
            const auto onB = onA ? fractionOn(b.piece, b.reach, point) : std::nullopt;
            if (!onB) continue;
            if (found.coincident && !touchOnly(a.piece, a.reach, b.piece, b.reach, point)) continue;
            take(a, b, onSource(a, *onA), onSource(b, *onB));
        }
    }

    std::vector<Place>& places() { return m_places; }

private:
    void take(const Part& a, const Part& b, double onA, double onB) {
        const CurvePiece& whole = m_a.pieces()[a.source];
        if (a.isChord || b.isChord) {
            if (!sharpen(whole, m_b.pieces()[b.source], *m_plane, onA, onB)) return;
            if (!isOn(onA, a.reach) || !isOn(onB, b.reach)) return;
        }
        const Place place{static_cast<double>(a.source) + onA, whole.pointAt(onA)};
        for (const Place& known : m_places)
            if (known.point.distanceTo(place.point) <= 2.0 * kMeets) return;
        m_places.push_back(place);
    }

    const CurvePath& m_a;
    const CurvePath& m_b;
    const AcGePlane* m_plane;
    std::vector<Place> m_places;
};

} // namespace

void intersectPaths(const CurvePath& a, const CurvePath& b, bool extendA, bool extendB,
                    const AcGePlane* plane, AcGePoint3dArray& points) {
    const std::vector<Part> partsA = partsOf(a, extendA, plane);
    const std::vector<Part> partsB = partsOf(b, extendB, plane);
    Search search(a, b, plane);
    for (const Part& partA : partsA)
        for (const Part& partB : partsB) search.meet(partA, partB);
    std::vector<Place>& places = search.places();
    std::stable_sort(places.begin(), places.end(),
                     [](const Place& x, const Place& y) { return x.position < y.position; });
    for (const Place& place : places) points.push_back(place.point);
}

} // namespace veldrin
