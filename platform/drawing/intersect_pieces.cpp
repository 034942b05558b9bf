#include "drawing/intersect_pieces.h"

namespace veldrin {

namespace {

constexpr double kParallel = 1.0e-10; // sine of the angle below which directions count as parallel
constexpr double kTangent = kMeets / 2.0;

void addEnds(const CurvePiece& a, const CurvePiece& b, Candidates& found) {
    found.coincident = true;
    for (const AcGePoint3d& p : {a.start, a.end, b.start, b.end}) found.add(p);
}

// Where a line through a point along a unit direction, in the circle's plane, meets the circle.
void lineAndCircle(const AcGePoint3d& onLine, const AcGeVector3d& unit, const AcGePoint3d& center,
                   double radius, Candidates& found) {
    const AcGePoint3d foot = onLine + unit * (center - onLine).dotProduct(unit);
    const double height = foot.distanceTo(center);
    if (height > radius + kTangent) return;
    if (height >= radius - kTangent) return found.add(foot);
    const double half = std::sqrt(radius * radius - height * height);
    found.add(foot - unit * half);
    found.add(foot + unit * half);
}

void lines(const CurvePiece& a, const CurvePiece& b, Candidates& found) {
    const AcGeVector3d u = (a.end - a.start).normal();
    const AcGeVector3d v = (b.end - b.start).normal();
    const AcGeVector3d square = u.crossProduct(v);
    const AcGeVector3d between = b.start - a.start;
    if (square.length() <= kParallel) return addEnds(a, b, found);
    found.add(a.start + u * (between.crossProduct(v).dotProduct(square) / square.lengthSqrd()));
}

void lineAndArc(const CurvePiece& line, const CurvePiece& arc, Candidates& found) {
    const AcGeVector3d u = (line.end - line.start).normal();
    const AcGeVector3d n = arc.normal();
    const double climb = u.dotProduct(n);
    if (std::abs(climb) > kParallel)
        return found.add(line.start + u * ((arc.center - line.start).dotProduct(n) / climb));
    lineAndCircle(line.start, u, arc.center, arc.radius, found);
}

void circlesOfOnePlane(const CurvePiece& a, const CurvePiece& b, Candidates& found) {
    const AcGeVector3d between = b.center - a.center;
    const double d = between.length();
    if (d <= kTangent) {
        if (std::abs(a.radius - b.radius) <= kTangent) addEnds(a, b, found);
        return;
    }
    const double outer = a.radius + b.radius;
    const double inner = std::abs(a.radius - b.radius);
    if (d > outer + kTangent || d < inner - kTangent) return;
    const AcGeVector3d toB = between / d;
    const double along = (d * d + a.radius * a.radius - b.radius * b.radius) / (2.0 * d);
    if (d >= outer - kTangent || d <= inner + kTangent)
        return found.add(a.center + toB * (along < 0.0 ? -a.radius : a.radius));
    const AcGeVector3d side =
        a.normal().crossProduct(toB) * std::sqrt(std::max(0.0, a.radius * a.radius - along * along));
    found.add(a.center + toB * along + side);
    found.add(a.center + toB * along - side);
}

void arcs(const CurvePiece& a, const CurvePiece& b, Candidates& found) {
    const AcGeVector3d n = a.normal();
    const AcGeVector3d m = b.normal();
    const AcGeVector3d cross = n.crossProduct(m);
    if (cross.length() <= kParallel) return circlesOfOnePlane(a, b, found);
    // The line that both planes share, from its point closest to the first centre.
    const double lift = (b.center - a.center).dotProduct(m);
    const AcGePoint3d onBoth = a.center + cross.crossProduct(n) * (lift / cross.lengthSqrd());
    lineAndCircle(onBoth, cross.normal(), a.center, a.radius, found);
}

} // namespace

std::optional<double> fractionOn(const CurvePiece& piece, const Reach& reach, const AcGePoint3d& point) {
    const double fraction = piece.closest(point, reach.start, reach.end);
    if (piece.pointAt(fraction).distanceTo(point) > kMeets) return std::nullopt;
    return fraction;
}

Candidates commonPoints(const CurvePiece& a, const CurvePiece& b) {
    Candidates found;
    if (a.length() <= kMeets)
        found.add(a.start);
    else if (b.length() <= kMeets)
        found.add(b.start);
    else if (a.isArc() && b.isArc())
        arcs(a, b, found);
    else if (a.isArc())
        lineAndArc(b, a, found);
    else if (b.isArc())
        lineAndArc(a, b, found);
    else
        lines(a, b, found);
    return found;
}

bool touchOnly(const CurvePiece& a, const Reach& reachA, const CurvePiece& b, const Reach& reachB,
               const AcGePoint3d& point) {
    const double at = a.closest(point, reachA.start, reachA.end);
    const double step = 100.0 * kMeets / a.length();
    for (const double beside : {at - step, at + step}) {
        const AcGePoint3d p = a.pointAt(beside);
        if (fractionOn(a, reachA, p) && fractionOn(b, reachB, p)) return false;
    }
    return true;
}

} // namespace veldrin
