// getvar setvar trans

#include "editor/SystemVariables.h"
#include "lisp/Printer.h"
#include "runtime/Host.h"
#include "scripting/drawing_values.h"
#include "scripting/entity_lists.h"
#include "scripting/tables.h"
#include "system/AsciiCase.h"

namespace veldrin::scripting {

namespace {

using lisp::Args;
using lisp::Engine;
using lisp::Error;
using lisp::Kind;
using lisp::Value;

// By a text or by a symbol.
std::string nameOf(Args args, std::size_t i) {
    return args[i].isSymbol() ? args[i].asSymbol()->name : args.string(i);
}

Value getvar(Engine&, Args args) {
    return Host::current().variables().getLisp(nameOf(args, 0));
}

Value setvar(Engine&, Args args) {
    const std::string name = nameOf(args, 0);
    SystemVariables& variables = Host::current().variables();
    const UndoStep step("setvar");
    if (variables.setLisp(name, args[1]) != SystemVariables::Result::Ok)
        throw Error("system variable setting rejected: \"" + asciiUpperCase(name) + "\" " +
                    lisp::prin1Text(args[1]));
    return args[1];
}

// The frame that belongs to a direction of the Z axis, as flat entities have it.
AcGeMatrix3d frameOf(const AcGeVector3d& normal) {
    const AcGeVector3d z = normal.normal(), x = z.perpVector();
    return AcGeMatrix3d::coordSystem(AcGePoint3d::kOrigin, x, z.crossProduct(x), z);
}

AcGeVector3d normalOf(AcDbObjectId entity) {
    const Value data = entityData(entity);
    lisp::Point normal;
    const Value* group = groupOf(data, AcDb::kDxfNormalX);
    if (group && lisp::readPoint(*group, normal)) return toPoint(normal).asVector();
    return AcGeVector3d::kZAxis;
}

// From a coordinate system to the world: 0 world, 1 user, 2 and 3 display (which is seen from above), an
// entity's own, or that of a direction.
AcGeMatrix3d toWorld(Args args, std::size_t i) {
    const Value& system = args[i];
    if (system.isInteger()) {
        const int code = system.asInteger();
        if (code < 0 || code > 3) args.wrong(i, "a coordinate system:");
        return code == 1 ? currentDatabase().ucsToWorld() : AcGeMatrix3d();
    }
    if (system.is(Kind::Ename)) return frameOf(normalOf(idOf(args, i)));
    const AcGeVector3d normal = pointOf(args, i).asVector();
    if (normal.length() == 0.0) args.wrong(i, "a coordinate system:");
    return frameOf(normal);
}

Value trans(Engine&, Args args) {
    const AcGePoint3d given = pointOf(args, 0);
    const AcGeMatrix3d matrix = toWorld(args, 2).inverse() * toWorld(args, 1);
    if (args.has(3)) {
        AcGeVector3d offset = given.asVector();
        return pointValue(AcGePoint3d::kOrigin + offset.transformBy(matrix));
    }
    AcGePoint3d point = given;
    return pointValue(point.transformBy(matrix));
}

constexpr lisp::BuiltinRow rows[] = {
    {"getvar", 1, 1, getvar},
    {"setvar", 2, 2, setvar},
    {"trans", 3, 4, trans},
};

} // namespace

std::span<const lisp::BuiltinRow> variableFunctions() {
    return rows;
}

} // namespace veldrin::scripting
