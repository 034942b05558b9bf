#include "editor/command_support.h"

#include "drawing/AcDbBlockTable.h"
#include "drawing/AcDbLayerTable.h"
#include "drawing/acdb.h"
#include "editor/CommandLine.h"
#include "editor/SystemVariables.h"
#include "editor/command_pick.h"
#include "runtime/CException.h"
#include "runtime/Host.h"

#include <cmath>
#include <fmt/format.h>
#include <numbers>
#include <unordered_set>

namespace veldrin {

void say(const CommandContext& context, const std::string& text) {
    CommandLine& line = context.host.commandLine();
    line.freshLine();
    line.print(text + "\n");
}

void failCommand(const std::string& text) {
    throw CException(text);
}

void requireOk(Acad::ErrorStatus status, std::string_view what) {
    if (status != Acad::eOk) failCommand(fmt::format("{}: {}.", what, acadErrorStatusText(status)));
}

AcDbObjectId appendToCurrentSpace(AcDbDatabase& database, std::unique_ptr<AcDbEntity> entity) {
    const AcDbObjectPointer<AcDbBlockTableRecord> space(database.modelSpaceId(), AcDb::kForWrite);
    requireOk(space.openStatus(), "The drawing's space cannot be opened");
    AcDbObjectId id;
    requireOk(space->appendAcDbEntity(id, entity.get()), "The entity cannot be added");
    entity.release()->close();
    return id;
}

AcGeVector3d drawingNormal(const AcDbDatabase& database) {
    return database.header().ucsXDir.crossProduct(database.header().ucsYDir).normal();
}

double angleInPlane(const AcGeVector3d& normal, const AcGeVector3d& direction) {
    const AcGeVector3d xAxis = normal.perpVector();
    const AcGeVector3d yAxis = normal.crossProduct(xAxis);
    return AcGeVector2d(direction.dotProduct(xAxis), direction.dotProduct(yAxis)).angle();
}

Task<AcGePoint3d> requirePoint(CommandContext& context, const char* prompt, const AcGePoint3d* base) {
    const Answer answer = co_await context.input.point(prompt, base);
    if (answer.kind != Answer::Kind::Point) throw InputCancelled();
    co_return answer.point;
}

namespace {

// The selection as it grows, and what the next objects do to it.
struct Selection {
    std::vector<AcDbObjectId> ids;
    std::unordered_set<AcDbObjectId> members;
    std::vector<std::vector<AcDbObjectId>> history;
    bool removing = false;

