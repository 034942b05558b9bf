#pragma once

#include "drawing/AcDbAttribute.h"
#include "drawing/AcDbBlockReference.h"
#include "drawing/block_copies.h"
#include "platform/entities/EntityTest.h"

namespace veldrin::testing {

// A drawing in which blocks are made from the entities that are handed over.
class BlockTest : public EntityTest {
protected:
    template<class... Entities>
    AcDbObjectId makeBlock(const std::string& name, const AcGePoint3d& base,
                           std::unique_ptr<Entities>... entities) {
        AcDbObjectId block;
        EXPECT_EQ(startBlock(database, name, base, block), Acad::eOk);
        (addTo(block, std::move(entities)), ...);
        return block;
    }

    template<class Entity>
    static AcDbObjectId addTo(AcDbObjectId block, std::unique_ptr<Entity> entity) {
        const AcDbObjectPointer<AcDbBlockTableRecord> record(block, AcDb::kForWrite);
        AcDbObjectId id;
        EXPECT_EQ(record->appendAcDbEntity(id, entity.get()), Acad::eOk);
        entity.release()->close();
        return id;
    }

    static std::unique_ptr<AcDbBlockReference> reference(AcDbObjectId block, const AcGePoint3d& at,
                                                         AcGeScale3d scale = {}, double rotation = 0.0) {
        auto made = std::make_unique<AcDbBlockReference>(at, block);
        EXPECT_EQ(made->setScaleFactors(scale), Acad::eOk);
        made->setRotation(rotation);
        return made;
    }

    static std::unique_ptr<AcDbLine> line(const AcGePoint3d& from, const AcGePoint3d& to) {
        return std::make_unique<AcDbLine>(from, to);
    }

    static AcDbObjectId addAttribute(AcDbObjectId referenceId, const char* tag, const char* value,
                                     const AcGePoint3d& at) {
        const AcDbObjectPointer<AcDbBlockReference> owner(referenceId, AcDb::kForWrite);
        auto attribute = std::make_unique<AcDbAttribute>();
        attribute->setTag(tag);
        attribute->setTextString(value);
        attribute->setPosition(at);
        attribute->setHeight(1.0);
        AcDbObjectId id;
        EXPECT_EQ(owner->appendAttribute(id, attribute.get()), Acad::eOk);
        attribute.release()->close();
        return id;
    }

    std::vector<AcDbObjectId> inModelSpace() { return livingEntities(database.modelSpaceId()); }
};

} // namespace veldrin::testing
