#include "graphics/plot_file.h"

#include "system/AsciiCase.h"

#include <cairo-pdf.h>
#include <cairo-svg.h>

#include <algorithm>
#include <cerrno>
#include <cmath>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <fmt/format.h>
#include <memory>
#include <string_view>

namespace veldrin {

namespace {

constexpr double kInch = 25.4;
constexpr double kPointsPerInch = 72.0;

struct SurfaceDeleter {
    void operator()(cairo_surface_t* surface) const { cairo_surface_destroy(surface); }
};
struct CanvasDeleter {
    void operator()(cairo_t* canvas) const { cairo_destroy(canvas); }
};
using SurfacePtr = std::unique_ptr<cairo_surface_t, SurfaceDeleter>;
using CanvasPtr = std::unique_ptr<cairo_t, CanvasDeleter>;

cairo_status_t append(void* bytes, const unsigned char* data, unsigned length) {
    static_cast<std::string*>(bytes)->append(reinterpret_cast<const char*>(data), length);
    return CAIRO_STATUS_SUCCESS;
}

// The surface, and how many of its units a millimetre has.
SurfacePtr makeSurface(PlotFormat format, double width, double height, double resolution, std::string& bytes,
                       double& unit) {
    switch (format) {
    case PlotFormat::kSvg: {
        unit = 1.0;
        SurfacePtr surface(cairo_svg_surface_create_for_stream(append, &bytes, width, height));
        cairo_svg_surface_set_document_unit(surface.get(), CAIRO_SVG_UNIT_MM);
        return surface;
    }
    case PlotFormat::kPdf: {
        unit = kPointsPerInch / kInch;
        SurfacePtr surface(cairo_pdf_surface_create_for_stream(append, &bytes, width * unit, height * unit));
        // The time of the plot would make every file another one.
        cairo_pdf_surface_set_metadata(surface.get(), CAIRO_PDF_METADATA_CREATE_DATE, "2000-01-01T00:00:00Z");
        return surface;
    }
    case PlotFormat::kPng: {
        unit = resolution / kInch;
        const auto pixels = [unit](double size) {
            return std::max(1, static_cast<int>(std::lround(size * unit)));
        };
        return SurfacePtr(cairo_image_surface_create(CAIRO_FORMAT_RGB24, pixels(width), pixels(height)));
    }
    }
    return nullptr;
}

// The library numbers its surfaces through the life of the process; a file must not tell how many came
// before.
void steadyNames(std::string& svg) {
    constexpr std::string_view kName = "\"surface";
    for (std::size_t at = svg.find(kName); at != std::string::npos; at = svg.find(kName, at)) {
        const std::size_t number = at + kName.size();
        const std::size_t end = svg.find_first_not_of("0123456789", number);
        if (end == std::string::npos) return;
        svg.erase(number, end - number);
        at = number;
    }
}

} // namespace

std::optional<PlotFormat> plotFormat(const std::string& path) {
    const std::string ending = asciiLowerCase(std::filesystem::path(path).extension().string());
    if (ending == ".svg") return PlotFormat::kSvg;
    if (ending == ".pdf") return PlotFormat::kPdf;
    if (ending == ".png") return PlotFormat::kPng;
    return std::nullopt;
}

std::optional<std::string> makeSheet(PlotFormat format, double width, double height, double resolution,
                                     const std::function<void(cairo_t*)>& paint, std::string& bytes) {
    double unit = 1.0;
    const SurfacePtr surface = makeSurface(format, width, height, resolution, bytes, unit);
    cairo_status_t status = CAIRO_STATUS_SUCCESS;
    {
        const CanvasPtr canvas(cairo_create(surface.get()));
        cairo_set_source_rgb(canvas.get(), 1.0, 1.0, 1.0);
        cairo_paint(canvas.get());
        cairo_scale(canvas.get(), unit, -unit);
        cairo_translate(canvas.get(), 0.0, -height);
        paint(canvas.get());
        status = cairo_status(canvas.get());
    }
    if (status == CAIRO_STATUS_SUCCESS && format == PlotFormat::kPng)
        status = cairo_surface_write_to_png_stream(surface.get(), append, &bytes);
    cairo_surface_finish(surface.get());
    if (status == CAIRO_STATUS_SUCCESS) status = cairo_surface_status(surface.get());
    if (format == PlotFormat::kSvg) steadyNames(bytes);
    if (status == CAIRO_STATUS_SUCCESS) return std::nullopt;
    return std::string(cairo_status_to_string(status));
}

std::optional<std::string> replaceFile(const std::string& path, const std::string& bytes) {
    const std::string beside = path + ".part";
    std::FILE* file = std::fopen(beside.c_str(), "wb");
    if (!file) return std::string(std::strerror(errno));
    int error = std::fwrite(bytes.data(), 1, bytes.size(), file) == bytes.size() ? 0 : errno;
    if (std::fclose(file) != 0 && error == 0) error = errno;
    std::error_code failure(error, std::generic_category());
    if (!failure) std::filesystem::rename(beside, path, failure);
    if (!failure) return std::nullopt;
    std::error_code ignored;
    std::filesystem::remove(beside, ignored);
    return failure.message();
}

} // namespace veldrin
