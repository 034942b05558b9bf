#include "platform/entities/EntityTest.h"

using namespace veldrin;
using namespace veldrin::testing;

namespace {

class Editing : public EntityTest {
protected:
    static AcGePoint3dArray grips(const AcDbEntity& entity) {
        AcGePoint3dArray points;
        AcGeIntArray modes, ids;
        entity.getGripPoints(points, modes, ids);
        return points;
    }
    static AcGePoint3dArray snaps(const AcDbEntity& entity, AcDb::OsnapMode mode, const AcGePoint3d& pick,
                                  const AcGePoint3d& last = {}) {
        AcGePoint3dArray points;
        AcGeIntArray ids;
        EXPECT_EQ(entity.getOsnapPoints(mode, 0, pick, last, AcGeMatrix3d(), points, ids), Acad::eOk);
        return points;
    }
};

// Points along a curve, moved by a matrix, and the same of the moved curve; a mirror may turn the direction.
void expectMovedAlike(AcDbCurve& curve, const AcGeMatrix3d& matrix, bool mayTurn) {
    AcGePoint3d end;
    double length = 0.0;
    curve.getEndPoint(end);
    curve.getDistAtPoint(end, length);
    AcGePoint3dArray before;
    for (int i = 0; i <= 10; ++i) {
        AcGePoint3d p;
        curve.getPointAtDist(length * i / 10, p);
        before.push_back(p.transformBy(matrix));
    }
    ASSERT_EQ(curve.transformBy(matrix), Acad::eOk);
    const double scale = matrix.axisScales().x;
    AcGePoint3d start;
    curve.getStartPoint(start);
    if (mayTurn && start.distanceTo(before.back()) < 1e-9) std::reverse(before.begin(), before.end());
    for (int i = 0; i <= 10; ++i) {
        AcGePoint3d p;
        ASSERT_EQ(curve.getPointAtDist(length * scale * i / 10, p), Acad::eOk);
        expectPoint(p, before[static_cast<std::size_t>(i)], 1e-8);
    }
}

} // namespace

TEST_F(Editing, TransformsMoveEveryPointOfACurve) {
    const AcGeMatrix3d matrices[] = {
        AcGeMatrix3d::translation({3, -4, 5}),
        AcGeMatrix3d::rotation(1.1, AcGeVector3d::kZAxis, {2, 3, 0}),
        AcGeMatrix3d::rotation(0.7, AcGeVector3d(1, 1, 0)),
        AcGeMatrix3d::scaling(2.5, {1, 1, 1}),
        AcGeMatrix3d::mirroring({4, 0, 0}, AcGeVector3d::kXAxis),
        AcGeMatrix3d::mirroring({0, 0, 0}, AcGeVector3d(1, 1, 0).normal()),
        AcGeMatrix3d::mirroring({0, 0, 3}, AcGeVector3d::kZAxis),
    };
    const AcGeDoubleArray bulges{0.4, 0.0, -0.9};
    for (const AcGeMatrix3d& matrix : matrices) {
        AcDbLine line({1, 2, 3}, {4, 6, 3});
        AcDbArc arc({1, 2, 0}, 5.0, 0.3, 2.0);
        AcDb2dPolyline polyline(AcDb::k2dSimplePoly, {{0, 0, 0}, {5, 0, 0}, {5, 5, 0}}, 0, false, 0, 0,
                                &bulges);
        AcDb2dPolyline trap(AcDb::k2dFitCurvePoly, trapPoints(1.0));
        expectMovedAlike(line, matrix, false);
        expectMovedAlike(arc, matrix, true);
        expectMovedAlike(polyline, matrix, false);
        expectMovedAlike(trap, matrix, false);
        // A drawing in plan stays one: the normal still looks up after a mirror in the plan.
        EXPECT_TRUE(matrix.entry[2][2] != 1.0 || arc.normal().z > 0.0);
    }
}

