#include "drawing/AcDbBlockTable.h"
#include "drawing/AcDbDatabase.h"
#include "drawing/AcDbLayerTable.h"
#include "module/ModuleTest.h"
#include "pipe/PipeBreaks.h"
#include "util/DrawingHelpers.h"

#include <random>

using namespace plumb;

// A pipe in the drawing, with a layer for its hidden twins.
class PipeTwins : public ModuleTest {
protected:
    PipeTwins() {
        hidden = addLayer("HID", "DASHY");
        auto* made = new PlumbPipe;
        setEnds(*made, {0, 0, 5}, {100, 0, 5});
        EXPECT_TRUE(AppendToModelSpace(made));
        made->edit().hiddenLayerId = hidden;
        id = made->objectId();
        pipe.acquire(made);
    }
    PipeData& edit() { return pipe->edit(); }

    AcDbObjectId hidden;
    AcDbObjectId id;
    AcDbObjectPointer<PlumbPipe> pipe;
};

TEST_F(PipeTwins, StandBeforeTheirPieceAtTheHiddenElevation) {
    edit().dArcRadius = 6.0;
    pipe->addArc({1.0, 0.0, 1});
    pipe->addElbow({5.0, kQuarterTurn});
    const Lines expected{"line 0,0,100000 100,0,100000 @HID",        "line 0,0,5 100,0,5",
                         "line 100,0,100000 100,5,100000 @HID",      "line 100,0,5 100,5,5",
                         "arc 100,0,100000 100,6,100000 6 1 1 @HID", "arc 100,0,5 100,6,5 6 1 1"};
    EXPECT_EQ(pictureOf(*pipe), expected);
    EXPECT_EQ(pictureOfList(*pipe), expected) << "both sinks give the same";
}

TEST_F(PipeTwins, TraitsAreAsBeforeBehindEachTwin) {
    veldrin::DisplayList list;
    veldrin::Recorder recorder(list);
    veldrin::drawEntity(*pipe, recorder);
    ASSERT_EQ(list.size(), 2U);
    const AcDbObjectPointer<AcDbLayerTableRecord> layer(hidden);
    EXPECT_EQ(list.traits(0).layer, hidden);
    EXPECT_EQ(list.traits(0).linetype, layer->linetypeObjectId());
    EXPECT_EQ(list.traits(1).layer, pipe->layerId());
    EXPECT_EQ(list.traits(1).linetype, pipe->linetypeId());
}

TEST_F(PipeTwins, ARiserHasOneAndATrapsCurveStandsBehindIt) {
    edit().bPtrap = true;
    edit().dPtrapWidth = 12.0;
    const Lines lines = pictureOf(*pipe);
    ASSERT_EQ(lines.size(), 8U);
    EXPECT_EQ(lines[0].substr(0, 13), "curve 88,-6,5");
    EXPECT_EQ(lines[1].substr(0, 18), "curve 88,-6,100000");
    EXPECT_EQ(lines[2], "line 88,0,100000 88,-6,100000 @HID");
    EXPECT_EQ(pictureOfList(*pipe), lines);

    setEnds(*pipe, {1, 2, 5}, {1, 2, 50});
    EXPECT_EQ(pictureOf(*pipe), (Lines{"circle 1,2,100000 6 @HID", "circle 1,2,5 6"}));
    EXPECT_EQ(pictureOfList(*pipe), pictureOf(*pipe));
}

TEST_F(PipeTwins, ABrokenCurveHasATwinForEachChord) {
    edit().bPtrap = true;
    edit().dPtrapWidth = 12.0;
    edit().ptrapPolylineBreaks = {5.0};
    const Lines lines = pictureOf(*pipe);
    for (std::size_t i = 0; i < lines.size(); ++i) {
        EXPECT_EQ(lines[i].find("curve"), std::string::npos);
        EXPECT_EQ(lines[i].find("@HID") != std::string::npos, i % 2 == 0) << lines[i];
    }
}

