#include "platform/entities/BlockTest.h"

#include "drawing/AcDbLayerTable.h"
#include "drawing/AcDbObjectAccess.h"
#include "drawing/AcDbPolyline.h"
#include "drawing/AcDbText.h"

#include <cmath>

using namespace veldrin;
using namespace veldrin::testing;

namespace {

class Blocks : public BlockTest {
protected:
    AcDbObjectId addLayer(AcDbDatabase& target, const char* name, std::int16_t color) {
        const AcDbObjectPointer<AcDbLayerTable> table(target.layerTableId(), AcDb::kForWrite);
        auto record = std::make_unique<AcDbLayerTableRecord>();
        record->setName(name);
        record->setColor(AcCmColor(color));
        AcDbObjectId id;
        EXPECT_EQ(table->add(id, record.get()), Acad::eOk);
        record.release()->close();
        return id;
    }
};

void expectSameMatrix(const AcGeMatrix3d& actual, const AcGeMatrix3d& expected) {
    for (int row = 0; row < 4; ++row)
        for (int column = 0; column < 4; ++column)
            EXPECT_NEAR(actual.entry[row][column], expected.entry[row][column], 1.0e-9)
                << row << "," << column;
}

} // namespace

// (12 1), two right of and one above the base, doubled: (4 2), a quarter left: (-2 4), beside (100 50).
TEST_F(Blocks, AReferencePlacesTheBlockByItsBasePoint) {
    const AcDbObjectId block = makeBlock("B", {10, 0, 0}, line({12, 1, 0}, {12, 5, 0}));
    const auto placed = reference(block, {100, 50, 0}, {2, 2, 2}, kPi / 2);
    expectPoint(AcGePoint3d(12, 1, 0).transformBy(placed->blockTransform()), {98, 54, 0});
    EXPECT_EQ(reference(block, {}, {})->setScaleFactors({1, 0, 1}), Acad::eInvalidInput);
}

// What position, factors, rotation and normal can express is expressed; the rest is refused and changes
// nothing.
TEST_F(Blocks, TransformsBecomeFactorsAndRotation) {
    const AcDbObjectId block = makeBlock("B", {1, 2, 0}, line({0, 0, 0}, {1, 0, 0}));
    const AcGeMatrix3d matrices[] = {
        AcGeMatrix3d::rotation(0.3, AcGeVector3d::kZAxis, {5, 5, 0}),
        AcGeMatrix3d::scaling(3.0, {1, 0, 0}),
        AcGeMatrix3d::mirroring({4, 0, 0}, AcGeVector3d::kXAxis),
        AcGeMatrix3d::mirroring({0, 4, 0}, AcGeVector3d::kYAxis),
        AcGeMatrix3d::rotation(kPi / 2, AcGeVector3d::kXAxis),
        AcGeMatrix3d::mirroring({0, 0, 0}, AcGeVector3d(1, 1, 0).normal()),
    };
    for (const AcGeMatrix3d& matrix : matrices) {
        const auto placed = reference(block, {7, 3, 1}, {2, -1, 0.5}, 0.7);
        const AcGeMatrix3d expected = matrix * placed->blockTransform();
        ASSERT_EQ(placed->transformBy(matrix), Acad::eOk);
        expectSameMatrix(placed->blockTransform(), expected);
    }
    const auto mirrored = reference(block, {10, 0, 0});
    mirrored->transformBy(matrices[2]);
    EXPECT_EQ(mirrored->scaleFactors().sx, -1.0);
    EXPECT_EQ(mirrored->rotation(), 0.0);

    const auto turned = reference(block, {}, {}, 0.5);
    const AcGeMatrix3d before = turned->blockTransform();
    EXPECT_EQ(turned->transformBy(AcGeMatrix3d::scaling(AcGeVector3d(2, 1, 1))),
              Acad::eCannotScaleNonUniformly);
    expectSameMatrix(turned->blockTransform(), before);
}

