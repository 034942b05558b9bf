// COPYCLIP, COPYBASE, PASTECLIP, PASTEORIG

#include "drawing/AcDbBlockTable.h"
#include "drawing/block_copies.h"
#include "editor/DocumentManager.h"
#include "editor/command_support.h"
#include "editor/command_tables.h"
#include "runtime/Host.h"

namespace veldrin {

namespace {

Task<void> keepCopies(CommandContext& context, const AcGePoint3d* base) {
    const std::vector<AcDbObjectId> ids = co_await selectObjects(context, SelectFor::Looking);
    if (ids.empty()) throw InputCancelled();
    Clipboard copied;
    requireOk(drawingOf(context.database, ids, AcGeMatrix3d(), copied.drawing),
              "The objects cannot be copied");
    AcDbExtents extents;
    for (const AcDbObjectId id : ids)
        if (const AcDbObjectPointer<AcDbEntity> entity(id); entity) {
            AcDbExtents own;
            if (entity->getGeomExtents(own) == Acad::eOk) extents.addExt(own);
        }
    copied.base = base ? *base : extents.isEmpty() ? AcGePoint3d::kOrigin : extents.minPoint();
    context.host.documents().clipboard() = std::move(copied);
}

// Pasted by the lower left corner.
Task<void> copyClipCommand(CommandContext& context) {
    co_await keepCopies(context, nullptr);
}

Task<void> copyBaseCommand(CommandContext& context) {
    const AcGePoint3d base = co_await requirePoint(context, "Specify base point:");
    co_await keepCopies(context, &base);
}

const Clipboard& filledClipboard(CommandContext& context) {
    const Clipboard& clipboard = context.host.documents().clipboard();
    if (!clipboard.drawing) failCommand("Nothing was copied.");
    return clipboard;
}

void paste(CommandContext& context, const AcGeVector3d& offset) {
    const AcDbDatabase& source = *filledClipboard(context).drawing;
    requireOk(copyInto(context.database.modelSpaceId(), livingEntities(source.modelSpaceId()),
                       AcGeMatrix3d::translation(offset)),
              "The objects cannot be pasted");
}

Task<void> pasteClipCommand(CommandContext& context) {
    filledClipboard(context);
    const AcGePoint3d at = co_await requirePoint(context, "Specify insertion point:");
    paste(context, at - filledClipboard(context).base);
}

Task<void> pasteOriginalCommand(CommandContext& context) {
    paste(context, AcGeVector3d());
    co_return;
}

constexpr CommandRow rows[] = {
    {"COPYCLIP", "", copyClipCommand, kCommandWithoutStep},
    {"COPYBASE", "", copyBaseCommand, kCommandWithoutStep},
    {"PASTECLIP", "", pasteClipCommand, 0},
    {"PASTEORIG", "", pasteOriginalCommand, 0},
};

} // namespace

std::span<const CommandRow> clipboardCommands() {
    return rows;
}

} // namespace veldrin
