#include "drawing/fit_curve.h"
#include "platform/entities/EntityTest.h"

using namespace veldrin;
using namespace veldrin::testing;

namespace {

double lengthOf(const AcGePoint3dArray& vertices, const AcGeDoubleArray& bulges, bool closed) {
    return CurvePath(vertices, bulges, closed, AcGeVector3d::kZAxis).length();
}

// Angle between the directions in which pieces meet, the worst of all joints.
double worstBend(const CurvePath& path) {
    double worst = 0.0;
    for (std::size_t i = 1; i < path.pieces().size(); ++i) {
        const AcGeVector3d in = path.pieces()[i - 1].derivativeAt(1.0).normal();
        const AcGeVector3d out = path.pieces()[i].derivativeAt(0.0).normal();
        worst = std::max(worst, in.crossProduct(out).length());
        EXPECT_GT(in.dotProduct(out), 0.0) << "joint " << i;
    }
    return worst;
}

} // namespace

TEST(FitCurve, JoinsTheTrapByTheKnownArcs) {
    AcGePoint3dArray vertices;
    AcGeDoubleArray bulges;
    fitCurve(trapPoints(), false, vertices, bulges);

    const double expectedBulges[] = {0.000208468, 0.000208468, 0.196347389, 0.196065257,
                                     0.005000370, 0.005000370, 0.196065257, 0.196347389,
                                     0.000208468, 0.000208468, 0.0};
    ASSERT_EQ(bulges.size(), std::size(expectedBulges));
    for (std::size_t i = 0; i < bulges.size(); ++i) EXPECT_NEAR(bulges[i], expectedBulges[i], 5e-10) << i;
    expectPoint(vertices[3], {89.717288, -10.204498, 0}, 1e-6);
    expectPoint(vertices[5], {94, -12.001200, 0}, 1e-6);
    for (std::size_t i = 0; i < 6; ++i) expectPoint(vertices[2 * i], trapPoints()[i]);
    EXPECT_NEAR(lengthOf(vertices, bulges, false), 18.853550187, 5e-10);
    EXPECT_LT(worstBend(CurvePath(vertices, bulges, false, AcGeVector3d::kZAxis)), 1e-10);
}

TEST(FitCurve, TurnsAClosedSquareIntoItsCircle) {
    AcGePoint3dArray vertices;
    AcGeDoubleArray bulges;
    fitCurve({{1, 0, 0}, {0, 1, 0}, {-1, 0, 0}, {0, -1, 0}}, true, vertices, bulges);
    ASSERT_EQ(bulges.size(), 8U);
    for (const double bulge : bulges) EXPECT_NEAR(bulge, std::tan(kPi / 16), 1e-12);
    EXPECT_NEAR(lengthOf(vertices, bulges, true), 2 * kPi, 1e-12);
}

TEST(FitCurve, SurvivesPointsThatGiveNoDirection) {
    struct Case {
        const char* name;
        AcGePoint3dArray points;
        std::size_t vertices;
        double length;
    };
    const Case cases[] = {
        {"in a line", {{0, 0, 0}, {3, 0, 0}, {10, 0, 0}}, 5, 10.0},
        {"repeated", {{0, 0, 0}, {0, 0, 0}, {4, 0, 0}, {4, 0, 0}}, 2, 4.0},
        {"one place", {{1, 1, 0}, {1, 1, 0}}, 1, 0.0},
        {"none", {}, 0, 0.0},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        AcGePoint3dArray vertices;
        AcGeDoubleArray bulges;
        fitCurve(c.points, false, vertices, bulges);
        EXPECT_EQ(vertices.size(), c.vertices);
        EXPECT_EQ(bulges.size(), c.vertices);
        EXPECT_NEAR(lengthOf(vertices, bulges, false), c.length, 1e-9);
    }
    // Straight there and back: no number may be lost.
    AcGePoint3dArray vertices;
    AcGeDoubleArray bulges;
    fitCurve({{0, 0, 0}, {10, 0, 0}, {0, 0, 0}}, false, vertices, bulges);
    for (const double bulge : bulges) EXPECT_TRUE(std::isfinite(bulge));
    for (const AcGePoint3d& p : vertices) EXPECT_TRUE(std::isfinite(p.x) && std::isfinite(p.y));
}

