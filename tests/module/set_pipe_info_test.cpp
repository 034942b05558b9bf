#include "drawing/AcDbBlockTable.h"
#include "drawing/AcDbDatabase.h"
#include "module/ModuleTest.h"

using namespace plumb;

class SetPipeInfo : public ModuleTest {
protected:
    SetPipeInfo() { lisp("(setq e (vq_plumb-insertPipe 7 '(1 2 3) '(50 2 3)))"); }

    // The stored fields of the pipe that the script knows as `e`.
    const PipeData& data() {
        AcDbBlockTableRecord* space = nullptr;
        acdbOpenObject(space, database()->modelSpaceId());
        const AcDbObjectId id = space->entityIds().front();
        space->close();
        m_pipe.open(id, AcDb::kForRead);
        return m_pipe->data();
    }
    std::string set(const std::string& arguments) {
        m_pipe.close();
        return lisp("(vq_plumb-setPipeInfo e " + arguments + ")");
    }

private:
    static AcDbDatabase* database() { return acdbHostApplicationServices()->workingDatabase(); }
    AcDbObjectPointer<PlumbPipe> m_pipe;
};

TEST_F(SetPipeInfo, InsertsWithDefaultsAndARadius) {
    EXPECT_EQ(data().ixPipe, 7);
    EXPECT_EQ(pointText(data().ptStart) + " " + pointText(data().ptEnd), "1,2,3 50,2,3");
    EXPECT_EQ(data().dBreakWidth, 3.0);
    EXPECT_EQ(data().dVerticalRadius, 6.0);
    // Points as numbers, and a radius behind them.
    EXPECT_EQ(lisp("(cddddr (car (vd-graphics (vq_plumb-insertPipe 1 0 0 5 0 0 9 4))))"),
              "((0.0 0.0 5.0) 4.0)");
}

TEST_F(SetPipeInfo, SetsEveryKindOfValue) {
    addLayer("HID");
    EXPECT_EQ(
        set("'(\"P2\" (60 2 9)) '(\"ixPipe\" 8) '(\"dZ1\" 10) '(\"OFFSETDISTANCE\" 1.5) '(\"DWG\" \"d\")"
            " '(\"DWGSTART\" T) '(\"TAILOFFSET\" 2) '(\"ELBOWARC\" T) '(\"VERTICALTYPE\" \"DOWN\")"
            " '(\"VERTICALANGLELIST\" 0 1.5 3) '(\"TEXT\" \"3/4\") '(\"PTRAPWIDTH\" 12.0)"
            " '(\"HIDDENLAYER\" \"hid\") '(\"TEXTSTYLE\" \"Standard\")"),
        "T");
    const PipeData& d = data();
    EXPECT_EQ(pointText(d.ptStart) + " " + pointText(d.ptEnd), "1,2,10 60,2,9");
    EXPECT_EQ(d.ixPipe, 8);
    EXPECT_EQ(d.dOffsetDistance, 1.5);
    EXPECT_EQ(d.sDwg, "d");
    EXPECT_TRUE(d.bDwgStart && d.bElbowArc && !d.bDwgEnd);
    EXPECT_EQ(d.dTailOffset, 2.0);
    EXPECT_EQ(d.iVerticalType, 1);
    EXPECT_EQ(d.verticalAngles, (std::vector<double>{0.0, 1.5, 3.0}));
    EXPECT_EQ(d.sText, "3/4");
    EXPECT_EQ(d.dPtrapWidth, 12.0);
    EXPECT_FALSE(d.hiddenLayerId.isNull() || d.textStyleId.isNull());
}

TEST_F(SetPipeInfo, LaterKeysWinAndDZ1ChangesTheNewPoint) {
    set("'(\"dZ1\" 99.0) '(\"P1\" (5 5 5)) '(\"dZ1\" 6.0) '(\"P1\" 4.0 4.0)");
    EXPECT_EQ(pointText(data().ptStart), "4,4,0") << "two numbers are a point of elevation 0";
    set("'(\"P1\" 4.0 4.0 1.0) '(\"dZ1\" 6.0)");
    EXPECT_EQ(pointText(data().ptStart), "4,4,6");
}

TEST_F(SetPipeInfo, WhatCannotBeReadCostsNothing) {
    set("'(\"TAILOFFSET\" 5.0) '(\"VERTICALTYPE\" \"DOWN\")");
    EXPECT_EQ(set("1 \"TAILOFFSET\" nil '(\"unknown\" (1 2 3) \"x\") '(\"TAILOFFSET\" \"x\") '(7 8 9 10)"
                  " '(\"tailoffset\" 9.0) '(\"VERTICALTYPE\" \"up\") '(\"HEADOFFSET\" 2.0)"),
              "T");
    EXPECT_EQ(data().dTailOffset, 5.0);
    EXPECT_EQ(data().iVerticalType, 1);
    EXPECT_EQ(data().dHeadOffset, 2.0);
    set("'(\"unknown\" (\"TAILOFFSET\" 6.0))");
    EXPECT_EQ(data().dTailOffset, 6.0) << "a list inside of a bad value starts a fresh key";
    set("'(\"TAILOFFSET\" . 7.0)");
    EXPECT_EQ(data().dTailOffset, 7.0) << "a dotted pair does as well";
}