TEST_F(Blocks, AttributesComeGoAndMoveWithTheirReference) {
    const AcDbObjectId block = makeBlock("B", {}, line({0, 0, 0}, {1, 0, 0}));
    const AcDbObjectId id = add(reference(block, {10, 10, 0}));
    const AcDbObjectId attribute = addAttribute(id, "no", "17", {11, 10, 0});
    AcDbObjectId end;
    {
        const AcDbObjectPointer<AcDbBlockReference> opened(id, AcDb::kForWrite);
        EXPECT_EQ(opened->attributeIds(), std::vector{attribute});
        end = opened->sequenceEndId();
        ASSERT_EQ(opened->transformBy(AcGeMatrix3d::rotation(kPi / 2, AcGeVector3d::kZAxis, {10, 10, 0})),
                  Acad::eOk);
        opened->erase();
    }
    EXPECT_TRUE(attribute.isErased());
    EXPECT_TRUE(end.isErased());
    {
        const AcDbObjectPointer<AcDbBlockReference> opened(id, AcDb::kForWrite, true);
        opened->erase(false);
    }
    const AcDbObjectPointer<AcDbAttribute> back(attribute, AcDb::kForWrite);
    ASSERT_EQ(back.openStatus(), Acad::eOk);
    EXPECT_EQ(back->tag(), "NO");
    expectPoint(back->position(), {10, 11, 0});
    EXPECT_NEAR(back->rotation(), kPi / 2, 1.0e-9);
    EXPECT_EQ(back->erase(), Acad::eNotApplicable);
}

TEST_F(Blocks, ExtentsAndIntersectionsAreThoseOfTheParts) {
    const AcDbObjectId inner =
        makeBlock("IN", {}, std::make_unique<AcDbCircle>(AcGePoint3d(1, 0, 0), AcGeVector3d::kZAxis, 1.0));
    const AcDbObjectId outer = makeBlock("OUT", {}, reference(inner, {10, 0, 0}, {2, 2, 2}, kPi));
    // The circle's centre: (1 0) turned round and doubled (-2 0), from (10 0): (8 0), then up by 100.
    const AcDbObjectId id = add(reference(outer, {0, 100, 0}));
    const AcDbObjectPointer<AcDbBlockReference> placed(id);
    AcDbExtents box;
    ASSERT_EQ(placed->getGeomExtents(box), Acad::eOk);
    expectPoint(box.minPoint(), {6, 98, 0});
    expectPoint(box.maxPoint(), {10, 102, 0});
    const AcDbLine across({0, 100, 0}, {20, 100, 0});
    for (const bool fromReference : {true, false}) {
        AcGePoint3dArray points;
        const AcDbEntity& first = fromReference ? static_cast<const AcDbEntity&>(*placed) : across;
        const AcDbEntity& second = fromReference ? static_cast<const AcDbEntity&>(across) : *placed;
        ASSERT_EQ(first.intersectWith(&second, AcDb::kOnBothOperands, points), Acad::eOk);
        ASSERT_EQ(points.size(), 2U);
        EXPECT_NEAR(points[0].x + points[1].x, 16.0, 1.0e-9);
    }
    AcGePoint3dArray centers;
    AcGeIntArray ids;
    placed->getOsnapPoints(AcDb::kOsModeCen, 0, {}, {}, {}, centers, ids);
    expectPoints(centers, {{8, 100, 0}});
}

TEST_F(Blocks, ExplodingLeavesThePartsWithWhatWasByBlock) {
    auto byBlock = line({0, 0, 0}, {1, 0, 0});
    byBlock->setColorIndex(AcCmColor::kByBlock);
    byBlock->setLinetype(database.byBlockLinetype());
    byBlock->setLineWeight(AcDb::kLnWtByBlock);
    auto own = std::make_unique<AcDbCircle>(AcGePoint3d(), AcGeVector3d::kZAxis, 1.0);
    own->setColorIndex(5);
    auto definition = std::make_unique<AcDbAttributeDefinition>();
    definition->setTag("NO");
    const AcDbObjectId block = makeBlock("B", {}, std::move(byBlock), std::move(own), std::move(definition));
    auto placed = reference(block, {10, 0, 0}, {2, 1, 1});
    placed->setColorIndex(3);
    placed->setLinetype(database.continuousLinetype());
    placed->setLineWeight(50);
    const AcDbObjectId id = add(std::move(placed));
    addAttribute(id, "NO", "17", {});
    const std::size_t before = inModelSpace().size();
    {
        const AcDbObjectPointer<AcDbBlockReference> opened(id);
        ASSERT_EQ(opened->explodeToOwnerSpace(), Acad::eOk);
    }
    const std::vector<AcDbObjectId> all = inModelSpace();
    ASSERT_EQ(all.size(), before + 3);
    const AcDbObjectPointer<AcDbLine> part(all[before]);
    ASSERT_TRUE(part);
    expectPoint(part->endPoint(), {12, 0, 0});
    EXPECT_EQ(part->colorIndex(), 3);
    EXPECT_EQ(part->linetypeId(), database.continuousLinetype());
    EXPECT_EQ(part->lineWeight(), 50);
    EXPECT_TRUE(AcDbObjectPointer<AcDbAttributeDefinition>(all[before + 1]));
    // A circle cannot be twice as wide as high, so chords stand for it.
    const AcDbObjectPointer<AcDbPolyline> chords(all[before + 2]);
    ASSERT_TRUE(chords);
    EXPECT_TRUE(chords->isClosed());
    EXPECT_EQ(chords->colorIndex(), 5);
    AcDbExtents box;
    chords->getGeomExtents(box);
    expectPoint(box.maxPoint(), {12, 1, 0});
}

