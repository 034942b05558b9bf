#include "drawing/AcDbCurvePath.h"

#include <array>
#include <numbers>

namespace veldrin {

namespace {

constexpr double kFullTurn = 2.0 * std::numbers::pi;
// Bulges below this are straight: the arc would stand off its chord by less than half of it per unit.
constexpr double kFlatBulge = 1.0e-10;

double turned(double angle) {
    double a = std::fmod(angle, kFullTurn);
    if (a < 0.0) a += kFullTurn;
    constexpr double kSameAngle = 1.0e-12;
    return kFullTurn - a < kSameAngle ? 0.0 : a;
}

AcGeVector3d across(const AcGeVector3d& v, const AcGeVector3d& unit) {
    return v - unit * v.dotProduct(unit);
}

double clamped(double fraction, bool openStart, bool openEnd) {
    if (fraction < 0.0 && !openStart) return 0.0;
    if (fraction > 1.0 && !openEnd) return 1.0;
    return fraction;
}

// Golden section search for the lowest value of a function between two places.
template<class F>
double lowest(F value, double from, double to) {
    constexpr double kGolden = 0.6180339887498949;
    double a = to - (to - from) * kGolden;
    double b = from + (to - from) * kGolden;
    double atA = value(a);
    double atB = value(b);
    for (int i = 0; i < 80; ++i) {
        if (atA < atB) {
            to = b;
            b = a;
            atB = atA;
            atA = value(a = to - (to - from) * kGolden);
        } else {
            from = a;
            a = b;
            atA = atB;
            atB = value(b = from + (to - from) * kGolden);
        }
    }
    return (from + to) / 2.0;
}

} // namespace

CurvePiece CurvePiece::line(const AcGePoint3d& start, const AcGePoint3d& end) {
    CurvePiece piece;
    piece.start = start;
    piece.end = end;
    return piece;
}

CurvePiece CurvePiece::arc(const AcGePoint3d& center, double radius, const AcGeVector3d& normal,
                           const AcGeVector3d& toStart, double sweep) {
    CurvePiece piece;
    piece.center = center;
    piece.radius = radius;
    piece.toStart = toStart;
    piece.toSide = normal.normal().crossProduct(toStart);
    piece.sweep = sweep;
    piece.start = center + toStart * radius;
    piece.end = center + (toStart * std::cos(sweep) + piece.toSide * std::sin(sweep)) * radius;
    return piece;
}

CurvePiece CurvePiece::bulged(const AcGePoint3d& start, const AcGePoint3d& end, double bulge,
                              const AcGeVector3d& normal) {
    const AcGeVector3d chord = end - start;
    const double length = chord.length();
    if (std::abs(bulge) < kFlatBulge || length == 0.0) return line(start, end);
    const AcGeVector3d left = normal.crossProduct(chord);
    const AcGePoint3d center = start + chord * 0.5 + left * ((1.0 - bulge * bulge) / (4.0 * bulge));
    CurvePiece piece = arc(center, length * (1.0 + bulge * bulge) / (4.0 * std::abs(bulge)), normal,
                           (start - center).normal(), 4.0 * std::atan(bulge));
    piece.start = start;
    piece.end = end;
    return piece;
}

double CurvePiece::length() const {
    return isArc() ? radius * std::abs(sweep) : start.distanceTo(end);
}

AcGePoint3d CurvePiece::pointAt(double fraction) const {
    if (fraction == 0.0) return start;
    if (fraction == 1.0) return end;
    if (!isArc()) return start + (end - start) * fraction;
    const double angle = fraction * sweep;
    return center + (toStart * std::cos(angle) + toSide * std::sin(angle)) * radius;
}

AcGeVector3d CurvePiece::derivativeAt(double fraction) const {
    if (!isArc()) return end - start;
    const double angle = fraction * sweep;
    return (toSide * std::cos(angle) - toStart * std::sin(angle)) * (radius * sweep);
}

double CurvePiece::closest(const AcGePoint3d& point, bool openStart, bool openEnd) const {
    if (!isArc()) {
        const AcGeVector3d along = end - start;
        const double squared = along.lengthSqrd();
        return squared == 0.0 ? 0.0
                              : clamped((point - start).dotProduct(along) / squared, openStart, openEnd);
    }
    const AcGeVector3d v = point - center;
    const double x = v.dotProduct(toStart);
    const double y = v.dotProduct(toSide);
    if (x == 0.0 && y == 0.0) return 0.0;
    const double angle = turned(sweep < 0.0 ? -std::atan2(y, x) : std::atan2(y, x));
    const double size = std::abs(sweep);
    const double fraction = angle / size;
    if (fraction <= 1.0) return fraction;
    const bool nearEnd = angle - size <= (kFullTurn - size) / 2.0;
    if (openEnd && (nearEnd || !openStart)) return fraction;
    if (openStart) return (angle - kFullTurn) / size;
    return nearEnd ? 1.0 : 0.0;
}

double CurvePiece::closestAlong(const AcGePoint3d& point, const AcGeVector3d& direction, bool openStart,
                                bool openEnd) const {
    const AcGeVector3d unit = direction.normal();
    constexpr double kEndOn = 1.0e-12;
    if (!isArc()) {
        const AcGeVector3d along = across(end - start, unit);
        const double squared = along.lengthSqrd();
        if (squared <= kEndOn * kEndOn) return 0.0;
        return clamped((point - start).dotProduct(along) / squared, openStart, openEnd);
    }
    if (across(normal(), unit).length() < kEndOn) return closest(point, openStart, openEnd);
    // Seen askew, the arc is a piece of an ellipse.
    const auto apart = [&](double f) { return across(pointAt(f) - point, unit).lengthSqrd(); };
    constexpr int kSamples = 64;
    int nearest = 0;
    for (int i = 1; i <= kSamples; ++i)
        if (apart(i / double{kSamples}) < apart(nearest / double{kSamples})) nearest = i;
    return lowest(apart, std::max(0, nearest - 1) / double{kSamples},
                  std::min(kSamples, nearest + 1) / double{kSamples});
}

bool CurvePiece::holdsAngle(double angleFromStart) const {
    return turned(sweep < 0.0 ? -angleFromStart : angleFromStart) <= std::abs(sweep);
}

void CurvePiece::addTo(AcDbExtents& extents) const {
    extents.addPoint(start);
    extents.addPoint(end);
    if (!isArc()) return;
    const std::array<std::pair<double, double>, 3> axes{
        {{toStart.x, toSide.x}, {toStart.y, toSide.y}, {toStart.z, toSide.z}}};
    for (const auto& [cosine, sine] : axes) {
        const double extreme = std::atan2(sine, cosine);
        for (const double angle : {extreme, extreme + std::numbers::pi})
            if (holdsAngle(angle))
                extents.addPoint(center + (toStart * std::cos(angle) + toSide * std::sin(angle)) * radius);
    }
}

CurvePath::CurvePath(const AcGePoint3dArray& vertices, const AcGeDoubleArray& bulges, bool closed,
                     const AcGeVector3d& normal)
    : m_closed(closed) {
    const std::size_t count = vertices.size();
    if (count < 2) return;
    const std::size_t pieces = closed ? count : count - 1;
    m_pieces.reserve(pieces);
    for (std::size_t i = 0; i < pieces; ++i)
        m_pieces.push_back(CurvePiece::bulged(vertices[i], vertices[(i + 1) % count],
                                              i < bulges.size() ? bulges[i] : 0.0, normal));
}

double CurvePath::length() const {
    double sum = 0.0;
    for (const CurvePiece& piece : m_pieces) sum += piece.length();
    return sum;
}

std::pair<const CurvePiece*, double> CurvePath::at(double position) const {
    const double last = endPosition() - 1.0;
    const double index = std::min(std::max(std::floor(position), 0.0), last);
    return {&m_pieces[static_cast<std::size_t>(index)], position - index};
}

AcGePoint3d CurvePath::pointAt(double position) const {
    const auto [piece, fraction] = at(position);
    return piece->pointAt(fraction);
}

AcGeVector3d CurvePath::derivativeAt(double position) const {
    const auto [piece, fraction] = at(position);
    return piece->derivativeAt(fraction);
}

double CurvePath::distanceAt(double position) const {
    const auto [piece, fraction] = at(position);
    double sum = 0.0;
    for (const CurvePiece* p = m_pieces.data(); p != piece; ++p) sum += p->length();
    return sum + fraction * piece->length();
}

double CurvePath::positionAt(double distance) const {
    double left = distance;
    for (std::size_t i = 0; i < m_pieces.size(); ++i) {
        const double length = m_pieces[i].length();
        const bool isLast = i + 1 == m_pieces.size();
        if (left < length || isLast) {
            const double fraction = length == 0.0 ? 0.0 : left / length;
            return static_cast<double>(i) + fraction;
        }
        left -= length;
    }
    return 0.0;
}

template<class Closest, class Distance>
double CurvePath::best(bool extend, Closest closestOn, Distance distanceTo) const {
    const bool open = extend && !m_closed;
    double position = 0.0;
    double nearest = std::numeric_limits<double>::infinity();
    constexpr double kTie = 1.0e-12; // rounding must not move the answer to a later, equal place
    for (std::size_t i = 0; i < m_pieces.size(); ++i) {
        const double fraction = closestOn(m_pieces[i], open && i == 0, open && i + 1 == m_pieces.size());
        const double distance = distanceTo(m_pieces[i].pointAt(fraction));
        if (distance < nearest - kTie) {
            nearest = distance;
            position = static_cast<double>(i) + fraction;
        }
    }
    return position;
}

double CurvePath::closest(const AcGePoint3d& point, bool extend) const {
    return best(
        extend,
        [&](const CurvePiece& piece, bool atStart, bool atEnd) {
            return piece.closest(point, atStart, atEnd);
        },
        [&](const AcGePoint3d& on) { return on.distanceTo(point); });
}

double CurvePath::closestAlong(const AcGePoint3d& point, const AcGeVector3d& direction, bool extend) const {
    const AcGeVector3d unit = direction.normal();
    return best(
        extend,
        [&](const CurvePiece& piece, bool atStart, bool atEnd) {
            return piece.closestAlong(point, direction, atStart, atEnd);
        },
        [&](const AcGePoint3d& on) { return across(on - point, unit).length(); });
}

void CurvePath::addTo(AcDbExtents& extents) const {
    for (const CurvePiece& piece : m_pieces) piece.addTo(extents);
}

} // namespace veldrin