TEST_F(Editing, RoundThingsRefuseToBeStretched) {
    const AcGeMatrix3d wide = AcGeMatrix3d::scaling(AcGeVector3d(2, 1, 1));
    AcDbArc arc({1, 2, 0}, 5.0, 0.3, 2.0);
    AcDbCircle circle({1, 2, 0}, AcGeVector3d::kZAxis, 5.0);
    AcDb2dPolyline trap(AcDb::k2dFitCurvePoly, trapPoints());
    AcDb2dPolyline straight(AcDb::k2dSimplePoly, {{0, 0, 0}, {5, 0, 0}, {5, 5, 0}});
    EXPECT_EQ(arc.transformBy(wide), Acad::eCannotScaleNonUniformly);
    EXPECT_EQ(circle.transformBy(wide), Acad::eCannotScaleNonUniformly);
    EXPECT_EQ(trap.transformBy(wide), Acad::eCannotScaleNonUniformly);
    EXPECT_EQ(straight.transformBy(wide), Acad::eOk);
    expectPoint(arc.center(), {1, 2, 0});
    expectPoints(straight.vertices(), {{0, 0, 0}, {10, 0, 0}, {10, 5, 0}});
    EXPECT_EQ(straight.transformBy(AcGeMatrix3d::scaling(0.0)), Acad::eInvalidInput);
}

TEST_F(Editing, GripsBendAnArcThroughTheOthers) {
    AcDbArc arc({0, 0, 0}, 5.0, 0.0, kPi);
    expectPoints(grips(arc), {{5, 0, 0}, {-5, 0, 0}, {0, 5, 0}, {0, 0, 0}});
    ASSERT_EQ(arc.moveGripPointsAt({2}, {0, -2.5, 0}), Acad::eOk);
    EXPECT_NEAR(arc.radius(), 6.25, 1e-9); // half chord 5, height 2.5
    expectPoint(arc.center(), {0, -3.75, 0});
    // Pulled to the other side, the ends change places: arcs run counter-clockwise.
    ASSERT_EQ(arc.moveGripPointsAt({2}, {0, -5, 0}), Acad::eOk);
    AcGePoint3d start;
    arc.getStartPoint(start);
    expectPoint(start, {-5, 0, 0});
    EXPECT_EQ(arc.moveGripPointsAt({2}, {0, 2.5, 0}), Acad::eDegenerateGeometry);
    AcDbArc stretched({0, 0, 0}, 5.0, 0.0, kPi);
    ASSERT_EQ(stretched.moveStretchPointsAt({0}, {10, 0, 0}), Acad::eOk);
    AcGePoint3d top;
    stretched.getPointAtDist(stretched.length() / 2, top);
    expectPoint(top, {5, 5, 0});
}

TEST_F(Editing, GripsOfOtherEntitiesMoveOnce) {
    AcDbLine line({0, 0, 0}, {10, 0, 4});
    line.moveGripPointsAt({0, 2, 7}, {1, 1, 1});
    expectPoint(line.startPoint(), {1, 1, 1});
    expectPoint(line.endPoint(), {11, 1, 5});
    AcDbCircle circle({0, 0, 0}, AcGeVector3d::kZAxis, 5.0);
    circle.moveGripPointsAt({1}, {3, 0, 0});
    EXPECT_EQ(circle.radius(), 8.0);
    circle.moveGripPointsAt({0, 1}, {3, 0, 0});
    EXPECT_EQ(circle.radius(), 8.0);
    expectPoint(circle.center(), {3, 0, 0});
    AcDb2dPolyline trap(AcDb::k2dFitCurvePoly, trapPoints(2.0));
    trap.moveGripPointsAt({5, 5, 99, -1}, {0, 1, 7});
    EXPECT_EQ(trap.definition().size(), 6U);
    EXPECT_EQ(trap.vertices().size(), 11U);
    expectPoint(trap.vertices().back(), {100, -5, 2}); // in its plane still
}

