#include "drawing/AcDbBlockReference.h"
#include "drawing/AcDbBlockTable.h"
#include "drawing/AcDbDatabase.h"
#include "drawing/AcDbDwgFiler.h"
#include "drawing/AcDbObjectAccess.h"
#include "drawing/dxf_groups.h"
#include "geometry/angles.h"

namespace {

constexpr int kCodeAttributesFollow = 66;

// Attributes are named where a record stands for the whole reference. They are in no undo record, since the
// list only grows, and a copy in no drawing has none.
bool filesAttributes(const AcDbDwgFiler& filer) {
    return filer.filerType() != AcDb::kUndoFiler && filer.filerType() != AcDb::kCopyFiler;
}

} // namespace

Acad::ErrorStatus AcDbBlockReference::dwgOutFields(AcDbDwgFiler* filer) const {
    const Acad::ErrorStatus status = AcDbEntity::dwgOutFields(filer);
    if (status != Acad::eOk) return status;
    filer->writeHardPointerId(m_block);
    filer->writePoint3d(m_position);
    filer->writeDouble(m_scale.sx);
    filer->writeDouble(m_scale.sy);
    filer->writeDouble(m_scale.sz);
    filer->writeDouble(m_rotation);
    filer->writeVector3d(m_normal);
    if (!filesAttributes(*filer)) return filer->filerStatus();
    const std::vector<AcDbObjectId> attributes = attributeIds();
    filer->writeInt32(static_cast<Adesk::Int32>(attributes.size()));
    for (const AcDbObjectId id : attributes) filer->writeHardOwnershipId(id);
    return filer->writeHardOwnershipId(m_sequenceEnd.isErased() ? AcDbObjectId() : m_sequenceEnd);
}

Acad::ErrorStatus AcDbBlockReference::dwgInFields(AcDbDwgFiler* filer) {
    const Acad::ErrorStatus status = AcDbEntity::dwgInFields(filer);
    if (status != Acad::eOk) return status;
    filer->readHardPointerId(m_block);
    filer->readPoint3d(m_position);
    filer->readDouble(m_scale.sx);
    filer->readDouble(m_scale.sy);
    filer->readDouble(m_scale.sz);
    filer->readDouble(m_rotation);
    filer->readVector3d(m_normal);
    if (!filesAttributes(*filer)) return filer->filerStatus();
    Adesk::Int32 count = 0;
    filer->readInt32(count);
    std::vector<AcDbObjectId> attributes;
    for (Adesk::Int32 i = 0; i < count && filer->filerStatus() == Acad::eOk; ++i) {
        AcDbObjectId id;
        filer->readHardOwnershipId(id);
        if (!id.isNull()) attributes.push_back(id);
    }
    filer->readHardOwnershipId(m_sequenceEnd);
    if (filer->filerStatus() == Acad::eOk) m_attributes = std::move(attributes);
    return filer->filerStatus();
}

Acad::ErrorStatus AcDbBlockReference::dxfOutFields(AcDbDxfFiler* filer) const {
    const Acad::ErrorStatus status = AcDbEntity::dxfOutFields(filer);
    if (status != Acad::eOk) return status;
    const bool all = filer->isEntityList(); // a file leaves out what is as usual
    const AcDbObjectPointer<AcDbBlockTableRecord> block(m_block, AcDb::kForRead, true);
    filer->writeItem(AcDb::kDxfSubclass, "AcDbBlockReference");
    if (hasAttributes()) filer->writeInt16(kCodeAttributesFollow, 1);
    filer->writeItem(2, block ? block->getName() : std::string());
    filer->writePoint3d(10, veldrin::worldToPlane(m_position, m_normal));
    if (all || m_scale.sx != 1.0) filer->writeDouble(41, m_scale.sx);
    if (all || m_scale.sy != 1.0) filer->writeDouble(42, m_scale.sy);
    if (all || m_scale.sz != 1.0) filer->writeDouble(43, m_scale.sz);
    if (all || m_rotation != 0.0) filer->writeDouble(50, m_rotation / veldrin::angleUnit(*filer));
    if (all) {
        // Rows and columns, of which a reference has one.
        filer->writeInt16(70, 0);
        filer->writeInt16(71, 0);
        filer->writeDouble(44, 0.0);
        filer->writeDouble(45, 0.0);
    }
    veldrin::writeNormal(*filer, m_normal);
    return filer->filerStatus();
}

Acad::ErrorStatus AcDbBlockReference::dxfInFields(AcDbDxfFiler* filer) {
    const Acad::ErrorStatus status = AcDbEntity::dxfInFields(filer);
    if (status != Acad::eOk) return status;
    std::string name;
    AcGePoint3d position = veldrin::worldToPlane(m_position, m_normal);
    AcGeScale3d scale = m_scale;
    const Acad::ErrorStatus read = dxfInGroups(filer, [&](const AcDbDxfItem& item) {
        switch (item.code) {
        case 2: name = item.text; return true;
        case 10: position = item.point; return true;
        case 41: scale.sx = veldrin::realOf(item); return true;
        case 42: scale.sy = veldrin::realOf(item); return true;
        case 43: scale.sz = veldrin::realOf(item); return true;
        case 50:
            m_rotation = veldrin::withinTurn(veldrin::realOf(item) * veldrin::angleUnit(*filer));
            return true;
        case AcDb::kDxfNormalX: m_normal = veldrin::normalOf(item); return true;
        default: return false;
        }
    });
    if (read != Acad::eOk) return read;
    m_position = veldrin::planeToWorld(position, m_normal);
    if (const Acad::ErrorStatus scaled = setScaleFactors(scale); scaled != Acad::eOk) return scaled;
    if (name.empty()) return m_block.isNull() ? Acad::eInvalidInput : Acad::eOk;
    if (!filer->database()) return Acad::eNotInDatabase;
    const AcDbObjectId block = AcDbObjectAccess::findRecord(filer->database()->blockTableId(), name);
    return block.isNull() ? Acad::eKeyNotFound : setBlockTableRecord(block);
}
