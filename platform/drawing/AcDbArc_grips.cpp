#include "drawing/AcDbArc.h"

#include <numbers>

using veldrin::CurvePiece;

namespace {

enum Grip { kStart = 0, kEnd = 1, kMiddle = 2, kCenter = 3 };

// The bulge of an arc through a point between its ends; nothing when the three lie in a line.
std::optional<double> bulgeThrough(const AcGePoint3d& start, const AcGePoint3d& on, const AcGePoint3d& end,
                                   const AcGeVector3d& normal) {
    const AcGeVector3d a = start - on;
    const AcGeVector3d b = end - on;
    // The angle at the point between stands over the rest of the circle: half of it is the missing sweep.
    const double across = a.crossProduct(b).dotProduct(normal);
    constexpr double kInLine = 1.0e-12;
    if (std::abs(across) <= kInLine * a.length() * b.length()) return std::nullopt;
    const double angle = std::atan2(across, a.dotProduct(b));
    const double size = std::numbers::pi - std::abs(angle); // half of the sweep
    return (angle < 0.0 ? 1.0 : -1.0) * std::tan(size / 2.0);
}

} // namespace

Acad::ErrorStatus AcDbArc::setFromChord(const AcGePoint3d& start, const AcGePoint3d& end, double bulge) {
    const CurvePiece piece = CurvePiece::bulged(start, end, bulge, m_normal);
    if (!piece.isArc()) return Acad::eDegenerateGeometry;
    const bool clockwise = piece.sweep < 0.0;
    const AcGeVector3d x = m_normal.perpVector();
    const AcGeVector3d y = m_normal.crossProduct(x);
    const auto angleOf = [&](const AcGePoint3d& p) {
        return AcGeVector2d((p - piece.center).dotProduct(x), (p - piece.center).dotProduct(y)).angle();
    };
    m_center = piece.center;
    m_radius = piece.radius;
    m_startAngle = angleOf(clockwise ? end : start);
    m_endAngle = angleOf(clockwise ? start : end);
    return Acad::eOk;
}

Acad::ErrorStatus AcDbArc::subGetGripPoints(AcGePoint3dArray& points, AcGeIntArray&, AcGeIntArray&) const {
    const auto curve = path();
    if (curve->isEmpty()) return Acad::eDegenerateGeometry;
    for (const double position : {0.0, 1.0, 0.5}) points.push_back(curve->pointAt(position));
    points.push_back(m_center);
    return Acad::eOk;
}

// The centre takes the whole arc along; an end or the middle bends the arc, which goes on through the others.
Acad::ErrorStatus AcDbArc::subMoveGripPointsAt(const AcGeIntArray& indices, const AcGeVector3d& offset) {
    AcGePoint3dArray grips;
    AcGeIntArray none;
    const Acad::ErrorStatus status = subGetGripPoints(grips, none, none);
    if (status != Acad::eOk) return status;
    bool moves[3] = {false, false, false};
    for (const int index : indices) {
        if (index == kCenter) {
            m_center += offset;
            return Acad::eOk;
        }
        if (index >= kStart && index <= kMiddle) moves[index] = true;
    }
    if (moves[kStart] && moves[kEnd] && moves[kMiddle]) {
        m_center += offset;
        return Acad::eOk;
    }
    for (std::size_t i = kStart; i <= kMiddle; ++i)
        if (moves[i]) grips[i] += offset;
    const auto bulge = bulgeThrough(grips[kStart], grips[kMiddle], grips[kEnd], m_normal);
    return bulge ? setFromChord(grips[kStart], grips[kEnd], *bulge) : Acad::eDegenerateGeometry;
}

Acad::ErrorStatus AcDbArc::subGetStretchPoints(AcGePoint3dArray& points) const {
    const auto curve = path();
    if (curve->isEmpty()) return Acad::eDegenerateGeometry;
    points.push_back(curve->pointAt(0.0));
    points.push_back(curve->pointAt(1.0));
    return Acad::eOk;
}

// One stretched end keeps the height of the arc over its chord.
Acad::ErrorStatus AcDbArc::subMoveStretchPointsAt(const AcGeIntArray& indices, const AcGeVector3d& offset) {
    AcGePoint3dArray ends;
    const Acad::ErrorStatus status = subGetStretchPoints(ends);
    if (status != Acad::eOk) return status;
    bool moves[2] = {false, false};
    for (const int index : indices)
        if (index == kStart || index == kEnd) moves[index] = true;
    if (moves[0] && moves[1]) {
        m_center += offset;
        return Acad::eOk;
    }
    if (!moves[0] && !moves[1]) return Acad::eOk;
    const double height = std::tan(sweep() / 4.0) * ends[0].distanceTo(ends[1]) / 2.0;
    for (std::size_t i = 0; i < 2; ++i)
        if (moves[i]) ends[i] += offset;
    const double chord = ends[0].distanceTo(ends[1]);
    return chord == 0.0 ? Acad::eDegenerateGeometry : setFromChord(ends[0], ends[1], 2.0 * height / chord);
}
