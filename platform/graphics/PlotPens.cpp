#include "graphics/PlotPens.h"

#include "drawing/AcDbLayerTable.h"
#include "drawing/AcDbLinetypeTable.h"
#include "drawing/AcGiPalette.h"

#include <algorithm>

namespace veldrin {

namespace {

constexpr double kDefaultWidth = 0.25; // millimetres
constexpr double kThinnest = 0.05;     // what weight 0 gives

// On white paper the foreground colour is black.
std::uint32_t onPaper(const AcCmColor& color) {
    if (color.isByColor()) return color.rgb();
    if (color.isByBlock() || color.colorIndex() == AcCmColor::kForeground) return 0;
    return paletteColor(color.colorIndex());
}

double widthOf(AcDb::LineWeight weight) {
    return weight < 0 ? kDefaultWidth : std::max(kThinnest, weight / 100.0);
}

} // namespace

const PlotPens::LayerLook& PlotPens::layerLook(AcDbObjectId layer) {
    const auto [place, isNew] = m_layers.try_emplace(layer);
    if (!isNew) return place->second;
    const AcDbObjectPointer<AcDbLayerTableRecord> record(layer, AcDb::kForRead, true);
    LayerLook& look = place->second;
    if (!record) return look;
    look.color = record->color();
    look.linetype = record->linetypeObjectId();
    look.lineWeight = record->lineWeight();
    look.frozen = record->isFrozen();
    look.shown = !record->isOff() && !record->isFrozen() && record->isPlottable();
    return look;
}

const std::vector<double>& PlotPens::dashesOf(AcDbObjectId linetype) {
    const auto [place, isNew] = m_linetypes.try_emplace(linetype);
    if (!isNew) return place->second;
    const AcDbObjectPointer<AcDbLinetypeTableRecord> record(linetype, AcDb::kForRead, true);
    if (record) place->second = record->dashes();
    return place->second;
}

Pen PlotPens::pen(const DrawTraits& traits) {
    const LayerLook& layer = layerLook(traits.layer.isNull() ? m_database.layerZero() : traits.layer);
    Pen pen;
    pen.visible = layer.shown;
    pen.rgb = m_monochrome ? 0 : onPaper(traits.color.isByLayer() ? layer.color : traits.color);
    pen.width = widthOf(traits.lineWeight == AcDb::kLnWtByLayer ? layer.lineWeight : traits.lineWeight);
    const bool byLayer = traits.linetype.isNull() || traits.linetype == m_database.byLayerLinetype();
    const double scale = m_database.header().ltscale * traits.linetypeScale;
    for (const double dash : dashesOf(byLayer ? layer.linetype : traits.linetype))
        pen.dashes.push_back(dash * scale);
    return pen;
}

} // namespace veldrin
