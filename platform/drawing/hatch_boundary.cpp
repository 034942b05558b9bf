#include "drawing/hatch_boundary.h"

#include "drawing/spline_points.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace veldrin {

namespace {

constexpr int kLoopType = 92;
constexpr int kEdgeType = 72;
constexpr int kLoopIsPolyline = 2;
constexpr int kStyle = 75; // the first group behind the loops
constexpr int kSeedCount = 98;
constexpr int kLine = 1, kArc = 2, kEllipse = 3, kSpline = 4;
constexpr int kCounterClockwise = 73;
constexpr double kDegree = std::numbers::pi / 180.0;
constexpr double kStep = 5.0 * kDegree;
constexpr int kMostSteps = 720;

int integerOf(const resbuf& group) {
    return acutGroupCodeKind(group.restype) == RTLONG ? group.resval.rlong : group.resval.rint;
}

AcGePoint2d flatPoint(const resbuf& group) {
    return {group.resval.rpoint[0], group.resval.rpoint[1]};
}

// The groups of one edge.
struct Edge {
    int type = 0;
    AcGePoint2d first, second;
    double radius = 0.0, ratio = 1.0, startAngle = 0.0, endAngle = 360.0;
    bool isCounterClockwise = true;
    int degree = 3;
    std::vector<double> knots, weights;
    std::vector<AcGePoint3d> controls;

    // What an edge adds behind the points that are there.
    void appendTo(std::vector<AcGePoint2d>& loop) const {
        if (type == kLine) {
            loop.push_back(first);
            loop.push_back(second);
        } else if (type == kArc || type == kEllipse)
            appendArc(loop);
        else if (type == kSpline)
            for (const AcGePoint3d& p : splinePoints(degree, knots, controls, weights))
                loop.push_back({p.x, p.y});
    }

private:
    // Angles of a clockwise edge are measured clockwise.
    void appendArc(std::vector<AcGePoint2d>& loop) const {
        const double sign = isCounterClockwise ? 1.0 : -1.0;
        double sweep = std::fmod(endAngle - startAngle, 360.0) * kDegree;
        if (!std::isfinite(sweep)) return;
        if (sweep <= 0.0) sweep += 2.0 * std::numbers::pi;
        const int steps = std::clamp(static_cast<int>(std::ceil(sweep / kStep)), 1, kMostSteps);
        for (int i = 0; i <= steps; ++i) {
            const double angle = sign * (startAngle * kDegree + sweep * i / steps);
            const double c = std::cos(angle), s = std::sin(angle);
            if (type == kArc)
                loop.push_back({first.x + radius * c, first.y + radius * s});
            else
                loop.push_back({first.x + second.x * c - second.y * ratio * s,
                                first.y + second.y * c + second.x * ratio * s});
        }
    }
};

// Vertices with a bulge each.
struct BulgedRow {
    std::vector<AcGePoint2d> points;
    std::vector<double> bulges;

