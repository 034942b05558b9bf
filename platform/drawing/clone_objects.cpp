#include "drawing/AcDbBlockReference.h"
#include "drawing/AcDbBlockTable.h"
#include "drawing/AcDbDatabase.h"
#include "drawing/AcDbDictionary.h"
#include "drawing/AcDbEntity.h"
#include "drawing/AcDbObjectAccess.h"
#include "drawing/AcDbProxyEntity.h"
#include "drawing/AcDbRegAppTable.h"
#include "drawing/RecordFiler.h"
#include "drawing/SlotTable.h"
#include "drawing/block_copies.h"
#include "runtime/AcRxClass.h"

#include <memory>
#include <utility>

namespace veldrin {

namespace {

// One copying. Copies are made empty first, so that every id has its counterpart when they are read, one by
// one, from the records of their originals.
class Cloning {
public:
    Cloning(AcDbDatabase& source, AcDbDatabase& target, AcDbIdMapping& mapping)
        : m_source(source), m_target(target), m_mapping(mapping) {}

    Acad::ErrorStatus make(AcDbObjectId original, AcDbObjectId owner);
    Acad::ErrorStatus fillAll();
    void closeAll();
    void eraseAll();

private:
    struct Copy {
        AcDbObjectId original;
        AcDbObjectId copy;
        AcDbObjectId owner;
    };

    Acad::ErrorStatus add(AcDbObject& original, std::unique_ptr<AcDbObject> copy, AcDbObjectId owner);
    Acad::ErrorStatus makeOwned(const AcDbObject& original, AcDbObjectId owner);
    Acad::ErrorStatus fill(const Copy& copy);
    AcDbObjectId resolve(AcDbObjectId original);
    AcDbObjectId translate(AcDbObjectId original);
    AcDbObjectId tableOfSameKind(AcDbObjectId table) const;
    std::string nameOfCopy(const AcDbSymbolTableRecord& original) const;
    void bringApplications(const AcDbObject& original);

