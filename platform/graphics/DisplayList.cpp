#include "graphics/DisplayList.h"

#include "drawing/AcGiTextLook.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace veldrin {

namespace {

bool isFinite(const AcGePoint3d& p) {
    return std::isfinite(p.x) && std::isfinite(p.y) && std::isfinite(p.z);
}

// Where the numbers of a kind stand.
enum CircleNumber { kRadius, kNormalX, kNormalY, kNormalZ, kStartX, kStartY, kStartZ, kSweep, kType };
enum CurveNumber { kDefinitionCount, kClosed, kCurveNormalX, kCurveNormalY, kCurveNormalZ, kFirstBulge };

AcGeVector3d vectorAt(const double* numbers) {
    return {numbers[0], numbers[1], numbers[2]};
}

} // namespace

void DisplayList::clear() {
    m_primitives.clear();
    m_traits.clear();
    m_points.clear();
    m_numbers.clear();
    m_textCount = 0;
}

std::span<const AcGePoint3d> DisplayList::points(std::size_t index) const {
    const Primitive& p = m_primitives[index];
    const std::span<const AcGePoint3d> all(m_points.data() + p.firstPoint, p.pointCount);
    if (p.kind != PrimitiveKind::kFittedCurve) return all;
    return all.first(static_cast<std::size_t>(m_numbers[p.firstNumber + kDefinitionCount]));
}

RecordedCircle DisplayList::circle(std::size_t index) const {
    const Primitive& p = m_primitives[index];
    const double* numbers = m_numbers.data() + p.firstNumber;
    return {m_points[p.firstPoint], numbers[kRadius], vectorAt(numbers + kNormalX)};
}

RecordedArc DisplayList::arc(std::size_t index) const {
    const Primitive& p = m_primitives[index];
    const double* numbers = m_numbers.data() + p.firstNumber;
    return {m_points[p.firstPoint],      numbers[kRadius], vectorAt(numbers + kNormalX),
            vectorAt(numbers + kStartX), numbers[kSweep],  static_cast<AcGiArcType>(numbers[kType])};
}

const AcGiText& DisplayList::text(std::size_t index) const {
    return m_texts[m_primitives[index].firstNumber];
}

AcGiFittedCurve DisplayList::fittedCurve(std::size_t index) const {
    const Primitive& p = m_primitives[index];
    const double* numbers = m_numbers.data() + p.firstNumber;
    const std::span<const AcGePoint3d> all(m_points.data() + p.firstPoint, p.pointCount);
    const auto definitions = static_cast<std::size_t>(numbers[kDefinitionCount]);
    const std::span<const AcGePoint3d> vertices = all.subspan(definitions);
    return {all.first(definitions), vertices, std::span<const double>(numbers + kFirstBulge, vertices.size()),
            vectorAt(numbers + kCurveNormalX), numbers[kClosed] != 0.0};
}

void DisplayList::replay(AcGiWorldDraw& draw, std::size_t index) const {
    AcGiWorldGeometry& geometry = draw.geometry();
    const std::span<const AcGePoint3d> corners = points(index);
    const auto count = static_cast<Adesk::UInt32>(corners.size());
    switch (kind(index)) {
    case PrimitiveKind::kPolyline: geometry.polyline(count, corners.data()); break;
    case PrimitiveKind::kPolygon: geometry.polygon(count, corners.data()); break;
    case PrimitiveKind::kCircle: {
        const RecordedCircle c = circle(index);
        geometry.circle(c.center, c.radius, c.normal);
        break;
    }
    case PrimitiveKind::kArc: {
        const RecordedArc a = arc(index);
        geometry.circularArc(a.center, a.radius, a.normal, a.startVector, a.sweep, a.type);
        break;
    }
    case PrimitiveKind::kText: geometry.text(text(index)); break;
    case PrimitiveKind::kFittedCurve: geometry.fittedCurve(fittedCurve(index)); break;
    }
}

void DisplayList::replay(AcGiWorldDraw& draw) const {
    AcGiSubEntityTraits& target = draw.subEntityTraits();
    const DrawTraits* current = nullptr;
    for (std::size_t i = 0; i < size() && !draw.regenAbort(); ++i) {
        if (const DrawTraits* wanted = &traits(i); wanted != current) {
            target.setLayer(wanted->layer);
            target.setLineType(wanted->linetype);
            target.setTrueColor(wanted->color);
            target.setLineWeight(wanted->lineWeight);
            target.setLineTypeScale(wanted->linetypeScale);
            target.setFillType(wanted->fill);
            current = wanted;
        }
        replay(draw, i);
    }
}

AcDbExtents DisplayList::extents() const {
    AcDbExtents box;
    for (std::size_t i = 0; i < size(); ++i) addExtents(i, box);
    return box;
}

void DisplayList::addExtents(std::size_t index, AcDbExtents& extents) const {
    const AcDbExtents box = extentsOf(index);
    if (isFinite(box.minPoint()) && isFinite(box.maxPoint())) extents.addExt(box);
}

AcDbExtents DisplayList::extentsOf(std::size_t index) const {
    AcDbExtents extents;
    switch (kind(index)) {
    case PrimitiveKind::kPolyline:
    case PrimitiveKind::kPolygon:
        if (!std::ranges::all_of(points(index), isFinite)) break;
        for (const AcGePoint3d& p : points(index)) extents.addPoint(p);
        break;
    case PrimitiveKind::kCircle: {
        const RecordedCircle c = circle(index);
        const AcGeVector3d n = c.normal.normal();
        CurvePiece::arc(c.center, c.radius, n, n.perpVector(), 2.0 * std::numbers::pi).addTo(extents);
        break;
    }
    case PrimitiveKind::kArc: {
        const RecordedArc a = arc(index);
        CurvePiece::arc(a.center, a.radius, a.normal, a.startVector, a.sweep).addTo(extents);
        break;
    }
    case PrimitiveKind::kText:
        for (const AcGePoint3d& corner : cornersOf(text(index))) extents.addPoint(corner);
        break;
    case PrimitiveKind::kFittedCurve:
        if (std::ranges::all_of(points(index), isFinite)) pathOf(fittedCurve(index)).addTo(extents);
        break;
    }
    return extents;
}

CurvePath pathOf(const AcGiFittedCurve& curve) {
    return CurvePath({curve.vertices.begin(), curve.vertices.end()},
                     {curve.bulges.begin(), curve.bulges.end()}, curve.closed, curve.normal);
}

RecordedPicture::~RecordedPicture() = default;
void RecordedPicture::setAttributes(AcGiSubEntityTraits*) {}

bool RecordedPicture::worldDraw(AcGiWorldDraw* draw) {
    m_list.replay(*draw);
    return true;
}

} // namespace veldrin
