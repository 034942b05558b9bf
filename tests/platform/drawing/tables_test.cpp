#include "platform/drawing/Drawing.h"

#include "drawing/AcDbDictionary.h"
#include "drawing/AcDbLinetypeTable.h"
#include "drawing/AcDbObjectAccess.h"

namespace veldrin::tests {
namespace {

class Tables : public Drawing {
protected:
    Acad::ErrorStatus tryAdd(const std::string& name) {
        AcDbObjectPointer<AcDbLayerTable> table(db.layerTableId(), AcDb::kForWrite);
        AcDbObjectPointer<AcDbLayerTableRecord> layer;
        layer.create();
        const Acad::ErrorStatus named = layer->setName(name);
        return named == Acad::eOk ? table->add(layer.object()) : named;
    }
    AcDbObjectId find(const std::string& name) {
        return AcDbObjectAccess::findRecord(db.layerTableId(), name);
    }
    Acad::ErrorStatus rename(AcDbObjectId id, const std::string& name) {
        return AcDbObjectPointer<AcDbLayerTableRecord>(id, AcDb::kForWrite)->setName(name);
    }
};

TEST_F(Tables, NamesDifferInMoreThanCase) {
    const AcDbObjectId id = addLayer("Sanitary");
    EXPECT_EQ(tryAdd("SANITARY"), Acad::eDuplicateRecordName);
    EXPECT_EQ(find("sanitary"), id);
    EXPECT_EQ(tryAdd("Größe"), Acad::eOk);
    EXPECT_EQ(tryAdd("GRÖßE"), Acad::eOk) << "only A to Z have a case here";
    for (const char* wrong : {"", "a|b", "a<b", "tab\t", "a*"})
        EXPECT_EQ(tryAdd(wrong), Acad::eInvalidName) << wrong;
    EXPECT_EQ(rename(id, "0"), Acad::eDuplicateRecordName);
    EXPECT_EQ(rename(id, "SANITARY"), Acad::eOk) << "its own name in another case";
    EXPECT_EQ(rename(id, "Vent"), Acad::eOk);
    EXPECT_EQ(find("Vent"), id);
    EXPECT_TRUE(find("Sanitary").isNull());
}

TEST_F(Tables, TheNameOfAnErasedRecordIsFree) {
    const AcDbObjectId first = addLayer("L");
    setErased(first);
    EXPECT_TRUE(find("L").isNull());
    const AcDbObjectId second = addLayer("L");
    EXPECT_EQ(find("L"), second);
    {
        AcDbObjectPointer<AcDbObject> erased(first, AcDb::kForWrite, true);
        EXPECT_EQ(erased->erase(false), Acad::eDuplicateRecordName);
    }
    setErased(second);
    setErased(first, false);
    EXPECT_EQ(find("L"), first);
    const AcDbObjectPointer<AcDbLayerTable> table(db.layerTableId());
    EXPECT_EQ(table->recordIds(), (std::vector{db.layerZero(), first}));
    AcDbObjectId id;
    setErased(first);
    EXPECT_EQ(table->getAt("L", id), Acad::eKeyNotFound);
    EXPECT_EQ(table->getAt("L", id, true), Acad::eOk);
}

TEST_F(Tables, WhatEveryDrawingHasStays) {
    const AcDbObjectId fixed[] = {db.layerZero(), db.byLayerLinetype(), db.continuousLinetype(),
                                  db.modelSpaceId()};
    for (const AcDbObjectId id : fixed) {
        AcDbObjectPointer<AcDbSymbolTableRecord> record(id, AcDb::kForWrite);
        EXPECT_EQ(record->erase(), Acad::eNotApplicable) << record->getName();
        EXPECT_EQ(record->setName("Other"), Acad::eNotApplicable) << record->getName();
    }
}

TEST_F(Tables, ATableTakesItsOwnRecordsWhileItIsOpen) {
    AcDbObjectPointer<AcDbLayerTable> table(db.layerTableId());
    AcDbLayerTableRecord layer;
    layer.setName("L");
    EXPECT_EQ(table->add(&layer), Acad::eNotOpenForWrite);
    table->upgradeOpen();
    AcDbLinetypeTableRecord linetype;
    linetype.setName("Dashed");
    EXPECT_EQ(table->add(&linetype), Acad::eNotThatKindOfClass);
    EXPECT_TRUE(layer.objectId().isNull());
}

TEST_F(Tables, DictionariesReplaceWhatTheyHoldAndHangUnderAnything) {
    const AcDbObjectId line = addLine();
    AcDbObjectId first, second;
    {
        AcDbObjectPointer<AcDbLine> owner(line, AcDb::kForWrite);
        ASSERT_EQ(owner->createExtensionDictionary(), Acad::eOk);
        EXPECT_EQ(owner->createExtensionDictionary(), Acad::eDuplicateKey);
        AcDbObjectPointer<AcDbDictionary> dictionary(owner->extensionDictionary(), AcDb::kForWrite);
        EXPECT_EQ(dictionary->ownerId(), line);
        for (AcDbObjectId* id : {&first, &second}) {
            auto* record = new AcDbXrecord;
            const ResbufPtr chain(acutBuildList(1, "text", 40, 2.5, 330, nullptr, 0));
            ASSERT_EQ(record->setFromRbChain(chain.get()), Acad::eOk);
            ASSERT_EQ(dictionary->setAt("Key", record, *id), Acad::eOk);
            record->close();
        }
    }
    EXPECT_TRUE(first.isErased());
    const AcDbObjectPointer<AcDbXrecord> record(second);
    const ResbufPtr chain(record->rbChain());
    EXPECT_STREQ(chain->resval.rstring, "text");
    EXPECT_EQ(chain->rbnext->resval.rreal, 2.5);
}

} // namespace
} // namespace veldrin::tests