    void appendTo(std::vector<AcGePoint2d>& loop) const {
        for (std::size_t i = 0; i < points.size(); ++i) {
            loop.push_back(points[i]);
            appendArc(points[i], points[(i + 1) % points.size()], bulges[i], loop);
        }
    }

private:
    static void appendArc(const AcGePoint2d& from, const AcGePoint2d& to, double bulge,
                          std::vector<AcGePoint2d>& loop) {
        const double sweep = 4.0 * std::atan(bulge);
        if (std::abs(sweep) < 1e-9 || !std::isfinite(sweep)) return;
        const AcGeVector2d chord = to - from;
        const double rise = (1.0 - bulge * bulge) / (4.0 * bulge);
        const AcGePoint2d center(from.x + chord.x / 2.0 - chord.y * rise,
                                 from.y + chord.y / 2.0 + chord.x * rise);
        const int steps = std::clamp(static_cast<int>(std::ceil(std::abs(sweep) / kStep)), 1, kMostSteps);
        for (int i = 1; i < steps; ++i) {
            const double a = sweep * i / steps;
            const AcGeVector2d r = from - center;
            loop.push_back({center.x + r.x * std::cos(a) - r.y * std::sin(a),
                            center.y + r.x * std::sin(a) + r.y * std::cos(a)});
        }
    }
};

class LoopReader {
public:
    std::vector<std::vector<AcGePoint2d>> read(const resbuf* group) {
        for (; group && group->restype != kStyle; group = group->rbnext) take(*group);
        endLoop();
        return std::move(m_loops);
    }

private:
    void take(const resbuf& group) {
        if (group.restype == kLoopType) {
            endLoop();
            m_isOpen = true;
            m_isPolyline = (integerOf(group) & kLoopIsPolyline) != 0;
        } else if (m_isOpen && m_isPolyline)
            takeVertex(group);
        else if (m_isOpen)
            takeEdge(group);
    }
    void takeVertex(const resbuf& group) {
        if (group.restype == 10) {
            m_row.points.push_back(flatPoint(group));
            m_row.bulges.push_back(0.0);
        } else if (group.restype == 42 && !m_row.bulges.empty())
            m_row.bulges.back() = group.resval.rreal;
    }
    void takeEdge(const resbuf& group) {
        if (group.restype == kEdgeType) {
            endEdge();
            m_edge.type = integerOf(group);
            return;
        }
        const bool isSpline = m_edge.type == kSpline;
        switch (group.restype) {
        case 10:
            if (isSpline)
                m_edge.controls.push_back({group.resval.rpoint[0], group.resval.rpoint[1], 0.0});
            else
                m_edge.first = flatPoint(group);
            break;
        case 11: m_edge.second = flatPoint(group); break;
        case 40:
            if (isSpline)
                m_edge.knots.push_back(group.resval.rreal);
            else
                (m_edge.type == kEllipse ? m_edge.ratio : m_edge.radius) = group.resval.rreal;
            break;
        case 42:
            if (isSpline) m_edge.weights.push_back(group.resval.rreal);
            break;
        case 50: m_edge.startAngle = group.resval.rreal; break;
        case 51: m_edge.endAngle = group.resval.rreal; break;
        case kCounterClockwise:
            if (!isSpline) m_edge.isCounterClockwise = integerOf(group) != 0;
            break;
        case 94:
            if (isSpline) m_edge.degree = integerOf(group);
            break;
        default: break;
        }
    }
    void endEdge() {
        m_edge.appendTo(m_loop);
        m_edge = {};
    }
    void endLoop() {
        endEdge();
        m_row.appendTo(m_loop);
        m_row = {};
        if (!m_loop.empty()) {
            m_loop.push_back(m_loop.front());
            m_loops.push_back(std::move(m_loop));
        }
        m_loop.clear();
        m_isOpen = false;
    }

    bool m_isOpen = false;
    bool m_isPolyline = false;
    Edge m_edge;
    BulgedRow m_row;
    std::vector<AcGePoint2d> m_loop;
    std::vector<std::vector<AcGePoint2d>> m_loops;
};

} // namespace

std::vector<std::vector<AcGePoint2d>> hatchLoops(const resbuf* groups) {
    return LoopReader().read(groups);
}

HatchPart HatchWalk::next(const resbuf& group) {
    switch (group.restype) {
    case kLoopType:
        m_stage = (integerOf(group) & kLoopIsPolyline) != 0 ? Stage::kPolyline : Stage::kEdges;
        m_edge = 0;
        return HatchPart::kOther;
    case kStyle: m_stage = Stage::kPattern; return HatchPart::kOther;
    case kSeedCount: m_stage = Stage::kSeeds; return HatchPart::kOther;
    case kEdgeType:
        if (m_stage == Stage::kEdges) {
            m_edge = integerOf(group);
            m_clockwise = false;
            // The sense stands behind the angles that it is of.
            for (const resbuf* later = group.rbnext; later && later->restype != kEdgeType;
                 later = later->rbnext)
                if (later->restype == kCounterClockwise) {
                    m_clockwise = integerOf(*later) == 0;
                    break;
                }
        }
        return HatchPart::kOther;
    default: break;
    }
    switch (m_stage) {
    case Stage::kPolyline:
    case Stage::kSeeds: return group.restype == 10 ? HatchPart::kPoint : HatchPart::kOther;
    case Stage::kEdges: return ofEdge(group.restype);
    case Stage::kPattern: return ofPattern(group.restype);
    case Stage::kHead: break;
    }
    return HatchPart::kOther;
}

HatchPart HatchWalk::ofEdge(int code) {
    if (code == 10) return HatchPart::kPoint;
    if (code == 11) return m_edge == kEllipse ? HatchPart::kVector : HatchPart::kPoint;
    if (code == 12 || code == 13) return HatchPart::kVector;
    if (code == 40 && m_edge == kArc) return HatchPart::kLength;
    const bool isAngle =
        (code == 50 || code == 51) && m_edge == kArc; // those of an ellipse count from its axis
    if (isAngle) return m_clockwise ? HatchPart::kClockwiseAngle : HatchPart::kAngle;
    return HatchPart::kOther;
}

// The place and the step of a pattern's line are pairs of reals; see the caller.
HatchPart HatchWalk::ofPattern(int code) {
    if (code == 52 || code == 53) return HatchPart::kAngle;
    if (code == 41 || code == 47 || code == 49) return HatchPart::kLength;
    return HatchPart::kOther;
}

} // namespace veldrin
