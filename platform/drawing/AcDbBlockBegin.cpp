#include "drawing/AcDbBlockBegin.h"

#include "drawing/AcDbBlockTable.h"
#include "drawing/AcDbDatabase.h"
#include "drawing/dxf_groups.h"
#include "runtime/AcRxMacros.h"

#include <optional>

ACRX_DEFINE_MEMBERS(AcDbBlockBegin, AcDbEntity, "BLOCK");
ACRX_DEFINE_MEMBERS(AcDbBlockEnd, AcDbEntity, "ENDBLK");
ACRX_DEFINE_MEMBERS(AcDbSequenceEnd, AcDbEntity, "SEQEND");

AcDbBlockBegin::AcDbBlockBegin() = default;
AcDbBlockBegin::~AcDbBlockBegin() = default;
AcDbBlockEnd::AcDbBlockEnd() = default;
AcDbBlockEnd::~AcDbBlockEnd() = default;
AcDbSequenceEnd::AcDbSequenceEnd() = default;
AcDbSequenceEnd::~AcDbSequenceEnd() = default;

Acad::ErrorStatus AcDbBlockBegin::subErase(bool) {
    return Acad::eNotApplicable;
}
Acad::ErrorStatus AcDbBlockEnd::subErase(bool) {
    return Acad::eNotApplicable;
}
Acad::ErrorStatus AcDbSequenceEnd::subErase(bool) {
    return Acad::eNotApplicable;
}

Acad::ErrorStatus AcDbBlockBegin::dxfOutFields(AcDbDxfFiler* filer) const {
    const Acad::ErrorStatus status = AcDbEntity::dxfOutFields(filer);
    if (status != Acad::eOk) return status;
    const AcDbObjectPointer<AcDbBlockTableRecord> block(ownerId(), AcDb::kForRead, true);
    if (!block) return block.openStatus();
    filer->writeItem(AcDb::kDxfSubclass, "AcDbBlockBegin");
    if (!filer->isEntityList()) filer->writeItem(2, block->getName());
    filer->writeInt16(70, block->blockFlags());
    filer->writePoint3d(10, block->origin());
    if (filer->isEntityList()) {
        filer->writeItem(AcDb::kDxfHeaderId, block->firstEntity());
        filer->writeItem(2, block->getName());
    } else {
        filer->writeItem(3, block->getName());
    }
    return filer->writeItem(1, "");
}

Acad::ErrorStatus AcDbBlockBegin::dxfInFields(AcDbDxfFiler* filer) {
    const Acad::ErrorStatus status = AcDbEntity::dxfInFields(filer);
    if (status != Acad::eOk) return status;
    std::optional<AcGePoint3d> origin;
    const Acad::ErrorStatus read = dxfInGroups(filer, [&](const AcDbDxfItem& item) {
        if (item.code == AcDb::kDxfXCoord) origin = item.point;
        return item.code == AcDb::kDxfXCoord;
    });
    if (read != Acad::eOk || !origin) return read;
    const AcDbObjectPointer<AcDbBlockTableRecord> block(ownerId(), AcDb::kForWrite);
    return block ? block->setOrigin(*origin) : block.openStatus();
}

Acad::ErrorStatus AcDbBlockEnd::dxfOutFields(AcDbDxfFiler* filer) const {
    const Acad::ErrorStatus status = AcDbEntity::dxfOutFields(filer);
    return status == Acad::eOk ? filer->writeItem(AcDb::kDxfSubclass, "AcDbBlockEnd") : status;
}

Acad::ErrorStatus AcDbSequenceEnd::dxfOutFields(AcDbDxfFiler* filer) const {
    const Acad::ErrorStatus status = AcDbEntity::dxfOutFields(filer);
    if (status != Acad::eOk || !filer->isEntityList()) return status;
    return filer->writeItem(AcDb::kDxfHeaderId, ownerId());
}