// What is asked of a fitted curve in one way must agree with what is asked in another, to a billionth.
TEST(FitCurve, AnswersAgreeWithOneAnother) {
    constexpr double kClose = 1.0e-9;
    const AcDb2dPolyline trap(AcDb::k2dFitCurvePoly, trapPoints());
    AcDbSpline* made = nullptr;
    ASSERT_EQ(trap.getSpline(made), Acad::eOk);
    const std::unique_ptr<AcDbSpline> spline(made);
    AcGePoint3d end;
    double length = 0;
    ASSERT_EQ(spline->getEndPoint(end), Acad::eOk);
    ASSERT_EQ(spline->getDistAtPoint(end, length), Acad::eOk);
    EXPECT_NEAR(length, trap.length(), kClose);
    expectPoint(end, trapPoints().back(), kClose);

    constexpr int kSteps = 97;
    for (int i = 0; i <= kSteps; ++i) {
        const double dist = length * i / kSteps;
        AcGePoint3d point, onSpline, mirrored;
        double back = 0, param = 0, atParam = 0;
        ASSERT_EQ(trap.getPointAtDist(dist, point), Acad::eOk);
        ASSERT_EQ(spline->getPointAtDist(dist, onSpline), Acad::eOk);
        ASSERT_EQ(trap.getPointAtDist(length - dist, mirrored), Acad::eOk);
        ASSERT_EQ(trap.getDistAtPoint(point, back), Acad::eOk);
        ASSERT_EQ(trap.getParamAtDist(dist, param), Acad::eOk);
        ASSERT_EQ(trap.getDistAtParam(param, atParam), Acad::eOk);
        expectPoint(onSpline, point, kClose);
        expectPoint(mirrored, {188.0 - point.x, point.y, point.z}, kClose);
        EXPECT_NEAR(back, dist, kClose);
        EXPECT_NEAR(atParam, dist, kClose);
    }

    const AcDbLine level({80, -9, 0}, {110, -9, 0});
    const AcDbArc across({94, 0, 0}, 11.0, kPi, 2 * kPi);
    const AcDb2dPolyline aside(AcDb::k2dFitCurvePoly, {{85, -6, 0}, {91, -11, 0}, {97, -6, 0}, {99, -14, 0}});
    for (const AcDbCurve* other :
         {static_cast<const AcDbCurve*>(&level), static_cast<const AcDbCurve*>(&across),
          static_cast<const AcDbCurve*>(&aside)}) {
        AcGePoint3dArray fromTrap, fromSpline, fromOther;
        trap.intersectWith(other, AcDb::kOnBothOperands, fromTrap);
        spline->intersectWith(other, AcDb::kOnBothOperands, fromSpline);
        other->intersectWith(&trap, AcDb::kOnBothOperands, fromOther);
        ASSERT_GE(fromTrap.size(), 2U);
        expectPoints(fromSpline, fromTrap, kClose);
        ASSERT_EQ(fromOther.size(), fromTrap.size());
        for (const AcGePoint3d& point : fromTrap) {
            AcGePoint3d onTrap, onOther;
            trap.getClosestPointTo(point, onTrap);
            other->getClosestPointTo(point, onOther);
            expectPoint(onTrap, point, kClose);
            expectPoint(onOther, point, kClose);
            double dist = 0;
            AcGePoint3d again;
            ASSERT_EQ(trap.getDistAtPoint(point, dist), Acad::eOk);
            ASSERT_EQ(trap.getPointAtDist(dist, again), Acad::eOk);
            expectPoint(again, point, kClose);
        }
    }
}