    AcDbDatabase& m_source;
    AcDbDatabase& m_target;
    AcDbIdMapping& m_mapping;
    std::vector<Copy> m_copies;
};

Acad::ErrorStatus Cloning::make(AcDbObjectId original, AcDbObjectId owner) {
    if (!m_mapping.find(original).isNull()) return Acad::eOk;
    AcDbObject* const object = AcDbObjectAccess::object(original);
    if (!object) return Acad::eNullObjectId;
    if (original.isErased()) return Acad::eWasErased;
    std::unique_ptr<AcDbObject> copy = emptyLike(*object);
    if (!copy) return Acad::eNotApplicable;
    const Acad::ErrorStatus status = add(*object, std::move(copy), owner);
    if (status != Acad::eOk) return status;
    return makeOwned(*object, m_mapping.find(original));
}

Acad::ErrorStatus Cloning::add(AcDbObject& original, std::unique_ptr<AcDbObject> copy, AcDbObjectId owner) {
    Acad::ErrorStatus status = Acad::eNotApplicable;
    if (auto* const record = AcDbSymbolTableRecord::cast(copy.get())) {
        auto* const table = AcDbSymbolTable::cast(AcDbObjectAccess::object(owner));
        if (!table) return Acad::eInvalidInput;
        record->setName(nameOfCopy(static_cast<AcDbSymbolTableRecord&>(original)));
        status = AcDbObjectAccess::addToTable(*table, record);
    } else {
        status = AcDbObjectAccess::add(m_target, copy.get(), owner);
    }
    if (status != Acad::eOk) return status;
    const AcDbObjectId id = copy.release()->objectId();
    m_mapping.assign(original.objectId(), id);
    m_copies.push_back({original.objectId(), id, owner});
    return Acad::eOk;
}

// A block without a name of its own is another one in every drawing.
std::string Cloning::nameOfCopy(const AcDbSymbolTableRecord& original) const {
    const auto* const block = AcDbBlockTableRecord::cast(&original);
    return block && block->isAnonymous() ? freeBlockName(m_target, original.getName().substr(0, 2))
                                         : original.getName();
}

// What an object owns: the entries of a dictionary, the entities of a block, the attributes of a reference,
// its extension dictionary.
Acad::ErrorStatus Cloning::makeOwned(const AcDbObject& original, AcDbObjectId owner) {
    std::vector<AcDbObjectId> owned{AcDbObjectAccess::extensionDictionary(original)};
    if (const auto* dictionary = AcDbDictionary::cast(&original)) {
        for (const auto& [name, id] : dictionary->entries()) owned.push_back(id);
    } else if (const auto* block = AcDbBlockTableRecord::cast(&original)) {
        owned.insert(owned.end(), block->entityIds().begin(), block->entityIds().end());
    } else if (const auto* reference = AcDbBlockReference::cast(&original)) {
        owned = reference->attributeIds();
        owned.push_back(reference->sequenceEndId());
        owned.push_back(AcDbObjectAccess::extensionDictionary(original));
    }
    for (const AcDbObjectId id : owned) {
        if (id.isErased()) continue;
        if (const Acad::ErrorStatus status = make(id, owner); status != Acad::eOk) return status;
    }
    return Acad::eOk;
}

// Reading may bring table records along, which are then read too.
Acad::ErrorStatus Cloning::fillAll() {
    for (std::size_t i = 0; i < m_copies.size(); ++i) {
        const Copy copy = m_copies[i];
        if (const Acad::ErrorStatus status = fill(copy); status != Acad::eOk) return status;
    }
    return Acad::eOk;
}

Acad::ErrorStatus Cloning::fill(const Copy& copy) {
    const AcDbObject& original = *AcDbObjectAccess::object(copy.original);
    AcDbObject& object = *AcDbObjectAccess::object(copy.copy);
    std::string record;
    const Acad::ErrorStatus status = AcDbObjectAccess::record(original, AcDb::kDeepCloneFiler, record);
    if (status != Acad::eOk) return status;
    const auto resolver = [this](std::uint64_t handle) {
        const std::uint32_t slot = m_source.slots().findHandle(handle);
        return slot == 0 ? AcDbObjectId() : resolve(AcDbObjectId(m_source.generation(), slot));
    };
    RecordReader reader(AcDb::kDeepCloneFiler, resolver, record);
    auto* const named = AcDbSymbolTableRecord::cast(&object);
    const std::string name = named ? named->getName() : std::string();
    const Acad::ErrorStatus read = object.dwgInFields(&reader);
    if (named) named->setName(name); // which may be another one than the original's
    AcDbObjectAccess::setOwner(object, copy.owner);
    const AcDbObjectId dictionary = AcDbObjectAccess::extensionDictionary(original);
    AcDbObjectAccess::setExtensionDictionary(object, m_mapping.find(dictionary));
    if (&m_source != &m_target) bringApplications(original);
    return read;
}

AcDbObjectId Cloning::resolve(AcDbObjectId original) {
    const AcDbObjectId copy = m_mapping.find(original);
    if (!copy.isNull()) return copy;
    return &m_source == &m_target ? original : translate(original);
}

// The record of the same name in the other drawing, which decides what it means there. A record that is
// missing is copied along; anything else is not there.
AcDbObjectId Cloning::translate(AcDbObjectId original) {
    const AcDbObjectId table = tableOfSameKind(original);
    if (!table.isNull()) return table;
    const AcDbObject* const object = AcDbObjectAccess::object(original);
    const auto* const record = AcDbSymbolTableRecord::cast(object);
    if (!record) return {};
    const AcDbObjectId owner = tableOfSameKind(record->ownerId());
    const AcDbObjectId known = AcDbObjectAccess::findRecord(owner, nameOfCopy(*record));
    if (!known.isNull())
        m_mapping.assign(original, known);
    else if (make(original, owner) != Acad::eOk)
        return {};
    return m_mapping.find(original);
}

AcDbObjectId Cloning::tableOfSameKind(AcDbObjectId table) const {
    const std::pair<AcDbObjectId, AcDbObjectId> tables[] = {
        {m_source.blockTableId(), m_target.blockTableId()},
        {m_source.layerTableId(), m_target.layerTableId()},
        {m_source.linetypeTableId(), m_target.linetypeTableId()},
        {m_source.textStyleTableId(), m_target.textStyleTableId()},
        {m_source.regAppTableId(), m_target.regAppTableId()},
    };
    for (const auto& [from, to] : tables) {
        if (from == table) return to;
    }
    return {};
}

void Cloning::bringApplications(const AcDbObject& original) {
    const ReadAccess access(original.objectId());
    const ResbufPtr xdata(original.xData());
    for (const resbuf* item = xdata.get(); item; item = item->rbnext) {
        if (item->restype != AcDb::kDxfRegAppName) continue;
        const AcDbObjectId known = AcDbObjectAccess::findRecord(m_source.regAppTableId(), textOf(*item));
        if (!known.isNull()) resolve(known);
    }
}

void Cloning::closeAll() {
    for (const Copy& copy : m_copies) AcDbObjectAccess::object(copy.copy)->close();
}

void Cloning::eraseAll() {
    for (const Copy& copy : m_copies) {
        AcDbObject* const object = AcDbObjectAccess::object(copy.copy);
        if (object->isKindOf(AcDbBlockTableRecord::desc()))
            object->erase(); // and the marks that came with it
        object->cancel();
    }
}

// Where copies of the object can go: entities to a block, table records to a table.
bool canOwn(const AcDbObject& owner, const AcDbObject& object) {
    if (object.isKindOf(AcDbEntity::desc())) return owner.isKindOf(AcDbBlockTableRecord::desc());
    return object.isKindOf(AcDbSymbolTableRecord::desc()) && owner.isKindOf(AcDbSymbolTable::desc());
}

} // namespace

} // namespace veldrin

Acad::ErrorStatus AcDbDatabase::deepCloneObjects(const std::vector<AcDbObjectId>& ids, AcDbObjectId newOwner,
                                                 AcDbIdMapping& mapping) {
    if (ids.empty()) return Acad::eOk;
    AcDbObject* const owner = AcDbObjectAccess::object(newOwner);
    if (!owner) return Acad::eNullObjectId;
    for (const AcDbObjectId id : ids) {
        const AcDbObject* const object = AcDbObjectAccess::object(id);
        if (!object) return Acad::eNullObjectId;
        if (id.database() != this) return Acad::eWrongDatabase;
        if (!veldrin::canOwn(*owner, *object)) return Acad::eInvalidInput;
    }
    AcDbIdMapping result;
    veldrin::Cloning cloning(*this, *newOwner.database(), result);
    Acad::ErrorStatus status = Acad::eOk;
    for (std::size_t i = 0; i < ids.size() && status == Acad::eOk; ++i)
        status = cloning.make(ids[i], newOwner);
    if (status == Acad::eOk) status = cloning.fillAll();
    if (status != Acad::eOk) {
        cloning.eraseAll();
        return status;
    }
    cloning.closeAll();
    auto* const block = AcDbBlockTableRecord::cast(owner);
    for (const AcDbObjectId id : ids) {
        if (block) AcDbObjectAccess::appendToBlock(*block, result.find(id));
    }
    for (const auto& [original, copy] : result.pairs()) mapping.assign(original, copy);
    return Acad::eOk;
}
