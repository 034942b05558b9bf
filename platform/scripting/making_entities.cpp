// entmake entmakex

#include "drawing/AcDbSymbolTable.h"
#include "drawing/EntityList.h"
#include "runtime/AcRxClass.h"
#include "scripting/EntitySequence.h"
#include "scripting/drawing_values.h"
#include "scripting/entity_lists.h"
#include "scripting/tables.h"
#include "system/AsciiCase.h"

#include <memory>

namespace veldrin::scripting {

namespace {

using lisp::Args;
using lisp::Engine;
using lisp::Error;
using lisp::Value;

AcDbObjectId tableOf(const AcDbDatabase& database, const std::string& type) {
    if (type == "LAYER") return database.layerTableId();
    if (type == "LTYPE") return database.linetypeTableId();
    if (type == "STYLE") return database.textStyleTableId();
    if (type == "APPID") return database.regAppTableId();
    return {};
}

using Result = EntitySequence::Result;

// Puts a new object that is no entity where its kind belongs. What is refused stays with the pointer.
AcDbObjectId place(AcDbDatabase& database, std::unique_ptr<AcDbObject>& object, const std::string& type) {
    AcDbObjectId id;
    Acad::ErrorStatus status = Acad::eNotApplicable;
    if (auto* record = AcDbSymbolTableRecord::cast(object.get())) {
        const AcDbObjectPointer<AcDbSymbolTable> table(tableOf(database, type), AcDb::kForWrite);
        status = table ? table->add(id, record) : table.openStatus();
    } else if (type == "XRECORD" || type == "DICTIONARY")
        status = database.addAcDbObject(id, object.get());
    if (status != Acad::eOk) return {};
    object.release()->close();
    return id;
}

AcRxClass* classOf(const std::string& type) {
    AcRxClass* found = AcRxClassRegistry::instance().atDxfName(type);
    return found ? found : acrxClassByName(("AcDb" + type).c_str());
}

// Null when there is no such kind of object, or the list does not fit it.
std::unique_ptr<AcDbObject> readObject(AcDbDatabase& database, const std::string& type, const Value& list) {
    const AcRxClass* itsClass = classOf(type);
    AcRxObject* made = itsClass ? itsClass->create() : nullptr;
    std::unique_ptr<AcDbObject> object(AcDbObject::cast(made));
    if (!object) {
        delete made;
        return nullptr;
    }
    const ResbufPtr groups = groupsOfList(list);
    if (entityListIn(*object, database, groups.get()) != Acad::eOk) return nullptr;
    return object;
}

template<class Entity>
std::unique_ptr<Entity> takeAs(std::unique_ptr<AcDbObject>& object) {
    auto* entity = Entity::cast(object.get());
    if (entity) object.release();
    return std::unique_ptr<Entity>(entity);
}

bool beginBlock(EntitySequence& sequence, const Value& list) {
    const Value* name = groupOf(list, 2);
    const Value* base = groupOf(list, 10);
    lisp::Point point;
    if (!name || !name->isText() || (base && !lisp::readPoint(*base, point))) return false;
    return sequence.beginBlock(std::string(name->asText()), base ? toPoint(point) : AcGePoint3d());
}

bool addVertex(EntitySequence& sequence, const Value& list) {
    const Value* at = groupOf(list, 10);
    const Value* bulge = groupOf(list, 42);
    lisp::Point point;
    if (!at || !lisp::readPoint(*at, point)) return false;
    return sequence.addVertex(toPoint(point), bulge ? lisp::numberOf(*bulge) : 0.0);
}

bool attributesFollow(const Value& list) {
    const Value* follow = groupOf(list, 66);
    return follow && follow->isNumber() && follow->asNumber() != 0.0;
}

Result makeObject(EntitySequence& sequence, AcDbDatabase& database, const std::string& type,
                  const Value& list) {
    std::unique_ptr<AcDbObject> object = readObject(database, type, list);
    if (!object) return {};
    if (auto polyline = takeAs<AcDb2dPolyline>(object)) {
        sequence.beginPolyline(std::move(polyline));
        return {true, {}, {}};
    }
    if (auto attribute = takeAs<AcDbAttribute>(object))
        return {sequence.addAttribute(std::move(attribute)), {}, {}};
    if (AcDbBlockReference::cast(object.get()) && attributesFollow(list)) {
        sequence.beginReference(takeAs<AcDbBlockReference>(object));
        return {true, {}, {}};
    }
    if (auto entity = takeAs<AcDbEntity>(object)) return sequence.add(std::move(entity));
    const AcDbObjectId id = place(database, object, type);
    return {!id.isNull(), id, {}};
}

Result makeOne(EntitySequence& sequence, AcDbDatabase& database, const std::string& type, const Value& list) {
    if (type == "VERTEX") return {addVertex(sequence, list), {}, {}};
    if (type == "SEQEND") return sequence.endSequence();
    if (type == "BLOCK") return {beginBlock(sequence, list), {}, {}};
    if (type == "ENDBLK") return sequence.endBlock();
    return makeObject(sequence, database, type, list);
}

// The list, for entmakex the name where there is one, and for the end of a block its name.
Value make(EntitySequence& sequence, Args args, bool givesName) {
    if (args.size() == 0) throw Error::tooFewArguments();
    if (args.size() > 1) throw Error::tooManyArguments();
    const Value& list = args.list(0);
    const Value* type = groupOf(list, AcDb::kDxfStart);
    if (!type || !type->isText()) return {};
    AcDbDatabase& database = currentDatabase();
    const UndoStep step("entmake");
    sequence.enter(database);
    const Result result = makeOne(sequence, database, asciiUpperCase(type->asText()), list);
    if (!result.ok) return {};
    if (givesName && !result.id.isNull()) return enameOf(result.id);
    return result.blockName.empty() ? list : Value::text(result.blockName);
}

} // namespace

void defineEntityMaking(Engine& lisp) {
    const auto making = std::make_shared<EntitySequence>();
    lisp.defineExternal("entmake", [making](Engine&, Args args) { return make(*making, args, false); });
    lisp.defineExternal("entmakex", [making](Engine&, Args args) { return make(*making, args, true); });
}

} // namespace veldrin::scripting
