// STRETCH

#include "editor/command_pick.h"
#include "editor/command_support.h"
#include "editor/command_tables.h"

namespace veldrin {

namespace {

// Moves the stretch points that lie in the window; an entity of which all do goes as a whole.
Acad::ErrorStatus stretch(AcDbEntity& entity, const std::vector<AcGePoint3d>& window,
                          const AcGeVector3d& by) {
    AcGePoint3dArray points;
    if (const Acad::ErrorStatus status = entity.getStretchPoints(points); status != Acad::eOk) return status;
    AcGeIntArray inside;
    for (std::size_t i = 0; i < points.size(); ++i)
        if (isInRegion(window, points[i])) inside.push_back(static_cast<int>(i));
    if (inside.empty()) return Acad::eOk;
    if (inside.size() == points.size()) return entity.transformBy(AcGeMatrix3d::translation(by));
    return entity.moveStretchPointsAt(inside, by);
}

Task<void> stretchCommand(CommandContext& context) {
    inform(context, "Select objects to stretch by a crossing window or polygon.");
    const SelectionToStretch selection = co_await selectToStretch(context);
    if (selection.ids.empty()) throw InputCancelled();
    const AcGeVector3d by = co_await askDisplacement(context);
    std::vector<AcDbObjectId> whole;
    for (const AcDbObjectId id : selection.ids) {
        if (selection.window.empty() || selection.whole.contains(id)) {
            whole.push_back(id);
            continue;
        }
        const AcDbObjectPointer<AcDbEntity> entity(id, AcDb::kForWrite);
        requireOk(entity ? stretch(*entity, selection.window, by) : entity.openStatus(),
                  "An object cannot be stretched");
    }
    transform(context, whole, AcGeMatrix3d::translation(by));
}

constexpr CommandRow rows[] = {{"STRETCH", "S", stretchCommand, 0}};

} // namespace

std::span<const CommandRow> stretchCommands() {
    return rows;
}

} // namespace veldrin
