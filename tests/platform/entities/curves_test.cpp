#include "platform/entities/EntityTest.h"

#include <functional>

using namespace veldrin;
using namespace veldrin::testing;

namespace {

struct NamedCurve {
    const char* name;
    std::shared_ptr<AcDbCurve> curve;
};

std::vector<NamedCurve> curves() {
    const AcGeDoubleArray bulges{0.0, 0.5, -0.25, 0.0};
    const AcGePoint3dArray corners{{0, 0, 0}, {10, 0, 0}, {10, 8, 0}, {2, 8, 0}};
    auto trap = std::make_shared<AcDb2dPolyline>(AcDb::k2dFitCurvePoly, trapPoints());
    AcDbSpline* spline = nullptr;
    EXPECT_EQ(trap->getSpline(spline), Acad::eOk);
    return {
        {"line", std::make_shared<AcDbLine>(AcGePoint3d(1, 2, 3), AcGePoint3d(11, -4, 8))},
        {"arc", std::make_shared<AcDbArc>(AcGePoint3d(5, 5, 1), 3.0, 5.5, 1.25)},
        {"tilted arc",
         std::make_shared<AcDbArc>(AcGePoint3d(5, 5, 1), AcGeVector3d(1, 2, -1).normal(), 3.0, 0.5, 4.0)},
        {"polyline",
         std::make_shared<AcDb2dPolyline>(AcDb::k2dSimplePoly, corners, 7.0, false, 0, 0, &bulges)},
        {"fitted", trap},
        {"spline", std::shared_ptr<AcDbCurve>(spline)},
    };
}

class Curves : public EntityTest {};

} // namespace

// Point, distance and parameter are three ways to say one thing, whichever of them a caller starts from.
TEST_F(Curves, MeasuresAgree) {
    for (const auto& [name, curve] : curves()) {
        SCOPED_TRACE(name);
        AcGePoint3d end;
        double length = 0, first = 0, last = 0;
        ASSERT_EQ(curve->getEndPoint(end), Acad::eOk);
        ASSERT_EQ(curve->getDistAtPoint(end, length), Acad::eOk);
        curve->getStartParam(first);
        curve->getEndParam(last);
        EXPECT_LT(first, last);
        for (int i = 0; i <= 40; ++i) {
            const double dist = std::min(length * i / 40.0, length);
            AcGePoint3d point, again;
            double param = 0, distAgain = 0;
            ASSERT_EQ(curve->getPointAtDist(dist, point), Acad::eOk) << dist;
            ASSERT_EQ(curve->getDistAtPoint(point, distAgain), Acad::eOk);
            EXPECT_NEAR(distAgain, dist, 1e-9);
            ASSERT_EQ(curve->getParamAtDist(dist, param), Acad::eOk);
            EXPECT_TRUE(param >= first - 1e-12 && param <= last + 1e-12);
            ASSERT_EQ(curve->getPointAtParam(param, again), Acad::eOk);
            expectPoint(again, point);
        }
        double ignored = 0;
        AcGePoint3d off;
        EXPECT_EQ(curve->getPointAtDist(length + 0.01, off), Acad::eInvalidInput);
        EXPECT_EQ(curve->getPointAtDist(-0.01, off), Acad::eInvalidInput);
        EXPECT_EQ(curve->getDistAtPoint(end + AcGeVector3d(0.01, 0.02, 0.03), ignored), Acad::eInvalidInput);
    }
}

// The derivative is checked against the points themselves.
TEST_F(Curves, FirstDerivativeFollowsTheParameter) {
    for (const auto& [name, curve] : curves()) {
        SCOPED_TRACE(name);
        double first = 0, last = 0;
        curve->getStartParam(first);
        curve->getEndParam(last);
        const double step = 1e-6;
        const double at = first + (last - first) * 0.377;
        AcGePoint3d before, behind;
        AcGeVector3d slope;
        curve->getPointAtParam(at - step, before);
        curve->getPointAtParam(at + step, behind);
        ASSERT_EQ(curve->getFirstDeriv(at, slope), Acad::eOk);
        const AcGeVector3d expected = (behind - before) / (2 * step);
        EXPECT_LT((slope - expected).length(), 1e-6 * (1.0 + expected.length()));
    }
}

