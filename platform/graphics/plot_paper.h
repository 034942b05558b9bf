#pragma once

#include "runtime/VeldrinApi.h"

#include <optional>
#include <string>

namespace veldrin {

struct PaperSize {
    double width = 0.0; // millimetres
    double height = 0.0;
    bool turnable = true; // the drawing decides how the sheet lies
};

// Nothing when the text names no paper (see PlotSettings).
VELDRIN_API std::optional<PaperSize> paperSize(const std::string& text);

// Length on paper for a length in the drawing, in the same unit; 0 for "fit", nothing when the text is no
// scale.
VELDRIN_API std::optional<double> plotScale(const std::string& text);

} // namespace veldrin
