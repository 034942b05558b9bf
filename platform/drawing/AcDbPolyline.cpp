#include "drawing/AcDbPolyline.h"

#include "drawing/AcDbDatabase.h"
#include "drawing/AcDbSpline.h"
#include "drawing/dxf_groups.h"
#include "drawing/list_lines.h"
#include "runtime/AcRxMacros.h"

#include <algorithm>
#include <cmath>

using veldrin::CurvePath;
using veldrin::CurvePiece;

ACRX_DEFINE_MEMBERS(AcDbPolyline, AcDbCurve, "LWPOLYLINE");

AcDbPolyline::AcDbPolyline() = default;
AcDbPolyline::~AcDbPolyline() = default;

AcGePoint3d AcDbPolyline::worldPoint(const AcGePoint2d& point) const {
    return veldrin::planeToWorld({point.x, point.y, m_elevation}, m_normal);
}

AcGePoint3dArray AcDbPolyline::worldPoints() const {
    AcGePoint3dArray points;
    for (const Vertex& vertex : m_vertices) points.push_back(worldPoint(vertex.point));
    return points;
}

AcGeDoubleArray AcDbPolyline::bulges() const {
    AcGeDoubleArray all;
    for (const Vertex& vertex : m_vertices) all.push_back(vertex.bulge);
    return all;
}

bool AcDbPolyline::hasArcs() const {
    return std::ranges::any_of(m_vertices, [](const Vertex& vertex) { return vertex.bulge != 0.0; });
}

bool AcDbPolyline::hasWidth() const {
    return std::ranges::any_of(
        m_vertices, [](const Vertex& vertex) { return vertex.startWidth > 0.0 || vertex.endWidth > 0.0; });
}

std::optional<double> AcDbPolyline::constantWidth() const {
    const double width = m_vertices.empty() ? 0.0 : m_vertices.front().startWidth;
    const bool agree = std::ranges::all_of(m_vertices, [width](const Vertex& vertex) {
        return vertex.startWidth == width && vertex.endWidth == width;
    });
    return agree ? std::optional(width) : std::nullopt;
}

Acad::ErrorStatus AcDbPolyline::getPointAt(unsigned index, AcGePoint3d& point) const {
    if (index >= numVerts()) return Acad::eInvalidIndex;
    point = worldPoint(m_vertices[index].point);
    return Acad::eOk;
}

Acad::ErrorStatus AcDbPolyline::getPointAt(unsigned index, AcGePoint2d& point) const {
    if (index >= numVerts()) return Acad::eInvalidIndex;
    point = m_vertices[index].point;
    return Acad::eOk;
}

Acad::ErrorStatus AcDbPolyline::setPointAt(unsigned index, const AcGePoint2d& point) {
    if (index >= numVerts()) return Acad::eInvalidIndex;
    assertWriteEnabled();
    m_vertices[index].point = point;
    m_path.reset();
    return Acad::eOk;
}

Acad::ErrorStatus AcDbPolyline::getBulgeAt(unsigned index, double& bulge) const {
    if (index >= numVerts()) return Acad::eInvalidIndex;
    bulge = m_vertices[index].bulge;
    return Acad::eOk;
}

Acad::ErrorStatus AcDbPolyline::setBulgeAt(unsigned index, double bulge) {
    if (index >= numVerts()) return Acad::eInvalidIndex;
    assertWriteEnabled();
    m_vertices[index].bulge = bulge;
    m_path.reset();
    return Acad::eOk;
}

Acad::ErrorStatus AcDbPolyline::getWidthsAt(unsigned index, double& start, double& end) const {
    if (index >= numVerts()) return Acad::eInvalidIndex;
    start = m_vertices[index].startWidth;
    end = m_vertices[index].endWidth;
    return Acad::eOk;
}

Acad::ErrorStatus AcDbPolyline::setWidthsAt(unsigned index, double start, double end) {
    if (index >= numVerts()) return Acad::eInvalidIndex;
    if (!(start >= 0.0) || !(end >= 0.0)) return Acad::eInvalidInput;
    assertWriteEnabled();
    m_vertices[index].startWidth = start;
    m_vertices[index].endWidth = end;
    return Acad::eOk;
}

