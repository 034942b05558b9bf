#include "drawing/AcDbBlockTable.h"

#include "drawing/AcDbAttribute.h"
#include "drawing/AcDbBlockBegin.h"
#include "drawing/AcDbDatabase.h"
#include "drawing/AcDbDwgFiler.h"
#include "drawing/AcDbDxfFiler.h"
#include "drawing/AcDbEntity.h"
#include "drawing/AcDbObjectAccess.h"
#include "drawing/SymbolNames.h"
#include "runtime/AcRxMacros.h"

#include <algorithm>
#include <utility>

ACRX_DEFINE_MEMBERS(AcDbBlockTableRecord, AcDbSymbolTableRecord, "BLOCK_RECORD");
ACRX_DEFINE_MEMBERS(AcDbBlockTable, AcDbSymbolTable, "");

namespace {

constexpr int kAnonymous = 1;
constexpr int kWithAttributes = 2;

bool wasErased(AcDbObjectId id) {
    return id.isErased();
}

// Adds a mark that belongs to a block, and closes it.
AcDbObjectId place(std::unique_ptr<AcDbEntity> mark, const AcDbBlockTableRecord& block) {
    AcDbDatabase& database = *block.database();
    mark->setLayer(database.layerZero());
    if (AcDbObjectAccess::add(database, mark.get(), block.objectId()) != Acad::eOk) return {};
    AcDbEntity* const added = mark.release();
    added->close();
    return added->objectId();
}

} // namespace

AcDbBlockTableRecord::AcDbBlockTableRecord() = default;
AcDbBlockTableRecord::~AcDbBlockTableRecord() = default;

Acad::ErrorStatus AcDbBlockTableRecord::setOrigin(const AcGePoint3d& origin) {
    assertWriteEnabled();
    m_origin = origin;
    return Acad::eOk;
}

bool AcDbBlockTableRecord::isLayout() const {
    return veldrin::sameSymbolName(m_name, ACDB_MODEL_SPACE) ||
           veldrin::sameSymbolName(m_name, ACDB_PAPER_SPACE);
}

bool AcDbBlockTableRecord::isAnonymous() const {
    return m_name.starts_with('*') && !isLayout();
}

bool AcDbBlockTableRecord::hasAttributeDefinitions() const {
    return std::ranges::any_of(m_entities, [](AcDbObjectId id) {
        if (id.isErased()) return false;
        const auto* definition = AcDbAttributeDefinition::cast(AcDbObjectAccess::object(id));
        return definition && !definition->isConstant();
    });
}

int AcDbBlockTableRecord::blockFlags() const {
    return (isAnonymous() ? kAnonymous : 0) | (hasAttributeDefinitions() ? kWithAttributes : 0);
}

AcDbObjectId AcDbBlockTableRecord::firstEntity() const {
    const auto first = std::ranges::find_if_not(m_entities, wasErased);
    return first == m_entities.end() ? m_end : *first;
}

// The marks come with the record; a record that is read from a file names those of the file.
void AcDbBlockTableRecord::subAdded() {
    m_begin = place(std::make_unique<AcDbBlockBegin>(), *this);
    m_end = place(std::make_unique<AcDbBlockEnd>(), *this);
}

Acad::ErrorStatus AcDbBlockTableRecord::subErase(bool erasing) {
    const Acad::ErrorStatus status = AcDbSymbolTableRecord::subErase(erasing);
    if (status != Acad::eOk) return status;
    for (const AcDbObjectId mark : {m_begin, m_end})
        if (!mark.isNull()) AcDbObjectAccess::setErased(mark, erasing);
    return Acad::eOk;
}

Acad::ErrorStatus AcDbBlockTableRecord::appendAcDbEntity(AcDbEntity* entity) {
    if (!entity) return Acad::eNullObjectPointer;
    if (!entity->objectId().isNull()) return Acad::eAlreadyInDatabase;
    if (!database()) return Acad::eNotInDatabase;
    if (!isWriteEnabled()) return Acad::eNotOpenForWrite;
    entity->setDatabaseDefaults(*database());
    const Acad::ErrorStatus status = AcDbObjectAccess::add(*database(), entity, objectId());
    if (status == Acad::eOk) m_entities.push_back(entity->objectId());
    return status;
}

