#include "graphics/PlotPage.h"

#include "drawing/AcGiTextLook.h"

#include <numbers>
#include <utility>

namespace veldrin {

namespace {

// Ink and gap in turn, beginning with ink, in millimetres.
void alternate(const std::vector<double>& dashes, double scale, double dot, std::vector<double>& pattern) {
    pattern.clear();
    for (const double dash : dashes) {
        const double size = dash == 0.0 ? dot : std::abs(dash) * scale;
        const bool ink = dash >= 0.0;
        const bool inkNext = pattern.size() % 2 == 0;
        if (ink == inkNext) {
            pattern.push_back(size);
        } else if (pattern.empty()) {
            pattern.push_back(0.0);
            pattern.push_back(size);
        } else {
            pattern.back() += size;
        }
    }
    if (pattern.size() % 2 != 0) pattern.push_back(0.0);
}

double lengthOf(std::span<const AcGePoint3d> points) {
    double sum = 0.0;
    for (std::size_t i = 1; i < points.size(); ++i)
        sum += points[i].convert2d().distanceTo(points[i - 1].convert2d());
    return sum;
}

} // namespace

PlotPage::PlotPage(cairo_t* canvas, const PageLayout& layout, PlotPens& pens)
    : m_canvas(canvas), m_layout(layout), m_pens(pens) {}

void PlotPage::paint(const DisplayList& list) {
    cairo_rectangle(m_canvas, m_layout.margin, m_layout.margin, m_layout.width - 2.0 * m_layout.margin,
                    m_layout.height - 2.0 * m_layout.margin);
    cairo_clip(m_canvas);
    cairo_set_line_join(m_canvas, CAIRO_LINE_JOIN_ROUND);
    const DrawTraits* current = nullptr;
    for (std::size_t i = 0; i < list.size(); ++i) {
        if (const DrawTraits* traits = &list.traits(i); traits != current) {
            m_pen = m_pens.pen(*traits);
            current = traits;
        }
        if (!m_pen.visible) continue;
        AcDbExtents box;
        list.addExtents(i, box);
        if (!isOutside(box, m_pen.width)) paint(list, i);
    }
}

bool PlotPage::isOutside(const AcDbExtents& box, double penWidth) const {
    if (box.isEmpty()) return true;
    const double reach = penWidth / 2.0;
    const double low = m_layout.margin - reach;
    return m_layout.x(box.maxPoint().x) < low || m_layout.y(box.maxPoint().y) < low ||
           m_layout.x(box.minPoint().x) > m_layout.width - low ||
           m_layout.y(box.minPoint().y) > m_layout.height - low;
}

void PlotPage::moveTo(const AcGePoint3d& p) {
    cairo_move_to(m_canvas, m_layout.x(p.x), m_layout.y(p.y));
}
void PlotPage::lineTo(const AcGePoint3d& p) {
    cairo_line_to(m_canvas, m_layout.x(p.x), m_layout.y(p.y));
}

void PlotPage::addPiece(const CurvePiece& piece) {
    if (!piece.isArc()) return lineTo(piece.end);
    const AcGeVector3d normal = piece.normal();
    constexpr double kFlat = 1.0e-9;
    if (std::hypot(normal.x, normal.y) > kFlat) {
        constexpr int kChords = 72;
        for (int i = 1; i <= kChords; ++i) lineTo(piece.pointAt(i / double{kChords}));
        return;
    }
    const double from = std::atan2(piece.toStart.y, piece.toStart.x);
    const double sweep = normal.z < 0.0 ? -piece.sweep : piece.sweep;
    const auto draw = sweep < 0.0 ? cairo_arc_negative : cairo_arc;
    draw(m_canvas, m_layout.x(piece.center.x), m_layout.y(piece.center.y), piece.radius * m_layout.scale,
         from, from + sweep);
}

void PlotPage::follow(const CurvePath& path) {
    if (path.isEmpty()) return;
    moveTo(path.pieces().front().start);
    for (const CurvePiece& piece : path.pieces()) addPiece(piece);
    if (path.isClosed()) cairo_close_path(m_canvas);
    stroke(path.length());
}

void PlotPage::followPoints(std::span<const AcGePoint3d> points) {
    if (points.empty()) return;
    moveTo(points.front());
    for (const AcGePoint3d& p : points.subspan(1)) lineTo(p);
}

// A line that is shorter than the pattern, or so long against it that nobody could tell, is drawn full.
void PlotPage::setDashes(double length) {
    constexpr double kMostRepeats = 20000.0;
    m_pattern.clear();
    if (!m_pen.dashes.empty()) {
        alternate(m_pen.dashes, m_layout.scale, m_pen.width, m_pattern);
        double total = 0.0;
        for (const double size : m_pattern) total += size;
        const double onPaper = length * m_layout.scale;
        if (onPaper < total || onPaper > total * kMostRepeats) m_pattern.clear();
    }
    cairo_set_dash(m_canvas, m_pattern.data(), static_cast<int>(m_pattern.size()), 0.0);
    // Round ends would fill small gaps, so dashes end where the pattern says.
    cairo_set_line_cap(m_canvas, m_pattern.empty() ? CAIRO_LINE_CAP_ROUND : CAIRO_LINE_CAP_BUTT);
}

void PlotPage::stroke(double length) {
    constexpr double kFull = 255.0;
    cairo_set_source_rgb(m_canvas, (m_pen.rgb >> 16) / kFull, ((m_pen.rgb >> 8) & 0xFF) / kFull,
                         (m_pen.rgb & 0xFF) / kFull);
    cairo_set_line_width(m_canvas, m_pen.width);
    setDashes(length);
    cairo_stroke(m_canvas);
}

void PlotPage::paintText(const AcGiText& text) {
    const std::vector<double> dashes = std::exchange(m_pen.dashes, {}); // letters are never dashed
    layoutOf(text).strokes([&](std::span<const AcGePoint2d> points) {
        moveTo(placeOf(text, points.front()));
        for (const AcGePoint2d& p : points.subspan(1)) lineTo(placeOf(text, p));
    });
    stroke(0.0);
    m_pen.dashes = dashes;
}

void PlotPage::paint(const DisplayList& list, std::size_t index) {
    cairo_new_path(m_canvas);
    switch (list.kind(index)) {
    case PrimitiveKind::kPolyline:
        followPoints(list.points(index));
        stroke(lengthOf(list.points(index)));
        break;
    case PrimitiveKind::kPolygon: {
        followPoints(list.points(index));
        cairo_close_path(m_canvas);
        const bool filled = list.traits(index).fill == kAcGiFillAlways;
        stroke(filled ? 0.0 : lengthOf(list.points(index)));
        if (!filled) break;
        followPoints(list.points(index));
        cairo_fill(m_canvas);
        break;
    }
    case PrimitiveKind::kCircle: {
        const RecordedCircle c = list.circle(index);
        const AcGeVector3d n = c.normal.normal();
        follow(CurvePath({CurvePiece::arc(c.center, c.radius, n, n.perpVector(), 2.0 * std::numbers::pi)},
                         true));
        break;
    }
    case PrimitiveKind::kArc: {
        const RecordedArc a = list.arc(index);
        follow(CurvePath({CurvePiece::arc(a.center, a.radius, a.normal, a.startVector, a.sweep)}, false));
        break;
    }
    case PrimitiveKind::kText: paintText(list.text(index)); break;
    case PrimitiveKind::kFittedCurve: follow(pathOf(list.fittedCurve(index))); break;
    }
}

} // namespace veldrin
