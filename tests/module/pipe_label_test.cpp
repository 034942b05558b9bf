#include "module/ModuleTest.h"
#include "pipe/PipePicture.h"

#include <cmath>

using namespace plumb;

// What a text takes up is the host's; the tests take its measures and expect what follows from them.
class PipeLabel : public ModuleTest {
protected:
    PipeLabel() {
        setEnds(pipe, {0, 0, 0}, {100, 0, 0});
        pipe.edit().sText = "CW";
        pipe.labelText().setTextHeight(3.0);
        const LabelFit fit = fitLabel(pipe);
        w = fit.width;
        h = fit.height;
    }
    void turn(double degrees) {
        setEnds(pipe, {0, 0, 0}, PolarPoint(AcGePoint3d(), degrees * kPi / 180.0, 100.0));
    }
    double rotationAt(double degrees) {
        turn(degrees);
        return fitLabel(pipe).rotation * 180.0 / kPi;
    }

    PlumbPipe pipe;
    double w = 0.0;
    double h = 0.0;
};

TEST_F(PipeLabel, TheLineStopsAtTheShortSidesOfTheBox) {
    ASSERT_GT(w, 0.0);
    for (const double degrees : {0.0, 37.0, 90.0, 123.0, 200.0, 300.0}) {
        turn(degrees);
        EXPECT_NEAR(pipe.labelHalfGap(), (w + h) / 2.0, 1e-6) << degrees;
    }
    turn(45.0);
    pipe.edit().bTextAngleIs0 = true;
    const double halfWidth = (w + h) / 2.0;
    const double expected = halfWidth < h ? halfWidth / std::cos(kPi / 4) : h / std::sin(kPi / 4);
    EXPECT_NEAR(pipe.labelHalfGap(), expected, 1e-6) << "the box stands square to the sheet";
    pipe.edit().sText.clear();
    EXPECT_EQ(pipe.labelHalfGap(), 0.0);
}

TEST_F(PipeLabel, ReadsUpright) {
    EXPECT_NEAR(rotationAt(90.0), 90.0, 1e-6);
    EXPECT_NEAR(rotationAt(91.0), 271.0, 1e-6);
    EXPECT_NEAR(std::remainder(rotationAt(180.0), 360.0), 0.0, 1e-5);
    EXPECT_NEAR(rotationAt(270.5), 270.5, 1e-6);
    EXPECT_NEAR(rotationAt(30.0), 30.0, 1e-6);
}

TEST_F(PipeLabel, RepeatsAtItsSpacingCentredOnThePiece) {
    const double g = (w + h) / 2.0;
    pipe.edit().dTextDistance = 30.0;
    const auto x = [](double value) { return numberText(value) + ",0,0"; };
    const auto text = [&](double center) {
        return "text " + pointText({center - w / 2.0, h / 2.0, 100000.0}) + " 0 CW";
    };
    EXPECT_EQ(pictureOf(pipe),
              (Lines{text(20), "line 0,0,0 " + x(20 - g), text(50), "line " + x(20 + g) + " " + x(50 - g),
                     text(80), "line " + x(50 + g) + " " + x(80 - g), "line " + x(80 + g) + " 100,0,0"}));
    for (const double spacing : {0.0, 1000.0, -5.0, 1e-9, std::nan("")}) {
        pipe.edit().dTextDistance = spacing;
        EXPECT_EQ(pictureOf(pipe),
                  (Lines{text(50), "line 0,0,0 " + x(50 - g), "line " + x(50 + g) + " 100,0,0"}))
            << spacing;
    }
}

TEST_F(PipeLabel, AShortPieceHasNone) {
    setEnds(pipe, {0, 0, 0}, {w + h - 0.001, 0, 0});
    EXPECT_EQ(pictureOf(pipe).size(), 1U);
    setEnds(pipe, {0, 0, 0}, {w + h + 0.001, 0, 0});
    EXPECT_EQ(pictureOf(pipe).size(), 3U);
}

TEST_F(PipeLabel, EachPieceBetweenBreaksAndTicksGetsItsOwn) {
    pipe.edit().pipeBreaks = {40.0};
    EXPECT_EQ(pictureOf(pipe).size(), 6U);
    pipe.edit().pipeBreaks.clear();
    pipe.edit().dTickWidth = 2.0;
    pipe.edit().dTickOffsetHead = 20.0;
    EXPECT_EQ(pictureOf(pipe)[2], "text " + pointText({60 - w / 2.0, h / 2.0, 100000.0}) + " 0 CW");
}

TEST_F(PipeLabel, LiesAlongThePipeInEveryUserSystem) {
    turn(45.0);
    const Lines inWorld = pictureOf(pipe);
    for (const char* angle : {"30", "200"}) {
        lisp(std::string("(command \"UCS\" \"Z\" ") + angle + ")");
        EXPECT_EQ(pictureOf(pipe), inWorld) << angle;
        lisp("(command \"UCS\" \"W\")");
    }
    pipe.edit().bTextAngleIs0 = true;
    lisp("(command \"UCS\" \"Z\" 30)");
    EXPECT_NEAR(fitLabel(pipe).rotation, 0.0, 1e-6) << "angle 0 is that of the world";
    lisp("(command \"UCS\" \"W\")");
}

// The label goes on its own layer by layer's colour, and the traits come back.
TEST_F(PipeLabel, IsDrawnOnItsLayer) {
    pipe.edit().textLayerId = addLayer("TXT");
    pipe.setColorIndex(3);
    veldrin::DisplayList list;
    veldrin::Recorder recorder(list);
    veldrin::drawEntity(pipe, recorder);
    ASSERT_EQ(list.size(), 3U);
    EXPECT_EQ(list.traits(0).layer, pipe.data().textLayerId);
    EXPECT_TRUE(list.traits(0).color.isByLayer());
    EXPECT_EQ(list.traits(1).layer, pipe.layerId());
    EXPECT_EQ(list.traits(1).color.colorIndex(), 3);
}
