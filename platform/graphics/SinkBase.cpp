#include "graphics/SinkBase.h"

#include "drawing/AcDbCurvePath.h"
#include "drawing/AcGiTextLook.h"

#include <numbers>

namespace veldrin {

void TraitsState::setLayer(AcDbObjectId layer) {
    value.layer = layer;
    touch();
}

void TraitsState::setLineType(AcDbObjectId linetype) {
    value.linetype = linetype;
    touch();
}

void TraitsState::setColor(Adesk::UInt16 colorIndex) {
    value.color = AcCmColor(static_cast<std::int16_t>(colorIndex));
    touch();
}

void TraitsState::setTrueColor(const AcCmColor& color) {
    value.color = color;
    touch();
}

void TraitsState::setLineWeight(AcDb::LineWeight weight) {
    value.lineWeight = weight;
    touch();
}

void TraitsState::setLineTypeScale(double scale) {
    value.linetypeScale = scale;
    touch();
}

void TraitsState::setFillType(AcGiFillType fill) {
    value.fill = fill;
    touch();
}

SinkBase::SinkBase() = default;
SinkBase::~SinkBase() = default;

void SinkBase::resetTraits() {
    m_traits.value = DrawTraits();
    m_traits.touch();
}

std::span<const AcGePoint3d> SinkBase::placed(std::size_t count, const AcGePoint3d* points) {
    if (m_transforms.empty()) return {points, count};
    m_placed.assign(points, points + count);
    for (AcGePoint3d& p : m_placed) p.transformBy(transform());
    return m_placed;
}

bool SinkBase::polyline(Adesk::UInt32 count, const AcGePoint3d* points, const AcGeVector3d*,
                        Adesk::GsMarker) {
    putPolyline(placed(count, points));
    return m_stopped;
}

bool SinkBase::polygon(Adesk::UInt32 count, const AcGePoint3d* points) {
    putPolygon(placed(count, points));
    return m_stopped;
}

// Points of a circle or arc in its own frame, moved one by one.
void SinkBase::putStretched(const AcGePoint3d& center, double radius, const AcGeVector3d& normal,
                            const AcGeVector3d& startVector, double sweep) {
    constexpr double kChordAngle = std::numbers::pi / 36.0;
    const CurvePiece piece = CurvePiece::arc(center, radius, normal, startVector, sweep);
    const int chords = std::max(2, static_cast<int>(std::ceil(std::abs(sweep) / kChordAngle)));
    m_placed.clear();
    for (int i = 0; i <= chords; ++i)
        m_placed.push_back(piece.pointAt(i / double(chords)).transformBy(transform()));
    putPolyline(m_placed);
}

bool SinkBase::circle(const AcGePoint3d& center, double radius, const AcGeVector3d& normal) {
    const double scale = m_transforms.empty() ? 1.0 : transform().scaleInPlane(normal);
    if (m_transforms.empty()) {
        putCircle(center, radius, normal);
    } else if (scale > 0.0) {
        AcGePoint3d c = center;
        AcGeVector3d n = normal;
        putCircle(c.transformBy(transform()), radius * scale, n.transformBy(transform()).normal());
    } else {
        putStretched(center, radius, normal.normal(), normal.normal().perpVector(), 2.0 * std::numbers::pi);
    }
    return m_stopped;
}

bool SinkBase::circularArc(const AcGePoint3d& center, double radius, const AcGeVector3d& normal,
                           const AcGeVector3d& startVector, double sweepAngle, AcGiArcType type) {
    const double scale = m_transforms.empty() ? 1.0 : transform().scaleInPlane(normal);
    if (m_transforms.empty()) {
        putArc(center, radius, normal, startVector.normal(), sweepAngle, type);
    } else if (scale > 0.0) {
        AcGePoint3d c = center;
        AcGeVector3d n = normal;
        AcGeVector3d start = startVector;
        const double sweep = transform().det() < 0.0 ? -sweepAngle : sweepAngle;
        putArc(c.transformBy(transform()), radius * scale, n.transformBy(transform()).normal(),
               start.transformBy(transform()).normal(), sweep, type);
    } else {
        putStretched(center, radius, normal.normal(), startVector.normal(), sweepAngle);
    }
    return m_stopped;
}

bool SinkBase::text(const AcGiText& text) {
    if (m_transforms.empty()) {
        putText(text);
        return m_stopped;
    }
    AcGiText moved = text;
    transformText(moved, transform());
    putText(moved);
    return m_stopped;
}

bool SinkBase::fittedCurve(const AcGiFittedCurve& curve) {
    if (m_transforms.empty()) {
        putFittedCurve(curve);
        return m_stopped;
    }
    if (transform().scaleInPlane(curve.normal) == 0.0) {
        const CurvePath path({curve.vertices.begin(), curve.vertices.end()},
                             {curve.bulges.begin(), curve.bulges.end()}, curve.closed, curve.normal);
        constexpr int kChords = 16; // a piece
        m_placed.clear();
        for (int i = 0; i <= static_cast<int>(path.pieces().size()) * kChords && !path.isEmpty(); ++i)
            m_placed.push_back(path.pointAt(i / double{kChords}).transformBy(transform()));
        putPolyline(m_placed);
        return m_stopped;
    }
    std::vector<AcGePoint3d> definition(curve.definition.begin(), curve.definition.end());
    std::vector<AcGePoint3d> vertices(curve.vertices.begin(), curve.vertices.end());
    std::vector<double> bulges(curve.bulges.begin(), curve.bulges.end());
    AcGeVector3d normal = curve.normal;
    for (AcGePoint3d& p : definition) p.transformBy(transform());
    for (AcGePoint3d& p : vertices) p.transformBy(transform());
    if (transform().det() < 0.0)
        for (double& bulge : bulges) bulge = -bulge;
    putFittedCurve({definition, vertices, bulges, normal.transformBy(transform()).normal(), curve.closed});
    return m_stopped;
}

bool SinkBase::draw(AcGiDrawable* drawable) {
    if (!drawable) return m_stopped;
    const DrawTraits before = m_traits.value;
    const std::size_t depth = m_transforms.size();
    const std::size_t blocks = m_blocks.size();
    drawable->setAttributes(&m_traits);
    drawable->worldDraw(this);
    m_transforms.resize(depth);
    m_blocks.resize(blocks);
    m_traits.value = before;
    m_traits.touch();
    return m_stopped;
}

bool SinkBase::pushModelTransform(const AcGeMatrix3d& matrix) {
    m_transforms.push_back(m_transforms.empty() ? matrix : transform() * matrix);
    return m_stopped;
}

bool SinkBase::popModelTransform() {
    if (!m_transforms.empty()) m_transforms.pop_back();
    return m_stopped;
}

} // namespace veldrin
