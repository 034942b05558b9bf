// vd-extend vd-transform vd-grips vd-move-grips vd-stretch-points vd-move-stretch-points vd-osnap osnap

#include "drawing/AcDbCurve.h"
#include "editor/SystemVariables.h"
#include "editor/command_pick.h"
#include "runtime/Host.h"
#include "scripting/drawing_values.h"
#include "scripting/tables.h"
#include "system/AsciiCase.h"

#include <limits>

namespace veldrin::scripting {

namespace {

using lisp::Args;
using lisp::Engine;
using lisp::Error;
using lisp::Value;

AcGeVector3d vectorOf(Args args, std::size_t i) {
    return pointOf(args, i).asVector();
}

Value extend(Engine&, Args args) {
    const UndoStep step("vd-extend");
    const AcDbObjectPointer<AcDbEntity> entity = openEntity(args, 0, AcDb::kForWrite);
    AcDbCurve* curve = AcDbCurve::cast(entity.object());
    if (!curve) return Value::integer(Acad::eNotApplicable);
    if (args[1].isNumber()) return statusValue(curve->extend(args.number(1)));
    return statusValue(curve->extend(args.has(2), pointOf(args, 1)));
}

AcGeMatrix3d matrixOf(Args args, std::size_t i) {
    AcGeMatrix3d matrix;
    int row = 0;
    for (const Value& line : lisp::ListView(args.list(i))) {
        int column = 0;
        for (const Value& entry : lisp::ListView(line)) {
            if (row < 4 && column < 4) matrix.entry[row][column] = lisp::numberOf(entry);
            ++column;
        }
        if (column != 4) args.wrong(i, "a matrix of four rows of four:");
        ++row;
    }
    if (row != 4) args.wrong(i, "a matrix of four rows of four:");
    return matrix;
}

Value transform(Engine&, Args args) {
    const AcGeMatrix3d matrix = matrixOf(args, 1);
    const UndoStep step("vd-transform");
    return statusValue(openEntity(args, 0, AcDb::kForWrite)->transformBy(matrix));
}

Value grips(Engine&, Args args) {
    AcGePoint3dArray points;
    AcGeIntArray modes, ids;
    const Acad::ErrorStatus status = openEntity(args, 0)->getGripPoints(points, modes, ids);
    return status == Acad::eOk ? pointsValue(points) : Value::integer(status);
}

Value moveGrips(Engine&, Args args) {
    const AcGeIntArray indices = integersOf(args, 1);
    const AcGeVector3d offset = vectorOf(args, 2);
    const UndoStep step("vd-move-grips");
    return statusValue(openEntity(args, 0, AcDb::kForWrite)->moveGripPointsAt(indices, offset));
}

Value stretchPoints(Engine&, Args args) {
    AcGePoint3dArray points;
    const Acad::ErrorStatus status = openEntity(args, 0)->getStretchPoints(points);
    return status == Acad::eOk ? pointsValue(points) : Value::integer(status);
}

Value moveStretchPoints(Engine&, Args args) {
    const AcGeIntArray indices = integersOf(args, 1);
    const AcGeVector3d offset = vectorOf(args, 2);
    const UndoStep step("vd-move-stretch-points");
    return statusValue(openEntity(args, 0, AcDb::kForWrite)->moveStretchPointsAt(indices, offset));
}

struct SnapName {
    const char* name;
    AcDb::OsnapMode mode;
};
constexpr SnapName snapNames[] = {
    {"END", AcDb::kOsModeEnd},  {"MID", AcDb::kOsModeMid},  {"CEN", AcDb::kOsModeCen},
    {"NOD", AcDb::kOsModeNode}, {"QUA", AcDb::kOsModeQuad}, {"INS", AcDb::kOsModeIns},
    {"PER", AcDb::kOsModePerp}, {"TAN", AcDb::kOsModeTan},  {"NEA", AcDb::kOsModeNear},
    {"INT", AcDb::kOsModeInt},
};

// A mode by its first three letters, prefixes left out; false for an unknown one.
bool snapMode(std::string_view text, AcDb::OsnapMode& mode) {
    std::string name = asciiUpperCase(text);
    name.erase(0, std::min(name.find_first_not_of("_ "), name.size()));
    for (const SnapName& row : snapNames)
        if (name.compare(0, 3, row.name) == 0) {
            mode = row.mode;
            return true;
        }
    return false;
}

Value entitySnap(Engine&, Args args) {
    AcDb::OsnapMode mode{};
    if (!snapMode(args.text(1), mode)) args.wrong(1, "a snap mode:");
    const AcGePoint3d pick = pointOf(args, 2), last = pointOf(args, 3);
    AcGePoint3dArray points;
    AcGeIntArray ids;
    const Acad::ErrorStatus status =
        openEntity(args, 0)->getOsnapPoints(mode, 0, pick, last, AcGeMatrix3d(), points, ids);
    return status == Acad::eOk ? pointsValue(points) : Value::integer(status);
}

// The snap point closest to a point, of the entity that lies there.
Value osnap(Engine&, Args args) {
    const AcGePoint3d pick = userToWorld(pointOf(args, 0));
    const std::string modes = args.string(1);
    const AcDbObjectPointer<AcDbEntity> entity(entityAt(currentDatabase(), pick));
    if (!entity) return {};
    AcGePoint3d last;
    if (const auto value = Host::current().variables().get("LASTPOINT"))
        if (const auto* point = std::get_if<AcGePoint3d>(&*value)) last = userToWorld(*point);

    double best = std::numeric_limits<double>::infinity();
    AcGePoint3d closest;
    for (std::size_t at = 0; at <= modes.size();) {
        const std::size_t comma = std::min(modes.find(',', at), modes.size());
        AcDb::OsnapMode mode{};
        AcGePoint3dArray points;
        AcGeIntArray ids;
        if (snapMode(std::string_view(modes).substr(at, comma - at), mode) &&
            entity->getOsnapPoints(mode, 0, pick, last, AcGeMatrix3d(), points, ids) == Acad::eOk)
            for (const AcGePoint3d& point : points)
                if (point.convert2d().distanceTo(pick.convert2d()) < best) {
                    best = point.convert2d().distanceTo(pick.convert2d());
                    closest = point;
                }
        at = comma + 1;
    }
    return best < std::numeric_limits<double>::infinity() ? pointValue(worldToUser(closest)) : Value();
}

constexpr lisp::BuiltinRow rows[] = {
    {"vd-extend", 2, 3, extend},
    {"vd-transform", 2, 2, transform},
    {"vd-grips", 1, 1, grips},
    {"vd-move-grips", 3, 3, moveGrips},
    {"vd-stretch-points", 1, 1, stretchPoints},
    {"vd-move-stretch-points", 3, 3, moveStretchPoints},
    {"vd-osnap", 4, 4, entitySnap},
    {"osnap", 2, 2, osnap},
};

} // namespace

std::span<const lisp::BuiltinRow> editingFunctions() {
    return rows;
}

} // namespace veldrin::scripting