Acad::ErrorStatus AcDbBlockTableRecord::appendAcDbEntity(AcDbObjectId& id, AcDbEntity* entity) {
    const Acad::ErrorStatus status = appendAcDbEntity(entity);
    id = status == Acad::eOk ? entity->objectId() : AcDbObjectId();
    return status;
}

// The list of entities is in no undo record: it only grows, and taking back an append is erasing.
Acad::ErrorStatus AcDbBlockTableRecord::dwgInFields(AcDbDwgFiler* filer) {
    const Acad::ErrorStatus status = AcDbSymbolTableRecord::dwgInFields(filer);
    if (status != Acad::eOk) return status;
    filer->readPoint3d(m_origin);
    if (filer->filerType() == AcDb::kUndoFiler) return filer->filerStatus();
    AcDbObjectId begin;
    AcDbObjectId end;
    filer->readHardOwnershipId(begin);
    filer->readHardOwnershipId(end);
    if (!begin.isNull()) m_begin = begin; // a copy has its own already
    if (!end.isNull()) m_end = end;
    Adesk::Int32 count = 0;
    filer->readInt32(count);
    std::vector<AcDbObjectId> entities;
    for (Adesk::Int32 i = 0; i < count && filer->filerStatus() == Acad::eOk; ++i) {
        AcDbObjectId id;
        filer->readHardOwnershipId(id);
        if (!id.isNull()) entities.push_back(id);
    }
    if (filer->filerStatus() == Acad::eOk) m_entities = std::move(entities);
    return filer->filerStatus();
}

Acad::ErrorStatus AcDbBlockTableRecord::dwgOutFields(AcDbDwgFiler* filer) const {
    AcDbSymbolTableRecord::dwgOutFields(filer);
    filer->writePoint3d(m_origin);
    if (filer->filerType() == AcDb::kUndoFiler) return filer->filerStatus();
    filer->writeHardOwnershipId(m_begin);
    filer->writeHardOwnershipId(m_end);
    const auto erased = std::ranges::count_if(m_entities, wasErased);
    filer->writeInt32(static_cast<Adesk::Int32>(std::ssize(m_entities) - erased));
    for (const AcDbObjectId id : m_entities) {
        if (!wasErased(id)) filer->writeHardOwnershipId(id);
    }
    return filer->filerStatus();
}

Acad::ErrorStatus AcDbBlockTableRecord::dxfInFields(AcDbDxfFiler* filer) {
    return dxfInItems(*filer, "AcDbBlockTableRecord", [&](const AcDbDxfItem& item) {
        if (item.code == AcDb::kDxfXCoord) m_origin = item.point;
        return Acad::eOk;
    });
}

// A list tells the base point and the first entity too, which in a file are the block's own records.
Acad::ErrorStatus AcDbBlockTableRecord::dxfOutFields(AcDbDxfFiler* filer) const {
    AcDbObject::dxfOutFields(filer);
    if (!filer->isEntityList()) {
        filer->writeItem(AcDb::kDxfSubclass, "AcDbSymbolTableRecord");
        filer->writeItem(AcDb::kDxfSubclass, "AcDbBlockTableRecord");
        return filer->writeItem(2, m_name);
    }
    dxfOutHead(*filer, "AcDbBlockTableRecord", blockFlags());
    filer->writeItem(AcDb::kDxfHardOwnershipId, m_begin);
    filer->writePoint3d(AcDb::kDxfXCoord, m_origin);
    if (const AcDbObjectId first = firstEntity(); !first.isNull())
        filer->writeItem(AcDb::kDxfHeaderId, first);
    return filer->filerStatus();
}

AcDbBlockTable::AcDbBlockTable() = default;
AcDbBlockTable::~AcDbBlockTable() = default;

AcRxClass* AcDbBlockTable::recordClass() const {
    return AcDbBlockTableRecord::desc();
}
