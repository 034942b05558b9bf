#include "scripting/drawing_values.h"

#include "drawing/acdb.h"
#include "editor/CommandRegistry.h"
#include "runtime/Host.h"
#include "system/AsciiCase.h"

namespace veldrin::scripting {

using lisp::Args;
using lisp::Error;
using lisp::Value;

AcDbDatabase& currentDatabase() {
    AcDbDatabase* database = acdbHostApplicationServices()->workingDatabase();
    if (!database) throw Error("no drawing is open");
    return *database;
}

Value enameOf(AcDbObjectId id) {
    ads_name name;
    if (acdbGetAdsName(name, id) != Acad::eOk) return {};
    return Value::ename({{name[0], name[1]}});
}

bool idOf(const Value& value, AcDbObjectId& id) {
    if (!value.is(lisp::Kind::Ename)) return false;
    const lisp::Ename words = value.asEname();
    const ads_name name = {words.words[0], words.words[1]};
    return acdbGetObjectId(id, name) == Acad::eOk && id.isValid();
}

AcDbObjectId idOf(Args args, std::size_t i) {
    AcDbObjectId id;
    if (!idOf(args[i], id)) args.wrong(i, "lentityp");
    return id;
}

AcDbObjectPointer<AcDbEntity> openEntity(Args args, std::size_t i, AcDb::OpenMode mode) {
    AcDbObjectPointer<AcDbEntity> entity(idOf(args, i), mode);
    if (!entity)
        throw Error(std::string("entity cannot be opened: ") + acadErrorStatusText(entity.openStatus()));
    return entity;
}

Value pointValue(const AcGePoint3d& point) {
    return lisp::list(Value::real(point.x), Value::real(point.y), Value::real(point.z));
}

Value pointsValue(const AcGePoint3dArray& points) {
    lisp::ListBuilder list;
    for (const AcGePoint3d& point : points) list.add(pointValue(point));
    return list.finish();
}

AcGePoint3d toPoint(const lisp::Point& point) {
    return {point.x, point.y, point.z};
}

AcGePoint3d pointOf(Args args, std::size_t i) {
    return toPoint(args.point(i));
}

AcGeIntArray integersOf(Args args, std::size_t i) {
    AcGeIntArray integers;
    for (const Value& item : lisp::ListView(args.list(i))) integers.push_back(lisp::integerOf(item));
    return integers;
}

AcGePoint3d userToWorld(const AcGePoint3d& point) {
    AcGePoint3d world = point;
    return world.transformBy(currentDatabase().ucsToWorld());
}

AcGePoint3d worldToUser(const AcGePoint3d& point) {
    AcGePoint3d user = point;
    return user.transformBy(currentDatabase().ucsToWorld().inverse());
}

Value statusValue(Acad::ErrorStatus status) {
    return status == Acad::eOk ? Value::t() : Value::integer(status);
}

SelectionSet& selectionSetOf(Args args, std::size_t i) {
    return args.payload<SelectionSet>(i, lisp::Kind::PickSet, "lselsetp");
}

Value selectionSetValue(const std::vector<AcDbObjectId>& ids) {
    if (ids.empty()) return {};
    return Value::pickSet(Host::current().commands().selectionSets().make(ids));
}

} // namespace veldrin::scripting
