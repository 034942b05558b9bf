#pragma once

#include "drawing/AcDbDatabase.h"
#include "graphics/SinkBase.h"

#include <unordered_map>

namespace veldrin {

// What a primitive is drawn with on paper.
struct Pen {
    bool visible = true;
    std::uint32_t rgb = 0;      // 0xRRGGBB
    double width = 0.0;         // millimetres
    std::vector<double> dashes; // drawing units, above 0 ink, below 0 gap, 0 a dot; empty for a full line
};

// Resolves traits by the layers and linetypes of a drawing. What is by block, outside of one, is black, full
// and of the default weight.
class PlotPens {
public:
    PlotPens(const AcDbDatabase& database, bool monochrome)
        : m_database(database), m_monochrome(monochrome) {}

    Pen pen(const DrawTraits& traits);
    bool isFrozen(AcDbObjectId layer) { return layerLook(layer).frozen; }

private:
    struct LayerLook {
        AcCmColor color{AcCmColor::kForeground};
        AcDbObjectId linetype;
        AcDb::LineWeight lineWeight = AcDb::kLnWtByLwDefault;
        bool shown = true; // on, thawed and plottable
        bool frozen = false;
    };

    const LayerLook& layerLook(AcDbObjectId layer);
    const std::vector<double>& dashesOf(AcDbObjectId linetype);

    const AcDbDatabase& m_database;
    bool m_monochrome;
    std::unordered_map<AcDbObjectId, LayerLook> m_layers;
    std::unordered_map<AcDbObjectId, std::vector<double>> m_linetypes;
};

} // namespace veldrin
