// PLINE

#include "drawing/AcDb2dPolyline.h"
#include "drawing/AcDbPolyline.h"
#include "drawing/dxf_groups.h"
#include "editor/SystemVariables.h"
#include "editor/command_support.h"
#include "editor/command_tables.h"
#include "runtime/Host.h"

#include <cmath>
#include <numbers>

namespace veldrin {

namespace {

constexpr double pi = std::numbers::pi;

// The polyline as it grows. Bulge and widths of a piece stand at the vertex where it begins.
struct Outline {
    struct Widths {
        double start = 0.0;
        double end = 0.0;
    };
    std::vector<AcGePoint3d> vertices;
    std::vector<double> bulges;
    std::vector<Widths> widths;
    Widths next; // of the piece to come
    bool closed = false;

    void add(const AcGePoint3d& vertex, double bulge) {
        if (!vertices.empty()) addPiece(bulge);
        vertices.push_back(vertex);
    }
    void close(double bulge) {
        addPiece(bulge);
        closed = true;
    }
    void addPiece(double bulge) {
        bulges.push_back(bulge);
        widths.push_back(next);
        next.start = next.end;
    }
    void undo() {
        if (vertices.size() < 2) return;
        vertices.pop_back();
        bulges.pop_back();
        widths.pop_back();
    }
    const AcGePoint3d& last() const { return vertices.back(); }

