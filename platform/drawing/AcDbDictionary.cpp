#include "drawing/AcDbDictionary.h"

#include "drawing/AcDbDatabase.h"
#include "drawing/AcDbDwgFiler.h"
#include "drawing/AcDbDxfFiler.h"
#include "drawing/AcDbEntity.h"
#include "drawing/AcDbObjectAccess.h"
#include "drawing/AcDbObjectExtras.h"
#include "drawing/AcDbSymbolTable.h"
#include "drawing/DxfListFiler.h"
#include "runtime/AcRxMacros.h"

#include <algorithm>
#include <utility>

ACRX_DEFINE_MEMBERS(AcDbDictionary, AcDbObject, "DICTIONARY");
ACRX_DEFINE_MEMBERS(AcDbXrecord, AcDbObject, "XRECORD");

AcDbDictionary::AcDbDictionary() = default;
AcDbDictionary::~AcDbDictionary() = default;

Acad::ErrorStatus AcDbDictionary::getAt(const std::string& name, AcDbObjectId& id) const {
    assertReadEnabled();
    const auto entry = m_entries.find(name);
    const bool found = entry != m_entries.end() && !entry->second.isErased();
    id = found ? entry->second : AcDbObjectId();
    return found ? Acad::eOk : Acad::eKeyNotFound;
}

bool AcDbDictionary::has(const std::string& name) const {
    AcDbObjectId id;
    return getAt(name, id) == Acad::eOk;
}

Acad::ErrorStatus AcDbDictionary::setAt(const std::string& name, AcDbObject* object, AcDbObjectId& id) {
    id.setNull();
    if (name.empty()) return Acad::eInvalidName;
    if (!object) return Acad::eNullObjectPointer;
    if (!database()) return Acad::eNotInDatabase;
    if (!isWriteEnabled()) return Acad::eNotOpenForWrite;
    if (!object->objectId().isNull()) return Acad::eAlreadyInDatabase;
    AcDbObjectId before;
    if (getAt(name, before) == Acad::eOk) {
        AcDbObjectPointer<AcDbObject> entry(before, AcDb::kForWrite);
        const Acad::ErrorStatus status = entry ? entry->erase() : entry.openStatus();
        if (status != Acad::eOk) return status;
    }
    const Acad::ErrorStatus status = AcDbObjectAccess::add(*database(), object, objectId());
    if (status == Acad::eOk) m_entries[name] = id = object->objectId();
    return status;
}

Acad::ErrorStatus AcDbDictionary::adopt(const std::string& name, AcDbObjectId id) {
    if (name.empty()) return Acad::eInvalidName;
    if (!isWriteEnabled()) return Acad::eNotOpenForWrite;
    if (id.database() != database()) return Acad::eWrongDatabase;
    if (has(name)) return Acad::eDuplicateKey;
    AcDbObjectPointer<AcDbObject> object(id, AcDb::kForWrite);
    if (!object) return object.openStatus();
    if (object->isKindOf(AcDbEntity::desc()) || object->isKindOf(AcDbSymbolTableRecord::desc()))
        return Acad::eNotApplicable;
    const auto* owner = AcDbDictionary::cast(AcDbObjectAccess::object(object->ownerId()));
    if (owner && std::ranges::any_of(owner->m_entries, [&](const auto& entry) { return entry.second == id; }))
        return Acad::eAlreadyInDatabase;
    object->setOwnerId(objectId());
    m_entries[name] = id;
    return Acad::eOk;
}

Acad::ErrorStatus AcDbDictionary::remove(const std::string& name) {
    assertWriteEnabled();
    return m_entries.erase(name) > 0 ? Acad::eOk : Acad::eKeyNotFound;
}

Acad::ErrorStatus AcDbDictionary::rename(const std::string& from, const std::string& to) {
    assertWriteEnabled();
    const auto entry = m_entries.find(from);
    if (entry == m_entries.end()) return Acad::eKeyNotFound;
    if (has(to)) return Acad::eDuplicateKey;
    const AcDbObjectId id = entry->second;
    m_entries.erase(entry);
    m_entries.emplace(to, id);
    return Acad::eOk;
}

