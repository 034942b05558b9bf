#include "drawing/AcDbLayerTable.h"
#include "drawing/AcDbText.h"
#include "drawing/AcGiTextLook.h"
#include "graphics/NullSink.h"
#include "graphics/Recorder.h"
#include "platform/entities/BlockTest.h"

using namespace veldrin;
using namespace veldrin::testing;

namespace {

class DrawnBlocks : public BlockTest {
protected:
    AcDbObjectId addLayer(const char* name, std::int16_t color) {
        const AcDbObjectPointer<AcDbLayerTable> table(database.layerTableId(), AcDb::kForWrite);
        auto record = std::make_unique<AcDbLayerTableRecord>();
        record->setName(name);
        record->setColor(AcCmColor(color));
        AcDbObjectId id;
        EXPECT_EQ(table->add(id, record.get()), Acad::eOk);
        record.release()->close();
        return id;
    }

    const DisplayList& drawn(AcDbEntity& entity) {
        Recorder recorder(list);
        recorder.restart();
        drawEntity(entity, recorder);
        return list;
    }
    const DisplayList& drawn(AcDbObjectId id) {
        const AcDbObjectPointer<AcDbEntity> entity(id);
        return drawn(*entity);
    }

    std::unique_ptr<AcDbLine> styled(AcDbObjectId layer, int color) {
        auto made = line({0, 0, 0}, {1, 0, 0});
        made->setLayer(layer);
        made->setColorIndex(static_cast<Adesk::UInt16>(color));
        return made;
    }

    DisplayList list;
};

} // namespace

// Layer 0 and by block are the reference's; by layer is the part's own layer, even where that is by block
// through a reference that is by layer itself.
TEST_F(DrawnBlocks, PartsLookAsTheirReferenceSays) {
    constexpr int byBlock = AcCmColor::kByBlock, byLayer = AcCmColor::kByLayer;
    const AcDbObjectId zero = database.layerZero(), red = addLayer("RED", 1), blue = addLayer("BLUE", 5);
    struct Case {
        AcDbObjectId layer;
        int color;
        int referenceColor;
        AcDbObjectId shownLayer;
        int shownColor;
    };
    const Case cases[] = {
        {zero, byLayer, byLayer, blue, byLayer},
        {zero, byLayer, 3, blue, byLayer},
        {zero, byBlock, 3, blue, 3},
        {zero, byBlock, byLayer, blue, byLayer},
        {red, byBlock, 3, red, 3},
        {red, byBlock, byLayer, red, 5},
        {red, byLayer, 3, red, byLayer},
        {zero, 4, 3, blue, 4},
    };
    int number = 0;
    for (const Case& c : cases) {
        SCOPED_TRACE(number);
        const AcDbObjectId block = makeBlock("B" + std::to_string(number++), {}, styled(c.layer, c.color));
        auto placed = reference(block, {});
        placed->setLayer(blue);
        placed->setColorIndex(static_cast<Adesk::UInt16>(c.referenceColor));
        // The same through one more block, all of whose looks are handed on.
        auto middle = reference(block, {});
        middle->setLayer(zero);
        middle->setColorIndex(byBlock);
        const AcDbObjectId nest = makeBlock("N" + std::to_string(number), {}, std::move(middle));
        auto nested = reference(nest, {});
        nested->setPropertiesFrom(placed.get());
        for (AcDbEntity* entity :
             {static_cast<AcDbEntity*>(placed.get()), static_cast<AcDbEntity*>(nested.get())}) {
            ASSERT_EQ(drawn(*entity).size(), 1U);
            EXPECT_EQ(list.traits(0).layer, c.shownLayer);
            EXPECT_EQ(list.traits(0).color.colorIndex(), c.shownColor);
        }
    }
}

TEST_F(DrawnBlocks, LinetypesAndWeightsByBlockAndDashesGrow) {
    auto part = styled(database.layerZero(), 1);
    part->setLinetype(database.byBlockLinetype());
    part->setLineWeight(AcDb::kLnWtByBlock);
    part->setLinetypeScale(0.5);
    auto placed = reference(makeBlock("B", {}, std::move(part)), {}, {4, 4, 4});
    placed->setLayer(database.layerZero());
    placed->setLinetype(database.continuousLinetype());
    placed->setLineWeight(70);
    drawn(*placed);
    EXPECT_EQ(list.traits(0).linetype, database.continuousLinetype());
    EXPECT_EQ(list.traits(0).lineWeight, 70);
    EXPECT_DOUBLE_EQ(list.traits(0).linetypeScale, 2.0);
}

