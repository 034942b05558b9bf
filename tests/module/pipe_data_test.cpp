#include "drawing/AcDbLine.h"
#include "geometry/AcGeMatrix3d.h"
#include "module/ModuleTest.h"
#include "pipe/PipeBreaks.h"
#include "runtime/CException.h"
#include "runtime/Host.h"
#include "system/UserSettings.h"
#include "util/Folders.h"
#include "util/Registry.h"

using namespace plumb;

TEST(PipeBreaks, ListsStayInOrderAndTakeAPositionOnce) {
    BreakList list;
    for (const double position : {5.0, 5.0, 3.0, 8.0, 4.0, 3.0}) insertBreak(list, position);
    EXPECT_EQ(list, (BreakList{3.0, 4.0, 5.0, 8.0}));
}

TEST(PipeBreaks, SlotsKeepEqualOnesAndLoseTheLargest) {
    BreakSlots slots{};
    for (const double position : {5.0, 5.0, 3.0}) insertBreak(slots, position);
    EXPECT_EQ(slots, (BreakSlots{3.0, 5.0, 5.0}));
    for (int i = 0; i < 7; ++i) insertBreak(slots, 10.0 + i);
    const BreakSlots full = slots;
    insertBreak(slots, 99.0);
    EXPECT_EQ(slots, full) << "an eleventh that is larger is dropped";
    insertBreak(slots, 4.0);
    EXPECT_EQ(slots, (BreakSlots{3.0, 4.0, 5.0, 5.0, 10.0, 11.0, 12.0, 13.0, 14.0, 15.0}));
    BreakSlots zero{2.0};
    insertBreak(zero, 0.0);
    EXPECT_EQ(zero, (BreakSlots{0.0, 2.0}));
}

TEST(Folders, TheBackslashWins) {
    EXPECT_EQ(GetFolder("a\\b/c"), "a");
    EXPECT_EQ(GetFolder("/a/b"), "/a");
    EXPECT_EQ(GetFolder("b"), "");
    EXPECT_EQ(GetShortName("/a/b"), "b");
    EXPECT_EQ(GetShortName("b"), "");
}

// As a curve and as a thing that is edited. Pipes of these tests are in no drawing.
class PipeEntity : public ModuleTest {};

TEST_F(PipeEntity, IsALineInSpace) {
    PlumbPipe pipe;
    setEnds(pipe, {0, 0, 0}, {3, 0, 4});
    double value = 0.0;
    AcGePoint3d point;
    pipe.getEndParam(value);
    EXPECT_DOUBLE_EQ(value, 5.0);
    pipe.getPointAtDist(2.5, point);
    EXPECT_EQ(pointText(point), "1.5,0,2");
    double param = 0.0;
    pipe.getParamAtPoint({3, 7, 4}, param);
    pipe.getDistAtPoint({3, 7, 4}, value);
    EXPECT_DOUBLE_EQ(param, 5.0);
    EXPECT_GT(value, param) << "a distance is straight, a parameter is square to the pipe";
}

TEST_F(PipeEntity, ExtendsInPlanAndAParameterOfZeroMovesTheEnd) {
    PlumbPipe pipe;
    setEnds(pipe, {0, 0, 1}, {10, 0, 1});
    pipe.extend(0.0);
    EXPECT_EQ(pointText(pipe.start()) + " " + pointText(pipe.end()), "0,0,1 0,0,1");
    setEnds(pipe, {0, 0, 1}, {10, 0, 1});
    pipe.extend(-4.0);
    pipe.extend(false, {12, 1, 50});
    EXPECT_EQ(pointText(pipe.start()) + " " + pointText(pipe.end()), "-4,0,1 12,1,1");
}

TEST_F(PipeEntity, ElbowLengthIsTheLargestTurn) {
    PlumbPipe pipe;
    EXPECT_EQ(pipe.elbowLength(), 0.0);
    pipe.addElbow({5.0, 1.0});
    pipe.addArc({1.5, 0.0, 1});
    EXPECT_EQ(pipe.elbowLength(), 5.0) << "no radius";
    pipe.edit().dArcRadius = 6.0;
    EXPECT_EQ(pipe.elbowLength(), 9.0);
    EXPECT_THROW(pipe.addElbowBreak(1, 1.0), CInvalidArgException);
    EXPECT_THROW(pipe.addArcBreak(-1, 1.0), CInvalidArgException);
}

TEST_F(PipeEntity, GripsAndStretchPointsMoveInPlan) {
    PlumbPipe pipe;
    AcGePoint3dArray points;
    AcGeIntArray none;
    setEnds(pipe, {0, 0, 7}, {10, 0, 9});
    pipe.getGripPoints(points, none, none);
    ASSERT_EQ(points.size(), 3U);
    EXPECT_EQ(pointText(points[0]) + " " + pointText(points[1]) + " " + pointText(points[2]),
              "5,0,0 0,0,0 10,0,0");
    pipe.moveGripPointsAt({0, 1, 9}, {1, 2, 3});
    EXPECT_EQ(pointText(pipe.start()) + " " + pointText(pipe.end()), "1,2,7 11,2,9") << "each end once";
    pipe.moveStretchPointsAt({1, 1}, {1, 0, 5});
    EXPECT_EQ(pointText(pipe.end()), "13,2,9") << "an index that stands twice moves twice";

    setEnds(pipe, {0, 0, 0}, {0, 0, 9});
    points.clear();
    pipe.getGripPoints(points, none, none);
    EXPECT_EQ(points.size(), 1U);
    points.clear();
    pipe.getStretchPoints(points);
    EXPECT_EQ(points.size(), 1U);
    pipe.moveStretchPointsAt({1, 0}, {5, 0, 0});
    EXPECT_EQ(pointText(pipe.start()), "0,0,0");
    pipe.moveStretchPointsAt({0}, {5, 0, 0});
    EXPECT_EQ(pointText(pipe.start()) + " " + pointText(pipe.end()), "5,0,0 5,0,9");
}

