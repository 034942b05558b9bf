#include "drawing/mend_drawing.h"

#include "drawing/AcDbBlockTable.h"
#include "drawing/AcDbDatabase.h"
#include "drawing/AcDbDictionary.h"
#include "drawing/AcDbEntity.h"
#include "drawing/AcDbLayerTable.h"
#include "drawing/AcDbLinetypeTable.h"
#include "drawing/AcDbObjectAccess.h"
#include "drawing/AcDbRegAppTable.h"
#include "drawing/AcDbTextStyleTable.h"
#include "drawing/SlotTable.h"
#include "drawing/SymbolNames.h"
#include "runtime/AcRxClass.h"

#include <fmt/format.h>

#include <functional>
#include <memory>
#include <string_view>
#include <unordered_set>
#include <utility>

namespace veldrin {

namespace {

class Mender {
public:
    explicit Mender(AcDbDatabase& database) : m_database(database) {}

    std::vector<std::string> run() {
        mendTables();
        if (AcDbObjectAccess::findRoots(m_database))
            mendEntities();
        else
            m_notes.emplace_back("the tables cannot be mended");
        return std::move(m_notes);
    }

private:
    void mendTables();
    template<class Table, class Record>
    void mendTable(const char* what, std::initializer_list<const char*> fixedNames);
    template<class Root>
    Root* findRoot();
    template<class Root>
    Root* findOrMakeRoot(const char* what);
    void adoptRecords(AcDbSymbolTable& table, AcRxClass* recordClass);
    void nameAnew(AcDbSymbolTable& table, AcDbSymbolTableRecord& record);
    void mendEntities();
    void findPlaceFor(AcDbEntity& entity);
    void giveLayer(AcDbEntity& entity);
    void forEach(const std::function<void(AcDbObject&)>& act);
    void note(const AcDbObject& object, const char* what) {
        m_notes.push_back(
            fmt::format("object {} of class {} {}", object.handle().text(), object.isA()->name(), what));
    }

