#include "drawing/AcDbText.h"
#include "drawing/AcDbTextStyleTable.h"
#include "drawing/AcGiTextLook.h"
#include "graphics/Recorder.h"
#include "platform/entities/EntityTest.h"

using namespace veldrin;
using namespace veldrin::testing;

namespace {

// "15" is 40 font units wide, of which 21 are the height of a capital: 2.1 high it is 4 wide.
class Texts : public EntityTest {
protected:
    static std::unique_ptr<AcDbText> fifteen(const AcGePoint3d& at = {}) {
        return std::make_unique<AcDbText>(at, "15", 2.1);
    }
    static std::array<AcGePoint3d, 4> box(AcDbText& text) {
        DisplayList list;
        Recorder recorder(list);
        drawEntity(text, recorder);
        return cornersOf(list.text(0));
    }
};

} // namespace

TEST_F(Texts, StandAtTheirAlignmentPoint) {
    struct Case {
        AcDb::TextHorzMode horizontal;
        AcDb::TextVertMode vertical;
        AcGePoint3d position;
    };
    const Case cases[] = {
        {AcDb::kTextCenter, AcDb::kTextBase, {8, 10, 0}},
        {AcDb::kTextRight, AcDb::kTextBase, {6, 10, 0}},
        {AcDb::kTextMid, AcDb::kTextBase, {8, 8.95, 0}},
        {AcDb::kTextLeft, AcDb::kTextTop, {10, 7.9, 0}},
        {AcDb::kTextRight, AcDb::kTextVertMid, {6, 8.95, 0}},
        {AcDb::kTextLeft, AcDb::kTextBottom, {10, 10.7, 0}},
    };
    for (const Case& c : cases) {
        const auto text = fifteen({10, 10, 0});
        ASSERT_EQ(text->setModes(c.horizontal, c.vertical), Acad::eOk);
        expectPoint(text->position(), c.position);
    }
    const auto text = fifteen({10, 10, 0});
    text->setModes(AcDb::kTextRight, AcDb::kTextBase);
    text->setRotation(kPi / 2);
    expectPoint(text->position(), {10, 6, 0});
    text->setTextString("1515");
    expectPoint(text->position(), {10, 2, 0});
}

TEST_F(Texts, BetweenTwoPointsTakeHeightOrWidthFromThem) {
    const auto aligned = fifteen();
    aligned->setModes(AcDb::kTextAlign, AcDb::kTextBase);
    aligned->setAlignmentPoint({0, 8, 0});
    EXPECT_NEAR(aligned->height(), 4.2, 1.0e-9);
    EXPECT_NEAR(aligned->rotation(), kPi / 2, 1.0e-9);
    const auto fitted = fifteen();
    fitted->setModes(AcDb::kTextFit, AcDb::kTextBase);
    fitted->setAlignmentPoint({12, 0, 0});
    EXPECT_NEAR(fitted->height(), 2.1, 1.0e-9);
    EXPECT_NEAR(fitted->widthFactor(), 3.0, 1.0e-9);
    ASSERT_EQ(fitted->moveGripPointsAt({1}, {-4, 0, 0}), Acad::eOk);
    EXPECT_NEAR(fitted->widthFactor(), 2.0, 1.0e-9);
}

TEST_F(Texts, BackwardsAndUpsideDownTurnTheBox) {
    const auto text = fifteen({10, 10, 0});
    text->mirrorInX(true);
    expectPoint(box(*text)[2], {6, 12.1, 0});
    text->mirrorInY(true);
    expectPoint(box(*text)[2], {6, 7.9, 0});
    text->setModes(AcDb::kTextRight, AcDb::kTextTop);
    expectPoint(text->position(), {14, 12.1, 0});
}

// Mirrored at x = 20, the box from 10 to 14 lies from 26 to 30.
TEST_F(Texts, MirroringKeepsThemReadableWhereTheDrawingSaysSo) {
    const AcGeMatrix3d mirror = AcGeMatrix3d::mirroring({20, 0, 0}, AcGeVector3d::kXAxis);
    for (const AcDb::TextHorzMode mode : {AcDb::kTextLeft, AcDb::kTextRight, AcDb::kTextCenter}) {
        const AcDbObjectId id = add(fifteen({10, 10, 0}));
        const AcDbObjectPointer<AcDbText> text(id, AcDb::kForWrite);
        text->setModes(mode, AcDb::kTextBase);
        const double left = text->position().x;
        ASSERT_EQ(text->transformBy(mirror), Acad::eOk);
        EXPECT_FALSE(text->isMirroredInX());
        EXPECT_EQ(text->rotation(), 0.0);
        expectPoint(text->position(), {40 - left - 4, 10, 0});
    }
    HeaderVariables header = database.header();
    header.mirrtext = 1;
    database.setHeader(header);
    const AcDbObjectId id = add(fifteen({10, 10, 0}));
    const AcDbObjectPointer<AcDbText> text(id, AcDb::kForWrite);
    ASSERT_EQ(text->transformBy(mirror), Acad::eOk);
    EXPECT_TRUE(text->isMirroredInX());
    expectPoint(text->position(), {30, 10, 0});
    expectPoint(box(*text)[2], {26, 12.1, 0});
    ASSERT_EQ(text->transformBy(AcGeMatrix3d::mirroring({0, 10, 0}, AcGeVector3d::kYAxis)), Acad::eOk);
    EXPECT_TRUE(text->isMirroredInY());
    expectPoint(box(*text)[2], {26, 7.9, 0});
}

TEST_F(Texts, TakeTheLookOfTheirStyle) {
    AcDbObjectId style;
    {
        const AcDbObjectPointer<AcDbTextStyleTable> table(database.textStyleTableId(), AcDb::kForWrite);
        AcDbObjectPointer<AcDbTextStyleTableRecord> record;
        record.create();
        record->setName("NARROW");
        record->setXScale(0.5);
        record->setTextSize(4.2);
        record->setIsUpsideDown(true);
        ASSERT_EQ(table->add(style, record.object()), Acad::eOk);
    }
    const auto text = fifteen();
    ASSERT_EQ(text->setTextStyle(style), Acad::eOk);
    EXPECT_EQ(text->height(), 2.1);
    ASSERT_EQ(text->takeStyleLook(), Acad::eOk);
    expectPoint(box(*text)[2], {4, -4.2, 0});
    EXPECT_EQ(text->setTextStyle(database.layerZero()), Acad::eNotThatKindOfClass);
}
