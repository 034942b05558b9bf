#include "drawing/fit_curve.h"

#include <cmath>

namespace veldrin {

namespace {

constexpr double kSamePoint = 1.0e-9;

AcGePoint3dArray withoutRepeats(const AcGePoint3dArray& points, bool closed) {
    AcGePoint3dArray kept;
    for (const AcGePoint3d& p : points)
        if (kept.empty() || kept.back().distanceTo(p) > kSamePoint) kept.push_back(p);
    if (closed && kept.size() > 1 && kept.front().distanceTo(kept.back()) <= kSamePoint) kept.pop_back();
    return kept;
}

AcGeVector2d chord(const AcGePoint3d& from, const AcGePoint3d& to) {
    return (to - from).convert2d();
}

double angleBetween(const AcGeVector2d& a, const AcGeVector2d& b) {
    return std::atan2(a.crossProduct(b), a.dotProduct(b));
}

// Direction of the circle through three points at the middle one.
AcGeVector2d directionAt(const AcGeVector2d& before, const AcGeVector2d& after) {
    const AcGeVector2d sum = before * (1.0 / before.lengthSqrd()) + after * (1.0 / after.lengthSqrd());
    constexpr double kTurnsBack = 1.0e-12;
    if (sum.length() <= kTurnsBack / before.length()) return before.perpVector().normal();
    return sum.normal();
}

AcGeVector2d mirrored(const AcGeVector2d& direction, const AcGeVector2d& chordVector) {
    const AcGeVector2d c = chordVector.normal();
    return c * (2.0 * direction.dotProduct(c)) - direction;
}

std::vector<AcGeVector2d> directions(const AcGePoint3dArray& p, bool closed) {
    const std::size_t n = p.size();
    std::vector<AcGeVector2d> t(n);
    for (std::size_t i = 0; i < n; ++i) {
        if (!closed && (i == 0 || i + 1 == n)) continue;
        t[i] = directionAt(chord(p[(i + n - 1) % n], p[i]), chord(p[i], p[(i + 1) % n]));
    }
    if (!closed) {
        t[0] = mirrored(t[1], chord(p[0], p[1]));
        t[n - 1] = mirrored(t[n - 2], chord(p[n - 2], p[n - 1]));
    }
    return t;
}

struct ArcPair {
    AcGePoint2d joint;
    double first;
    double second;
};

// Two arcs from the origin to v that leave along t0 and arrive along t1, with tangents of equal length.
ArcPair arcPair(const AcGeVector2d& v, const AcGeVector2d& t0, const AcGeVector2d& t1) {
    const AcGeVector2d t = t0 + t1;
    const double k = 2.0 * (1.0 - t0.dotProduct(t1));
    const double vt = v.dotProduct(t);
    const double vv = v.lengthSqrd();
    double d = 0.0;
    constexpr double kParallel = 1.0e-12;
    constexpr double kSquare = 1.0e-9;
    if (k > kParallel) {
        d = (-vt + std::sqrt(vt * vt + k * vv)) / k;
    } else if (std::abs(vt) > kSquare * std::sqrt(vv)) {
        d = vv / (2.0 * vt);
    } else {
        const double side = t0.crossProduct(v) < 0.0 ? -1.0 : 1.0;
        return {AcGePoint2d(v.x / 2.0, v.y / 2.0), side, -side};
    }
    const AcGeVector2d joint = (t0 * d + v - t1 * d) * 0.5;
    return {AcGePoint2d(joint.x, joint.y), std::tan(angleBetween(t0, joint) / 2.0),
            std::tan(angleBetween(v - joint, t1) / 2.0)};
}

} // namespace

void fitCurve(const AcGePoint3dArray& definition, bool closed, AcGePoint3dArray& vertices,
              AcGeDoubleArray& bulges) {
    const AcGePoint3dArray p = withoutRepeats(definition, closed);
    const std::size_t n = p.size();
    vertices.clear();
    bulges.clear();
    if (n < 3) {
        vertices = p;
        bulges.assign(n, 0.0);
        return;
    }
    const std::vector<AcGeVector2d> t = directions(p, closed);
    const std::size_t pieces = closed ? n : n - 1;
    vertices.reserve(2 * n);
    bulges.reserve(2 * n);
    for (std::size_t i = 0; i < pieces; ++i) {
        const std::size_t next = (i + 1) % n;
        const ArcPair pair = arcPair(chord(p[i], p[next]), t[i], t[next]);
        vertices.push_back(p[i]);
        bulges.push_back(pair.first);
        vertices.push_back(AcGePoint3d(p[i].x + pair.joint.x, p[i].y + pair.joint.y, p[i].z));
        bulges.push_back(pair.second);
    }
    if (!closed) {
        vertices.push_back(p.back());
        bulges.push_back(0.0);
    }
}

} // namespace veldrin