    AcDbDatabase& m_database;
    std::vector<std::string> m_notes;
    std::unordered_set<AcDbObjectId> m_listed; // entities that their block lists, and its marks
};

void Mender::forEach(const std::function<void(AcDbObject&)>& act) {
    SlotTable& slots = m_database.slots();
    const std::uint32_t count = slots.size(); // what is added meanwhile is in order
    for (std::uint32_t number = 1; number < count; ++number)
        if (slots[number].object && !slots[number].erased) act(*slots[number].object);
}

// ---- Tables and their records

template<class Root>
Root* Mender::findRoot() {
    Root* found = nullptr;
    forEach([&](AcDbObject& object) {
        if (!found && object.isA() == Root::desc() && object.ownerId().isNull()) found = Root::cast(&object);
    });
    return found;
}

template<class Root>
Root* Mender::findOrMakeRoot(const char* what) {
    if (Root* found = findRoot<Root>()) return found;
    auto made = std::make_unique<Root>();
    if (AcDbObjectAccess::add(m_database, made.get(), {}) != Acad::eOk) return nullptr;
    m_notes.push_back(fmt::format("{} is missing", what));
    return made.release();
}

// A second record of a name, as the one that came in the place of a lost table's may be, gets another.
void Mender::nameAnew(AcDbSymbolTable& table, AcDbSymbolTableRecord& record) {
    const std::string base = isSymbolName(record.getName()) ? record.getName() : "UNNAMED";
    std::string name = base;
    for (int n = 1; !AcDbObjectAccess::findRecord(table.objectId(), name).isNull(); ++n)
        name = fmt::format("{}_{}", base, n);
    record.setName(name);
}

void Mender::adoptRecords(AcDbSymbolTable& table, AcRxClass* recordClass) {
    const std::vector<AcDbObjectId> ids = table.recordIds();
    const std::unordered_set<AcDbObjectId> listed(ids.begin(), ids.end());
    forEach([&](AcDbObject& object) {
        auto* record = object.isKindOf(recordClass) ? AcDbSymbolTableRecord::cast(&object) : nullptr;
        if (!record || listed.contains(record->objectId())) return;
        note(*record, "is in no table");
        if (!isSymbolName(record->getName()) ||
            !AcDbObjectAccess::findRecord(table.objectId(), record->getName()).isNull())
            nameAnew(table, *record);
        AcDbObjectAccess::adoptRecord(table, *record);
    });
}

template<class Table, class Record>
void Mender::mendTable(const char* what, std::initializer_list<const char*> fixedNames) {
    Table* const table = findOrMakeRoot<Table>(what);
    if (!table) return;
    adoptRecords(*table, Record::desc());
    for (const char* name : fixedNames) {
        if (!AcDbObjectAccess::findRecord(table->objectId(), name).isNull()) continue;
        m_notes.push_back(fmt::format("{} lacks its record {}", what, name));
        auto record = std::make_unique<Record>();
        record->setName(name);
        if (AcDbObjectAccess::addToTable(*table, record.get()) == Acad::eOk) record.release();
    }
}

void Mender::mendTables() {
    mendTable<AcDbLinetypeTable, AcDbLinetypeTableRecord>("the table of linetypes",
                                                          {"ByBlock", "ByLayer", "Continuous"});
    mendTable<AcDbLayerTable, AcDbLayerTableRecord>("the table of layers", {"0"});
    mendTable<AcDbTextStyleTable, AcDbTextStyleTableRecord>("the table of text styles", {"Standard"});
    mendTable<AcDbRegAppTable, AcDbRegAppTableRecord>("the table of applications", {"ACAD"});
    mendTable<AcDbBlockTable, AcDbBlockTableRecord>("the table of blocks",
                                                    {ACDB_MODEL_SPACE, ACDB_PAPER_SPACE});
    findOrMakeRoot<AcDbDictionary>("the dictionary of named objects");
}

// ---- Entities

bool isMark(const AcDbEntity& entity) {
    const std::string_view name = entity.isA()->name();
    return name == "AcDbBlockBegin" || name == "AcDbBlockEnd" || name == "AcDbSequenceEnd";
}

// Marks, and what belongs to a reference alone, are nothing without their owner.
bool isPartOfAnother(const AcDbEntity& entity) {
    return isMark(entity) || std::string_view(entity.isA()->name()) == "AcDbAttribute";
}

void Mender::findPlaceFor(AcDbEntity& entity) {
    if (m_listed.contains(entity.objectId())) return;
    const AcDbObjectId ownerId = entity.ownerId();
    AcDbObject* const owner = ownerId.isErased() ? nullptr : AcDbObjectAccess::object(ownerId);
    if (owner && owner->isKindOf(AcDbEntity::desc())) return; // a part of that one
    if (isPartOfAnother(entity)) {
        note(entity, "has lost what it belongs to");
        AcDbObjectAccess::setErased(entity.objectId(), true);
        return;
    }
    auto* block = AcDbBlockTableRecord::cast(owner);
    note(entity, block ? "is missing in its block" : "has lost its block and is in model space now");
    if (!block) block = AcDbBlockTableRecord::cast(AcDbObjectAccess::object(m_database.modelSpaceId()));
    AcDbObjectAccess::setOwner(entity, block->objectId());
    AcDbObjectAccess::appendToBlock(*block, entity.objectId());
}

void Mender::giveLayer(AcDbEntity& entity) {
    if (isMark(entity) || (!entity.layerId().isNull() && !entity.linetypeId().isNull())) return;
    note(entity, "has lost its layer or linetype");
    if (entity.layerId().isNull()) entity.setLayer(m_database.layerZero());
    if (entity.linetypeId().isNull()) entity.setLinetype(m_database.byLayerLinetype());
}

void Mender::mendEntities() {
    forEach([&](AcDbObject& object) {
        const auto* block = AcDbBlockTableRecord::cast(&object);
        if (!block) return;
        m_listed.insert(block->entityIds().begin(), block->entityIds().end());
        m_listed.insert({block->beginId(), block->endId()});
    });
    forEach([&](AcDbObject& object) {
        auto* entity = AcDbEntity::cast(&object);
        if (!entity) return;
        findPlaceFor(*entity);
        if (!entity->isErased()) giveLayer(*entity);
    });
}

} // namespace

std::vector<std::string> mendDrawing(AcDbDatabase& database) {
    return Mender(database).run();
}

} // namespace veldrin