Acad::ErrorStatus AcDbPolyline::addVertexAt(unsigned index, const AcGePoint2d& point, double bulge,
                                            double startWidth, double endWidth) {
    if (index > numVerts()) return Acad::eInvalidIndex;
    if (!(startWidth >= 0.0) || !(endWidth >= 0.0)) return Acad::eInvalidInput;
    assertWriteEnabled();
    m_vertices.insert(m_vertices.begin() + index, {point, bulge, startWidth, endWidth});
    m_path.reset();
    return Acad::eOk;
}

Acad::ErrorStatus AcDbPolyline::removeVertexAt(unsigned index) {
    if (index >= numVerts()) return Acad::eInvalidIndex;
    if (numVerts() <= 2) return Acad::eDegenerateGeometry;
    assertWriteEnabled();
    m_vertices.erase(m_vertices.begin() + index);
    m_path.reset();
    return Acad::eOk;
}

Acad::ErrorStatus AcDbPolyline::setConstantWidth(double width) {
    if (!(width >= 0.0)) return Acad::eInvalidInput;
    assertWriteEnabled();
    for (Vertex& vertex : m_vertices) vertex.startWidth = vertex.endWidth = width;
    return Acad::eOk;
}

Acad::ErrorStatus AcDbPolyline::setClosed(bool closed) {
    assertWriteEnabled();
    m_closed = closed;
    m_path.reset();
    return Acad::eOk;
}

Acad::ErrorStatus AcDbPolyline::setElevation(double elevation) {
    assertWriteEnabled();
    m_elevation = elevation;
    m_path.reset();
    return Acad::eOk;
}

Acad::ErrorStatus AcDbPolyline::setNormal(const AcGeVector3d& normal) {
    if (normal.isZeroLength()) return Acad::eInvalidInput;
    assertWriteEnabled();
    m_normal = normal.normal();
    m_path.reset();
    return Acad::eOk;
}

const CurvePath* AcDbPolyline::keptPath() const {
    if (!m_path) m_path.emplace(worldPoints(), bulges(), m_closed, m_normal);
    return &*m_path;
}

Acad::ErrorStatus AcDbPolyline::getSpline(AcDbSpline*& spline) const {
    spline = nullptr;
    if (m_vertices.size() < 2) return Acad::eDegenerateGeometry;
    spline = new AcDbSpline(worldPoints(), bulges(), m_closed, m_normal);
    return Acad::eOk;
}

namespace {

// The strip along a piece: one side there, the other side back.
AcGePoint3dArray stripOf(const CurvePiece& piece, const AcGeVector3d& normal, double startWidth,
                         double endWidth) {
    constexpr double kChordAngle = 0.0873; // five degrees
    const int chords = piece.isArc() ? std::max(2, static_cast<int>(std::abs(piece.sweep) / kChordAngle)) : 1;
    AcGePoint3dArray left;
    AcGePoint3dArray right;
    for (int i = 0; i <= chords; ++i) {
        const double at = i / static_cast<double>(chords);
        const double half = (startWidth + (endWidth - startWidth) * at) / 2.0;
        const AcGeVector3d side = normal.crossProduct(piece.derivativeAt(at).normal()) * half;
        left.push_back(piece.pointAt(at) + side);
        right.push_back(piece.pointAt(at) - side);
    }
    left.insert(left.end(), right.rbegin(), right.rend());
    return left;
}

} // namespace

void AcDbPolyline::drawWidePieces(AcGiWorldDraw& draw) const {
    const AcDbDatabase* drawing = database() ? database() : acdbHostApplicationServices()->workingDatabase();
    const bool filled = !drawing || drawing->header().fillmode != 0;
    AcGiSubEntityTraits& traits = draw.subEntityTraits();
    const AcGiFillType before = traits.fillType();
    traits.setFillType(filled ? kAcGiFillAlways : kAcGiFillNever);
    const std::vector<CurvePiece>& pieces = keptPath()->pieces();
    for (std::size_t i = 0; i < pieces.size(); ++i) {
        const Vertex& vertex = m_vertices[i];
        const AcGePoint3dArray strip = stripOf(pieces[i], m_normal, vertex.startWidth, vertex.endWidth);
        draw.geometry().polygon(static_cast<Adesk::UInt32>(strip.size()), strip.data());
    }
    traits.setFillType(before);
}