Acad::ErrorStatus AcDbDictionary::dwgInFields(AcDbDwgFiler* filer) {
    const Acad::ErrorStatus status = AcDbObject::dwgInFields(filer);
    if (status != Acad::eOk) return status;
    Adesk::Int32 count = 0;
    filer->readInt32(count);
    std::map<std::string, AcDbObjectId> entries;
    for (Adesk::Int32 i = 0; i < count && filer->filerStatus() == Acad::eOk; ++i) {
        std::string name;
        AcDbObjectId id;
        filer->readString(name);
        filer->readHardOwnershipId(id);
        if (!id.isNull()) entries[name] = id;
    }
    if (filer->filerStatus() == Acad::eOk) m_entries = std::move(entries);
    return filer->filerStatus();
}

Acad::ErrorStatus AcDbDictionary::dwgOutFields(AcDbDwgFiler* filer) const {
    AcDbObject::dwgOutFields(filer);
    filer->writeInt32(static_cast<Adesk::Int32>(m_entries.size()));
    for (const auto& [name, id] : m_entries) {
        filer->writeString(name);
        filer->writeHardOwnershipId(id);
    }
    return filer->filerStatus();
}

Acad::ErrorStatus AcDbDictionary::dxfOutFields(AcDbDxfFiler* filer) const {
    AcDbObject::dxfOutFields(filer);
    filer->writeItem(AcDb::kDxfSubclass, "AcDbDictionary");
    filer->writeInt16(281, 1);
    for (const auto& [name, id] : m_entries) {
        if (id.isErased()) continue;
        filer->writeItem(3, name);
        filer->writeItem(AcDb::kDxfSoftOwnershipId, id);
    }
    return filer->filerStatus();
}

AcDbXrecord::AcDbXrecord() = default;
AcDbXrecord::~AcDbXrecord() = default;

resbuf* AcDbXrecord::rbChain() const {
    assertReadEnabled();
    return veldrin::copyChain(m_chain.get()).release();
}

Acad::ErrorStatus AcDbXrecord::setFromRbChain(const resbuf* chain) {
    assertWriteEnabled();
    for (const resbuf* item = chain; item; item = item->rbnext) {
        if (item->restype < 0 || acutGroupCodeKind(item->restype) == RTNONE) return Acad::eInvalidInput;
    }
    m_chain = veldrin::copyChain(chain);
    return Acad::eOk;
}

Acad::ErrorStatus AcDbXrecord::dwgInFields(AcDbDwgFiler* filer) {
    const Acad::ErrorStatus status = AcDbObject::dwgInFields(filer);
    return status == Acad::eOk ? veldrin::readChain(*filer, m_chain) : status;
}

Acad::ErrorStatus AcDbXrecord::dwgOutFields(AcDbDwgFiler* filer) const {
    AcDbObject::dwgOutFields(filer);
    veldrin::writeChain(*filer, m_chain.get());
    return filer->filerStatus();
}

Acad::ErrorStatus AcDbXrecord::dxfInFields(AcDbDxfFiler* filer) {
    const Acad::ErrorStatus status = AcDbObject::dxfInFields(filer);
    if (status != Acad::eOk) return status;
    if (!filer->atSubclassData("AcDbXrecord")) return Acad::eBadSubclassMarker;
    veldrin::ResbufBuilder chain;
    AcDbDxfItem item;
    while (filer->readItem(item) == Acad::eOk) {
        // Whether it is cloned; it stands before the data.
        if (item.code == 280 && chain.isEmpty()) continue;
        veldrin::addDxfItem(chain, item);
    }
    m_chain = chain.take();
    return filer->filerStatus();
}

Acad::ErrorStatus AcDbXrecord::dxfOutFields(AcDbDxfFiler* filer) const {
    AcDbObject::dxfOutFields(filer);
    filer->writeItem(AcDb::kDxfSubclass, "AcDbXrecord");
    filer->writeInt16(280, 1);
    for (const resbuf* item = m_chain.get(); item; item = item->rbnext) veldrin::writeDxfItem(*filer, *item);
    return filer->filerStatus();
}
