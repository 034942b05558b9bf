// vlax-curve-..., vlax-ename->vla-object, vlax-vla-object->ename, vlax-invoke

#include "drawing/AcDbCurve.h"
#include "runtime/AcRxClass.h"
#include "scripting/drawing_values.h"
#include "scripting/tables.h"
#include "system/AsciiCase.h"

#include <fmt/format.h>

namespace veldrin::scripting {

namespace {

using lisp::Args;
using lisp::Engine;
using lisp::Error;
using lisp::Kind;
using lisp::Value;

// An entity as an object; it stays meaningful when the entity is erased, like its name.
class EntityObject : public lisp::Payload {
public:
    explicit EntityObject(AcDbObjectId id) : m_id(id) {}
    AcDbObjectId id() const { return m_id; }
    std::string describe() const override {
        const AcRxClass* itsClass = m_id.objectClass();
        return fmt::format("#<VLA-OBJECT {} {}>", itsClass ? itsClass->name() : "?", m_id.handle().text());
    }
    bool isSame(const lisp::Payload& other) const override {
        const auto* object = dynamic_cast<const EntityObject*>(&other);
        return object && object->m_id == m_id;
    }

private:
    AcDbObjectId m_id;
};

AcDbObjectId objectId(Args args, std::size_t i) {
    if (!args[i].is(Kind::Object)) return idOf(args, i);
    const AcDbObjectId id = args.payload<EntityObject>(i, Kind::Object, "VLA-OBJECT").id();
    if (!id.isValid()) args.wrong(i, "VLA-OBJECT");
    return id;
}

AcDbObjectPointer<AcDbCurve> openCurve(Args args) {
    AcDbObjectPointer<AcDbCurve> curve(objectId(args, 0));
    if (!curve) args.wrong(0, "curve:");
    return curve;
}

// Answers of curves: nil where there is none, as for a point that is not on it.
using NumberAnswer = Acad::ErrorStatus (AcDbCurve::*)(double&) const;
using PointAnswer = Acad::ErrorStatus (AcDbCurve::*)(AcGePoint3d&) const;

template<NumberAnswer ask>
Value number(Engine&, Args args) {
    double value = 0.0;
    return (openCurve(args).object()->*ask)(value) == Acad::eOk ? Value::real(value) : Value();
}

template<PointAnswer ask>
Value point(Engine&, Args args) {
    AcGePoint3d value;
    return (openCurve(args).object()->*ask)(value) == Acad::eOk ? pointValue(value) : Value();
}

template<Acad::ErrorStatus (AcDbCurve::*ask)(double, AcGePoint3d&) const>
Value pointAt(Engine&, Args args) {
    AcGePoint3d value;
    return (openCurve(args).object()->*ask)(args.number(1), value) == Acad::eOk ? pointValue(value) : Value();
}

template<Acad::ErrorStatus (AcDbCurve::*ask)(double, double&) const>
Value numberAt(Engine&, Args args) {
    double value = 0.0;
    return (openCurve(args).object()->*ask)(args.number(1), value) == Acad::eOk ? Value::real(value)
                                                                                : Value();
}

template<Acad::ErrorStatus (AcDbCurve::*ask)(const AcGePoint3d&, double&) const>
Value numberOfPoint(Engine&, Args args) {
    double value = 0.0;
    return (openCurve(args).object()->*ask)(pointOf(args, 1), value) == Acad::eOk ? Value::real(value)
                                                                                  : Value();
}

Value closestPoint(Engine&, Args args) {
    AcGePoint3d value;
    const Acad::ErrorStatus status = openCurve(args)->getClosestPointTo(pointOf(args, 1), value, args.has(2));
    return status == Acad::eOk ? pointValue(value) : Value();
}

Value closestProjected(Engine&, Args args) {
    AcGePoint3d value;
    const Acad::ErrorStatus status =
        openCurve(args)->getClosestPointTo(pointOf(args, 1), pointOf(args, 2).asVector(), value, args.has(3));
    return status == Acad::eOk ? pointValue(value) : Value();
}

Value firstDeriv(Engine&, Args args) {
    AcGeVector3d value;
    const Acad::ErrorStatus status = openCurve(args)->getFirstDeriv(args.number(1), value);
    return status == Acad::eOk ? pointValue({value.x, value.y, value.z}) : Value();
}

Value isClosed(Engine&, Args args) {
    return Value::boolean(openCurve(args)->isClosed());
}

Value objectOfEname(Engine&, Args args) {
    return Value::object(std::make_shared<EntityObject>(idOf(args, 0)));
}

Value enameOfObject(Engine&, Args args) {
    return enameOf(objectId(args, 0));
}

// Coordinates of the common points in a row; nil when there are none.
Value intersectWith(Args args) {
    const AcDbObjectPointer<AcDbEntity> entity(objectId(args, 0)), other(objectId(args, 2));
    if (!entity || !other) throw Error("entity cannot be opened");
    const int mode = args.has(3) ? args.integer(3) : 0;
    if (mode < 0 || mode > 3) args.wrong(3, "an extension mode:");
    AcGePoint3dArray points;
    const Acad::ErrorStatus status =
        entity->intersectWith(other.object(), static_cast<AcDb::Intersect>(mode), points);
    if (status != Acad::eOk)
        throw Error(fmt::format("IntersectWith failed with status {}", static_cast<int>(status)));
    lisp::ListBuilder list;
    for (const AcGePoint3d& p : points)
        for (const double coordinate : {p.x, p.y, p.z}) list.add(Value::real(coordinate));
    return list.finish();
}

Value invoke(Engine&, Args args) {
    const std::string method = asciiUpperCase(args[1].isSymbol() ? args[1].asSymbol()->name : args.text(1));
    if (method != "INTERSECTWITH") throw Error("unknown method: " + method);
    if (args.size() < 3) throw Error::tooFewArguments();
    return intersectWith(args);
}

constexpr lisp::BuiltinRow rows[] = {
    {"vlax-curve-getStartParam", 1, 1, number<&AcDbCurve::getStartParam>},
    {"vlax-curve-getEndParam", 1, 1, number<&AcDbCurve::getEndParam>},
    {"vlax-curve-getStartPoint", 1, 1, point<&AcDbCurve::getStartPoint>},
    {"vlax-curve-getEndPoint", 1, 1, point<&AcDbCurve::getEndPoint>},
    {"vlax-curve-getPointAtParam", 2, 2, pointAt<&AcDbCurve::getPointAtParam>},
    {"vlax-curve-getParamAtPoint", 2, 2, numberOfPoint<&AcDbCurve::getParamAtPoint>},
    {"vlax-curve-getDistAtParam", 2, 2, numberAt<&AcDbCurve::getDistAtParam>},
    {"vlax-curve-getParamAtDist", 2, 2, numberAt<&AcDbCurve::getParamAtDist>},
    {"vlax-curve-getDistAtPoint", 2, 2, numberOfPoint<&AcDbCurve::getDistAtPoint>},
    {"vlax-curve-getPointAtDist", 2, 2, pointAt<&AcDbCurve::getPointAtDist>},
    {"vlax-curve-getFirstDeriv", 2, 2, firstDeriv},
    {"vlax-curve-getClosestPointTo", 2, 3, closestPoint},
    {"vlax-curve-getClosestPointToProjection", 3, 4, closestProjected},
    {"vlax-curve-isClosed", 1, 1, isClosed},
    {"vlax-ename->vla-object", 1, 1, objectOfEname},
    {"vlax-vla-object->ename", 1, 1, enameOfObject},
    {"vlax-invoke", 2, 4, invoke},
};

} // namespace

std::span<const lisp::BuiltinRow> curveFunctions() {
    return rows;
}

} // namespace veldrin::scripting
