#include "drawing/AcDbSymbolTable.h"

#include "drawing/AcDbDatabase.h"
#include "drawing/AcDbDwgFiler.h"
#include "drawing/AcDbDxfFiler.h"
#include "drawing/AcDbObjectAccess.h"
#include "drawing/SymbolNames.h"
#include "runtime/AcRxMacros.h"

#include <algorithm>

ACRX_NO_CONS_DEFINE_MEMBERS(AcDbSymbolTableRecord, AcDbObject);
ACRX_NO_CONS_DEFINE_MEMBERS(AcDbSymbolTable, AcDbObject);

AcDbSymbolTableRecord::AcDbSymbolTableRecord() = default;
AcDbSymbolTableRecord::~AcDbSymbolTableRecord() = default;

AcDbSymbolTable* AcDbSymbolTableRecord::table() const {
    return AcDbSymbolTable::cast(AcDbObjectAccess::object(ownerId()));
}

// Records that every drawing has, under names that everything relies on.
bool AcDbSymbolTableRecord::isFixed() const {
    const AcDbDatabase* const db = database();
    if (!db) return false;
    const AcDbObjectId fixed[] = {db->layerZero(),          db->byLayerLinetype(), db->byBlockLinetype(),
                                  db->continuousLinetype(), db->modelSpaceId(),    db->paperSpaceId()};
    return std::ranges::find(fixed, objectId()) != std::end(fixed);
}

void AcDbSymbolTableRecord::nameChanged() const {
    if (const AcDbSymbolTable* const holder = table()) holder->m_indexIsValid = false;
}

Acad::ErrorStatus AcDbSymbolTableRecord::setName(const std::string& name) {
    assertWriteEnabled();
    if (!veldrin::isSymbolName(name)) return Acad::eInvalidName;
    if (isFixed() && name != m_name) return Acad::eNotApplicable;
    if (const AcDbSymbolTable* const holder = table()) {
        const AcDbObjectId other = holder->lookUp(name);
        if (!other.isErased() && other != objectId()) return Acad::eDuplicateRecordName;
    }
    m_name = name;
    nameChanged();
    return Acad::eOk;
}

void AcDbSymbolTableRecord::setDatabaseDefaults(const AcDbDatabase&) {}

Acad::ErrorStatus AcDbSymbolTableRecord::subErase(bool erasing) {
    if (erasing) return isFixed() ? Acad::eNotApplicable : Acad::eOk;
    const AcDbSymbolTable* const holder = table();
    const AcDbObjectId other = holder ? holder->lookUp(m_name) : AcDbObjectId();
    return other.isErased() ? Acad::eOk : Acad::eDuplicateRecordName;
}

Acad::ErrorStatus AcDbSymbolTableRecord::dwgInFields(AcDbDwgFiler* filer) {
    const Acad::ErrorStatus status = AcDbObject::dwgInFields(filer);
    if (status != Acad::eOk) return status;
    std::string name;
    if (filer->readString(name) != Acad::eOk) return filer->filerStatus();
    if (name != m_name) nameChanged();
    m_name = std::move(name);
    return Acad::eOk;
}

Acad::ErrorStatus AcDbSymbolTableRecord::dwgOutFields(AcDbDwgFiler* filer) const {
    AcDbObject::dwgOutFields(filer);
    return filer->writeString(m_name);
}

void AcDbSymbolTableRecord::dxfOutHead(AcDbDxfFiler& filer, const char* className, int flags) const {
    filer.writeItem(AcDb::kDxfSubclass, "AcDbSymbolTableRecord");
    filer.writeItem(AcDb::kDxfSubclass, className);
    filer.writeItem(2, m_name);
    filer.writeInt16(70, flags);
}

Acad::ErrorStatus AcDbSymbolTableRecord::dxfInItems(AcDbDxfFiler& filer, const char* className,
                                                    const ItemTaker& take) {
    const Acad::ErrorStatus base = AcDbObject::dxfInFields(&filer);
    if (base != Acad::eOk) return base;
    filer.atSubclassData("AcDbSymbolTableRecord");
    if (!filer.atSubclassData(className)) return Acad::eBadSubclassMarker;
    AcDbDxfItem item;
    while (filer.readItem(item) == Acad::eOk) {
        if (item.code == AcDb::kDxfSubclass) {
            filer.pushBackItem();
            break;
        }
        const bool isName = item.code == 2;
        const Acad::ErrorStatus status = isName ? setName(item.text) : take(item);
        if (status != Acad::eOk) return status;
    }
    return filer.filerStatus();
}

