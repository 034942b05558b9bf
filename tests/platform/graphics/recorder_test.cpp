#include "graphics/NullSink.h"
#include "graphics/Recorder.h"
#include "platform/entities/EntityTest.h"

using namespace veldrin;
using namespace veldrin::testing;

namespace {

class Recording : public EntityTest {
protected:
    DisplayList list;
    Recorder recorder{list};
    AcGiSubEntityTraits& traits = recorder.subEntityTraits();
    AcGiWorldGeometry& geometry = recorder.geometry();
    const AcGePoint3d ends[2] = {{0, 0, 0}, {10, 0, 0}};
};

// Draws with traits of its own, changes them midway, and leaves a transform behind.
class Untidy : public AcGiDrawable {
public:
    void setAttributes(AcGiSubEntityTraits* traits) override { traits->setColor(1); }
    bool worldDraw(AcGiWorldDraw* draw) override {
        const AcGePoint3d points[2] = {{0, 0, 0}, {1, 0, 0}};
        draw->geometry().polyline(2, points);
        draw->subEntityTraits().setLineTypeScale(9.0);
        draw->geometry().pushModelTransform(AcGeMatrix3d::translation({100, 0, 0}));
        draw->geometry().polyline(2, points);
        return true;
    }
};

} // namespace

TEST_F(Recording, DrawGivesTheTraitsAndTheFrameBack) {
    traits.setColor(5);
    traits.setLayer(database.layerZero());
    Untidy untidy;
    geometry.draw(&untidy);
    geometry.polyline(2, ends);
    ASSERT_EQ(list.size(), 3U);
    EXPECT_EQ(list.traits(0).color.colorIndex(), 1);
    EXPECT_EQ(list.traits(0).layer, database.layerZero());
    EXPECT_EQ(list.traits(1).linetypeScale, 9.0);
    EXPECT_EQ(list.points(1)[0].x, 100.0);
    EXPECT_EQ(list.traits(2).color.colorIndex(), 5);
    EXPECT_EQ(list.traits(2).linetypeScale, 1.0);
    EXPECT_EQ(list.points(2)[1].x, 10.0);
    EXPECT_EQ(traits.color(), 5);
}

TEST_F(Recording, KeepsPrimitivesAsTheyWereGiven) {
    geometry.circularArc({1, 2, 3}, 4.0, {0, 0, -1}, {0, -4, 0}, -1.25);
    geometry.circle({5, 6, 7}, 8.0, AcGeVector3d::kZAxis);
    AcDb2dPolyline trap(AcDb::k2dFitCurvePoly, trapPoints(100000.0));
    geometry.draw(&trap);
    AcDbMText text;
    text.setContents("text");
    text.setTextHeight(3.0);
    geometry.draw(&text);
    geometry.polyline(1, ends);

    ASSERT_EQ(list.size(), 5U);
    const RecordedArc arc = list.arc(0);
    EXPECT_EQ(arc.sweep, -1.25);
    EXPECT_EQ(arc.normal.z, -1.0);
    EXPECT_NEAR(arc.startAngle(), 1.5 * kPi, 1e-12);
    expectPoint(arc.startPoint(), {1, -2, 3});
    EXPECT_EQ(list.circle(1).radius, 8.0);
    ASSERT_EQ(list.kind(2), PrimitiveKind::kFittedCurve);
    expectPoints({list.points(2).begin(), list.points(2).end()}, trapPoints(100000.0));
    EXPECT_EQ(list.fittedCurve(2).vertices.size(), 11U);
    EXPECT_EQ(list.fittedCurve(2).bulges.size(), 11U);
    EXPECT_EQ(list.text(3).contents, "text");
    EXPECT_EQ(list.points(4).size(), 1U);
}

TEST_F(Recording, ReplayRepeatsAllOfIt) {
    traits.setColor(3);
    traits.setLineWeight(70);
    geometry.polyline(2, ends);
    Untidy untidy;
    geometry.draw(&untidy);
    AcDb2dPolyline trap(AcDb::k2dFitCurvePoly, trapPoints());
    geometry.draw(&trap);
    geometry.circularArc({1, 2, 3}, 4.0, AcGeVector3d::kZAxis, {1, 0, 0}, 2.0);

    DisplayList again;
    Recorder second(again);
    list.replay(second);
    ASSERT_EQ(again.size(), list.size());
    for (std::size_t i = 0; i < list.size(); ++i) {
        EXPECT_EQ(again.kind(i), list.kind(i));
        EXPECT_EQ(again.traits(i), list.traits(i));
    }
    expectPoint(again.extents().minPoint(), list.extents().minPoint());
    expectPoint(again.extents().maxPoint(), list.extents().maxPoint());
    NullSink counter;
    list.replay(counter);
    EXPECT_EQ(counter.primitives(), list.size());
}

TEST_F(Recording, RestartForgetsEverythingButItsMemory) {
    AcDbMText text;
    text.setContents("first");
    geometry.draw(&text);
    traits.setColor(3);
    recorder.restart();
    EXPECT_TRUE(list.isEmpty());
    EXPECT_TRUE(list.extents().isEmpty());
    text.setContents("second");
    geometry.draw(&text);
    ASSERT_EQ(list.size(), 1U);
    EXPECT_EQ(list.text(0).contents, "second");
    EXPECT_TRUE(list.traits(0).color.isByLayer());
}

TEST_F(Recording, TransformsPlaceAndNest) {
    geometry.pushModelTransform(AcGeMatrix3d::translation({10, 0, 0}));
    geometry.pushModelTransform(AcGeMatrix3d::mirroring({0, 0, 0}, AcGeVector3d::kXAxis));
    geometry.circularArc({1, 0, 0}, 2.0, AcGeVector3d::kZAxis, {1, 0, 0}, 0.5);
    geometry.popModelTransform();
    geometry.polyline(2, ends);
    geometry.pushModelTransform(AcGeMatrix3d::scaling(AcGeVector3d(3, 1, 1)));
    geometry.circle({0, 0, 0}, 1.0, AcGeVector3d::kZAxis);
    geometry.popModelTransform();
    geometry.popModelTransform();
    geometry.popModelTransform(); // one too many does no harm
    geometry.polyline(2, ends);

    const RecordedArc arc = list.arc(0);
    expectPoint(arc.center, {9, 0, 0});
    expectPoint(arc.startPoint(), {7, 0, 0});
    EXPECT_EQ(arc.sweep, -0.5);
    EXPECT_EQ(list.points(1)[0].x, 10.0);
    ASSERT_EQ(list.kind(2), PrimitiveKind::kPolyline); // an ellipse by now
    AcDbExtents ellipse;
    list.addExtents(2, ellipse);
    expectPoint(ellipse.minPoint(), {7, -1, 0}, 1e-9);
    expectPoint(ellipse.maxPoint(), {13, 1, 0}, 1e-9);
    EXPECT_EQ(list.points(3)[0].x, 0.0);
}
