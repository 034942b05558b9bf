#pragma once

#include <cairo.h>
#include <functional>
#include <optional>
#include <string>

namespace veldrin {

enum class PlotFormat { kSvg, kPdf, kPng };

// By the ending of a path; nothing for another ending.
std::optional<PlotFormat> plotFormat(const std::string& path);

// The bytes of one sheet on which `paint` has drawn, in millimetres from the lower left corner, y up, on
// white. An error text when the sheet could not be made.
std::optional<std::string> makeSheet(PlotFormat format, double width, double height, double resolution,
                                     const std::function<void(cairo_t*)>& paint, std::string& bytes);

// Puts a file in place as a whole: what was there stays until all is written. An error text on failure.
std::optional<std::string> replaceFile(const std::string& path, const std::string& bytes);

} // namespace veldrin