    // Angle in plan in which it leaves its last vertex.
    double direction() const {
        if (vertices.size() < 2) return 0.0;
        const AcGeVector3d chord = vertices.back() - vertices[vertices.size() - 2];
        return chord.convert2d().angle() + 2.0 * std::atan(bulges.back());
    }
    // The bulge of the arc that leaves in that direction and ends at the point.
    double bulgeFrom(double direction, const AcGePoint3d& to) const {
        double half = (to - last()).convert2d().angle() - direction;
        while (half > pi) half -= 2.0 * pi;
        while (half <= -pi) half += 2.0 * pi;
        return std::tan(half * 0.5);
    }
};

void drawHeavy(CommandContext& context, const Outline& outline) {
    AcGeDoubleArray bulges = outline.bulges;
    bulges.resize(outline.vertices.size(), 0.0);
    auto polyline = std::make_unique<AcDb2dPolyline>(
        AcDb::k2dSimplePoly, outline.vertices, outline.vertices[0].z, outline.closed, 0.0, 0.0, &bulges);
    appendToCurrentSpace(context.database, std::move(polyline));
}

// PLINETYPE 0 asks for polylines of the older kind, which have no widths here.
void draw(CommandContext& context, const Outline& outline) {
    if (outline.vertices.size() < 2) return;
    if (context.host.variables().integer("PLINETYPE") == 0) return drawHeavy(context, outline);
    auto polyline = std::make_unique<AcDbPolyline>();
    polyline->setNormal(drawingNormal(context.database));
    for (std::size_t i = 0; i < outline.vertices.size(); ++i) {
        const AcGePoint3d inPlane = worldToPlane(outline.vertices[i], polyline->normal());
        const bool hasPiece = i < outline.bulges.size();
        // The last vertex of an open one has the widths that a further piece would begin with.
        const Outline::Widths widths = hasPiece ? outline.widths[i] : outline.next;
        if (i == 0) polyline->setElevation(inPlane.z);
        polyline->addVertexAt(polyline->numVerts(), inPlane.convert2d(), hasPiece ? outline.bulges[i] : 0.0,
                              widths.start, widths.end);
    }
    polyline->setClosed(outline.closed);
    appendToCurrentSpace(context.database, std::move(polyline));
}

Task<void> askWidths(CommandContext& context, Outline& outline, bool halves) {
    const double factor = halves ? 2.0 : 1.0;
    const Question first{Want::Distance,
                         halves ? "Specify starting half-width <0>:" : "Specify starting width <0>:",
                         {},
                         kRefuseNegative,
                         &outline.last()};
    const Answer start = co_await context.input.ask(first);
    if (!start.isNone()) outline.next.start = outline.next.end = start.real * factor;
    const Question second{Want::Distance,
                          halves ? "Specify ending half-width <starting>:"
                                 : "Specify ending width <starting>:",
                          {},
                          kRefuseNegative,
                          &outline.last()};
    const Answer end = co_await context.input.ask(second);
    if (!end.isNone()) outline.next.end = end.real * factor;
}

// The arc from the last vertex through a second point.
Task<void> arcBySecondPoint(CommandContext& context, Outline& outline) {
    const AcGePoint3d second =
        co_await requirePoint(context, "Specify second point on arc:", &outline.last());
    const AcGePoint3d end = co_await requirePoint(context, "Specify end point of arc:", &second);
    const AcGeVector2d toSecond = (second - outline.last()).convert2d(), toEnd = (end - second).convert2d();
    // The chords' turn at the second point is half the sweep.
    const double turn = std::atan2(toSecond.crossProduct(toEnd), toSecond.dotProduct(toEnd));
    outline.add(end, std::tan(turn * 0.5));
}

Task<void> arcByAngle(CommandContext& context, Outline& outline) {
    const Answer angle = co_await context.input.angle("Specify included angle:");
    const AcGePoint3d end = co_await requirePoint(context, "Specify end point of arc:", &outline.last());
    outline.add(end, std::tan(angle.real * 0.25));
}

Task<void> arcByCenter(CommandContext& context, Outline& outline) {
    const AcGePoint3d center =
        co_await requirePoint(context, "Specify center point of arc:", &outline.last());
    const AcGePoint3d toward = co_await requirePoint(context, "Specify end point of arc:", &center);
    const AcGeVector2d from = (outline.last() - center).convert2d();
    double sweep = (toward - center).convert2d().angle() - from.angle();
    if (sweep <= 0.0) sweep += 2.0 * pi;
    const double end = from.angle() + sweep;
    const AcGeVector3d radius(from.length() * std::cos(end), from.length() * std::sin(end), 0.0);
    outline.add(AcGePoint3d(center.x, center.y, outline.last().z) + radius, std::tan(sweep * 0.25));
}

Task<void> arcByDirection(CommandContext& context, Outline& outline) {
    const AcGePoint3d toward = co_await requirePoint(
        context, "Specify the tangent direction for the start point of arc:", &outline.last());
    const AcGePoint3d end = co_await requirePoint(context, "Specify end point of arc:", &outline.last());
    outline.add(end, outline.bulgeFrom((toward - outline.last()).convert2d().angle(), end));
}

// A further piece in the direction of the last one.
Task<void> pieceByLength(CommandContext& context, Outline& outline) {
    const Answer length = co_await context.input.distance("Specify length of line:", &outline.last());
    if (length.isNone()) co_return;
    const double direction = outline.direction();
    outline.add(outline.last() + AcGeVector3d(std::cos(direction), std::sin(direction), 0.0) * length.real,
                0.0);
}

enum class Next { GoOn, Done };

Task<Next> linePiece(CommandContext& context, Outline& outline, bool& arcs) {
    const Answer answer = co_await context.input.point(
        "Specify next point or [Arc/Close/Halfwidth/Length/Undo/Width]:", &outline.last(),
        "Arc Close Halfwidth Length Undo Width");
    if (answer.isNone()) co_return Next::Done;
    if (answer.kind == Answer::Kind::Point)
        outline.add(answer.point, 0.0);
    else if (answer.text == "Arc")
        arcs = true;
    else if (answer.text == "Undo")
        outline.undo();
    else if (answer.text == "Length")
        co_await pieceByLength(context, outline);
    else if (answer.text == "Close") {
        outline.close(0.0);
        co_return Next::Done;
    } else
        co_await askWidths(context, outline, answer.text == "Halfwidth");
    co_return Next::GoOn;
}

Task<Next> arcPiece(CommandContext& context, Outline& outline, bool& arcs) {
    const Answer answer = co_await context.input.point(
        "Specify end point of arc or [Angle/CEnter/CLose/Direction/Halfwidth/Line/Second pt/Undo/Width]:",
        &outline.last(), "Angle CEnter CLose Direction Halfwidth Line Second Undo Width");
    if (answer.isNone()) co_return Next::Done;
    if (answer.kind == Answer::Kind::Point)
        outline.add(answer.point, outline.bulgeFrom(outline.direction(), answer.point));
    else if (answer.text == "Line")
        arcs = false;
    else if (answer.text == "Undo")
        outline.undo();
    else if (answer.text == "Second")
        co_await arcBySecondPoint(context, outline);
    else if (answer.text == "Angle")
        co_await arcByAngle(context, outline);
    else if (answer.text == "CEnter")
        co_await arcByCenter(context, outline);
    else if (answer.text == "Direction")
        co_await arcByDirection(context, outline);
    else if (answer.text == "CLose") {
        outline.close(outline.bulgeFrom(outline.direction(), outline.vertices.front()));
        co_return Next::Done;
    } else
        co_await askWidths(context, outline, answer.text == "Halfwidth");
    co_return Next::GoOn;
}

Task<void> plineCommand(CommandContext& context) {
    Outline outline;
    outline.add(co_await requirePoint(context, "PLINE Specify start point:"), 0.0);
    bool arcs = false;
    std::exception_ptr cancelled;
    try {
        Next next = Next::GoOn;
        while (next == Next::GoOn) {
            if (arcs)
                next = co_await arcPiece(context, outline, arcs);
            else
                next = co_await linePiece(context, outline, arcs);
        }
    } catch (const InputCancelled&) {
        cancelled = std::current_exception();
    }
    draw(context, outline); // what was drawn before a cancel stays
    if (cancelled) std::rethrow_exception(cancelled);
}

constexpr CommandRow rows[] = {{"PLINE", "PL", plineCommand, 0}};

} // namespace

std::span<const CommandRow> polylineCommands() {
    return rows;
}

} // namespace veldrin