TEST_F(DrawnBlocks, CirclesStayCirclesUnlessTheyAreStretchedInTheirPlane) {
    const AcDbObjectId block =
        makeBlock("C", {}, std::make_unique<AcDbCircle>(AcGePoint3d(1, 0, 0), AcGeVector3d::kZAxis, 1.0),
                  std::make_unique<AcDbArc>(AcGePoint3d(), 2.0, 0.0, kPi / 2));
    drawn(*reference(block, {10, 0, 0}, {-3, 3, 1}));
    EXPECT_EQ(list.circle(0).radius, 3.0);
    expectPoint(list.circle(0).center, {7, 0, 0});
    EXPECT_NEAR(list.arc(1).sweep * list.arc(1).normal.z, -kPi / 2, 1.0e-12); // mirrored: runs clockwise
    expectPoint(list.arc(1).startPoint(), {4, 0, 0});
    drawn(*reference(block, {}, {2, 1, 1}));
    ASSERT_EQ(list.kind(0), PrimitiveKind::kPolyline);
    for (const AcGePoint3d& p : list.points(0)) // ((x - 2) / 2)^2 + y^2 = 1
        EXPECT_NEAR((p.x - 2) * (p.x - 2) / 4 + p.y * p.y, 1.0, 1.0e-9);
}

TEST_F(DrawnBlocks, AttributesShowTheirTextAndDefinitionsOnlyAConstantOne) {
    auto asked = std::make_unique<AcDbAttributeDefinition>();
    asked->setTag("ASKED");
    auto constant = std::make_unique<AcDbAttributeDefinition>();
    constant->setTag("CONSTANT");
    constant->setConstant(true);
    constant->setTextString("always");
    constant->setPosition({1, 0, 0});
    const AcDbObjectId id =
        add(reference(makeBlock("B", {}, std::move(asked), std::move(constant)), {10, 0, 0}));
    addAttribute(id, "ASKED", "shown", {20, 0, 0});
    const AcDbObjectId hidden = addAttribute(id, "HIDDEN", "hidden", {30, 0, 0});
    {
        const AcDbObjectPointer<AcDbAttribute> attribute(hidden, AcDb::kForWrite);
        attribute->setInvisible(true);
    }
    ASSERT_EQ(drawn(id).size(), 2U);
    EXPECT_EQ(list.text(0).contents, "always");
    expectPoint(list.text(0).location, {11, 0, 0});
    EXPECT_EQ(list.text(1).contents, "shown");
    expectPoint(list.text(1).location, {20, 0, 0});
}

// The corners of a text's box go where the matrix sends them, whatever it does to the text.
TEST_F(DrawnBlocks, TextIsPlacedWithItsSlantAndSide) {
    const AcGeMatrix3d matrices[] = {
        AcGeMatrix3d::rotation(0.4, AcGeVector3d::kZAxis, {3, 1, 0}),
        AcGeMatrix3d::scaling(AcGeVector3d(3, 0.5, 1)) * AcGeMatrix3d::rotation(0.6, AcGeVector3d::kZAxis),
        AcGeMatrix3d::mirroring({2, 0, 0}, AcGeVector3d(1, 0.3, 0).normal()),
    };
    for (const AcGeMatrix3d& matrix : matrices)
        for (int turns = 0; turns < 4; ++turns) {
            AcGiText text;
            text.location = {5, 2, 0};
            text.direction = AcGeVector3d(1, 1, 0).normal();
            text.height = 2.0;
            text.contents = "LH";
            text.multiline = false;
            text.oblique = 0.2;
            text.backwards = (turns & 1) != 0;
            text.upsideDown = (turns & 2) != 0;
            AcGiText moved = text;
            transformText(moved, matrix);
            std::vector<AcGePoint3d> expected, actual;
            const auto gather = [](const AcGiText& from, std::vector<AcGePoint3d>& to) {
                layoutOf(from).strokes([&](std::span<const AcGePoint2d> stroke) {
                    for (const AcGePoint2d& p : stroke) to.push_back(placeOf(from, p));
                });
            };
            gather(text, expected);
            gather(moved, actual);
            for (AcGePoint3d& p : expected) p.transformBy(matrix);
            expectPoints(actual, expected);
        }
}

TEST_F(DrawnBlocks, WhatHoldsItselfOrIsNestedWithoutEndIsLeftOut) {
    const AcDbObjectId self = makeBlock("SELF", {}, line({0, 0, 0}, {1, 0, 0}));
    addTo(self, reference(self, {1, 0, 0}));
    EXPECT_EQ(drawn(*reference(self, {})).size(), 1U);

    AcDbObjectId chain = makeBlock("L0", {}, line({0, 0, 0}, {1, 0, 0}));
    for (int i = 1; i < 300; ++i)
        chain = makeBlock("L" + std::to_string(i), {}, line({0, 0, 0}, {1, 0, 0}), reference(chain, {}));
    EXPECT_LT(drawn(*reference(chain, {})).size(), 100U);

    // Ten references in each of ten blocks around each other would be 10^10 lines.
    AcDbObjectId many = makeBlock("M0", {}, line({0, 0, 0}, {1, 0, 0}));
    for (int i = 1; i <= 10; ++i) {
        const AcDbObjectId inner = many;
        many = makeBlock("M" + std::to_string(i), {});
        for (int k = 0; k < 10; ++k) addTo(many, reference(inner, {}));
    }
    NullSink sink;
    drawEntity(*reference(many, {}), sink);
    EXPECT_LT(sink.primitives(), 1'000'001U);
}