TEST_F(SetPipeInfo, ListsOfFittingsDropZeroLengthsAndOddItems) {
    set("'(\"ELBOWLIST\" 5.0 0.78 0.0 1.0 2.0 -0.78) '(\"ARCLIST\" 1.5 0.0 1 0 2 -1 1.0 2.0 -1.9)"
        " '(\"ARCRADIUS\" 6.0)");
    EXPECT_EQ(lisp("(vq_plumb-pipe-elbowList e)"),
              "((\"i\" . 0) (\"dLength\" . 5.0) (\"dAngle\" . 0.78) (\"i\" . 1) (\"dLength\" . 2.0) "
              "(\"dAngle\" . -0.78))");
    EXPECT_EQ(lisp("(vq_plumb-pipe-arcList e)"),
              "((\"i\" . 0) (\"dLength\" . 1.5) (\"dOffset\" . 0.0) (\"iNormal\" . 1) (\"i\" . 1) "
              "(\"dLength\" . 1.0) (\"dOffset\" . 2.0) (\"iNormal\" . -1))");
    EXPECT_EQ(lisp("(vq_plumb-getPipeElbowLength e)"), "9.0");
    set("'(\"ELBOWLIST\" \"odd\" 4.0 1.0)");
    EXPECT_EQ(data().elbows.size(), 1U);
    // An odd number of reals takes the end of its list with it, and the list behind it.
    set("'(\"ELBOWLIST\" 4.0 1.0 3.0) '(\"TAILOFFSET\" 8.0)");
    EXPECT_EQ(data().elbows.size(), 1U);
    EXPECT_EQ(data().dTailOffset, 0.0);
    set("'(\"ELBOWLIST\") '(\"ARCLIST\")");
    EXPECT_EQ(lisp("(list (vq_plumb-pipe-elbowList e) (vq_plumb-pipe-arcList e))"), "(nil nil)");
}

TEST_F(SetPipeInfo, LayersThatDoNotExist) {
    const AcDbObjectId layer = addLayer("HID");
    set("'(\"HIDDENLAYER\" \"HID\") '(\"TEXTLAYER\" \"HID\")");
    set("'(\"HIDDENLAYER\" \"none\") '(\"TEXTLAYER\" \"none\") '(\"TEXTSTYLE\" \"none\")");
    EXPECT_EQ(data().hiddenLayerId, layer);
    EXPECT_TRUE(data().textLayerId.isNull());
    set("'(\"TEXTLAYER\" \"HID\")");
    set("'(\"TEXTLAYER\" 5) '(\"HIDDENLAYER\" 5)");
    EXPECT_TRUE(data().textLayerId.isNull());
    EXPECT_EQ(data().hiddenLayerId, layer);
}

TEST_F(SetPipeInfo, ATrapFlagThatCannotBeReadIsOff) {
    set("'(\"PTRAP\" T) '(\"ISOMETRIC\" T)");
    EXPECT_TRUE(data().bPtrap && data().bIsometric);
    set("'(\"PTRAP\" (1 \"x\")) '(\"ISOMETRIC\" (1 \"x\"))");
    EXPECT_TRUE(!data().bPtrap && data().bIsometric);
}

TEST_F(SetPipeInfo, BreaksReplaceWhatWasThere) {
    EXPECT_EQ(lisp("(vq_plumb-setPipeBreaks e 4.0 '(\"run\" 5.0 5.0 3.0))"), "T");
    EXPECT_EQ(data().pipeBreaks, (BreakList{3.0, 5.0}));
    EXPECT_EQ(data().dBreakWidth, 4.0);
    set("");
    EXPECT_EQ(lisp("(vq_plumb-setPipeBreaks e)"), "error: ADS request error");
    EXPECT_EQ(data().pipeBreaks.size(), 2U) << "without a width nothing changes";
    set("");
    EXPECT_EQ(lisp("(vq_plumb-setPipeBreaks e 2.0 '(5.0 6.0 7.0 8.0))"), "error: ADS request error");
    EXPECT_TRUE(data().pipeBreaks.empty() && data().dBreakWidth == 2.0);
    set("");
    lisp("(vq_plumb-pipe-setPtrapLine2Breaks e '(\"x\" 1.0 2.0))");
    EXPECT_EQ(data().ptrapLine2Breaks, (BreakList{1.0, 2.0}));
    set("");
    EXPECT_EQ(lisp("(vq_plumb-pipe-setPtrapLine2Breaks e)"), "T");
    EXPECT_TRUE(data().ptrapLine2Breaks.empty());
}

TEST_F(SetPipeInfo, BreaksOfElementsGoByIndex) {
    set("'(\"ELBOWLIST\" 30.0 0.5 40.0 -0.5) '(\"ARCLIST\" 1.5 0.0 1)");
    EXPECT_EQ(lisp("(vq_plumb-pipe-setElbowBreaks e '((\"a\" 1 9.0 4.0) 5 (\"b\" 0 2.0)))"), "T");
    EXPECT_EQ(data().elbows[0].breaks, (BreakSlots{2.0}));
    EXPECT_EQ(data().elbows[1].breaks, (BreakSlots{4.0, 9.0}));
    set("");
    EXPECT_EQ(lisp("(vq_plumb-pipe-setElbowBreaks e '((\"a\" \"x\" 9.0)))"), "error: ADS request error");
    EXPECT_EQ(data().elbows[1].breaks, BreakSlots{}) << "cleared before the lists are read";
    set("");
    EXPECT_EQ(lisp("(vq_plumb-pipe-setArcBreaks e '((\"a\" 0 3.0)))"), "T");
    EXPECT_EQ(data().arcs[0].breaks, (BreakSlots{3.0}));
    set("");
    EXPECT_EQ(lisp("(vq_plumb-pipe-setArcBreaks e)"), "T");
    EXPECT_EQ(data().arcs[0].breaks, BreakSlots{});
    EXPECT_EQ(data().arcs.size(), 1U);
}
