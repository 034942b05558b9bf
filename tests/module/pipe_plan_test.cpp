#include "drawing/AcDbDatabase.h"
#include "module/ModuleTest.h"
#include "pipe/PlanPoints.h"

using namespace plumb;

class PipePlan : public ModuleTest {
protected:
    PipePlan() { setEnds(pipe, {0, 0, 0}, {100, 0, 0}); }
    Lines picture() { return pictureOf(pipe); }
    PipeData& edit() { return pipe.edit(); }

    PlumbPipe pipe;
};

TEST(PlanFrame, StepsAsAnglesDo) {
    EXPECT_EQ(kQuarterTurnCosine, std::cos(kQuarterTurn));
    EXPECT_EQ(std::sin(kQuarterTurn), 1.0);
    const AcGePoint3d p(7, -3, 5);
    for (const double angle : {0.0, 0.3, 1.0, 1.570796325, 2.5, 3.14159265, 4.0, 5.5}) {
        const PlanFrame frame({1, 2, 3}, PolarPoint({1, 2, 9}, angle, 40.0));
        const elbowInfo elbow(8.0, -0.7);
        EXPECT_TRUE(frame.along(p, 9.0).isEqualTo(PolarPoint(p, angle, 9.0))) << angle;
        EXPECT_TRUE(frame.left(p, 9.0).isEqualTo(PolarPoint(p, angle + kQuarterTurn, 9.0))) << angle;
        EXPECT_TRUE(frame.right(p, 9.0).isEqualTo(PolarPoint(p, angle - kQuarterTurn, 9.0))) << angle;
        EXPECT_TRUE(frame.turned(p, elbow, 9.0).isEqualTo(PolarPoint(p, angle - 0.7, 9.0))) << angle;
    }
    const PlanFrame far({0, 0, 0}, {3e200, 4e200, 0});
    EXPECT_DOUBLE_EQ(far.cosAngle, 0.6);
}

TEST_F(PipePlan, WithoutOffsetsTheRunIsThePipeExactly) {
    setEnds(pipe, {0.1, 0.7, 3.3}, {77.7, 31.9, -2});
    const PlanPoints p = getPlanPoints(pipe.data(), PlanFrame(pipe.start(), pipe.end()));
    EXPECT_TRUE(p.ptRunStart.x == 0.1 && p.ptRunStart.y == 0.7 && p.ptRunStart.z == 3.3);
    EXPECT_TRUE(p.ptRunEnd.x == 77.7 && p.ptRunEnd.y == 31.9 && p.ptRunEnd.z == 3.3);
}

TEST_F(PipePlan, ShiftsAndShortensTheRun) {
    edit().dOffsetDistance = 5.0;
    edit().dTailOffset = 10.0;
    edit().dHeadOffset = 20.0;
    EXPECT_EQ(picture(), (Lines{"line 10,5,0 80,5,0"}));
    setEnds(pipe, {0, 0, 0}, {0, 100, 0});
    EXPECT_EQ(picture(), (Lines{"line -5,10,0 -5,80,0"}));
    edit().dTailOffset = 150.0;
    EXPECT_EQ(picture(), (Lines{"line -5,150,0 -5,80,0"})) << "nothing is clamped";
}

TEST_F(PipePlan, ASlopeIsDrawnFlatWithADropAtItsHead) {
    setEnds(pipe, {0, 0, 10}, {100, 0, 4});
    edit().dHeadOffset = 10.0;
    EXPECT_EQ(picture(), (Lines{"line 0,0,10 90,0,10", "line 90,0,10 90,0,4"}));
    edit().bIsometric = true;
    EXPECT_EQ(picture(), (Lines{"line 0,0,10 90,0,10"}));
}

TEST_F(PipePlan, ElbowsShareABaseThatHeadOffsetsDoNotMove) {
    edit().dHeadOffset = 30.0;
    edit().dElbow45Offset = 2.0;
    pipe.addElbow({10.0, kEighthTurn});
    pipe.addElbow({4.0, -kQuarterTurn});
    EXPECT_EQ(picture(),
              (Lines{"line 0,0,0 70,0,0", "line 98,0,0 105.071068,7.071068,0", "line 98,0,0 98,-4,0"}));
}

TEST_F(PipePlan, ArcsTurnToTheirSide) {
    edit().dArcRadius = 6.0;
    pipe.addArc({kQuarterTurn, 0.0, -1});
    pipe.addArc({1.0, 4.0, 1});
    EXPECT_EQ(picture(),
              (Lines{"line 0,0,0 100,0,0", "arc 100,0,0 100,-6,0 6 1.570796 -1", "arc 96,0,0 96,6,0 6 1 1"}));
}

