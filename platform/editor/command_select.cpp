// The select-objects prompt.

#include "editor/command_pick.h"
#include "editor/command_support.h"
#include "runtime/Host.h"

#include <fmt/format.h>
#include <unordered_set>
#include <utility>

namespace veldrin {

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

// Objects, and the crossing window that found them.
struct Found {
    std::vector<AcDbObjectId> ids;
    std::vector<AcGePoint3d> window;
};

Found foundIn(AcDbDatabase& database, RegionKind kind, std::vector<AcGePoint3d> region) {
    Found found{entitiesInRegion(database, kind, region), {}};
    if (kind == RegionKind::Crossing) found.window = std::move(region);
    return found;
}

// Corners, or points up to an empty answer; what they enclose or touch.
Task<Found> selectByRegion(CommandContext& context, RegionKind kind, bool isPolygon) {
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
    co_return foundIn(context.database, kind,
                      isPolygon ? points : boxCorners(context.database, points[0], points[1]));
}

// A point that meets nothing is the corner of a box: to the right a window, to the left crossing.
Task<Found> selectAtPoint(CommandContext& context, const AcGePoint3d& point) {
    Found found;
    const AcDbObjectId hit = entityAt(context.database, point);
    if (!hit.isNull()) {
        found.ids.push_back(hit);
        co_return found;
    }
    const Answer corner = co_await context.input.point("Specify opposite corner:");
    if (corner.kind != Answer::Kind::Point) co_return found;
    std::vector<AcGePoint3d> box = boxCorners(context.database, point, corner.point);
    AcGePoint3d from = point, to = corner.point;
    const AcGeMatrix3d toUser = context.database.ucsToWorld().inverse();
    const bool isWindow = to.transformBy(toUser).x >= from.transformBy(toUser).x;
    co_return foundIn(context.database, isWindow ? RegionKind::Inside : RegionKind::Crossing, std::move(box));
}

Task<Found> selectByKeyword(CommandContext& context, const std::string& keyword) {
    Found found;
    if (keyword == "Last") {
        const AcDbObjectId last = lastEntity(context.database);
        if (!last.isNull()) found.ids.push_back(last);
    } else if (keyword == "Previous")
        found.ids = context.host.commands().selectionSets().previous();
    else if (keyword == "ALL")
        found.ids = visibleEntities(context.database);
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

Task<SelectionToStretch> select(CommandContext& context, SelectFor purpose, SelectUntil until) {
    Selection selection;
    SelectionToStretch result;
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
        Found found{answer.selection, {}};
        if (answer.kind == Answer::Kind::Point) found = co_await selectAtPoint(context, answer.point);
        if (answer.kind == Answer::Kind::Keyword) found = co_await selectByKeyword(context, answer.text);
        if (found.window.empty() && !selection.removing)
            result.whole.insert(found.ids.begin(), found.ids.end());
        else if (!selection.removing)
            result.window = std::move(found.window);
        const int changed = selection.change(found.ids, context.database);
        inform(context, fmt::format("{} found", changed));
        const EditorInput::Session& session = context.input.session();
        if (until == SelectUntil::EndOfScript && session.tokens.empty() && !session.asksUser) break;
        if (until == SelectUntil::First && !selection.ids.empty()) break;
    }
    if (purpose == SelectFor::Editing) dropLocked(context, selection.ids);
    if (!selection.ids.empty()) context.host.commands().selectionSets().setPrevious(selection.ids);
    result.ids = std::move(selection.ids);
    co_return std::move(result);
}

} // namespace

Task<std::vector<AcDbObjectId>> selectObjects(CommandContext& context, SelectFor purpose) {
    co_return (co_await select(context, purpose, SelectUntil::Empty)).ids;
}

Task<std::vector<AcDbObjectId>> selectObjectsAtOnce(CommandContext& context, SelectFor purpose) {
    co_return (co_await select(context, purpose, SelectUntil::EndOfScript)).ids;
}

Task<std::vector<AcDbObjectId>> selectSingle(CommandContext& context) {
    co_return (co_await select(context, SelectFor::Looking, SelectUntil::First)).ids;
}

Task<SelectionToStretch> selectToStretch(CommandContext& context) {
    return select(context, SelectFor::Editing, SelectUntil::Empty);
}

} // namespace veldrin