TEST_F(PipeEntity, SnapsToItsTrueEnds) {
    PlumbPipe pipe;
    setEnds(pipe, {0, 0, 7}, {10, 0, 9});
    const auto snap = [&](AcDb::OsnapMode mode, const AcGePoint3d& pick = {}, const AcGePoint3d& last = {}) {
        AcGePoint3dArray points;
        AcGeIntArray ids;
        const Acad::ErrorStatus status =
            pipe.getOsnapPoints(mode, 0, pick, last, AcGeMatrix3d(), points, ids);
        std::string text = status == Acad::eOk ? "" : std::to_string(status);
        for (const AcGePoint3d& p : points) text += (text.empty() ? "" : " ") + pointText(p);
        return text;
    };
    EXPECT_EQ(snap(AcDb::kOsModeEnd), "0,0,7 10,0,9");
    EXPECT_EQ(snap(AcDb::kOsModeMid), "5,0,8");
    EXPECT_EQ(snap(AcDb::kOsModeCen), "3");
    EXPECT_EQ(snap(AcDb::kOsModeNear, {4, 3, 0}), "4,0,7.8");
    EXPECT_EQ(snap(AcDb::kOsModePerp, {}, {5, 3, 0}), "5,0,8");
    EXPECT_EQ(snap(AcDb::kOsModeQuad), "3");
    setEnds(pipe, {0, 0, 0}, {0, 0, 9});
    EXPECT_EQ(snap(AcDb::kOsModeEnd), "0,0,0");
    EXPECT_EQ(snap(AcDb::kOsModeCen), "0,0,0");
    EXPECT_EQ(snap(AcDb::kOsModeNear, {4, 3, 0}), "0,0,0");
}

TEST_F(PipeEntity, TransformsKeepElevationsAndSizes) {
    PlumbPipe pipe;
    setEnds(pipe, {0, 0, 5}, {10, 0, 5});
    pipe.edit().dTickWidth = 4.0;
    pipe.transformBy(AcGeMatrix3d::rotation(std::numbers::pi / 2, AcGeVector3d::kZAxis));
    EXPECT_EQ(pointText(pipe.start()) + " " + pointText(pipe.end()), "0,0,5 0,10,5");
    pipe.transformBy(AcGeMatrix3d::translation({1, 1, 1}));
    pipe.transformBy(AcGeMatrix3d::scaling(2.0));
    EXPECT_EQ(pointText(pipe.start()) + " " + pointText(pipe.end()), "2,2,5 2,22,5");
    EXPECT_EQ(pipe.data().dTickWidth, 4.0);
    std::vector<AcDbEntity*> pieces;
    EXPECT_EQ(pipe.explode(pieces), Acad::eNotApplicable);
}

TEST_F(PipeEntity, ExtentsAndCrossingsAreThoseOfTheLine) {
    PlumbPipe pipe;
    setEnds(pipe, {0, 0, 0}, {10, 0, 0});
    pipe.addElbow({50.0, 1.0});
    AcDbExtents extents;
    EXPECT_EQ(pipe.getGeomExtents(extents), Acad::eOk);
    EXPECT_EQ(pointText(extents.minPoint()) + " " + pointText(extents.maxPoint()), "0,0,0 10,0,0");

    AcDbLine shortLine({4, 5, 0}, {4, 2, 0});
    AcGePoint3dArray points;
    pipe.intersectWith(&shortLine, AcDb::kExtendArg, points);
    ASSERT_EQ(points.size(), 1U) << "the argument is what is lengthened";
    EXPECT_EQ(pointText(points[0]), "4,0,0");
    points.clear();
    pipe.intersectWith(&shortLine, AcDb::kExtendThis, points);
    EXPECT_TRUE(points.empty());
}

TEST_F(PipeEntity, ListsItselfBehindTheHostsLines) {
    lisp("(setq e (vq_plumb-insertPipe 12 '(0 0 10.5) '(10 0 10)))");
    takePrinted();
    lisp("(command \"LIST\" e \"\")");
    EXPECT_NE(printed.find("                   Pipe ID = 12\n"
                           "                   Starting elevation = 10.5\n"
                           "                   Ending elevation = 10\n"),
              std::string::npos)
        << printed;
}

TEST_F(PipeEntity, SettingsNeedTheirKey) {
    EXPECT_FALSE(RegistrySetText("Plumbing", "bCalloutFirst", "1"));
    EXPECT_EQ(RegistryGetText("Plumbing", "bCalloutFirst"), "");
    host->settings().createKey("Software\\Veldrin Software\\Plumbing");
    EXPECT_TRUE(RegistrySetText("Plumbing", "bCalloutFirst", "1"));
    EXPECT_EQ(RegistryGetText("Plumbing", "bCalloutFirst"), "1");
}
