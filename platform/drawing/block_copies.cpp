#include "drawing/block_copies.h"

#include "drawing/AcDbBlockReference.h"
#include "drawing/AcDbBlockTable.h"
#include "drawing/AcDbObjectAccess.h"
#include "drawing/SymbolNames.h"
#include "drawing/UndoLog.h"
#include "drawing/block_parts.h"

#include <algorithm>

namespace veldrin {

namespace {

using BlockPointer = AcDbObjectPointer<AcDbBlockTableRecord>;

Acad::ErrorStatus eraseAll(const std::vector<AcDbObjectId>& ids) {
    for (const AcDbObjectId id : ids) {
        const AcDbObjectPointer<AcDbEntity> entity(id, AcDb::kForWrite);
        const Acad::ErrorStatus status = entity ? entity->erase() : entity.openStatus();
        if (status != Acad::eOk) return status;
    }
    return Acad::eOk;
}

Acad::ErrorStatus addBlock(AcDbDatabase& database, const std::string& name, AcDbObjectId& id) {
    const AcDbObjectPointer<AcDbBlockTable> table(database.blockTableId(), AcDb::kForWrite);
    if (!table) return table.openStatus();
    auto block = std::make_unique<AcDbBlockTableRecord>();
    Acad::ErrorStatus status = block->setName(name);
    if (status == Acad::eOk) status = table->add(id, block.get());
    if (status == Acad::eOk) block.release()->close();
    return status;
}

// Whether the drawing's model space shows a block of that name.
bool showsBlockNamed(const AcDbDatabase& drawing, const std::string& name) {
    const AcDbObjectId block = AcDbObjectAccess::findRecord(drawing.blockTableId(), name);
    return !block.isNull() && blockShows(drawing.modelSpaceId(), block);
}

// Whether the drawing brings references to blocks that in the target show the block.
bool bringsReferencesTo(const AcDbDatabase& drawing, const AcDbDatabase& target, AcDbObjectId block) {
    const auto* table = AcDbSymbolTable::cast(AcDbObjectAccess::object(drawing.blockTableId()));
    const ReadAccess access(drawing.blockTableId());
    return std::ranges::any_of(table->recordIds(), [&](AcDbObjectId id) {
        const auto* record = AcDbBlockTableRecord::cast(AcDbObjectAccess::object(id));
        if (record->isLayout() || !blockShows(drawing.modelSpaceId(), id)) return false;
        const AcDbObjectId known = AcDbObjectAccess::findRecord(target.blockTableId(), record->getName());
        return !known.isNull() && blockShows(known, block);
    });
}

// The records that the target lacks; blocks without a name of their own come with what refers to them.
std::vector<AcDbObjectId> missingRecords(AcDbObjectId from, AcDbObjectId in) {
    const AcDbObjectPointer<AcDbSymbolTable> table(from);
    std::vector<AcDbObjectId> missing;
    for (const AcDbObjectId id : table->recordIds()) {
        const auto* record = static_cast<const AcDbSymbolTableRecord*>(AcDbObjectAccess::object(id));
        const bool isNamed = !record->getName().starts_with('*');
        if (isNamed && AcDbObjectAccess::findRecord(in, record->getName()).isNull()) missing.push_back(id);
    }
    return missing;
}

} // namespace

std::vector<AcDbObjectId> livingEntities(AcDbObjectId blockId) {
    std::vector<AcDbObjectId> ids;
    if (const BlockPointer block(blockId); block)
        std::ranges::copy_if(block->entityIds(), std::back_inserter(ids),
                             [](AcDbObjectId id) { return !id.isErased(); });
    return ids;
}

std::string freeBlockName(const AcDbDatabase& database, const std::string& beginning) {
    for (int number = 1;; ++number) {
        std::string name = beginning + std::to_string(number);
        if (AcDbObjectAccess::findRecord(database.blockTableId(), name).isNull()) return name;
    }
}

Acad::ErrorStatus startBlock(AcDbDatabase& database, const std::string& name, const AcGePoint3d& base,
                             AcDbObjectId& block) {
    block = AcDbObjectAccess::findRecord(database.blockTableId(), name);
    const auto* known = AcDbBlockTableRecord::cast(AcDbObjectAccess::object(block));
    if (known && known->isLayout()) return Acad::eInvalidName;
    Acad::ErrorStatus status = known ? eraseAll(livingEntities(block)) : addBlock(database, name, block);
    if (status != Acad::eOk) return status;
    const BlockPointer record(block, AcDb::kForWrite);
    return record ? record->setOrigin(base) : record.openStatus();
}

Acad::ErrorStatus insertDrawing(AcDbDatabase& target, const std::string& name, AcDbDatabase& source,
                                AcDbObjectId& block) {
    if (showsBlockNamed(source, name)) return Acad::eInvalidInput;
    const AcDbObjectId known = AcDbObjectAccess::findRecord(target.blockTableId(), name);
    if (!known.isNull() && bringsReferencesTo(source, target, known)) return Acad::eInvalidInput;
    const Acad::ErrorStatus status = startBlock(target, name, AcGePoint3d::kOrigin, block);
    if (status != Acad::eOk) return status;
    AcDbIdMapping mapping;
    return source.deepCloneObjects(livingEntities(source.modelSpaceId()), block, mapping);
}

Acad::ErrorStatus copyInto(AcDbObjectId block, const std::vector<AcDbObjectId>& entities,
                           const AcGeMatrix3d& placing) {
    if (entities.empty()) return Acad::eOk;
    AcDbIdMapping mapping;
    Acad::ErrorStatus status = entities.front().database()->deepCloneObjects(entities, block, mapping);
    for (std::size_t i = 0; i < entities.size() && status == Acad::eOk; ++i) {
        const AcDbObjectPointer<AcDbEntity> copy(mapping.find(entities[i]), AcDb::kForWrite);
        status = copy ? copy->transformBy(placing) : copy.openStatus();
    }
    return status;
}

Acad::ErrorStatus mergeDrawing(AcDbDatabase& target, AcDbDatabase& source) {
    AcDbIdMapping mapping;
    const auto take = [&](const std::vector<AcDbObjectId>& ids, AcDbObjectId owner) {
        return ids.empty() ? Acad::eOk : source.deepCloneObjects(ids, owner, mapping);
    };
    const std::pair<AcDbObjectId, AcDbObjectId> tables[] = {
        {source.linetypeTableId(), target.linetypeTableId()},
        {source.layerTableId(), target.layerTableId()},
        {source.textStyleTableId(), target.textStyleTableId()},
        {source.regAppTableId(), target.regAppTableId()},
        {source.blockTableId(), target.blockTableId()},
    };
    for (const auto& [from, to] : tables) {
        // One at a time: a block may have brought the next one along.
        for (const AcDbObjectId id : missingRecords(from, to)) {
            const auto* record = static_cast<const AcDbSymbolTableRecord*>(AcDbObjectAccess::object(id));
            if (!AcDbObjectAccess::findRecord(to, record->getName()).isNull()) continue;
            if (const Acad::ErrorStatus status = take({id}, to); status != Acad::eOk) return status;
        }
    }
    const Acad::ErrorStatus status = take(livingEntities(source.modelSpaceId()), target.modelSpaceId());
    return status == Acad::eOk ? take(livingEntities(source.paperSpaceId()), target.paperSpaceId()) : status;
}

Acad::ErrorStatus drawingOf(AcDbDatabase& source, const std::vector<AcDbObjectId>& entities,
                            const AcGeMatrix3d& placing, std::unique_ptr<AcDbDatabase>& drawing) {
    auto made = std::make_unique<AcDbDatabase>();
    made->undoLog().setRecording(false);
    const Acad::ErrorStatus status = copyInto(made->modelSpaceId(), entities, placing);
    if (status != Acad::eOk) return status;
    HeaderVariables header = made->header();
    header.insunits = source.header().insunits;
    header.measurement = source.header().measurement;
    header.ltscale = source.header().ltscale;
    header.lunits = source.header().lunits;
    header.luprec = source.header().luprec;
    made->setHeader(header);
    drawing = std::move(made);
    return Acad::eOk;
}

} // namespace veldrin