// The copy shows a block of the other drawing: one of the name that is there stays as it is, one that is not
// comes along with the layers that its entities are on. Attributes come in any case.
TEST_F(Blocks, CopiesInAnotherDrawingBringWhatIsMissing) {
    const AcDbObjectId layer = addLayer(database, "WATER", 5);
    auto part = line({0, 0, 0}, {7, 0, 0});
    part->setLayer(layer);
    const AcDbObjectId missing = makeBlock("MISSING", {1, 0, 0}, std::move(part));
    const AcDbObjectId known = makeBlock("KNOWN", {}, line({0, 0, 0}, {7, 0, 0}));
    const AcDbObjectId unnamed = makeBlock("*U1", {}, line({0, 0, 0}, {7, 0, 0}));
    std::vector<AcDbObjectId> ids;
    for (const AcDbObjectId block : {missing, known, unnamed}) ids.push_back(add(reference(block, {})));
    addAttribute(ids[0], "NO", "17", {3, 0, 0});

    AcDbDatabase target;
    AcDbObjectId block;
    ASSERT_EQ(startBlock(target, "known", {}, block), Acad::eOk);
    ASSERT_EQ(startBlock(target, "*U1", {}, block), Acad::eOk);
    AcDbIdMapping mapping;
    ASSERT_EQ(database.deepCloneObjects(ids, target.modelSpaceId(), mapping), Acad::eOk);
    const auto shown = [&](std::size_t i) {
        const AcDbObjectPointer<AcDbBlockReference> copy(mapping.find(ids[i]));
        return AcDbObjectPointer<AcDbBlockTableRecord>(copy->blockTableRecord());
    };
    EXPECT_EQ(shown(0)->getName(), "MISSING");
    expectPoint(shown(0)->origin(), {1, 0, 0});
    ASSERT_EQ(shown(0)->entityIds().size(), 1U);
    const AcDbObjectPointer<AcDbLine> copied(shown(0)->entityIds().front());
    EXPECT_EQ(copied->layer(), "WATER");
    EXPECT_EQ(copied->layerId().database(), &target);
    EXPECT_FALSE(shown(0)->beginId().isErased());
    EXPECT_TRUE(shown(1)->entityIds().empty());
    EXPECT_EQ(shown(2)->getName(), "*U2");
    const AcDbObjectPointer<AcDbBlockReference> first(mapping.find(ids[0]));
    ASSERT_EQ(first->attributeIds().size(), 1U);
    const AcDbObjectPointer<AcDbAttribute> attribute(first->attributeIds().front());
    EXPECT_EQ(attribute->textString(), "17");
    EXPECT_EQ(attribute->ownerId(), first->objectId());
}

TEST_F(Blocks, ABlockNeverHoldsItself) {
    AcDbDatabase source;
    AcDbObjectId inner, outer;
    ASSERT_EQ(startBlock(source, "A", {}, inner), Acad::eOk);
    {
        const AcDbObjectPointer<AcDbBlockTableRecord> space(source.modelSpaceId(), AcDb::kForWrite);
        AcDbObjectPointer<AcDbBlockReference> placed;
        placed.acquire(new AcDbBlockReference({}, inner));
        ASSERT_EQ(space->appendAcDbEntity(placed.object()), Acad::eOk);
    }
    AcDbObjectId block;
    EXPECT_EQ(insertDrawing(database, "a", source, block), Acad::eInvalidInput);
    EXPECT_EQ(insertDrawing(database, "B", source, block), Acad::eOk);
    // Now B shows A here, so a drawing that shows B cannot become A.
    ASSERT_EQ(startBlock(source, "B", {}, outer), Acad::eOk);
    {
        const AcDbObjectPointer<AcDbBlockTableRecord> space(source.modelSpaceId(), AcDb::kForWrite);
        AcDbObjectPointer<AcDbBlockReference> placed;
        placed.acquire(new AcDbBlockReference({}, outer));
        ASSERT_EQ(space->appendAcDbEntity(placed.object()), Acad::eOk);
    }
    EXPECT_EQ(insertDrawing(database, "A", source, block), Acad::eInvalidInput);
}
