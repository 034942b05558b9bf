#include "drawing/AcDbBlockTable.h"
#include "drawing/AcDbDatabase.h"
#include "drawing/AcDbLayerTable.h"
#include "module/ModuleTest.h"
#include "util/DrawingHelpers.h"

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
