// entmake entmakex

#include "drawing/AcDb2dPolyline.h"
#include "drawing/AcDbBlockTable.h"
#include "drawing/AcDbSymbolTable.h"
#include "drawing/EntityList.h"
#include "runtime/AcRxClass.h"
#include "scripting/drawing_values.h"
#include "scripting/entity_lists.h"
#include "scripting/tables.h"

#include <memory>

namespace veldrin::scripting {

namespace {

using lisp::Args;
using lisp::Engine;
using lisp::Error;
using lisp::Value;

// A polyline comes in several calls: its head, each vertex, and SEQEND.
struct Making {
    std::unique_ptr<AcDb2dPolyline> polyline;
};

AcDbObjectId tableOf(const AcDbDatabase& database, const std::string& type) {
    if (type == "LAYER") return database.layerTableId();
    if (type == "LTYPE") return database.linetypeTableId();
    if (type == "STYLE") return database.textStyleTableId();
    if (type == "APPID") return database.regAppTableId();
    return {};
}

// Puts a new object where its kind belongs. What is refused stays with the pointer.
AcDbObjectId place(AcDbDatabase& database, std::unique_ptr<AcDbObject>& object, const std::string& type) {
    AcDbObjectId id;
    Acad::ErrorStatus status = Acad::eNotApplicable;
    if (auto* entity = AcDbEntity::cast(object.get())) {
        const AcDbObjectPointer<AcDbBlockTableRecord> space(database.modelSpaceId(), AcDb::kForWrite);
        status = space ? space->appendAcDbEntity(id, entity) : space.openStatus();
    } else if (auto* record = AcDbSymbolTableRecord::cast(object.get())) {
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
AcDbObjectId makeObject(AcDbDatabase& database, const std::string& type, const Value& list) {
    const AcRxClass* itsClass = classOf(type);
    AcRxObject* made = itsClass ? itsClass->create() : nullptr;
    std::unique_ptr<AcDbObject> object(AcDbObject::cast(made));
    if (!object) {
        delete made;
        return {};
    }
    const ResbufPtr groups = groupsOfList(list);
    if (entityListIn(*object, database, groups.get()) != Acad::eOk) return {};
    return place(database, object, type);
}

bool addVertex(Making& making, const Value& list) {
    const Value* at = groupOf(list, 10);
    const Value* bulge = groupOf(list, 42);
    lisp::Point point;
    if (!making.polyline || !at || !lisp::readPoint(*at, point)) return false;
    return making.polyline->appendVertex(toPoint(point), bulge ? lisp::numberOf(*bulge) : 0.0) == Acad::eOk;
}

AcDbObjectId endPolyline(AcDbDatabase& database, Making& making) {
    std::unique_ptr<AcDbObject> polyline = std::move(making.polyline);
    return polyline ? place(database, polyline, "POLYLINE") : AcDbObjectId();
}

Value make(Making& making, Args args, bool givesName) {
    if (args.size() == 0) throw Error::tooFewArguments();
    if (args.size() > 1) throw Error::tooManyArguments();
    const Value& list = args.list(0);
    const Value* type = groupOf(list, AcDb::kDxfStart);
    if (!type || !type->isText()) return {};
    AcDbDatabase& database = currentDatabase();
    const std::string name = upperCase(type->asText());
    const UndoStep step("entmake");
    if (name == "VERTEX") return addVertex(making, list) ? list : Value();
    if (name == "POLYLINE") {
        making.polyline = std::make_unique<AcDb2dPolyline>();
        const ResbufPtr groups = groupsOfList(list);
        if (entityListIn(*making.polyline, database, groups.get()) == Acad::eOk) return list;
        making.polyline.reset();
        return {};
    }
    const AcDbObjectId id =
        name == "SEQEND" ? endPolyline(database, making) : makeObject(database, name, list);
    if (id.isNull()) return {};
    return givesName ? enameOf(id) : list;
}

} // namespace

void defineEntityMaking(Engine& lisp) {
    const auto making = std::make_shared<Making>();
    lisp.defineExternal("entmake", [making](Engine&, Args args) { return make(*making, args, false); });
    lisp.defineExternal("entmakex", [making](Engine&, Args args) { return make(*making, args, true); });
}

} // namespace veldrin::scripting
