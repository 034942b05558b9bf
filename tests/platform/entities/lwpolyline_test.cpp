#include "drawing/AcDbPoint.h"
#include "drawing/AcDbPolyline.h"
#include "graphics/Recorder.h"
#include "platform/entities/EntityTest.h"

using namespace veldrin;
using namespace veldrin::testing;

namespace {

class FlatPolylines : public EntityTest {
protected:
    // East by 10, then half a turn to the left of radius 2, then west; 3 above the ground.
    static std::unique_ptr<AcDbPolyline> hairpin() {
        auto polyline = std::make_unique<AcDbPolyline>();
        polyline->setElevation(3.0);
        polyline->addVertexAt(0, {0, 4});
        polyline->addVertexAt(0, {10, 0}, 1.0);
        polyline->addVertexAt(0, {0, 0});
        polyline->addVertexAt(2, {10, 4});
        return polyline;
    }
};

} // namespace

TEST_F(FlatPolylines, MeasureAlongTheirPieces) {
    const auto polyline = hairpin();
    EXPECT_NEAR(polyline->length(), 20 + 2 * kPi, 1.0e-9);
    AcGePoint3d point;
    ASSERT_EQ(polyline->getPointAtParam(1.5, point), Acad::eOk);
    expectPoint(point, {12, 2, 3});
    ASSERT_EQ(polyline->getPointAtDist(10 + 2 * kPi + 4, point), Acad::eOk);
    expectPoint(point, {6, 4, 3});
    AcDbExtents box;
    polyline->getGeomExtents(box);
    expectPoint(box.maxPoint(), {12, 4, 3});
    AcGePoint3dArray points;
    const AcDbLine across({11, -5, 3}, {11, 10, 3});
    ASSERT_EQ(polyline->intersectWith(&across, AcDb::kOnBothOperands, points), Acad::eOk);
    ASSERT_EQ(points.size(), 2U); // at 2 - sqrt(3) and 2 + sqrt(3)
    EXPECT_NEAR(points[0].y + points[1].y, 4.0, 1.0e-9);
    EXPECT_EQ(polyline->setBulgeAt(4, 0.0), Acad::eInvalidIndex);
    ASSERT_EQ(polyline->removeVertexAt(0), Acad::eOk);
    EXPECT_NEAR(polyline->length(), 10 + 2 * kPi, 1.0e-9);
}

// The points of the path go where the matrix sends them.
TEST_F(FlatPolylines, GoWithATransform) {
    const AcGeMatrix3d matrices[] = {
        AcGeMatrix3d::mirroring({1, 0, 0}, AcGeVector3d::kXAxis),
        AcGeMatrix3d::rotation(1.1, AcGeVector3d(1, 2, 3)),
        AcGeMatrix3d::mirroring({0, 0, 1}, AcGeVector3d(1, 1, 1).normal()) * AcGeMatrix3d::scaling(2.5),
    };
    for (const AcGeMatrix3d& matrix : matrices) {
        const auto before = hairpin();
        const auto after = hairpin();
        ASSERT_EQ(after->transformBy(matrix), Acad::eOk);
        for (double param = 0.0; param <= 3.0; param += 0.25) {
            AcGePoint3d from, to;
            before->getPointAtParam(param, from);
            after->getPointAtParam(param, to);
            expectPoint(to, from.transformBy(matrix));
        }
    }
    const AcGeMatrix3d stretched = AcGeMatrix3d::scaling(AcGeVector3d(2, 1, 1));
    EXPECT_EQ(hairpin()->transformBy(stretched), Acad::eCannotScaleNonUniformly);
    const auto straight = hairpin();
    straight->setBulgeAt(1, 0.0);
    EXPECT_EQ(straight->transformBy(stretched), Acad::eOk);
}

TEST_F(FlatPolylines, WidePiecesAreFilledStrips) {
    AcDbPolyline polyline;
    polyline.addVertexAt(0, {0, 0}, 0.0, 2.0, 4.0);
    polyline.addVertexAt(1, {10, 0});
    DisplayList list;
    Recorder recorder(list);
    drawEntity(polyline, recorder);
    ASSERT_EQ(list.kind(0), PrimitiveKind::kPolygon);
    EXPECT_EQ(list.traits(0).fill, kAcGiFillAlways);
    expectPoints({list.points(0).begin(), list.points(0).end()},
                 {{0, 1, 0}, {10, 2, 0}, {10, -2, 0}, {0, -1, 0}});
}

TEST_F(FlatPolylines, ComeApartIntoLinesAndArcs) {
    std::vector<AcDbEntity*> raw;
    ASSERT_EQ(hairpin()->explode(raw), Acad::eOk);
    const std::vector<std::unique_ptr<AcDbEntity>> pieces(raw.begin(), raw.end());
    ASSERT_EQ(pieces.size(), 3U);
    const auto* arc = AcDbArc::cast(pieces[1].get());
    ASSERT_TRUE(arc);
    expectPoint(arc->center(), {10, 2, 3});
    EXPECT_NEAR(arc->radius(), 2.0, 1.0e-9);
}

TEST_F(FlatPolylines, PointsShowTheFigureOfTheDrawing) {
    HeaderVariables header = database.header();
    header.pdmode = 34; // a plus in a circle
    header.pdsize = 2.0;
    database.setHeader(header);
    AcDbPoint point({5, 5, 0});
    DisplayList list;
    Recorder recorder(list);
    drawEntity(point, recorder);
    ASSERT_EQ(list.size(), 3U);
    EXPECT_EQ(list.circle(2).radius, 1.0);
    expectPoint(list.points(0)[0], {3, 5, 0});
}
