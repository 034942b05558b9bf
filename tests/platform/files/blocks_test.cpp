#include "drawing/AcDbAttribute.h"
#include "drawing/AcDbBlockReference.h"
#include "drawing/AcDbPoint.h"
#include "drawing/AcDbPolyline.h"
#include "drawing/block_copies.h"
#include "platform/files/DrawingFileTest.h"

namespace veldrin::testing {

namespace {

// One of each, none at its defaults.
void fill(AcDbDatabase& drawing) {
    AcDbObjectId block;
    ASSERT_EQ(startBlock(drawing, "VALVE", {1, 2, 3}, block), Acad::eOk);
    const AcDbObjectPointer<AcDbBlockTableRecord> record(block, AcDb::kForWrite);
    const auto put = [&](AcDbObjectId& id, AcDbEntity* entity) {
        ASSERT_EQ(record->appendAcDbEntity(id, entity), Acad::eOk);
        entity->close();
    };
    AcDbObjectId id;
    auto* definition = new AcDbAttributeDefinition;
    definition->setTag("NO");
    definition->setPrompt("Number");
    definition->setPreset(true);
    put(id, definition);
    auto* polyline = new AcDbPolyline;
    polyline->addVertexAt(0, {0, 0}, 0.5, 1.0, 2.0);
    polyline->addVertexAt(1, {5, 0});
    polyline->setClosed(true);
    polyline->setElevation(4.0);
    put(id, polyline);
    put(id, new AcDbPoint({7, 8, 9}));
}

} // namespace

class BlockFiles : public DrawingFileTest {};

TEST_F(BlockFiles, BlocksAndTheirKinComeBackAsTheyWere) {
    AcDbDatabase drawing;
    fill(drawing);
    const AcDbObjectId block = AcDbObjectAccess::findRecord(drawing.blockTableId(), "VALVE");
    auto reference = std::make_unique<AcDbBlockReference>(AcGePoint3d(10, 20, 30), block);
    reference->setScaleFactors({2, -3, 4});
    reference->setRotation(0.5);
    const AcDbObjectId id = add(drawing, std::move(reference));
    AcDbObjectId attributeId;
    {
        const AcDbObjectPointer<AcDbBlockReference> opened(id, AcDb::kForWrite);
        AcDbObjectPointer<AcDbAttribute> attribute;
        attribute.acquire(new AcDbAttribute);
        attribute->setTag("NO");
        attribute->setInvisible(true);
        attribute->setTextString("17");
        attribute->setHeight(2.5);
        attribute->setOblique(0.2);
        attribute->setModes(AcDb::kTextRight, AcDb::kTextTop);
        attribute->mirrorInY(true);
        ASSERT_EQ(opened->appendAttribute(attributeId, attribute.object()), Acad::eOk);
    }
    ASSERT_EQ(save(drawing, path("a.vqd")), "");
    const auto opened = open(path("a.vqd"));
    ASSERT_TRUE(opened);
    EXPECT_EQ(contents(*opened), contents(drawing));

    // A further attribute and an erased reference are changes like any other.
    {
        const AcDbObjectPointer<AcDbBlockReference> again(id, AcDb::kForWrite);
        again->erase();
    }
    ASSERT_EQ(save(drawing, path("a.vqd")), "");
    const auto without = open(path("a.vqd"));
    ASSERT_TRUE(without);
    EXPECT_EQ(contents(*without), contents(drawing));
    EXPECT_EQ(ask(path("a.vqd"), "select count(*) from objects where handle = " + handleNumber(attributeId)),
              0);
}

} // namespace veldrin::testing