AcDbSymbolTable::AcDbSymbolTable() = default;
AcDbSymbolTable::~AcDbSymbolTable() = default;

AcRxClass* AcDbSymbolTable::recordClass() const {
    return AcDbSymbolTableRecord::desc();
}

AcDbObjectId AcDbSymbolTable::lookUp(const std::string& name) const {
    if (!m_indexIsValid) {
        m_byName.clear();
        for (const AcDbObjectId id : m_records) {
            const auto* record = static_cast<const AcDbSymbolTableRecord*>(AcDbObjectAccess::object(id));
            AcDbObjectId& entry = m_byName[veldrin::symbolKey(record->getName())];
            if (entry.isErased()) entry = id;
        }
        m_indexIsValid = true;
    }
    const auto found = m_byName.find(veldrin::symbolKey(name));
    return found == m_byName.end() ? AcDbObjectId() : found->second;
}

Acad::ErrorStatus AcDbSymbolTable::getAt(const std::string& name, AcDbObjectId& id, bool getErased) const {
    assertReadEnabled();
    id = lookUp(name);
    if (!id.isNull() && (getErased || !id.isErased())) return Acad::eOk;
    id.setNull();
    return Acad::eKeyNotFound;
}

bool AcDbSymbolTable::has(const std::string& name) const {
    AcDbObjectId id;
    return getAt(name, id) == Acad::eOk;
}

// An erased record of the name keeps its place; the name is the new one's.
Acad::ErrorStatus AcDbSymbolTable::insert(AcDbSymbolTableRecord* record) {
    if (!record) return Acad::eNullObjectPointer;
    if (!record->isKindOf(recordClass())) return Acad::eNotThatKindOfClass;
    if (!database()) return Acad::eNotInDatabase;
    if (!record->objectId().isNull()) return Acad::eAlreadyInDatabase;
    if (!veldrin::isSymbolName(record->getName())) return Acad::eInvalidName;
    if (!lookUp(record->getName()).isErased()) return Acad::eDuplicateRecordName;
    record->setDatabaseDefaults(*database());
    const Acad::ErrorStatus status = AcDbObjectAccess::add(*database(), record, objectId());
    if (status != Acad::eOk) return status;
    m_records.push_back(record->objectId());
    m_byName[veldrin::symbolKey(record->getName())] = record->objectId();
    record->subAdded();
    return Acad::eOk;
}

Acad::ErrorStatus AcDbSymbolTable::add(AcDbSymbolTableRecord* record) {
    if (!isWriteEnabled()) return Acad::eNotOpenForWrite;
    return insert(record);
}

Acad::ErrorStatus AcDbSymbolTable::add(AcDbObjectId& id, AcDbSymbolTableRecord* record) {
    const Acad::ErrorStatus status = add(record);
    id = status == Acad::eOk ? record->objectId() : AcDbObjectId();
    return status;
}

std::vector<AcDbObjectId> AcDbSymbolTable::recordIds() const {
    assertReadEnabled();
    std::vector<AcDbObjectId> ids;
    std::ranges::copy_if(m_records, std::back_inserter(ids), [](AcDbObjectId id) { return !id.isErased(); });
    return ids;
}

// The list of records is in no undo record: it only grows, and taking back an append is erasing.
Acad::ErrorStatus AcDbSymbolTable::dwgInFields(AcDbDwgFiler* filer) {
    const Acad::ErrorStatus status = AcDbObject::dwgInFields(filer);
    if (status != Acad::eOk || filer->filerType() == AcDb::kUndoFiler) return status;
    Adesk::Int32 count = 0;
    filer->readInt32(count);
    std::vector<AcDbObjectId> records;
    for (Adesk::Int32 i = 0; i < count && filer->filerStatus() == Acad::eOk; ++i) {
        AcDbObjectId id;
        filer->readSoftOwnershipId(id);
        if (AcDbSymbolTableRecord::cast(AcDbObjectAccess::object(id))) records.push_back(id);
    }
    if (filer->filerStatus() != Acad::eOk) return filer->filerStatus();
    m_records = std::move(records);
    m_indexIsValid = false;
    return Acad::eOk;
}

Acad::ErrorStatus AcDbSymbolTable::dwgOutFields(AcDbDwgFiler* filer) const {
    AcDbObject::dwgOutFields(filer);
    if (filer->filerType() == AcDb::kUndoFiler) return filer->filerStatus();
    const std::vector<AcDbObjectId> ids = recordIds();
    filer->writeInt32(static_cast<Adesk::Int32>(ids.size()));
    for (const AcDbObjectId id : ids) filer->writeSoftOwnershipId(id);
    return filer->filerStatus();
}
