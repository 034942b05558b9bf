#include "platform/drawing/Drawing.h"

#include "drawing/AcDbDictionary.h"
#include "drawing/AcDbLinetypeTable.h"
#include "drawing/AcDbObjectAccess.h"
#include "drawing/AcDbProxyEntity.h"
#include "drawing/AcDbRegAppTable.h"
#include "platform/drawing/TestPart.h"

namespace veldrin::tests {
namespace {

class Cloning : public Drawing {
protected:
    AcDbObjectId addPart(AcDbObjectId layer) {
        auto* part = new TestPart;
        part->layerOfNote = layer;
        part->size = 3.0;
        return append(db, part);
    }
    TestPartClass partClass;
    AcDbIdMapping mapping;
};

TEST_F(Cloning, ACopyInTheSameDrawingKeepsItsPointersAndOwnsItsOwn) {
    const AcDbObjectId layer = addLayer("Notes");
    const AcDbObjectId part = addPart(layer);
    AcDbObjectId entry;
    {
        AcDbObjectPointer<TestPart> open(part, AcDb::kForWrite);
        ASSERT_EQ(open->createExtensionDictionary(), Acad::eOk);
        AcDbObjectPointer<AcDbDictionary> dictionary(open->extensionDictionary(), AcDb::kForWrite);
        auto* record = new AcDbXrecord;
        ASSERT_EQ(dictionary->setAt("Key", record, entry), Acad::eOk);
        record->close();
    }
    ASSERT_EQ(db.deepCloneObjects({part}, db.modelSpaceId(), mapping), Acad::eOk);
    const AcDbObjectPointer<TestPart> copy(mapping.find(part));
    ASSERT_EQ(copy.openStatus(), Acad::eOk);
    EXPECT_EQ(copy->size, 3.0);
    EXPECT_EQ(copy->layerOfNote, layer);
    EXPECT_EQ(copy->ownerId(), db.modelSpaceId());
    const AcDbObjectPointer<AcDbDictionary> dictionary(copy->extensionDictionary());
    ASSERT_EQ(dictionary.openStatus(), Acad::eOk);
    EXPECT_EQ(dictionary->ownerId(), mapping.find(part));
    AcDbObjectId copiedEntry;
    EXPECT_EQ(dictionary->getAt("Key", copiedEntry), Acad::eOk);
    EXPECT_EQ(copiedEntry, mapping.find(entry));
    EXPECT_NE(copiedEntry, entry);
    const AcDbObjectPointer<AcDbBlockTableRecord> space(db.modelSpaceId());
    EXPECT_EQ(space->entityIds(), (std::vector{part, mapping.find(part)}));
}

TEST_F(Cloning, InAnotherDrawingNamesDecideAndTheTargetsDefinitionWins) {
    const AcDbObjectId known = addLayer("Known", 1);
    const AcDbObjectId missing = addLayer("Missing", 2);
    {
        AcDbObjectPointer<AcDbLinetypeTable> table(db.linetypeTableId(), AcDb::kForWrite);
        auto* dashed = new AcDbLinetypeTableRecord;
        dashed->setName("Dashed");
        dashed->setDashes({1.0, -0.5});
        AcDbObjectId id;
        ASSERT_EQ(table->add(id, dashed), Acad::eOk);
        dashed->close();
        AcDbObjectPointer<AcDbLayerTableRecord>(missing, AcDb::kForWrite)->setLinetypeObjectId(id);
        AcDbObjectPointer<AcDbRegAppTable> applications(db.regAppTableId(), AcDb::kForWrite);
        auto* application = new AcDbRegAppTableRecord;
        application->setName("Mine");
        ASSERT_EQ(applications->add(application), Acad::eOk);
        application->close();
    }
    const AcDbObjectId part = addPart(missing);
    {
        AcDbObjectPointer<TestPart> open(part, AcDb::kForWrite);
        open->setLayer(known);
        const ResbufPtr data(acutBuildList(1001, "Mine", 1000, "x", 0));
        ASSERT_EQ(open->setXData(data.get()), Acad::eOk);
    }
    AcDbDatabase target;
    const AcDbObjectId there = addLayer(target, "KNOWN", 6);
    ASSERT_EQ(db.deepCloneObjects({part}, target.modelSpaceId(), mapping), Acad::eOk);

    const AcDbObjectPointer<TestPart> copy(mapping.find(part));
    EXPECT_EQ(copy->database(), &target);
    EXPECT_EQ(copy->layerId(), there);
    EXPECT_EQ(AcDbObjectPointer<AcDbLayerTableRecord>(there)->color().colorIndex(), 6);
    const AcDbObjectPointer<AcDbLayerTableRecord> brought(copy->layerOfNote);
    ASSERT_EQ(brought.openStatus(), Acad::eOk);
    EXPECT_EQ(brought->database(), &target);
    EXPECT_EQ(brought->getName(), "Missing");
    EXPECT_EQ(AcDbObjectAccess::findRecord(target.layerTableId(), "Missing"), copy->layerOfNote);
    const AcDbObjectPointer<AcDbLinetypeTableRecord> linetype(brought->linetypeObjectId());
    ASSERT_EQ(linetype.openStatus(), Acad::eOk);
    EXPECT_EQ(linetype->database(), &target);
    EXPECT_EQ(linetype->dashes().size(), 2U);
    EXPECT_FALSE(AcDbObjectAccess::findRecord(target.regAppTableId(), "Mine").isNull());
}

TEST_F(Cloning, ABlockComesWithItsEntitiesAndAClashIsRefused) {
    AcDbObjectId block, line;
    {
        AcDbObjectPointer<AcDbBlockTable> table(db.blockTableId(), AcDb::kForWrite);
        auto* record = new AcDbBlockTableRecord;
        record->setName("Sink");
        ASSERT_EQ(table->add(block, record), Acad::eOk);
        auto* entity = new AcDbLine({0.0, 0.0, 0.0}, {4.0, 0.0, 0.0});
        ASSERT_EQ(record->appendAcDbEntity(line, entity), Acad::eOk);
        entity->close();
        record->close();
    }
    AcDbDatabase target;
    ASSERT_EQ(db.deepCloneObjects({block}, target.blockTableId(), mapping), Acad::eOk);
    const AcDbObjectPointer<AcDbBlockTableRecord> copy(mapping.find(block));
    EXPECT_EQ(copy->entityIds(), std::vector{mapping.find(line)});
    EXPECT_EQ(lengthOf(mapping.find(line)), 4.0);
    EXPECT_EQ(AcDbObjectPointer<AcDbLine>(mapping.find(line))->ownerId(), mapping.find(block));
    AcDbIdMapping again;
    EXPECT_EQ(db.deepCloneObjects({block}, target.blockTableId(), again), Acad::eDuplicateRecordName);
    EXPECT_EQ(db.deepCloneObjects({line}, target.layerTableId(), again), Acad::eInvalidInput);
    EXPECT_TRUE(again.pairs().empty());
}

TEST_F(Cloning, WhenOneCopyFailsThereAreNone) {
    const AcDbObjectId line = addLine();
    const AcDbObjectId part = addPart({});
    { AcDbObjectPointer<TestPart>(part, AcDb::kForWrite)->version = TestPart::kVersion + 1; }
    EXPECT_EQ(db.deepCloneObjects({line, part}, db.modelSpaceId(), mapping), Acad::eMakeMeProxy);
    EXPECT_TRUE(mapping.pairs().empty());
    const AcDbObjectPointer<AcDbBlockTableRecord> space(db.modelSpaceId());
    EXPECT_EQ(space->entityIds(), (std::vector{line, part}));
}

TEST_F(Cloning, ACloneIsInNoDrawing) {
    const AcDbObjectId part = addPart(addLayer("Notes"));
    const AcDbObjectPointer<TestPart> original(part);
    const std::unique_ptr<AcDbObject> copy(original->clone());
    ASSERT_NE(copy, nullptr);
    EXPECT_TRUE(copy->objectId().isNull());
    EXPECT_TRUE(copy->ownerId().isNull());
    EXPECT_EQ(static_cast<TestPart*>(copy.get())->layerOfNote, original->layerOfNote);
}

} // namespace
} // namespace veldrin::tests
