#include "drawing/spline_points.h"

#include <algorithm>
#include <cmath>

namespace veldrin {

namespace {

constexpr int kHighestDegree = 25;
constexpr int kStepsPerSpan = 16;

// A point times its weight, and the weight.
struct Weighted {
    double x = 0.0, y = 0.0, z = 0.0, w = 0.0;

    static Weighted mix(const Weighted& a, const Weighted& b, double t) {
        return {a.x + (b.x - a.x) * t, a.y + (b.y - a.y) * t, a.z + (b.z - a.z) * t, a.w + (b.w - a.w) * t};
    }
};

AcGePoint3d evaluate(std::size_t degree, const std::vector<double>& knots,
                     const std::vector<Weighted>& controls, std::size_t span, double t) {
    Weighted d[kHighestDegree + 1];
    for (std::size_t j = 0; j <= degree; ++j) d[j] = controls[span - degree + j];
    for (std::size_t r = 1; r <= degree; ++r)
        for (std::size_t j = degree; j >= r; --j) {
            const double low = knots[span - degree + j];
            const double width = knots[span + 1 + j - r] - low;
            d[j] = Weighted::mix(d[j - 1], d[j], width > 0.0 ? (t - low) / width : 0.0);
        }
    const Weighted& p = d[degree];
    const double w = p.w != 0.0 ? p.w : 1.0;
    return {p.x / w, p.y / w, p.z / w};
}

} // namespace

std::vector<AcGePoint3d> splinePoints(int degree, const std::vector<double>& knots,
                                      const std::vector<AcGePoint3d>& controls,
                                      const std::vector<double>& weights) {
    const auto p = static_cast<std::size_t>(std::clamp(degree, 1, kHighestDegree));
    if (degree < 1 || degree > kHighestDegree || controls.size() <= p) return {};
    if (knots.size() != controls.size() + p + 1 || !std::is_sorted(knots.begin(), knots.end())) return {};
    std::vector<Weighted> weighted;
    for (std::size_t i = 0; i < controls.size(); ++i) {
        const double w = weights.size() == controls.size() ? weights[i] : 1.0;
        weighted.push_back({controls[i].x * w, controls[i].y * w, controls[i].z * w, w});
    }
    std::vector<AcGePoint3d> points;
    for (std::size_t span = p; span < controls.size(); ++span) {
        const double width = knots[span + 1] - knots[span];
        if (!(width > 0.0)) continue;
        const int steps = p == 1 ? 1 : kStepsPerSpan;
        for (int i = points.empty() ? 0 : 1; i <= steps; ++i)
            points.push_back(evaluate(p, knots, weighted, span, knots[span] + width * i / steps));
    }
    return points;
}

std::vector<AcGePoint3d> pointsThrough(const std::vector<AcGePoint3d>& fitPoints, bool closed) {
    const auto count = static_cast<std::ptrdiff_t>(fitPoints.size());
    if (count < 3) return fitPoints;
    const auto at = [&](std::ptrdiff_t i) {
        const std::ptrdiff_t wrapped =
            closed ? (i % count + count) % count : std::clamp<std::ptrdiff_t>(i, 0, count - 1);
        return fitPoints[static_cast<std::size_t>(wrapped)];
    };
    std::vector<AcGePoint3d> points{fitPoints.front()};
    for (std::ptrdiff_t i = 0; i < (closed ? count : count - 1); ++i)
        for (int step = 1; step <= kStepsPerSpan; ++step) {
            const double t = static_cast<double>(step) / kStepsPerSpan;
            const AcGeVector3d m0 = (at(i + 1) - at(i - 1)) * 0.5;
            const AcGeVector3d m1 = (at(i + 2) - at(i)) * 0.5;
            const AcGeVector3d chord = at(i + 1) - at(i);
            points.push_back(at(i) + m0 * (t * t * t - 2.0 * t * t + t) +
                             chord * (3.0 * t * t - 2.0 * t * t * t) + m1 * (t * t * t - t * t));
        }
    return points;
}

} // namespace veldrin
