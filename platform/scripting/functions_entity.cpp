// entget entmod entupd entdel entlast entnext handent

#include "drawing/AcDbBlockBegin.h"
#include "drawing/AcDbBlockReference.h"
#include "drawing/AcDbBlockTable.h"
#include "drawing/EntityList.h"
#include "editor/command_pick.h"
#include "scripting/drawing_values.h"
#include "scripting/entity_lists.h"
#include "scripting/tables.h"

#include <algorithm>

namespace veldrin::scripting {

namespace {

using lisp::Args;
using lisp::Engine;
using lisp::Error;
using lisp::Value;

Value entget(Engine&, Args args) {
    std::vector<std::string> applications;
    for (const Value& name : lisp::ListView(args.list(1))) applications.emplace_back(lisp::textOf(name));
    return entityData(idOf(args, 0), applications);
}

// The list, or nil when the entity was not changed.
Value entmod(Engine&, Args args) {
    const Value* name = groupOf(args.list(0), AcDb::kDxfEntityName);
    AcDbObjectId id;
    if (!name || !idOf(*name, id)) args.wrong(0, "an entity list:");
    const ResbufPtr groups = groupsOfList(args[0]);
    const UndoStep step("entmod");
    return acdbEntMod(id, groups.get()) == Acad::eOk ? args[0] : Value();
}

Value entupd(Engine&, Args args) {
    idOf(args, 0);
    return args[0];
}

// Erases, or brings back what is erased.
Value entdel(Engine&, Args args) {
    const AcDbObjectId id = idOf(args, 0);
    if (isOnLockedLayer(id)) return {};
    const UndoStep step("entdel");
    const AcDbObjectPointer<AcDbObject> object(id, AcDb::kForWrite, true);
    const bool done = object && object->erase(!object->isErased()) == Acad::eOk;
    return done ? args[0] : Value();
}

Value entlast(Engine&, Args) {
    return enameOf(lastEntity(currentDatabase()));
}

// Where the entity stands in its block. Names ascend as a rule, since entities are appended as they are made.
std::size_t placeOf(AcDbObjectId id, const std::vector<AcDbObjectId>& ids) {
    const auto guess = std::lower_bound(ids.begin(), ids.end(), id);
    const auto found = guess != ids.end() && *guess == id ? guess : std::find(ids.begin(), ids.end(), id);
    return static_cast<std::size_t>(found - ids.begin());
}

// The first entity of a block behind one of them; nil at its end.
Value nextInBlock(AcDbObjectId blockId, AcDbObjectId before) {
    const AcDbObjectPointer<AcDbBlockTableRecord> block(blockId);
    if (!block) return {};
    const std::vector<AcDbObjectId>& ids = block->entityIds();
    for (std::size_t i = before.isNull() ? 0 : placeOf(before, ids) + 1; i < ids.size(); ++i)
        if (!ids[i].isErased()) return enameOf(ids[i]);
    return {};
}

// Attributes follow their reference, SEQEND the last of them, and then comes what stands behind the
// reference.
Value entnext(Engine&, Args args) {
    if (!args.has(0)) return nextInBlock(currentDatabase().modelSpaceId(), {});
    const AcDbObjectId before = idOf(args, 0);
    const AcDbObjectPointer<AcDbEntity> entity(before, AcDb::kForRead, true);
    if (!entity) args.wrong(0, "lentityp");
    if (entity->isKindOf(AcDbBlockBegin::desc())) return nextInBlock(entity->ownerId(), {});
    const auto* reference = AcDbBlockReference::cast(entity.object());
    if (reference && reference->hasAttributes()) return enameOf(reference->attributeIds().front());
    const AcDbObjectPointer<AcDbBlockReference> owner(entity->ownerId(), AcDb::kForRead, true);
    if (!owner) return nextInBlock(entity->ownerId(), before);
    if (entity->isKindOf(AcDbSequenceEnd::desc())) return nextInBlock(owner->ownerId(), owner->objectId());
    const std::vector<AcDbObjectId> attributes = owner->attributeIds();
    const auto at = std::ranges::find(attributes, before);
    if (at == attributes.end()) return {};
    return enameOf(std::next(at) == attributes.end() ? owner->sequenceEndId() : *std::next(at));
}

Value handent(Engine&, Args args) {
    AcDbObjectId id;
    const AcDbHandle handle = AcDbHandle::fromText(args.string(0));
    if (handle.isNull() || currentDatabase().getAcDbObjectId(id, handle) != Acad::eOk) return {};
    return enameOf(id);
}

constexpr lisp::BuiltinRow rows[] = {
    {"entget", 1, 2, entget},   {"entmod", 1, 1, entmod},   {"entupd", 1, 1, entupd},
    {"entdel", 1, 1, entdel},   {"entlast", 0, 0, entlast}, {"entnext", 0, 1, entnext},
    {"handent", 1, 1, handent},
};

} // namespace

std::span<const lisp::BuiltinRow> entityFunctions() {
    return rows;
}

} // namespace veldrin::scripting
