// LINE, CIRCLE, ARC

#include "drawing/AcDbArc.h"
#include "drawing/AcDbCircle.h"
#include "drawing/AcDbLine.h"
#include "editor/SystemVariables.h"
#include "editor/command_circle.h"
#include "editor/command_support.h"
#include "editor/command_tables.h"
#include "runtime/Host.h"

#include <cmath>
#include <numbers>

namespace veldrin {

namespace {

constexpr double fullTurn = 2.0 * std::numbers::pi;

AcDbObjectId drawLine(CommandContext& context, const AcGePoint3d& from, const AcGePoint3d& to) {
    auto line = std::make_unique<AcDbLine>(from, to);
    return appendToCurrentSpace(context.database, std::move(line));
}

AcGePoint3d lastPoint(const CommandContext& context) {
    const auto last = context.host.variables().get("LASTPOINT");
    AcGePoint3d point;
    if (last)
        if (const auto* p = std::get_if<AcGePoint3d>(&*last)) point = *p;
    return point.transformBy(context.database.ucsToWorld());
}

Task<void> lineCommand(CommandContext& context) {
    const Answer first = co_await context.input.point("LINE Specify first point:");
    std::vector<AcGePoint3d> points{first.isNone() ? lastPoint(context) : first.point};
    std::vector<AcDbObjectId> lines;
    for (;;) {
        const bool mayClose = points.size() >= 3;
        const Answer next = co_await context.input.point(mayClose ? "Specify next point or [Close/Undo]:"
                                                                  : "Specify next point or [Undo]:",
                                                         &points.back(), mayClose ? "Close Undo" : "Undo");
        if (next.isNone()) co_return;
        if (next.isKeyword("Close")) {
            drawLine(context, points.back(), points.front());
            co_return;
        }
        if (next.isKeyword("Undo")) {
            if (lines.empty()) {
                say(context, "All segments already undone.");
                continue;
            }
            const AcDbObjectPointer<AcDbEntity> line(lines.back(), AcDb::kForWrite);
            if (line) line->erase();
            lines.pop_back();
            points.pop_back();
            continue;
        }
        lines.push_back(drawLine(context, points.back(), next.point));
        points.push_back(next.point);
    }
}

void drawCircle(CommandContext& context, const AcGePoint3d& center, double radius) {
    if (!(radius > 0.0)) failCommand("Value must be positive and nonzero.");
    context.host.variables().put("CIRCLERAD", radius);
    appendToCurrentSpace(context.database,
                         std::make_unique<AcDbCircle>(center, drawingNormal(context.database), radius));
}

Task<void> circleByThreePoints(CommandContext& context) {
    const AcGePoint3d a = co_await requirePoint(context, "Specify first point on circle:");
    const AcGePoint3d b = co_await requirePoint(context, "Specify second point on circle:");
    const AcGePoint3d c = co_await requirePoint(context, "Specify third point on circle:");
    const auto center = circleCenter(a, b, c, drawingNormal(context.database));
    if (!center) failCommand("Circle does not exist.");
    drawCircle(context, *center, center->distanceTo(a));
}

Task<void> circleByTwoPoints(CommandContext& context) {
    const AcGePoint3d a = co_await requirePoint(context, "Specify first end point of circle's diameter:");
    const AcGePoint3d b = co_await requirePoint(context, "Specify second end point of circle's diameter:");
    drawCircle(context, a + (b - a) * 0.5, a.distanceTo(b) * 0.5);
}

Task<void> circleCommand(CommandContext& context) {
    const Answer center =
        co_await context.input.point("CIRCLE Specify center point for circle or [3P/2P]:", nullptr, "3P 2P");
    if (center.isKeyword("3P")) co_return co_await circleByThreePoints(context);
    if (center.isKeyword("2P")) co_return co_await circleByTwoPoints(context);
    if (center.isNone()) throw InputCancelled();
    const Question forRadius{Want::Distance, "Specify radius of circle or [Diameter]:", "Diameter",
                             kRefuseZero | kRefuseNegative, &center.point};
    const Answer radius = co_await context.input.ask(forRadius);
    if (radius.isKeyword("Diameter")) {
        const Question forDiameter{
            Want::Distance, "Specify diameter of circle:", {}, kRefuseZero | kRefuseNegative, &center.point};
        const Answer diameter = co_await context.input.ask(forDiameter);
        if (diameter.isNone()) throw InputCancelled();
        co_return drawCircle(context, center.point, diameter.real * 0.5);
    }
    drawCircle(context, center.point,
               radius.isNone() ? context.host.variables().real("CIRCLERAD") : radius.real);
}

// An arc counter-clockwise in the drawing plane from one point to the direction of another.
void drawArc(CommandContext& context, const AcGePoint3d& center, const AcGePoint3d& from, double sweep) {
    const AcGeVector3d normal = drawingNormal(context.database);
    const double radius = center.distanceTo(from);
    if (!(radius > 0.0) || sweep == 0.0) failCommand("Invalid arc.");
    double start = angleInPlane(normal, from - center);
    double end = start + sweep;
    if (sweep < 0.0) std::swap(start, end);
    appendToCurrentSpace(context.database, std::make_unique<AcDbArc>(center, normal, radius, start, end));
}

double sweepBetween(const CommandContext& context, const AcGePoint3d& center, const AcGePoint3d& from,
                    const AcGePoint3d& to) {
    const AcGeVector3d normal = drawingNormal(context.database);
    const double sweep = angleInPlane(normal, to - center) - angleInPlane(normal, from - center);
    return sweep <= 0.0 ? sweep + fullTurn : sweep;
}

// Center and start are known: the end as a point, an angle or a chord.
Task<void> arcFromCenter(CommandContext& context, const AcGePoint3d& center, const AcGePoint3d& start) {
    const Answer end = co_await context.input.point(
        "Specify end point of arc or [Angle/chord Length]:", &center, "Angle Length");
    if (end.isNone()) throw InputCancelled();
    if (end.isKeyword("Angle")) {
        const Answer angle = co_await context.input.angle("Specify included angle:", &center);
        if (angle.isNone()) throw InputCancelled();
        co_return drawArc(context, center, start, angle.real);
    }
    if (end.isKeyword("Length")) {
        const Answer chord = co_await context.input.distance("Specify length of chord:", &start);
        const double half = std::abs(chord.real) * 0.5;
        const double radius = center.distanceTo(start);
        if (chord.isNone() || half > radius) failCommand("Invalid chord.");
        const double sweep = 2.0 * std::asin(half / radius);
        co_return drawArc(context, center, start, chord.real < 0.0 ? fullTurn - sweep : sweep);
    }
    drawArc(context, center, start, sweepBetween(context, center, start, end.point));
}

// Start and end are known: the included angle, the radius or the centre.
Task<void> arcFromEnds(CommandContext& context, const AcGePoint3d& start, const AcGePoint3d& end) {
    const Answer how = co_await context.input.point("Specify center point of arc or [Angle/Radius]:", &start,
                                                    "Angle Radius Center");
    if (how.isNone()) throw InputCancelled();
    if (how.kind == Answer::Kind::Point || how.isKeyword("Center")) {
        AcGePoint3d center = how.point;
        if (how.isKeyword("Center")) center = co_await requirePoint(context, "Specify center point of arc:");
        co_return drawArc(context, center, start, sweepBetween(context, center, start, end));
    }
    const AcGeVector3d normal = drawingNormal(context.database);
    if (how.isKeyword("Angle")) {
        const Answer angle = co_await context.input.angle("Specify included angle:", &start);
        if (angle.isNone() || angle.real == 0.0) throw InputCancelled();
        const AcGePoint3d center = centerOfSweep(start, end, angle.real, normal);
        co_return drawArc(context, center, start, angle.real);
    }
    const Answer radius = co_await context.input.distance("Specify radius of arc:", &start);
    const double half = start.distanceTo(end) * 0.5;
    if (radius.isNone() || half == 0.0 || half > std::abs(radius.real)) failCommand("Invalid radius.");
    const double minor = 2.0 * std::asin(half / std::abs(radius.real));
    const double sweep = radius.real < 0.0 ? fullTurn - minor : minor;
    drawArc(context, centerOfSweep(start, end, sweep, normal), start, sweep);
}

Task<void> arcCommand(CommandContext& context) {
    const Answer first =
        co_await context.input.point("ARC Specify start point of arc or [Center]:", nullptr, "Center");
    if (first.isKeyword("Center")) {
        const AcGePoint3d center = co_await requirePoint(context, "Specify center point of arc:");
        const AcGePoint3d start = co_await requirePoint(context, "Specify start point of arc:", &center);
        co_return co_await arcFromCenter(context, center, start);
    }
    const AcGePoint3d start = first.isNone() ? lastPoint(context) : first.point;
    const Answer second = co_await context.input.point("Specify second point of arc or [Center/End]:", &start,
                                                       "Center CEnter End");
    if (second.isNone()) throw InputCancelled();
    if (second.isKeyword("End")) {
        const AcGePoint3d end = co_await requirePoint(context, "Specify end point of arc:", &start);
        co_return co_await arcFromEnds(context, start, end);
    }
    if (second.kind == Answer::Kind::Keyword) {
        const AcGePoint3d center = co_await requirePoint(context, "Specify center point of arc:", &start);
        co_return co_await arcFromCenter(context, center, start);
    }
    const AcGePoint3d end = co_await requirePoint(context, "Specify end point of arc:", &second.point);
    const auto center = circleCenter(start, second.point, end, drawingNormal(context.database));
    if (!center) failCommand("Points are on a line; no arc passes through them.");
    const double toEnd = sweepBetween(context, *center, start, end);
    const double toSecond = sweepBetween(context, *center, start, second.point);
    drawArc(context, *center, start, toSecond < toEnd ? toEnd : toEnd - fullTurn);
}

constexpr CommandRow rows[] = {
    {"LINE", "L", lineCommand, 0},
    {"CIRCLE", "C", circleCommand, 0},
    {"ARC", "A", arcCommand, 0},
};

} // namespace

std::span<const CommandRow> drawCommands() {
    return rows;
}

} // namespace veldrin
