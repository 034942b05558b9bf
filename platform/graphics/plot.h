#pragma once

#include "drawing/AcDbDatabase.h"
#include "geometry/AcDbExtents.h"
#include "runtime/VeldrinApi.h"

#include <optional>
#include <string>

namespace veldrin {

struct PlotSettings {
    // "A4" to "A0", "Letter", "Legal", "Tabloid", "ARCH A" to "ARCH E", "ANSI A" to "ANSI E", or a width and
    // height as "420x297" (millimetres) or "36x24in". A name may be followed by "landscape" or "portrait";
    // without, the sheet lies as the drawing does.
    std::string paper = "A4";
    // "fit", paper to drawing as "1:48" or 1/4"=1'-0", or the second number of such a pair alone.
    std::string scale = "fit";
    double margin = 10.0;              // millimetres, on all sides; nothing is drawn outside of it
    double resolution = 150.0;         // dots per inch of a PNG
    bool monochrome = false;           // everything black
    std::optional<AcDbExtents> window; // what is shown of the drawing; all of it without
};

// Draws model space on a sheet of paper as an SVG, PDF or PNG file by the ending of the path: what is on
// layers that are on, thawed and plottable, in drawing order. The same drawing gives the same bytes. Nothing
// on success, else one line that says what failed and where; the file is then as it was before.
VELDRIN_API std::optional<std::string> plotDrawing(AcDbDatabase& database, const PlotSettings& settings,
                                                   const std::string& path);

} // namespace veldrin
