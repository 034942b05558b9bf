#pragma once

#include "graphics/DisplayList.h"
#include "graphics/PlotPens.h"

#include <cairo.h>

namespace veldrin {

// How the drawing lies on the sheet: millimetres from its lower left corner, y up.
struct PageLayout {
    double width = 0.0;
    double height = 0.0;
    double margin = 0.0;
    double scale = 1.0; // millimetres a drawing unit
    double offsetX = 0.0;
    double offsetY = 0.0;

    double x(double inDrawing) const { return inDrawing * scale + offsetX; }
    double y(double inDrawing) const { return inDrawing * scale + offsetY; }
};

// Paints recorded primitives with their pens. The canvas counts millimetres from the sheet's lower left
// corner, y up.
class PlotPage {
public:
    PlotPage(cairo_t* canvas, const PageLayout& layout, PlotPens& pens);

    void paint(const DisplayList& list);

private:
    bool isOutside(const AcDbExtents& box, double penWidth) const;
    void paint(const DisplayList& list, std::size_t index);
    void paintText(const AcGiText& text);
    void moveTo(const AcGePoint3d& p);
    void lineTo(const AcGePoint3d& p);
    void addPiece(const CurvePiece& piece); // from where the pen is
    void follow(const CurvePath& path);
    void followPoints(std::span<const AcGePoint3d> points);
    void stroke(double length); // in drawing units
    void setDashes(double length);

    cairo_t* m_canvas;
    const PageLayout& m_layout;
    PlotPens& m_pens;
    Pen m_pen;
    std::vector<double> m_pattern; // reused
};

} // namespace veldrin