TEST_F(Editing, SnapPointsLieWhereTheyShould) {
    const AcDbArc arc({0, 0, 3}, 5.0, 0.0, 1.5 * kPi);
    expectPoints(snaps(arc, AcDb::kOsModeQuad, {}), {{5, 0, 3}, {0, 5, 3}, {-5, 0, 3}, {0, -5, 3}});
    expectPoints(snaps(arc, AcDb::kOsModeCen, {}), {{0, 0, 3}});
    expectPoints(snaps(arc, AcDb::kOsModeNear, {8, 0, 0}), {{5, 0, 3}});
    expectPoints(snaps(arc, AcDb::kOsModeTan, {}, {-5, 5, 3}), {{-5, 0, 3}, {0, 5, 3}});
    const AcDbLine line({0, 0, 0}, {10, 0, 0});
    expectPoints(snaps(line, AcDb::kOsModePerp, {}, {15, 4, 0}), {{15, 0, 0}});
    expectPoints(snaps(line, AcDb::kOsModeMid, {}), {{5, 0, 0}});
    EXPECT_TRUE(snaps(AcDbCircle({0, 0, 0}, AcGeVector3d::kZAxis, 5.0), AcDb::kOsModeEnd, {}).empty());
}

TEST_F(Editing, ExplodedPolylinesKeepTheirShape) {
    AcDb2dPolyline trap(AcDb::k2dFitCurvePoly, trapPoints());
    trap.setColorIndex(5);
    std::vector<AcDbEntity*> pieces;
    ASSERT_EQ(trap.explode(pieces), Acad::eOk);
    ASSERT_EQ(pieces.size(), 10U);
    double length = 0.0;
    for (AcDbEntity* piece : pieces) {
        const AcDbArc* arc = AcDbArc::cast(piece);
        ASSERT_TRUE(arc);
        EXPECT_EQ(arc->colorIndex(), 5);
        EXPECT_TRUE(arc->objectId().isNull());
        length += arc->length();
    }
    EXPECT_NEAR(length, trap.length(), 1e-9);
    for (AcDbEntity* piece : pieces) delete piece;
    EXPECT_EQ(AcDbLine().explode(pieces), Acad::eNotApplicable);
}

TEST_F(Editing, TextTurnsWithTheUserSystem) {
    HeaderVariables header = database.header();
    header.ucsXDir = {0, 1, 0};
    header.ucsYDir = {-1, 0, 0};
    database.setHeader(header);
    AcDbMText text;
    text.setRotation(0.0);
    EXPECT_NEAR(text.worldRotation(), kPi / 2, 1e-12);
    EXPECT_NEAR(text.rotation(), 0.0, 1e-12);
    database.setHeader(HeaderVariables());
    EXPECT_NEAR(text.rotation(), kPi / 2, 1e-12);
}

TEST_F(Editing, TextIsMeasuredByItsLetters) {
    AcDbMText text;
    text.setTextHeight(2.5);
    text.setContents("MECHANICAL");
    EXPECT_NEAR(text.actualWidth(), 22.6190, 1e-4);
    EXPECT_EQ(text.actualHeight(), 2.5);
    text.setContents("A\\P15\\PA");
    EXPECT_NEAR(text.actualWidth(), 4.7619, 1e-4);
    EXPECT_NEAR(text.actualHeight(), 2.5 * (1 + 2 * 5.0 / 3.0), 1e-9);
    text.setContents("");
    EXPECT_EQ(text.actualWidth(), 0.0);
    EXPECT_EQ(text.actualHeight(), 0.0);
}

TEST_F(Editing, MirroredTextStaysReadableInItsPlace) {
    for (const AcGeVector3d& normal : {AcGeVector3d::kXAxis, AcGeVector3d::kYAxis}) {
        AcDbMText text;
        text.setTextHeight(3.0);
        text.setContents("COLD WATER");
        text.setLocation({4, 5, 0});
        AcDbExtents before, behind;
        text.getGeomExtents(before);
        const AcGeMatrix3d mirror = AcGeMatrix3d::mirroring({0, 0, 0}, normal);
        ASSERT_EQ(text.transformBy(mirror), Acad::eOk);
        text.getGeomExtents(behind);
        AcDbExtents expected;
        for (AcGePoint3d corner : {before.minPoint(), before.maxPoint()})
            expected.addPoint(corner.transformBy(mirror));
        expectPoint(behind.minPoint(), expected.minPoint());
        expectPoint(behind.maxPoint(), expected.maxPoint());
        expectPoint(AcGePoint3d() + text.direction(), {1, 0, 0});
    }
}