TEST_F(PipeTwins, AnErasedLayerStillGivesTwins) {
    edit();
    {
        const AcDbObjectPointer<AcDbLayerTableRecord> layer(hidden, AcDb::kForWrite);
        ASSERT_EQ(layer->erase(), Acad::eOk);
    }
    EXPECT_EQ(pictureOf(*pipe).size(), 2U);
    edit().hiddenLayerId.setNull();
    EXPECT_EQ(pictureOf(*pipe).size(), 1U);
}

// Arcs to the left alone: one to the right becomes an entity that runs the other way.
TEST_F(PipeTwins, BothSinksGiveTheSameOfAnyPipe) {
    std::mt19937 random(20);
    const auto chance = [&](double of) { return std::bernoulli_distribution(of)(random); };
    const auto between = [&](double low, double high) {
        return std::uniform_real_distribution<double>(low, high)(random);
    };
    const auto positions = [&](double most) {
        BreakList list;
        while (chance(0.6)) insertBreak(list, between(-2.0, most));
        return list;
    };
    for (int round = 0; round < 300; ++round) {
        setEnds(*pipe, {between(-50, 50), between(-50, 50), between(-9, 9)},
                {between(-50, 50), between(-50, 50), between(-9, 9)});
        PipeData& d = edit();
        d.hiddenLayerId = chance(0.5) ? hidden : AcDbObjectId();
        d.sText = chance(0.5) ? "3/4\" CW" : "";
        d.dTextDistance = between(0.0, 40.0);
        d.bTextAngleIs0 = chance(0.3);
        d.dTickWidth = chance(0.5) ? 2.0 : 0.0;
        d.dTickOffsetHead = between(0.0, 3.0);
        d.dTickOffsetTail = chance(0.5) ? 1.5 : 0.0;
        d.bPtrap = chance(0.4);
        d.dPtrapWidth = between(1.0, 12.0);
        d.dBreakWidth = between(0.0, 5.0);
        d.pipeBreaks = positions(80.0);
        d.ptrapLine1Breaks = positions(6.0);
        d.ptrapPolylineBreaks = positions(20.0);
        d.ptrapLine2Breaks = positions(6.0);
        d.dOffsetDistance = chance(0.5) ? between(-4.0, 4.0) : 0.0;
        d.elbows.clear();
        d.arcs.clear();
        d.dArcRadius = 5.0;
        if (chance(0.5)) pipe->addElbow({between(1.0, 9.0), between(-3.0, 3.0)});
        if (chance(0.5)) pipe->addArc({between(0.1, 3.0), between(0.0, 5.0), 1});
        if (!d.elbows.empty() && chance(0.5)) pipe->addElbowBreak(0, between(0.0, 9.0));
        if (!d.arcs.empty() && chance(0.5)) pipe->addArcBreak(0, between(0.0, 9.0));
        ASSERT_EQ(pictureOfList(*pipe), pictureOf(*pipe)) << "in round " << round;
    }
}

TEST_F(PipeTwins, ExplodingNamesThePiecesAndKeepsThePipe) {
    pipe.close();
    lisp("(setq e (entlast))");
    lisp("(defun look (p / d) (setq d (entget (cdr p))) (list (car p) (cdr (assoc 0 d)) (cdr (assoc 8 d))))");
    EXPECT_EQ(lisp("(mapcar 'look (vq_plumb-explodePipe e))"),
              "((\"obj\" \"LINE\" \"HID\") (\"obj\" \"LINE\" \"0\"))");
    EXPECT_EQ(lisp("(cdr (assoc 0 (entget e)))"), "\"VQPLUMBPIPE\"");
}

TEST_F(PipeTwins, NoSinkProducesNothing) {
    const std::size_t before = [&] {
        const AcDbObjectPointer<AcDbBlockTableRecord> space(CurrentDatabase()->modelSpaceId());
        return space->entityIds().size();
    }();
    pipe->buildEntityList(nullptr);
    const AcDbObjectPointer<AcDbBlockTableRecord> space(CurrentDatabase()->modelSpaceId());
    EXPECT_EQ(space->entityIds().size(), before);
}
