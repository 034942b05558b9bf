#include "scripting/EntitySequence.h"

#include "drawing/AcDbBlockTable.h"
#include "drawing/AcDbDatabase.h"
#include "drawing/SymbolNames.h"
#include "drawing/block_copies.h"

#include <utility>

namespace veldrin::scripting {

void EntitySequence::enter(AcDbDatabase& database) {
    if (m_generation != database.generation()) {
        dropHead();
        m_hasBlock = false;
        m_blockEntities.clear();
    }
    m_database = &database;
    m_generation = database.generation();
}

void EntitySequence::dropHead() {
    m_head = Whole();
}

bool EntitySequence::beginBlock(const std::string& name, const AcGePoint3d& base) {
    if (!isSymbolName(name) || sameSymbolName(name, ACDB_MODEL_SPACE) ||
        sameSymbolName(name, ACDB_PAPER_SPACE))
        return false;
    dropHead();
    m_hasBlock = true;
    m_blockName = name;
    m_blockBase = base;
    m_blockEntities.clear();
    return true;
}

// Of a block without a name of its own, only the beginning counts.
EntitySequence::Result EntitySequence::endBlock() {
    if (!m_hasBlock) return {};
    dropHead();
    m_hasBlock = false;
    std::vector<Whole> entities = std::exchange(m_blockEntities, {});
    const std::string name =
        m_blockName.starts_with('*') ? freeBlockName(*m_database, m_blockName.substr(0, 2)) : m_blockName;
    AcDbObjectId block;
    if (startBlock(*m_database, name, m_blockBase, block) != Acad::eOk) return {};
    for (Whole& whole : entities) {
        AcDbObjectId id;
        if (place(whole, block, id) != Acad::eOk) return {};
    }
    return {true, block, name};
}

EntitySequence::Result EntitySequence::add(std::unique_ptr<AcDbEntity> entity) {
    dropHead();
    return put({std::move(entity), {}});
}

void EntitySequence::beginPolyline(std::unique_ptr<AcDb2dPolyline> polyline) {
    m_head = {std::move(polyline), {}};
}

bool EntitySequence::addVertex(const AcGePoint3d& point, double bulge) {
    auto* polyline = AcDb2dPolyline::cast(m_head.entity.get());
    return polyline && polyline->appendVertex(point, bulge) == Acad::eOk;
}

void EntitySequence::beginReference(std::unique_ptr<AcDbBlockReference> reference) {
    m_head = {std::move(reference), {}};
}

bool EntitySequence::addAttribute(std::unique_ptr<AcDbAttribute> attribute) {
    if (!AcDbBlockReference::cast(m_head.entity.get())) return false;
    m_head.attributes.push_back(std::move(attribute));
    return true;
}

EntitySequence::Result EntitySequence::endSequence() {
    if (!m_head.entity) return {};
    return put(std::exchange(m_head, Whole()));
}

EntitySequence::Result EntitySequence::put(Whole whole) {
    if (m_hasBlock) {
        m_blockEntities.push_back(std::move(whole));
        return {true, {}, {}};
    }
    AcDbObjectId id;
    return {place(whole, m_database->modelSpaceId(), id) == Acad::eOk, id, {}};
}

Acad::ErrorStatus EntitySequence::place(Whole& whole, AcDbObjectId blockId, AcDbObjectId& id) {
    const AcDbObjectPointer<AcDbBlockTableRecord> block(blockId, AcDb::kForWrite);
    if (!block) return block.openStatus();
    const Acad::ErrorStatus status = block->appendAcDbEntity(id, whole.entity.get());
    if (status != Acad::eOk) return status;
    AcDbObjectPointer<AcDbEntity> placed;
    placed.acquire(whole.entity.release());
    auto* reference = AcDbBlockReference::cast(placed.object());
    for (std::unique_ptr<AcDbAttribute>& attribute : whole.attributes) {
        const Acad::ErrorStatus added = reference->appendAttribute(attribute.get());
        if (added != Acad::eOk) return added;
        attribute.release()->close();
    }
    return Acad::eOk;
}

} // namespace veldrin::scripting