TEST_F(Curves, SplineRepeatsItsPolyline) {
    const AcDb2dPolyline trap(AcDb::k2dFitCurvePoly, trapPoints(12.0));
    AcDbSpline* made = nullptr;
    ASSERT_EQ(trap.getSpline(made), Acad::eOk);
    const std::unique_ptr<AcDbSpline> spline(made);
    for (double dist = 0.0; dist < trap.length(); dist += 1.2) {
        AcGePoint3d a, b;
        trap.getPointAtDist(dist, a);
        spline->getPointAtDist(dist, b);
        expectPoint(a, b);
        EXPECT_EQ(a.z, 12.0);
    }
}

TEST_F(Curves, ClosestPointIsBoundedUnlessExtended) {
    const AcDbLine line({0, 0, 7}, {10, 0, 9});
    const AcDbArc arc({0, 0, 0}, 5.0, 0.0, kPi / 2);
    AcGePoint3d p;
    line.getClosestPointTo({4, 3, 0}, AcGeVector3d::kZAxis, p);
    expectPoint(p, {4, 0, 7.8});
    line.getClosestPointTo({-5, 3, 0}, AcGeVector3d::kZAxis, p);
    expectPoint(p, {0, 0, 7});
    line.getClosestPointTo({-5, 3, 0}, AcGeVector3d::kZAxis, p, true);
    expectPoint(p, {-5, 0, 6});
    arc.getClosestPointTo({-8, 0, 0}, p);
    expectPoint(p, {0, 5, 0});
    arc.getClosestPointTo({1, -8, 0}, p);
    expectPoint(p, {5, 0, 0});
    arc.getClosestPointTo({-8, 0, 0}, p, true);
    expectPoint(p, {-5, 0, 0});
    // A line that is seen end-on has no closest place but its start; a bad direction is refused.
    const AcDbLine post({1, 1, 0}, {1, 1, 9});
    EXPECT_EQ(post.getClosestPointTo({3, 3, 3}, AcGeVector3d::kZAxis, p), Acad::eOk);
    expectPoint(p, {1, 1, 0});
    EXPECT_EQ(post.getClosestPointTo({3, 3, 3}, AcGeVector3d(), p), Acad::eInvalidInput);
}

// A circle that is seen askew: the closest place is the closest of all its points.
TEST_F(Curves, ClosestPointAlongADirectionOffTheNormal) {
    const AcDbArc arc({0, 0, 0}, AcGeVector3d(0, 1, 1).normal(), 5.0, 0.2, 3.0);
    const AcGePoint3d from(2.0, 1.0, 40.0);
    AcGePoint3d p;
    ASSERT_EQ(arc.getClosestPointTo(from, AcGeVector3d::kZAxis, p), Acad::eOk);
    double least = 1e9;
    for (int i = 0; i <= 100000; ++i) {
        AcGePoint3d q;
        arc.getPointAtParam(0.2 + 2.8 * i / 100000, q);
        least = std::min(least, q.convert2d().distanceTo(from.convert2d()));
    }
    EXPECT_NEAR(p.convert2d().distanceTo(from.convert2d()), least, 1e-6);
}

TEST_F(Curves, ExtentsOfArcsReachTheirQuadrants) {
    AcDbExtents box;
    AcDbArc({10, 10, 2}, 5.0, kPi / 4, 3 * kPi / 4).getGeomExtents(box);
    expectPoint(box.minPoint(), {10 - 5 / std::sqrt(2.0), 10 + 5 / std::sqrt(2.0), 2});
    expectPoint(box.maxPoint(), {10 + 5 / std::sqrt(2.0), 15, 2});
}
