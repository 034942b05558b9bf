// Angles and distances of points; angles in radians from the X axis.
#include "lisp/Builtins.h"

#include <cmath>
#include <numbers>

namespace veldrin::lisp {

namespace {

Value distance(Engine&, Args args) {
    const Point a = args.point(0), b = args.point(1);
    const bool isFlat = a.dimensions == 2 || b.dimensions == 2;
    return Value::real(std::hypot(b.x - a.x, b.y - a.y, isFlat ? 0.0 : b.z - a.z));
}

Value angle(Engine&, Args args) {
    const Point a = args.point(0), b = args.point(1);
    double angle = std::atan2(b.y - a.y, b.x - a.x);
    if (angle < 0) angle += 2 * std::numbers::pi;
    return Value::real(angle);
}

Value polar(Engine&, Args args) {
    Point p = args.point(0);
    const double angle = args.number(1), distance = args.number(2);
    p.x += distance * std::cos(angle);
    p.y += distance * std::sin(angle);
    return p.toList();
}

// Two lines in space that pass each other at more than this do not meet.
constexpr double meetingTolerance = 1e-8;

Point along(const Point& a, const Point& b, double t) {
    return {a.x + t * (b.x - a.x), a.y + t * (b.y - a.y), a.z + t * (b.z - a.z), 3};
}

// Where p1 p2 and p3 p4 meet; inside both segments unless a fifth argument is given as nil.
Value inters(Engine&, Args args) {
    Point p[4];
    bool isFlat = false;
    for (std::size_t i = 0; i < 4; ++i) {
        p[i] = args.point(i);
        isFlat = isFlat || p[i].dimensions == 2;
    }
    if (isFlat)
        for (Point& each : p) each.z = 0;
    const double ux = p[1].x - p[0].x, uy = p[1].y - p[0].y, uz = p[1].z - p[0].z;
    const double vx = p[3].x - p[2].x, vy = p[3].y - p[2].y, vz = p[3].z - p[2].z;
    const double wx = p[0].x - p[2].x, wy = p[0].y - p[2].y, wz = p[0].z - p[2].z;
    const double uu = ux * ux + uy * uy + uz * uz, vv = vx * vx + vy * vy + vz * vz;
    const double uv = ux * vx + uy * vy + uz * vz;
    const double uw = ux * wx + uy * wy + uz * wz, vw = vx * wx + vy * wy + vz * wz;
    const double det = uu * vv - uv * uv;
    if (det <= 1e-20 * uu * vv) return {};
    const double s = (uv * vw - vv * uw) / det, t = (uu * vw - uv * uw) / det;
    const Point a = along(p[0], p[1], s), b = along(p[2], p[3], t);
    const double size = 1 + std::abs(a.x) + std::abs(a.y) + std::abs(a.z);
    if (!(std::hypot(a.x - b.x, a.y - b.y, a.z - b.z) <= meetingTolerance * size)) return {};
    constexpr double slack = 1e-12;
    const auto isInside = [](double at) { return at >= -slack && at <= 1 + slack; };
    const bool onSegments = args.size() < 5 || args.has(4);
    if (onSegments && !(isInside(s) && isInside(t))) return {};
    Point meeting = a;
    meeting.dimensions = isFlat ? 2 : 3;
    return meeting.toList();
}

constexpr BuiltinRow rows[] = {
    {"distance", 2, 2, distance},
    {"angle", 2, 2, angle},
    {"polar", 3, 3, polar},
    {"inters", 4, 5, inters},
};

} // namespace

std::span<const BuiltinRow> geometryBuiltins() {
    return rows;
}

} // namespace veldrin::lisp
