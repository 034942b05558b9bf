// BLOCK, WBLOCK

#include "drawing/AcDbBlockReference.h"
#include "drawing/AcDbBlockTable.h"
#include "drawing/SymbolNames.h"
#include "drawing/block_copies.h"
#include "drawing/block_parts.h"
#include "editor/DocumentManager.h"
#include "editor/command_names.h"
#include "editor/command_support.h"
#include "editor/command_tables.h"
#include "files/DrawingFile.h"
#include "files/DrawingHold.h"
#include "runtime/Host.h"

#include <algorithm>
#include <filesystem>
#include <fmt/format.h>

namespace veldrin {

namespace {

namespace fs = std::filesystem;

bool holdsReferenceTo(const std::vector<AcDbObjectId>& ids, AcDbObjectId block) {
    return std::ranges::any_of(ids, [block](AcDbObjectId id) {
        const AcDbObjectPointer<AcDbBlockReference> reference(id);
        return reference && blockShows(reference->blockTableRecord(), block);
    });
}

// The block stands in the axes of the user coordinate system; its parts are the drawing's no longer.
Task<void> blockCommand(CommandContext& context) {
    const Answer name = co_await context.input.string("BLOCK Enter block name:");
    if (name.isNone()) throw InputCancelled();
    if (!isSymbolName(name.text) || name.text.starts_with('*')) failCommand("Invalid block name.");
    const AcDbObjectId known = recordNamed(context.database.blockTableId(), name.text);
    if (!known.isNull()) {
        const std::string prompt =
            fmt::format("Block \"{}\" already exists. Redefine it? [Yes/No] <N>:", name.text);
        const Answer again = co_await context.input.keyword(prompt, "Yes No");
        if (!again.isKeyword("Yes")) co_return;
    }
    AcGePoint3d base = co_await requirePoint(context, "Specify insertion base point:");
    const std::vector<AcDbObjectId> ids = co_await selectObjects(context, SelectFor::Editing);
    if (!known.isNull() && holdsReferenceTo(ids, known))
        failCommand(fmt::format("Block {} references itself.", name.text));
    const AcGeMatrix3d toUser = context.database.ucsToWorld().inverse();
    AcDbObjectId block;
    requireOk(startBlock(context.database, name.text, base.transformBy(toUser), block),
              "The block cannot be made");
    requireOk(copyInto(block, ids, toUser), "The objects cannot be copied");
    for (const AcDbObjectId id : ids) {
        const AcDbObjectPointer<AcDbEntity> entity(id, AcDb::kForWrite);
        requireOk(entity ? entity->erase() : entity.openStatus(), "An object cannot be erased");
    }
}

void writeParts(CommandContext& context, const std::vector<AcDbObjectId>& ids, const AcGeMatrix3d& placing,
                const std::string& path) {
    std::unique_ptr<AcDbDatabase> drawing;
    requireOk(drawingOf(context.database, ids, placing, drawing), "The objects cannot be copied");
    if (const auto problem = saveDrawing(*drawing, path)) failCommand(*problem);
}

void writeBlock(CommandContext& context, const std::string& name, const std::string& path) {
    const AcDbObjectId id = recordNamed(context.database.blockTableId(), name);
    if (id.isNull()) failCommand(fmt::format("Block \"{}\" not found.", name));
    AcGePoint3d base;
    {
        const AcDbObjectPointer<AcDbBlockTableRecord> block(id);
        requireOk(block.openStatus(), "The block cannot be read");
        base = block->origin();
    }
    writeParts(context, livingEntities(id), AcGeMatrix3d::translation(AcGePoint3d::kOrigin - base), path);
}

// The new drawing has the base point at its origin and the user's axes as its own. What was written stays in
// this drawing too.
Task<void> writeSelection(CommandContext& context, const std::string& path) {
    const AcGePoint3d base = co_await requirePoint(context, "Specify insertion base point:");
    const std::vector<AcDbObjectId> ids = co_await selectObjects(context, SelectFor::Looking);
    if (ids.empty()) throw InputCancelled();
    AcGeMatrix3d axes = context.database.ucsToWorld().inverse();
    AcGePoint3d origin = base;
    origin.transformBy(axes);
    writeParts(context, ids, AcGeMatrix3d::translation(AcGePoint3d::kOrigin - origin) * axes, path);
}

Task<void> wblockCommand(CommandContext& context) {
    const Answer file = co_await context.input.string("WBLOCK Enter name of output file:");
    if (file.isNone()) throw InputCancelled();
    const std::string path = drawingPath(file.text);
    if (context.host.documents().find(path)) failCommand(fmt::format("{} is open.", path));
    const DrawingHold::Attempt attempt = DrawingHold::take(path);
    if (!attempt.holder.empty()) failCommand(fmt::format("{} is in use by {}.", path, attempt.holder));
    const Answer what = co_await context.input.string(
        "Enter name of existing block or [= (block=output file)/* (whole drawing)] <define new drawing>:");
    if (what.isNone() || what.text.empty()) co_return co_await writeSelection(context, path);
    if (what.text == "*") {
        if (const auto problem = saveDrawingCopy(context.database, path)) failCommand(*problem);
        co_return;
    }
    writeBlock(context, what.text == "=" ? fs::path(path).stem().string() : what.text, path);
}

constexpr CommandRow rows[] = {
    {"BLOCK", "B", blockCommand, 0},
    {"WBLOCK", "W", wblockCommand, 0},
};

} // namespace

std::span<const CommandRow> blockCommands() {
    return rows;
}

} // namespace veldrin
