#include "drawing/AcDbObjectAccess.h"

#include "drawing/AcDbBlockTable.h"
#include "drawing/AcDbDatabase.h"
#include "drawing/AcDbDictionary.h"
#include "drawing/AcDbEntity.h"
#include "drawing/AcDbLayerTable.h"
#include "drawing/AcDbLinetypeTable.h"
#include "drawing/AcDbObjectExtras.h"
#include "drawing/AcDbRegAppTable.h"
#include "drawing/AcDbSymbolTable.h"
#include "drawing/AcDbTextStyleTable.h"
#include "drawing/RecordFiler.h"
#include "drawing/UndoLog.h"

#include <algorithm>
#include <utility>

using veldrin::Slot;

Slot* AcDbObjectAccess::slot(AcDbObjectId id) {
    AcDbDatabase* const database = id.database();
    return database && database->slots().holds(id.slot()) ? &database->slots()[id.slot()] : nullptr;
}

AcDbObject* AcDbObjectAccess::object(AcDbObjectId id) {
    const Slot* const found = slot(id);
    return found ? found->object : nullptr;
}

Acad::ErrorStatus AcDbObjectAccess::add(AcDbDatabase& database, AcDbObject* object, AcDbObjectId owner,
                                        std::uint64_t handle) {
    if (!object) return Acad::eNullObjectPointer;
    if (!object->m_id.isNull()) return Acad::eAlreadyInDatabase;
    if (handle != 0 && database.slots().findHandle(handle) != 0) return Acad::eHandleExists;
    const std::uint32_t number = database.slots().add(object, handle);
    object->m_id = AcDbObjectId(database.generation(), number);
    object->m_owner = owner;
    Slot& slot = database.slots()[number];
    slot.writer = slot.changed = slot.fresh = true;
    database.undoLog().fileAppended(object->m_id);
    return Acad::eOk;
}

void AcDbObjectAccess::replace(AcDbObjectId id, std::unique_ptr<AcDbObject> object) {
    Slot& held = *slot(id);
    object->m_id = id;
    object->m_owner = held.object->m_owner;
    const std::unique_ptr<AcDbObject> before(held.object);
    held.object = object.release();
    touch(*held.object);
}

AcDbObjectId AcDbObjectAccess::extensionDictionary(const AcDbObject& object) {
    return object.m_extras ? object.m_extras->dictionary : AcDbObjectId();
}

void AcDbObjectAccess::setExtensionDictionary(AcDbObject& object, AcDbObjectId dictionary) {
    if (dictionary.isNull() && !object.m_extras) return;
    object.extras().dictionary = dictionary;
}

void AcDbObjectAccess::setErased(AcDbObjectId id, bool erased) {
    Slot& held = *slot(id);
    if (held.erased == erased) return;
    held.erased = erased;
    held.changed = true;
    id.database()->undoLog().fileErased(id, erased);
    if (const auto* record = AcDbSymbolTableRecord::cast(held.object)) record->nameChanged();
    touch(*held.object);
}

Acad::ErrorStatus AcDbObjectAccess::record(const AcDbObject& object, AcDb::FilerType type,
                                           std::string& record) {
    const veldrin::ReadAccess access(object.objectId());
    veldrin::RecordWriter writer(type);
    const Acad::ErrorStatus status = object.dwgOutFields(&writer);
    record = writer.takeRecord();
    return status == Acad::eOk ? writer.filerStatus() : status;
}

// An entity of a block that can be inserted changes what other entities show, so it counts as a table.
void AcDbObjectAccess::touch(const AcDbObject& object) {
    AcDbDatabase* const database = object.database();
    if (!database) return;
    ++database->m_graphicsGeneration;
    database->m_modified = true;
    const AcDbObject* holder = &object;
    constexpr int kDeepest = 2; // an attribute's holder is a reference
    for (int depth = 0; depth < kDeepest && holder->isKindOf(AcDbEntity::desc()); ++depth) {
        holder = AcDbObjectAccess::object(holder->ownerId());
        if (!holder) return;
    }
    const bool isRecord = holder->isKindOf(AcDbSymbolTableRecord::desc());
    const AcDbObjectId id = holder->objectId();
    if (isRecord && id != database->modelSpaceId() && id != database->paperSpaceId())
        ++database->m_tablesGeneration;
}

