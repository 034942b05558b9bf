#include "platform/entities/EntityTest.h"

using namespace veldrin;
using namespace veldrin::testing;

namespace {

AcDbLine line(double x1, double y1, double x2, double y2) {
    return AcDbLine({x1, y1, 0}, {x2, y2, 0});
}

AcGePoint3dArray meet(const AcDbEntity& a, const AcDbEntity& b,
                      AcDb::Intersect mode = AcDb::kOnBothOperands) {
    AcGePoint3dArray points;
    EXPECT_EQ(a.intersectWith(&b, mode, points), Acad::eOk);
    return points;
}

class Intersections : public EntityTest {
protected:
    AcDbArc upper{{0, 0, 0}, 5.0, 0.0, kPi};
    AcDbCircle circle{{0, 0, 0}, AcGeVector3d::kZAxis, 5.0};
};

} // namespace

TEST_F(Intersections, ModesExtendTheirOwnSide) {
    const AcDbLine flat({0, 0, 0}, {10, 0, 0});
    const AcDbLine shortOfIt({20, 5, 0}, {20, 1, 0});
    for (const auto& [mode, hits] : {std::pair(AcDb::kOnBothOperands, 0), std::pair(AcDb::kExtendThis, 0),
                                     std::pair(AcDb::kExtendArg, 0), std::pair(AcDb::kExtendBoth, 1)})
        EXPECT_EQ(meet(flat, shortOfIt, mode).size(), static_cast<std::size_t>(hits)) << mode;
    const AcDbLine through({20, 5, 0}, {20, -1, 0});
    EXPECT_EQ(meet(flat, through, AcDb::kExtendThis).size(), 1U);
    EXPECT_EQ(meet(flat, through, AcDb::kExtendArg).size(), 0U);
    EXPECT_EQ(meet(through, flat, AcDb::kExtendArg).size(), 1U);
    // An arc goes on to its full circle.
    const AcDbLine below({-9, -3, 0}, {9, -3, 0});
    EXPECT_EQ(meet(upper, below).size(), 0U);
    expectPoints(meet(below, upper, AcDb::kExtendArg), {{-4, -3, 0}, {4, -3, 0}});
}

TEST_F(Intersections, TangentsAndNearMisses) {
    const struct {
        double height;
        std::size_t hits;
    } cases[] = {{5.0, 1}, {5.0 - 1e-10, 1}, {5.0 + 1e-10, 1}, {5.0 + 1e-6, 0}, {4.999, 2}};
    for (const auto& c : cases)
        EXPECT_EQ(meet(line(-9, c.height, 9, c.height), circle).size(), c.hits) << c.height;
    expectPoints(meet(circle, AcDbCircle({8, 0, 0}, AcGeVector3d::kZAxis, 3.0)), {{5, 0, 0}});
    expectPoints(meet(circle, AcDbCircle({2, 0, 0}, AcGeVector3d::kZAxis, 3.0)), {{5, 0, 0}});
    EXPECT_EQ(meet(circle, AcDbCircle({0, 0, 0}, AcGeVector3d::kZAxis, 4.0)).size(), 0U);
    // An end that stops short by more than rounding does not meet.
    EXPECT_EQ(meet(line(0, 0, 10, 0), line(5, 9, 5, 1e-6)).size(), 0U);
    EXPECT_EQ(meet(line(0, 0, 10, 0), line(5, 9, 5, 1e-10)).size(), 1U);
}

TEST_F(Intersections, WhatRunsTogetherHasNoSinglePoints) {
    EXPECT_EQ(meet(line(0, 0, 10, 0), line(4, 0, 20, 0)).size(), 0U);
    EXPECT_EQ(meet(line(0, 0, 10, 0), line(0, 0, 10, 0)).size(), 0U);
    EXPECT_EQ(meet(line(0, 0, 10, 0), line(0, 1, 10, 1), AcDb::kExtendBoth).size(), 0U);
    EXPECT_EQ(meet(circle, circle).size(), 0U);
    EXPECT_EQ(meet(upper, AcDbArc({0, 0, 0}, 5.0, 1.0, 2.0)).size(), 0U);
    // Touching is another thing.
    expectPoints(meet(line(0, 0, 10, 0), line(10, 0, 20, 0)), {{10, 0, 0}});
    const AcDbArc lower({0, 0, 0}, 5.0, kPi, 2 * kPi);
    expectPoints(meet(upper, lower), {{5, 0, 0}, {-5, 0, 0}});
    EXPECT_EQ(meet(upper, lower, AcDb::kExtendBoth).size(), 0U);
}

