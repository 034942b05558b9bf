// UCS, ZOOM, REGEN, REGENALL, REDRAW

#include "editor/SystemVariables.h"
#include "editor/command_support.h"
#include "editor/command_tables.h"
#include "geometry/AcDbExtents.h"
#include "graphics/DrawingExtents.h"
#include "runtime/Host.h"

#include <algorithm>
#include <cctype>
#include <cmath>

namespace veldrin {

namespace {

struct Axes {
    AcGePoint3d origin;
    AcGeVector3d x{1.0, 0.0, 0.0};
    AcGeVector3d y{0.0, 1.0, 0.0};
};

Axes currentAxes(const CommandContext& context) {
    const HeaderVariables& header = context.database.header();
    return {header.ucsOrigin, header.ucsXDir, header.ucsYDir};
}

// LASTPOINT stays where it is in the world.
void setAxes(CommandContext& context, const Axes& axes) {
    SystemVariables& variables = context.host.variables();
    AcGePoint3d last;
    if (const auto value = variables.get("LASTPOINT"))
        if (const auto* point = std::get_if<AcGePoint3d>(&*value)) last = *point;
    last.transformBy(context.database.ucsToWorld());
    HeaderVariables header = context.database.header();
    header.ucsOrigin = axes.origin;
    header.ucsXDir = axes.x;
    header.ucsYDir = axes.y;
    context.database.setHeader(header);
    variables.put("LASTPOINT", last.transformBy(context.database.ucsToWorld().inverse()));
}

// The Y axis in the plane of the X axis and a further direction.
AcGeVector3d squareTo(const AcGeVector3d& x, const AcGeVector3d& toward) {
    const AcGeVector3d y = toward - x * toward.dotProduct(x);
    if (x.length() == 0.0 || y.length() <= 1.0e-12 * toward.length())
        failCommand("The points must not lie on a line.");
    return y.normal();
}

Task<void> ucsByThreePoints(CommandContext& context) {
    Axes axes = currentAxes(context);
    const Answer origin = co_await context.input.point("Specify new origin point <0,0,0>:");
    if (origin.kind == Answer::Kind::Point) axes.origin = origin.point;
    const Answer onX =
        co_await context.input.point("Specify point on positive portion of X-axis:", &axes.origin);
    if (onX.kind == Answer::Kind::Point) axes.x = (onX.point - axes.origin).normal();
    const Answer onY = co_await context.input.point(
        "Specify point on positive-Y portion of the UCS XY plane:", &axes.origin);
    axes.y = squareTo(axes.x, onY.kind == Answer::Kind::Point ? onY.point - axes.origin : axes.y);
    setAxes(context, axes);
}

Task<void> ucsByRotation(CommandContext& context, const std::string& about) {
    const Answer angle = co_await context.input.angle("Specify rotation angle <90>:");
    const double turn = angle.isNone() ? std::acos(0.0) : angle.real;
    Axes axes = currentAxes(context);
    const AcGeVector3d z = axes.x.crossProduct(axes.y);
    const AcGeMatrix3d rotation = AcGeMatrix3d::rotation(turn, about == "X"   ? axes.x
                                                               : about == "Y" ? axes.y
                                                                              : z);
    axes.x = axes.x.transformBy(rotation);
    axes.y = axes.y.transformBy(rotation);
    setAxes(context, axes);
}

// A script may end with the origin, or go on with a point on the X axis or an empty answer.
bool moreAxesFollow(const CommandContext& context) {
    const EditorInput::Session& session = context.input.session();
    if (session.tokens.empty()) return session.asksUser;
    const InputToken& next = session.tokens.front();
    if (next.kind != InputToken::Kind::Text) return true;
    return next.text.empty() || parsePoint(next.text).has_value();
}

Task<void> ucsByOrigin(CommandContext& context, const AcGePoint3d& origin) {
    Axes axes = currentAxes(context);
    axes.origin = origin;
    if (moreAxesFollow(context)) {
        const Answer onX = co_await context.input.point("Specify point on X-axis or <accept>:", &axes.origin);
        if (onX.kind == Answer::Kind::Point) {
            axes.x = (onX.point - origin).normal();
            const Answer onY =
                co_await context.input.point("Specify point on the XY plane or <accept>:", &axes.origin);
            const AcGeVector3d z = drawingNormal(context.database);
            axes.y = squareTo(axes.x,
                              onY.kind == Answer::Kind::Point ? onY.point - origin : z.crossProduct(axes.x));
        }
    }
    setAxes(context, axes);
}

Task<void> ucsCommand(CommandContext& context) {
    for (;;) {
        const Answer answer =
            co_await context.input.point("Specify origin of UCS or [New/Origin/3point/X/Y/Z/World] "
                                         "<World>:",
                                         nullptr, "New Origin 3point X Y Z World");
        if (answer.isKeyword("New")) continue;
        if (answer.isNone() || answer.isKeyword("World")) co_return setAxes(context, Axes());
        if (answer.isKeyword("3point")) co_return co_await ucsByThreePoints(context);
        if (answer.isKeyword("Origin")) {
            const AcGePoint3d origin = co_await requirePoint(context, "Specify new origin point:");
            co_return co_await ucsByOrigin(context, origin);
        }
        if (answer.kind == Answer::Kind::Keyword) co_return co_await ucsByRotation(context, answer.text);
        co_return co_await ucsByOrigin(context, answer.point);
    }
}

void setView(CommandContext& context, const AcGePoint3d& center, double height) {
    if (!(height > 0.0)) failCommand("The window is too small.");
    AcGePoint3d user = center;
    SystemVariables& variables = context.host.variables();
    variables.put("VIEWCTR", user.transformBy(context.database.ucsToWorld().inverse()));
    variables.put("VIEWSIZE", height);
}

// The height of a view that shows a box whole.
void showBox(CommandContext& context, const AcGePoint3d& from, const AcGePoint3d& to) {
    double aspect = 4.0 / 3.0;
    if (const auto size = context.host.variables().get("SCREENSIZE"))
        if (const auto* pixels = std::get_if<AcGePoint2d>(&*size))
            if (pixels->x > 0.0 && pixels->y > 0.0) aspect = pixels->x / pixels->y;
    const double height = std::max(std::abs(to.y - from.y), std::abs(to.x - from.x) / aspect);
    setView(context, from + (to - from) * 0.5, height);
}

void showExtents(CommandContext& context, const AcDbExtents& extents) {
    if (extents.isEmpty() || extents.minPoint().convert2d().isEqualTo(extents.maxPoint().convert2d())) return;
    showBox(context, extents.minPoint(), extents.maxPoint());
}

void showEntities(CommandContext& context, const std::vector<AcDbObjectId>& ids) {
    AcDbExtents extents;
    for (const AcDbObjectId id : ids) {
        const AcDbObjectPointer<AcDbEntity> entity(id);
        AcDbExtents own;
        if (entity && entity->getGeomExtents(own) == Acad::eOk) extents.addExt(own);
    }
    showExtents(context, extents);
}

// "2", "2x", "2xp"
void zoomByFactor(CommandContext& context, std::string text) {
    const bool relative = !text.empty() && std::tolower(static_cast<unsigned char>(text.back())) == 'x';
    if (relative) text.pop_back();
    const auto factor = parseDistance(text);
    if (!factor || !(*factor > 0.0)) failCommand("Requires a scale factor or an option keyword.");
    SystemVariables& variables = context.host.variables();
    variables.put("VIEWSIZE", variables.real("VIEWSIZE") / *factor);
}

Task<void> zoomToCenter(CommandContext& context) {
    const AcGePoint3d center = co_await requirePoint(context, "Specify center point:");
    const Question forHeight{Want::Distance, "Enter magnification or height:", {}, kArbitraryText, nullptr};
    const Answer height = co_await context.input.ask(forHeight);
    setView(context, center,
            height.kind == Answer::Kind::Real ? height.real : context.host.variables().real("VIEWSIZE"));
    if (height.kind == Answer::Kind::Text) zoomByFactor(context, height.text);
}

Task<void> zoomToWindow(CommandContext& context, const Answer& given) {
    AcGePoint3d first = given.point;
    if (given.kind == Answer::Kind::Keyword) first = co_await requirePoint(context, "Specify first corner:");
    const AcGePoint3d second = co_await requirePoint(context, "Specify opposite corner:", &first);
    showBox(context, first, second);
}

Task<void> zoomCommand(CommandContext& context) {
    const Question how{Want::Point,
                       "Specify corner of window, enter a scale factor (nX), or "
                       "[All/Center/Extents/Previous/Scale/Window/Object]:",
                       "All Center Dynamic Extents Previous Scale Vmax Window Object", kArbitraryText,
                       nullptr};
    const Answer answer = co_await context.input.ask(how);
    if (answer.isNone()) co_return;
    if (answer.kind == Answer::Kind::Text) co_return zoomByFactor(context, answer.text);
    if (answer.kind == Answer::Kind::Point || answer.text == "Window")
        co_return co_await zoomToWindow(context, answer);
    if (answer.text == "Center") co_return co_await zoomToCenter(context);
    if (answer.text == "Scale") {
        const Answer factor = co_await context.input.string("Enter a scale factor (nX):");
        co_return zoomByFactor(context, factor.text);
    }
    if (answer.text == "Object") {
        const std::vector<AcDbObjectId> ids = co_await selectObjects(context, SelectFor::Looking);
        co_return showEntities(context, ids);
    }
    if (answer.text == "All" || answer.text == "Extents")
        showExtents(context, drawnExtents(context.database));
}

// Pictures are made when somebody looks, from what the drawing holds then: there is nothing to make anew.
Task<void> regenCommand(CommandContext& context) {
    if (context.name != "REDRAW") say(context, "Regenerating model.");
    co_return;
}

constexpr CommandRow rows[] = {
    {"UCS", "", ucsCommand, 0},
    {"ZOOM", "Z", zoomCommand, kCommandTransparent | kCommandWithoutStep},
    {"REGEN", "RE", regenCommand, kCommandWithoutStep},
    {"REGENALL", "REA", regenCommand, kCommandWithoutStep},
    {"REDRAW", "R", regenCommand, kCommandTransparent | kCommandWithoutStep},
};

} // namespace

std::span<const CommandRow> viewCommands() {
    return rows;
}

} // namespace veldrin