TEST_F(PipePlan, ARiserIsACircle) {
    setEnds(pipe, {10, 10, 0}, {10, 10, 9});
    edit().sText = "no label";
    edit().dOffsetDistance = 3.0;
    EXPECT_EQ(picture(), (Lines{"circle 10,10,0 6"}));
    edit().verticalAngles = {0.0};
    EXPECT_EQ(picture(), (Lines{"circle 10,10,0 6"})) << "going up it has no gaps";
    edit().iVerticalType = 1;
    EXPECT_EQ(picture(), (Lines{"arc 13,15.196152,0 10,10,0 6 4.18879 1"}));
    edit().verticalAngles = {0.0, kPi};
    EXPECT_EQ(picture(),
              (Lines{"arc 13,15.196152,0 10,10,0 6 1.047198 1", "arc 7,4.803848,0 10,10,0 6 1.047198 1"}));
    edit().verticalAngles = {0.0, 1.5, 3.0, 4.5};
    EXPECT_EQ(picture(), (Lines{})) << "the gaps cover the circle";
    edit().verticalAngles.clear();
    EXPECT_EQ(picture(), (Lines{"circle 10,10,0 6"}));
}

TEST_F(PipePlan, ATenthOfAnInchIsStillARiser) {
    setEnds(pipe, {0, 0, 0}, {0.1, 0, 0});
    EXPECT_EQ(picture(), (Lines{"circle 0,0,0 6"}));
    setEnds(pipe, {0, 0, 0}, {0.1001, 0, 0});
    EXPECT_EQ(picture(), (Lines{"line 0,0,0 0.1001,0,0"}));
}

TEST_F(PipePlan, TicksStandInsideTheRun) {
    edit().dTickWidth = 4.0;
    edit().dTickOffsetHead = 2.0;
    edit().dTickOffsetTail = 3.0;
    EXPECT_EQ(picture(), (Lines{"line 2,2,0 2,-2,0", "line 0,0,0 2,0,0", "line 97,2,0 97,-2,0",
                                "line 100,0,0 97,0,0", "line 2,0,0 97,0,0"}));
    edit().dTickOffsetTail = 0.0;
    EXPECT_EQ(picture().size(), 3U);
    edit().dTickWidth = 0.0;
    EXPECT_EQ(picture(), (Lines{"line 0,0,0 100,0,0"}));
}

TEST_F(PipePlan, GapsMergeWhereTheyTouch) {
    setEnds(pipe, {0, 0, 0}, {30, 0, 0});
    const auto cut = [&](BreakList breaks) {
        edit().pipeBreaks = std::move(breaks);
        std::string text;
        for (const std::string& line : picture()) {
            const std::size_t second = line.rfind(' ');
            text += line.substr(5, line.find(',') - 5) + ".." +
                    line.substr(second + 1, line.find(',', second) - second - 1) + " ";
        }
        return text;
    };
    EXPECT_EQ(cut({10, 20}), "0..8.5 11.5..18.5 21.5..30 ");
    EXPECT_EQ(cut({10, 13}), "0..8.5 14.5..30 ");
    EXPECT_EQ(cut({10, 11, 12, 14.9}), "0..8.5 16.4..30 ");
    EXPECT_EQ(cut({10, 13.0001}), "0..8.5 11.5..11.5001 14.5001..30 ");
    EXPECT_EQ(cut({1}), "2.5..30 ");
    EXPECT_EQ(cut({29}), "0..27.5 ");
    EXPECT_EQ(cut({35}), "0..33.5 ") << "a piece is not clamped to the run";
    edit().dTailOffset = 10.0;
    EXPECT_EQ(cut({15}), "10..13.5 16.5..30 ") << "positions count from the pipe's end, not the run's";
}

TEST_F(PipePlan, ATickNeedsClearPipeAtItsGuard) {
    edit().dTickWidth = 4.0;
    edit().dTickOffsetHead = edit().dTickOffsetTail = 2.0;
    edit().pipeBreaks = {50.0};
    EXPECT_EQ(picture(), (Lines{"line 2,2,0 2,-2,0", "line 0,0,0 2,0,0", "line 2,0,0 48.5,0,0",
                                "line 98,2,0 98,-2,0", "line 100,0,0 98,0,0", "line 51.5,0,0 98,0,0"}));
    for (const double position : {3.0, 5.0}) {
        edit().pipeBreaks = {position};
        EXPECT_EQ(picture().size(), 4U) << position << ": the head tick is gone, the tail tick stays";
    }
}