TEST_F(Intersections, PointsComeInOrderAlongThisAndOnce) {
    const AcDb2dPolyline zigzag(AcDb::k2dSimplePoly, {{0, -1, 0}, {2, 1, 0}, {4, -1, 0}, {6, 1, 0}});
    expectPoints(meet(zigzag, line(10, 0, -10, 0)), {{1, 0, 0}, {3, 0, 0}, {5, 0, 0}});
    expectPoints(meet(line(10, 0, -10, 0), zigzag), {{5, 0, 0}, {3, 0, 0}, {1, 0, 0}});
    // Through a corner, where two pieces end.
    expectPoints(meet(zigzag, line(2, 5, 2, -5)), {{2, 1, 0}});
    // Only the ends of a row are extended, not its inner pieces.
    expectPoints(meet(zigzag, line(-3, 5, -3, -5), AcDb::kExtendThis), {{-3, -4, 0}});
}

TEST_F(Intersections, FittedCurvesMeetExactly) {
    const AcDb2dPolyline trap(AcDb::k2dFitCurvePoly, trapPoints());
    AcGePoint3dArray points = meet(line(80, -10, 110, -10), trap);
    ASSERT_EQ(points.size(), 2U);
    EXPECT_NEAR(points[0].x + points[1].x, 188.0, 1e-9);
    double dist = 0, mirrored = 0;
    ASSERT_EQ(trap.getDistAtPoint(points[0], dist), Acad::eOk);
    ASSERT_EQ(trap.getDistAtPoint(points[1], mirrored), Acad::eOk);
    EXPECT_NEAR(dist + mirrored, trap.length(), 1e-8);
}

TEST_F(Intersections, HeightsCountUnlessSeenFromAPlane) {
    const AcDbLine low({0, 0, 0}, {10, 0, 0});
    const AcDbLine high({5, -5, 20}, {5, 5, 20});
    EXPECT_EQ(meet(low, high).size(), 0U);
    AcGePoint3dArray points;
    ASSERT_EQ(low.intersectWith(&high, AcDb::kOnBothOperands, AcGePlane(), points), Acad::eOk);
    expectPoints(points, {{5, 0, 0}});
    points.clear();
    high.intersectWith(&low, AcDb::kOnBothOperands, AcGePlane(), points);
    expectPoints(points, {{5, 0, 20}});
    // A post through a circle's plane, and circles in two planes.
    expectPoints(meet(AcDbLine({5, 0, -3}, {5, 0, 3}), circle), {{5, 0, 0}});
    const AcDbCircle standing({5, 0, 0}, AcGeVector3d::kYAxis, 2.0);
    expectPoints(meet(AcDbCircle({0, 0, 0}, AcGeVector3d::kZAxis, 3.0), standing), {{3, 0, 0}});
}

// A tilted circle looks like an ellipse; where its picture meets a line is where x and y say so.
TEST_F(Intersections, TiltedCirclesAreSharpInTheView) {
    const AcDbCircle tilted({0, 0, 0}, AcGeVector3d(0, 1, 1).normal(), 5.0);
    AcGePoint3dArray points;
    ASSERT_EQ(line(-9, 1, 9, 1).intersectWith(&tilted, AcDb::kOnBothOperands, AcGePlane(), points),
              Acad::eOk);
    const double x = 5.0 * std::sqrt(1.0 - 2.0 / 25.0); // the ellipse's half height is 5 / sqrt 2
    expectPoints(points, {{-x, 1, 0}, {x, 1, 0}}, 1e-7);
}

namespace {

// A curve of a module: it has no pieces to show and answers for itself, as a line.
class OwnAnswer : public AcDbCurve {
public:
    mutable AcDb::Intersect asked = AcDb::kOnBothOperands;

protected:
    Acad::ErrorStatus subIntersectWith(const AcDbEntity* other, AcDb::Intersect mode,
                                       AcGePoint3dArray& points, Adesk::GsMarker,
                                       Adesk::GsMarker) const override {
        asked = mode;
        const AcDbLine stand({0, 0, 0}, {10, 0, 0});
        return other->intersectWith(&stand, AcDb::kOnBothOperands, points);
    }
    using AcDbCurve::subIntersectWith;
};

} // namespace

TEST_F(Intersections, AForeignCurveIsAskedTheOtherWayRound) {
    const OwnAnswer foreign;
    expectPoints(meet(line(3, -1, 3, 1), foreign, AcDb::kExtendThis), {{3, 0, 0}});
    EXPECT_EQ(foreign.asked, AcDb::kExtendArg);
    AcGePoint3dArray points;
    const AcDbMText text;
    EXPECT_EQ(text.intersectWith(&foreign, AcDb::kOnBothOperands, points), Acad::eNotApplicable);
    EXPECT_EQ(foreign.intersectWith(nullptr, AcDb::kOnBothOperands, points), Acad::eNullObjectPointer);
}