bool AcDbPolyline::subWorldDraw(AcGiWorldDraw* draw) {
    if (hasWidth()) {
        drawWidePieces(*draw);
        return true;
    }
    AcGePoint3dArray points = worldPoints();
    if (hasArcs()) {
        draw->geometry().fittedCurve({points, points, bulges(), m_normal, m_closed});
        return true;
    }
    if (m_closed && !points.empty()) points.push_back(points.front());
    draw->geometry().polyline(static_cast<Adesk::UInt32>(points.size()), points.data(), &m_normal);
    return true;
}

void AcDbPolyline::subList() const {
    AcDbCurve::subList();
    veldrin::listValue(m_closed ? "Closed," : "Open,", std::to_string(m_vertices.size()) + " vertices");
    if (const auto width = constantWidth())
        veldrin::listValue("Constant width", veldrin::listedLength(*this, *width));
    for (const Vertex& vertex : m_vertices) {
        veldrin::listPoint(*this, "at point", worldPoint(vertex.point));
        if (vertex.bulge != 0.0) veldrin::listValue("bulge", veldrin::listedLength(*this, vertex.bulge));
    }
    veldrin::listValue("length", veldrin::listedLength(*this, length()));
}

// The points go with the matrix and are then taken back into the plane, whose own axes may have turned.
Acad::ErrorStatus AcDbPolyline::subTransformBy(const AcGeMatrix3d& matrix) {
    if (matrix.isSingular()) return Acad::eInvalidInput;
    const double scale = matrix.scaleInPlane(m_normal);
    if (scale == 0.0 && (hasArcs() || hasWidth())) return Acad::eCannotScaleNonUniformly;
    AcGePoint3dArray points = worldPoints();
    AcGeVector3d x = m_normal.perpVector();
    AcGeVector3d y = m_normal.crossProduct(x);
    x.transformBy(matrix);
    y.transformBy(matrix);
    const bool mirrored = matrix.det() < 0.0;
    m_normal = x.crossProduct(y).normal() * (mirrored ? -1.0 : 1.0) + AcGeVector3d(); // no -0
    for (std::size_t i = 0; i < points.size(); ++i) {
        Vertex& vertex = m_vertices[i];
        const AcGePoint3d inPlane = veldrin::worldToPlane(points[i].transformBy(matrix), m_normal);
        vertex.point = inPlane.convert2d();
        m_elevation = inPlane.z;
        vertex.startWidth *= scale;
        vertex.endWidth *= scale;
        if (mirrored) vertex.bulge = -vertex.bulge;
    }
    m_path.reset();
    return Acad::eOk;
}

Acad::ErrorStatus AcDbPolyline::subExplode(std::vector<AcDbEntity*>& pieces) const {
    const CurvePath& curve = *keptPath();
    if (curve.isEmpty()) return Acad::eDegenerateGeometry;
    veldrin::explodePath(curve, *this, pieces);
    return Acad::eOk;
}

Acad::ErrorStatus AcDbPolyline::subGetGripPoints(AcGePoint3dArray& points, AcGeIntArray&,
                                                 AcGeIntArray&) const {
    const AcGePoint3dArray own = worldPoints();
    points.insert(points.end(), own.begin(), own.end());
    return Acad::eOk;
}

Acad::ErrorStatus AcDbPolyline::subMoveGripPointsAt(const AcGeIntArray& indices, const AcGeVector3d& offset) {
    const AcGePoint3d moved = veldrin::worldToPlane(AcGePoint3d::kOrigin + offset, m_normal);
    std::vector<bool> done(m_vertices.size(), false);
    for (const int index : indices) {
        const auto i = static_cast<std::size_t>(index);
        if (index < 0 || i >= m_vertices.size() || done[i]) continue;
        done[i] = true;
        m_vertices[i].point = m_vertices[i].point + AcGeVector2d(moved.x, moved.y);
    }
    m_path.reset();
    return Acad::eOk;
}
