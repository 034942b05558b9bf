// vd-graphics vd-extents vd-text-size

#include "drawing/AcDbSymbolTable.h"
#include "drawing/AcDbTextStyleTable.h"
#include "editor/command_names.h"
#include "graphics/DisplayList.h"
#include "graphics/Recorder.h"
#include "scripting/drawing_values.h"
#include "scripting/tables.h"
#include "text/TextLayout.h"

namespace veldrin::scripting {

namespace {

using lisp::Args;
using lisp::Engine;
using lisp::ListBuilder;
using lisp::Value;

Value nameOf(AcDbObjectId record) {
    const AcDbObjectPointer<AcDbSymbolTableRecord> opened(record, AcDb::kForRead, true);
    return Value::text(opened ? opened->getName() : std::string());
}

// Kind, layer, linetype and colour, as every primitive begins.
ListBuilder headOf(const char* kind, const DrawTraits& traits) {
    ListBuilder list;
    list.add(Value::text(kind));
    list.add(nameOf(traits.layer));
    list.add(nameOf(traits.linetype));
    list.add(Value::integer(traits.color.colorIndex()));
    return list;
}

void addPoints(ListBuilder& list, std::span<const AcGePoint3d> points) {
    for (const AcGePoint3d& point : points) list.add(pointValue(point));
}

Value circleValue(const RecordedCircle& circle, const DrawTraits& traits) {
    ListBuilder list = headOf("circle", traits);
    list.add(pointValue(circle.center));
    list.add(Value::real(circle.radius));
    return list.finish();
}

Value arcValue(const RecordedArc& arc, const DrawTraits& traits) {
    ListBuilder list = headOf("arc", traits);
    list.add(pointValue(arc.center));
    list.add(Value::real(arc.radius));
    list.add(Value::real(arc.startAngle()));
    list.add(Value::real(arc.sweep));
    list.add(Value::real(arc.normal.z));
    list.add(pointValue(arc.startPoint()));
    return list.finish();
}

Value textValue(const AcGiText& text, const DrawTraits& traits) {
    ListBuilder list = headOf("text", traits);
    list.add(pointValue(text.location));
    list.add(Value::real(text.height));
    list.add(Value::real(text.width));
    list.add(Value::real(text.direction.convert2d().angle()));
    list.add(nameOf(text.style));
    list.add(Value::text(text.contents));
    return list.finish();
}

Value primitiveValue(const DisplayList& drawn, std::size_t index) {
    const DrawTraits& traits = drawn.traits(index);
    switch (drawn.kind(index)) {
    case PrimitiveKind::kCircle: return circleValue(drawn.circle(index), traits);
    case PrimitiveKind::kArc: return arcValue(drawn.arc(index), traits);
    case PrimitiveKind::kText: return textValue(drawn.text(index), traits);
    case PrimitiveKind::kPolyline:
    case PrimitiveKind::kPolygon:
    case PrimitiveKind::kFittedCurve: break;
    }
    const bool isCurve = drawn.kind(index) == PrimitiveKind::kFittedCurve;
    const bool isPolygon = drawn.kind(index) == PrimitiveKind::kPolygon;
    ListBuilder list = headOf(isCurve ? "curve" : isPolygon ? "polygon" : "polyline", traits);
    addPoints(list, drawn.points(index));
    return list.finish();
}

Value graphics(Engine&, Args args) {
    const AcDbObjectPointer<AcDbEntity> entity = openEntity(args, 0);
    DisplayList drawn;
    Recorder recorder(drawn);
    drawEntity(*entity, recorder);
    ListBuilder list;
    for (std::size_t i = 0; i < drawn.size(); ++i) list.add(primitiveValue(drawn, i));
    return list.finish();
}

Value extents(Engine&, Args args) {
    const AcDbObjectPointer<AcDbEntity> entity = openEntity(args, 0);
    AcDbExtents box;
    const Acad::ErrorStatus status = entity->getGeomExtents(box);
    if (status != Acad::eOk) return Value::integer(status);
    return lisp::list(pointValue(box.minPoint()), pointValue(box.maxPoint()));
}

// Of a single line in the style's width and slant; a text style's fixed height goes before the given one.
Value textSize(Engine&, Args args) {
    const std::string styleName = args.string(0);
    const AcDbObjectPointer<AcDbTextStyleTableRecord> style(
        recordNamed(currentDatabase().textStyleTableId(), styleName));
    if (!style) throw lisp::Error("no text style \"" + styleName + "\"");
    TextLook look;
    look.height = style->textSize() > 0.0 ? style->textSize() : args.number(1);
    look.widthFactor = style->xScale();
    look.oblique = style->obliquingAngle();
    const TextSize size = measure(args.text(2), look);
    return lisp::list(Value::real(size.width), Value::real(size.height));
}

constexpr lisp::BuiltinRow rows[] = {
    {"vd-graphics", 1, 1, graphics},
    {"vd-extents", 1, 1, extents},
    {"vd-text-size", 3, 3, textSize},
};

} // namespace

std::span<const lisp::BuiltinRow> graphicsFunctions() {
    return rows;
}

} // namespace veldrin::scripting
