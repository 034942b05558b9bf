#include "drawing/AcDbBlockReference.h"
#include "drawing/AcDbBlockTable.h"
#include "drawing/AcDbCurve.h"
#include "drawing/AcDbDatabase.h"
#include "drawing/AcDbPolyline.h"
#include "drawing/block_parts.h"

#include <memory>
#include <utility>

namespace {

using BlockPointer = AcDbObjectPointer<AcDbBlockTableRecord>;

std::vector<AcDbObjectId> contentsOf(AcDbObjectId blockId) {
    std::vector<AcDbObjectId> ids;
    if (const BlockPointer block(blockId); block)
        for (const AcDbObjectId id : block->entityIds())
            if (!id.isErased()) ids.push_back(id);
    return ids;
}

// Puts a polyline in the place of a curve that cannot be scaled so.
Acad::ErrorStatus replaceByChords(AcDbEntity& part, const AcGeMatrix3d& placing, AcDbObjectId& id) {
    const auto* curve = AcDbCurve::cast(&part);
    std::unique_ptr<AcDbPolyline> chords = curve ? veldrin::flattened(*curve, placing) : nullptr;
    if (!chords) return Acad::eCannotScaleNonUniformly;
    const BlockPointer owner(part.ownerId(), AcDb::kForWrite);
    if (!owner) return owner.openStatus();
    const Acad::ErrorStatus status = owner->appendAcDbEntity(id, chords.get());
    if (status != Acad::eOk) return status;
    chords.release()->close();
    return part.erase();
}

// Moves a copy of one of the block's entities to where the reference shows it.
Acad::ErrorStatus settle(AcDbObjectId& id, const AcDbBlockReference& reference) {
    const AcDbObjectPointer<AcDbEntity> part(id, AcDb::kForWrite);
    if (!part) return part.openStatus();
    const AcGeMatrix3d placing = reference.blockTransform();
    veldrin::takeByBlock(*part, reference);
    const Acad::ErrorStatus status = part->transformBy(placing);
    return status == Acad::eCannotScaleNonUniformly ? replaceByChords(*part, placing, id) : status;
}

} // namespace

Acad::ErrorStatus AcDbBlockReference::explodeToOwnerSpace(std::vector<AcDbObjectId>* pieces) const {
    if (!database()) return Acad::eNotInDatabase;
    const std::vector<AcDbObjectId> originals = contentsOf(m_block);
    AcDbIdMapping mapping;
    Acad::ErrorStatus status = database()->deepCloneObjects(originals, ownerId(), mapping);
    if (status != Acad::eOk) return status;
    std::vector<AcDbObjectId> copies;
    for (const AcDbObjectId original : originals) copies.push_back(mapping.find(original));
    for (AcDbObjectId& copy : copies) {
        status = settle(copy, *this);
        if (status != Acad::eOk) break;
    }
    if (status == Acad::eOk) {
        if (pieces) pieces->insert(pieces->end(), copies.begin(), copies.end());
        return status;
    }
    for (const AcDbObjectId copy : copies)
        if (const AcDbObjectPointer<AcDbEntity> part(copy, AcDb::kForWrite); part) part->erase();
    return status;
}

Acad::ErrorStatus AcDbBlockReference::subExplode(std::vector<AcDbEntity*>& pieces) const {
    std::vector<std::unique_ptr<AcDbEntity>> parts;
    for (const AcDbObjectId id : contentsOf(m_block)) {
        const AcDbObjectPointer<AcDbEntity> entity(id);
        if (!entity) return entity.openStatus();
        std::unique_ptr<AcDbEntity> part = veldrin::placedCopy(*entity, blockTransform());
        if (!part) return Acad::eCannotScaleNonUniformly;
        veldrin::takeByBlock(*part, *this);
        parts.push_back(std::move(part));
    }
    for (std::unique_ptr<AcDbEntity>& part : parts) pieces.push_back(part.release());
    return Acad::eOk;
}