TEST_F(PipePlan, ElbowsAndArcsAreCutAlongThemselves) {
    pipe.addElbow({20.0, kQuarterTurn});
    pipe.addElbowBreak(0, 10.0);
    EXPECT_EQ(picture(), (Lines{"line 0,0,0 100,0,0", "line 100,0,0 100,8.5,0", "line 100,11.5,0 100,20,0"}));
    edit().elbows.clear();
    edit().dArcRadius = 6.0;
    edit().dBreakWidth = 2.0;
    pipe.addArc({1.5, 0.0, 1});
    pipe.addArc({1.5, 0.0, -1});
    for (const int arc : {0, 1}) pipe.addArcBreak(arc, 4.0);
    // From the arc's first point: 0 to 3 and 5 to 9, so angles 0 to 0.5 and 5/6 to 1.5. Pieces run
    // counter-clockwise, so those of the arc to the right start at their far ends.
    const double r = 6.0;
    const auto at = [&](int side, double angle) {
        return pointText({100 + r * std::sin(angle), side * (r - r * std::cos(angle)), 0});
    };
    EXPECT_EQ(picture(), (Lines{"line 0,0,0 100,0,0", "arc " + at(1, 0) + " 100,6,0 6 0.5 1",
                                "arc " + at(1, 5.0 / 6) + " 100,6,0 6 0.666667 1",
                                "arc " + at(-1, 0.5) + " 100,-6,0 6 0.5 1",
                                "arc " + at(-1, 1.5) + " 100,-6,0 6 0.666667 1"}));
    // A 0.0 in the first slot hides the breaks behind it.
    pipe.addArcBreak(0, 0.0);
    EXPECT_EQ(picture()[1], "arc 100,0,0 100,6,0 6 1.5 1");
}

TEST_F(PipePlan, ATrapHangsBelowItsEnd) {
    edit().bPtrap = true;
    edit().dPtrapWidth = 12.0;
    edit().dHeadOffset = 40.0;
    EXPECT_EQ(picture(), (Lines{"curve 88,-6,0 88,-6.01,0 93.88,-12,0 94.12,-12,0 100,-6.01,0 100,-6,0",
                                "line 88,0,0 88,-6,0", "line 100,-6,0 100,0,0", "line 0,0,0 88,0,0"}));
    setEnds(pipe, {0, 0, 0}, {0, 100, 0});
    EXPECT_EQ(picture()[1], "line 0,88,0 0,82,0") << "towards -Y, whatever the pipe's direction is";
}

TEST_F(PipePlan, ABrokenTrapGoesOutInChords) {
    edit().bPtrap = true;
    edit().dPtrapWidth = 12.0;
    edit().dBreakWidth = 2.0;
    edit().ptrapPolylineBreaks = {5.0};
    edit().ptrapLine1Breaks = {3.0};
    const Lines lines = picture();
    EXPECT_EQ(lines[0].substr(0, 14), "line 88,-6,0 8");
    int chords = 0;
    for (const std::string& line : lines) chords += line.find("curve") != std::string::npos ? 100 : 1;
    EXPECT_GT(chords, 10);
    EXPECT_LT(chords, 30);
    const Lines rest(lines.end() - 4, lines.end());
    EXPECT_EQ(rest, (Lines{"line 88,0,0 88,-2,0", "line 88,-4,0 88,-6,0", "line 100,-6,0 100,0,0",
                           "line 0,0,0 88,0,0"}));
}

TEST_F(PipePlan, AGapAtTheTrapsTopTakesTheEndOfABrokenRun) {
    edit().bPtrap = true;
    edit().dPtrapWidth = 12.0;
    edit().dBreakWidth = 2.0;
    edit().ptrapLine1Breaks = {1.0};
    EXPECT_EQ(picture().back(), "line 0,0,0 88,0,0") << "a whole run stays whole";
    edit().pipeBreaks = {40.0};
    EXPECT_EQ(picture().back(), "line 0,0,0 39,0,0");
    edit().ptrapLine1Breaks = {1.5};
    EXPECT_EQ(picture().back(), "line 41,0,0 88,0,0");
}

// Nothing here may hang or crash; the picture is what the sources say of such values.
TEST_F(PipePlan, DegenerateValuesEnd) {
    edit().bPtrap = true;
    for (const double width : {0.0, -5.0, std::nan("")}) {
        edit().dPtrapWidth = width;
        EXPECT_LT(picture().size(), 10U) << width;
    }
    edit().dPtrapWidth = 12.0;
    edit().ptrapPolylineBreaks = {1e12};
    EXPECT_LT(picture().size(), 40U) << "a gap far behind the curve's end";
    edit().bPtrap = false;
    pipe.addArc({1.0, 0.0, 1});
    pipe.addArcBreak(0, 0.5);
    EXPECT_EQ(picture().size(), 1U) << "a broken arc of no radius";
    for (int i = 0; i < 10000; ++i) edit().pipeBreaks.push_back(i * 0.01);
    EXPECT_LT(picture().size(), 3U);
    for (const double bad : {std::nan(""), HUGE_VAL}) {
        setEnds(pipe, {bad, 0, 0}, {100, 0, 0});
        edit().dOffsetDistance = bad;
        picture();
    }
}