void AcDbObjectAccess::touchTables(AcDbDatabase& database) {
    ++database.m_graphicsGeneration;
    ++database.m_tablesGeneration;
    database.m_modified = true;
}

void AcDbObjectAccess::appendToBlock(AcDbBlockTableRecord& block, AcDbObjectId entity) {
    block.m_entities.push_back(entity);
    slot(block.objectId())->changed = true;
}

Acad::ErrorStatus AcDbObjectAccess::addToTable(AcDbSymbolTable& table, AcDbSymbolTableRecord* record) {
    const Acad::ErrorStatus status = table.insert(record);
    if (status == Acad::eOk) slot(table.objectId())->changed = true;
    return status;
}

void AcDbObjectAccess::adoptRecord(AcDbSymbolTable& table, AcDbSymbolTableRecord& record) {
    record.m_owner = table.objectId();
    table.m_records.push_back(record.objectId());
    table.m_indexIsValid = false;
    slot(table.objectId())->changed = true;
}

void AcDbObjectAccess::putEntry(AcDbDictionary& dictionary, const std::string& name, AcDbObjectId entry) {
    dictionary.m_entries[name] = entry;
}

AcDbObjectId AcDbObjectAccess::findRecord(AcDbObjectId table, const std::string& name) {
    const AcDbSymbolTable* const found = AcDbSymbolTable::cast(object(table));
    const AcDbObjectId id = found ? found->lookUp(name) : AcDbObjectId();
    return id.isErased() ? AcDbObjectId() : id;
}

bool AcDbObjectAccess::findRoots(AcDbDatabase& database) {
    const std::pair<AcRxClass*, AcDbObjectId*> tables[] = {
        {AcDbBlockTable::desc(), &database.m_blockTable},
        {AcDbLayerTable::desc(), &database.m_layerTable},
        {AcDbLinetypeTable::desc(), &database.m_linetypeTable},
        {AcDbTextStyleTable::desc(), &database.m_textStyleTable},
        {AcDbRegAppTable::desc(), &database.m_regAppTable},
        {AcDbDictionary::desc(), &database.m_namedObjects},
    };
    const veldrin::SlotTable& slots = database.slots();
    for (std::uint32_t number = 1; number < slots.size(); ++number) {
        const AcDbObject* const object = slots[number].object;
        if (!object || slots[number].erased || !object->m_owner.isNull()) continue;
        for (const auto& [rxClass, root] : tables)
            if (root->isNull() && object->isA() == rxClass) *root = object->m_id;
    }
    for (const auto& [rxClass, root] : tables)
        if (root->isNull()) return false;
    database.m_modelSpace = findRecord(database.m_blockTable, ACDB_MODEL_SPACE);
    database.m_paperSpace = findRecord(database.m_blockTable, ACDB_PAPER_SPACE);
    database.m_layerZero = findRecord(database.m_layerTable, "0");
    database.m_byLayer = findRecord(database.m_linetypeTable, "ByLayer");
    database.m_byBlock = findRecord(database.m_linetypeTable, "ByBlock");
    database.m_continuous = findRecord(database.m_linetypeTable, "Continuous");
    database.m_standardStyle = findRecord(database.m_textStyleTable, "Standard");
    const AcDbObjectId fixed[] = {database.m_modelSpace, database.m_paperSpace, database.m_layerZero,
                                  database.m_byLayer,    database.m_byBlock,    database.m_continuous};
    return std::ranges::none_of(fixed, &AcDbObjectId::isNull);
}

namespace veldrin {

ReadAccess::ReadAccess(AcDbObjectId id) : m_id(id) {
    if (Slot* const slot = AcDbObjectAccess::slot(id)) ++slot->notified;
}

ReadAccess::~ReadAccess() {
    if (Slot* const slot = AcDbObjectAccess::slot(m_id)) --slot->notified;
}

} // namespace veldrin