    int change(const std::vector<AcDbObjectId>& given, const AcDbDatabase& database) {
        history.push_back(ids);
        int changed = 0;
        for (const AcDbObjectId id : given) {
            if (id.isErased() || id.database() != &database) continue;
            if (removing && members.erase(id) > 0) {
                std::erase(ids, id);
                ++changed;
            } else if (!removing && members.insert(id).second) {
                ids.push_back(id);
                ++changed;
            }
        }
        return changed;
    }
    void undo() {
        if (history.empty()) return;
        ids = std::move(history.back());
        history.pop_back();
        members = {ids.begin(), ids.end()};
    }
};

constexpr const char* selectKeywords =
    "Window Crossing WPolygon CPolygon Fence Last Previous ALL Add Remove Undo BOX Multiple AUto SIngle";

// Corners, or points up to an empty answer; what they enclose or touch.
Task<std::vector<AcDbObjectId>> selectByRegion(CommandContext& context, RegionKind kind, bool isPolygon) {
    std::vector<AcGePoint3d> points;
    points.push_back(co_await requirePoint(context, "Specify first point:"));
    for (;;) {
        const Answer next = co_await context.input.point(isPolygon ? "Specify next point or <done>:"
                                                                   : "Specify opposite corner:");
        if (next.kind != Answer::Kind::Point) break;
        points.push_back(next.point);
        if (!isPolygon) break;
    }
    if (points.size() < 2) throw InputCancelled();
    co_return entitiesInRegion(context.database, kind,
                               isPolygon ? points : boxCorners(context.database, points[0], points[1]));
}

// A point that meets nothing is the corner of a box: to the right a window, to the left crossing.
Task<std::vector<AcDbObjectId>> selectAtPoint(CommandContext& context, const AcGePoint3d& point) {
    std::vector<AcDbObjectId> found;
    const AcDbObjectId hit = entityAt(context.database, point);
    if (!hit.isNull()) {
        found.push_back(hit);
        co_return found;
    }
    const Answer corner = co_await context.input.point("Specify opposite corner:");
    if (corner.kind != Answer::Kind::Point) co_return found;
    const std::vector<AcGePoint3d> box = boxCorners(context.database, point, corner.point);
    AcGePoint3d from = point, to = corner.point;
    const AcGeMatrix3d toUser = context.database.ucsToWorld().inverse();
    const bool isWindow = to.transformBy(toUser).x >= from.transformBy(toUser).x;
    co_return entitiesInRegion(context.database, isWindow ? RegionKind::Inside : RegionKind::Crossing, box);
}

Task<std::vector<AcDbObjectId>> selectByKeyword(CommandContext& context, const std::string& keyword) {
    std::vector<AcDbObjectId> found;
    if (keyword == "Last") {
        const AcDbObjectId last = lastEntity(context.database);
        if (!last.isNull()) found.push_back(last);
    } else if (keyword == "Previous")
        found = context.host.commands().selectionSets().previous();
    else if (keyword == "ALL")
        found = visibleEntities(context.database);
    else if (keyword == "Window")
        found = co_await selectByRegion(context, RegionKind::Inside, false);
    else if (keyword == "Crossing" || keyword == "BOX")
        found = co_await selectByRegion(context, RegionKind::Crossing, false);
    else if (keyword == "WPolygon")
        found = co_await selectByRegion(context, RegionKind::Inside, true);
    else if (keyword == "CPolygon")
        found = co_await selectByRegion(context, RegionKind::Crossing, true);
    else if (keyword == "Fence")
        found = co_await selectByRegion(context, RegionKind::Fence, true);
    co_return found;
}

// Leaves out what lies on locked layers, and says how many that are.
void dropLocked(const CommandContext& context, std::vector<AcDbObjectId>& ids) {
    const std::size_t before = ids.size();
    std::erase_if(ids, [](AcDbObjectId id) { return isOnLockedLayer(id); });
    const std::size_t locked = before - ids.size();
    if (locked > 0)
        say(context, fmt::format("{} {} on a locked layer.", locked, locked == 1 ? "was" : "were"));
}

enum class SelectUntil { Empty, EndOfScript, First };

Task<std::vector<AcDbObjectId>> select(CommandContext& context, SelectFor purpose, SelectUntil until) {
    Selection selection;
    for (;;) {
        const Answer answer = co_await context.input.ask(
            {Want::Selection, selection.removing ? "Remove objects:" : "Select objects:", selectKeywords, 0,
             nullptr});
        if (answer.isNone()) break;
        if (answer.isKeyword("Add") || answer.isKeyword("Remove")) {
            selection.removing = answer.text == "Remove";
            continue;
        }
        if (answer.isKeyword("Undo")) {
            selection.undo();
            continue;
        }
        std::vector<AcDbObjectId> found = answer.selection;
        if (answer.kind == Answer::Kind::Point) found = co_await selectAtPoint(context, answer.point);
        if (answer.kind == Answer::Kind::Keyword) found = co_await selectByKeyword(context, answer.text);
        const int changed = selection.change(found, context.database);
        if (context.host.variables().integer("CMDECHO") != 0) say(context, fmt::format("{} found", changed));
        const EditorInput::Session& session = context.input.session();
        if (until == SelectUntil::EndOfScript && session.tokens.empty() && !session.asksUser) break;
        if (until == SelectUntil::First && !selection.ids.empty()) break;
    }
    if (purpose == SelectFor::Editing) dropLocked(context, selection.ids);
    if (!selection.ids.empty()) context.host.commands().selectionSets().setPrevious(selection.ids);
    co_return std::move(selection.ids);
}

} // namespace

Task<std::vector<AcDbObjectId>> selectObjects(CommandContext& context, SelectFor purpose) {
    return select(context, purpose, SelectUntil::Empty);
}

Task<std::vector<AcDbObjectId>> selectObjectsAtOnce(CommandContext& context, SelectFor purpose) {
    return select(context, purpose, SelectUntil::EndOfScript);
}

Task<std::vector<AcDbObjectId>> selectSingle(CommandContext& context) {
    return select(context, SelectFor::Looking, SelectUntil::First);
}

} // namespace veldrin
