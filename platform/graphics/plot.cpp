#include "graphics/plot.h"

#include "drawing/AcDbBlockTable.h"
#include "drawing/AcDbEntity.h"
#include "graphics/PlotPage.h"
#include "graphics/Recorder.h"
#include "graphics/plot_file.h"
#include "graphics/plot_paper.h"

#include <cmath>
#include <fmt/format.h>

namespace veldrin {

namespace {

constexpr double kInch = 25.4;

// Millimetres a drawing unit, by INSUNITS.
double unitSize(const HeaderVariables& header) {
    enum Unit { kNone = 0, kInches = 1, kFeet = 2, kMillimetres = 4, kCentimetres = 5, kMetres = 6 };
    switch (header.insunits) {
    case kFeet: return 12.0 * kInch;
    case kMillimetres: return 1.0;
    case kCentimetres: return 10.0;
    case kMetres: return 1000.0;
    case kNone: return header.measurement == 0 ? kInch : 1.0;
    default: return kInch;
    }
}

// Draws model space into the list; how many entities could not be read.
int record(AcDbDatabase& database, PlotPens& pens, DisplayList& list) {
    int unreadable = 0;
    const AcDbObjectPointer<AcDbBlockTableRecord> modelSpace(database.modelSpaceId());
    if (!modelSpace) return 1;
    Recorder recorder(list);
    for (const AcDbObjectId id : modelSpace->entityIds()) {
        if (id.isErased()) continue;
        const AcDbObjectPointer<AcDbEntity> entity(id);
        if (!entity) {
            ++unreadable;
            continue;
        }
        if (entity->visibility() == AcDb::kVisible && !pens.isFrozen(entity->layerId()))
            drawEntity(*entity, recorder);
    }
    return unreadable;
}

AcDbExtents shownExtents(const DisplayList& list, PlotPens& pens) {
    AcDbExtents box;
    const DrawTraits* current = nullptr;
    bool visible = true;
    for (std::size_t i = 0; i < list.size(); ++i) {
        if (&list.traits(i) != current) visible = pens.pen(*(current = &list.traits(i))).visible;
        if (visible) list.addExtents(i, box);
    }
    return box;
}

PageLayout layOut(PaperSize paper, const PlotSettings& settings, double ratio, double unit,
                  const AcDbExtents& box) {
    PageLayout page;
    const double dx = box.isEmpty() ? 0.0 : box.maxPoint().x - box.minPoint().x;
    const double dy = box.isEmpty() ? 0.0 : box.maxPoint().y - box.minPoint().y;
    if (paper.turnable && (dx >= dy) != (paper.width >= paper.height)) std::swap(paper.width, paper.height);
    page.width = paper.width;
    page.height = paper.height;
    page.margin = settings.margin;
    if (ratio > 0.0) {
        page.scale = ratio * unit;
    } else {
        constexpr double kPenRoom = 1.0; // millimetres, so that the outermost lines keep their full width
        const double scaleX = (page.width - 2.0 * page.margin - kPenRoom) / dx;
        const double scaleY = (page.height - 2.0 * page.margin - kPenRoom) / dy;
        page.scale = std::isfinite(std::min(scaleX, scaleY)) ? std::min(scaleX, scaleY) : 1.0;
    }
    if (box.isEmpty()) return page;
    page.offsetX = page.width / 2.0 - page.scale * (box.minPoint().x + dx / 2.0);
    page.offsetY = page.height / 2.0 - page.scale * (box.minPoint().y + dy / 2.0);
    return page;
}

std::optional<std::string> checkSettings(const PlotSettings& settings, const std::optional<PaperSize>& paper,
                                         const std::optional<double>& ratio) {
    if (!paper) return fmt::format("\"{}\" is no paper size", settings.paper);
    if (!ratio) return fmt::format("\"{}\" is no scale", settings.scale);
    constexpr double kLeast = 2.0; // millimetres that must be left to draw on
    const double least = std::min(paper->width, paper->height) - 2.0 * settings.margin;
    if (!(settings.margin >= 0.0) || !(least >= kLeast))
        return fmt::format("a margin of {} mm leaves nothing of the paper", settings.margin);
    if (!(settings.resolution > 0.0)) return fmt::format("{} is no resolution", settings.resolution);
    return std::nullopt;
}

} // namespace

std::optional<std::string> plotDrawing(AcDbDatabase& database, const PlotSettings& settings,
                                       const std::string& path) {
    const auto failed = [&](const std::string& why) {
        return fmt::format("cannot plot to {}: {}", path, why);
    };
    const auto format = plotFormat(path);
    if (!format) return failed("the name must end in .svg, .pdf or .png");
    const auto paper = paperSize(settings.paper);
    const auto ratio = plotScale(settings.scale);
    if (const auto wrong = checkSettings(settings, paper, ratio)) return failed(*wrong);

    PlotPens pens(database, settings.monochrome);
    DisplayList list;
    if (const int unreadable = record(database, pens, list))
        return failed(fmt::format("{} of the drawing's objects are in use", unreadable));
    const AcDbExtents box = settings.window ? *settings.window : shownExtents(list, pens);
    const PageLayout page = layOut(*paper, settings, *ratio, unitSize(database.header()), box);
    std::string bytes;
    const auto paint = [&](cairo_t* canvas) { PlotPage(canvas, page, pens).paint(list); };
    auto error = makeSheet(*format, page.width, page.height, settings.resolution, paint, bytes);
    if (!error) error = replaceFile(path, bytes);
    return error ? std::optional(failed(*error)) : std::nullopt;
}

} // namespace veldrin
