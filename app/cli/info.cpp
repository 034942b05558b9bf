#include "cli/Session.h"
#include "cli/Subcommands.h"
#include "drawing/AcDbBlockTable.h"
#include "drawing/AcDbDatabase.h"
#include "drawing/AcDbProxyEntity.h"
#include "editor/CommandLine.h"
#include "editor/DocumentManager.h"
#include "graphics/DrawingExtents.h"
#include "runtime/AcRxClass.h"

#include <algorithm>
#include <fmt/format.h>
#include <map>
#include <memory>

namespace {

using Counts = std::map<std::string, int>;

// Name of the class that an entity is of, also where a proxy stands in for it.
std::string classOf(AcDbEntity& entity) {
    if (const auto* proxy = AcDbProxyEntity::cast(&entity)) return proxy->originalClassName() + " (proxy)";
    return entity.isA()->name();
}

void countEntities(AcDbDatabase& database, Counts& classes, Counts& layers) {
    const AcDbObjectPointer<AcDbBlockTableRecord> space(database.modelSpaceId());
    if (!space) return;
    for (const AcDbObjectId id : space->entityIds()) {
        const AcDbObjectPointer<AcDbEntity> entity(id);
        if (!entity) continue; // erased
        ++classes[classOf(*entity)];
        ++layers[entity->layer()];
    }
}

std::string table(const std::string& title, const Counts& counts) {
    std::size_t width = 0;
    for (const auto& [name, count] : counts) width = std::max(width, name.size());
    std::string text = title + "\n";
    for (const auto& [name, count] : counts) text += fmt::format("  {:<{}}  {:>7}\n", name, width, count);
    return text;
}

std::string describe(const AcApDocument& document) {
    AcDbDatabase& database = *document.database();
    Counts classes, layers;
    countEntities(database, classes, layers);
    int total = 0;
    for (const auto& [name, count] : classes) total += count;

    std::string text = fmt::format("Drawing {}\nEntities {}\n", document.fileName(), total);
    if (total > 0) text += table("Classes", classes) + table("Layers", layers);
    const AcDbExtents extents = veldrin::drawnExtents(database);
    if (extents.isEmpty()) return text + "Extents none\n";
    const AcGePoint3d &low = extents.minPoint(), &high = extents.maxPoint();
    return text + fmt::format("Extents ({:g}, {:g}, {:g}) to ({:g}, {:g}, {:g})\n", low.x, low.y, low.z,
                              high.x, high.y, high.z);
}

int info(const std::string& drawing) {
    Session session;
    bool goOn = false;
    const int status = session.prepare(drawing, goOn);
    if (goOn) {
        veldrin::CommandLine& line = session.host().commandLine();
        line.freshLine();
        line.print(describe(*session.host().documents().curDocument()));
    }
    return session.finish(status);
}

} // namespace

Subcommand addInfo(CLI::App& program) {
    auto drawing = std::make_shared<std::string>();
    CLI::App* app =
        program.add_subcommand("info", "Tells what a drawing, or the one that a script draws, holds");
    app->add_option("DRAWING", *drawing, "a drawing, or a Lisp script that draws one")->required();
    return {app, [=] { return info(*drawing); }};
}
