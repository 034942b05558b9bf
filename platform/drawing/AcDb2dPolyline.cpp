#include "drawing/AcDb2dPolyline.h"

#include "drawing/AcDbDwgFiler.h"
#include "drawing/AcDbSpline.h"
#include "drawing/fit_curve.h"
#include "drawing/list_lines.h"
#include "runtime/AcRxMacros.h"

using veldrin::CurvePath;

ACRX_DEFINE_MEMBERS(AcDb2dPolyline, AcDbCurve, "POLYLINE");

AcDb2dPolyline::AcDb2dPolyline() = default;
AcDb2dPolyline::~AcDb2dPolyline() = default;

// Widths and identifiers belong to vertices that are objects of their own, which these are not.
AcDb2dPolyline::AcDb2dPolyline(AcDb::Poly2dType type, const AcGePoint3dArray& vertices, double elevation,
                               bool closed, double, double, const AcGeDoubleArray* bulges,
                               const AcGeIntArray*)
    : m_type(type), m_closed(closed), m_elevation(elevation), m_definition(vertices) {
    if (m_elevation == 0.0 && !vertices.empty()) m_elevation = vertices.front().z;
    if (bulges) m_bulges = *bulges;
    setHeights();
    fit();
}

void AcDb2dPolyline::setHeights() {
    for (AcGePoint3d& p : m_definition) {
        const double height = p.asVector().dotProduct(m_normal);
        p += m_normal * (m_elevation - height);
    }
}

void AcDb2dPolyline::fit() {
    m_path.reset();
    if (m_type == AcDb::k2dFitCurvePoly) {
        // The fit works in a plane square to Z; elsewhere the points go there and back.
        const bool flat = m_normal.isEqualTo(AcGeVector3d::kZAxis);
        const AcGeVector3d x = m_normal.perpVector();
        const AcGeMatrix3d frame =
            AcGeMatrix3d::coordSystem(AcGePoint3d::kOrigin, x, m_normal.crossProduct(x), m_normal);
        AcGePoint3dArray points = m_definition;
        if (!flat)
            for (AcGePoint3d& p : points) p.transformBy(frame.inverse());
        veldrin::fitCurve(points, m_closed, m_vertices, m_bulges);
        if (!flat)
            for (AcGePoint3d& p : m_vertices) p.transformBy(frame);
        return;
    }
    m_vertices = m_definition;
    m_bulges.resize(m_vertices.size(), 0.0);
}

bool AcDb2dPolyline::hasArcs() const {
    return std::any_of(m_bulges.begin(), m_bulges.end(), [](double bulge) { return bulge != 0.0; });
}

Acad::ErrorStatus AcDb2dPolyline::setElevation(double elevation) {
    assertWriteEnabled();
    m_elevation = elevation;
    setHeights();
    fit();
    return Acad::eOk;
}

Acad::ErrorStatus AcDb2dPolyline::setClosed(bool closed) {
    assertWriteEnabled();
    m_closed = closed;
    fit();
    return Acad::eOk;
}

Acad::ErrorStatus AcDb2dPolyline::appendVertex(const AcGePoint3d& point, double bulge) {
    return appendVertices({point}, {bulge});
}

// Long rows come one by one, so that what is there already is not looked at.
Acad::ErrorStatus AcDb2dPolyline::appendVertices(const AcGePoint3dArray& points,
                                                 const AcGeDoubleArray& bulges) {
    assertWriteEnabled();
    if (points.size() != bulges.size()) return Acad::eInvalidInput;
    if (points.empty()) return Acad::eOk;
    if (m_definition.empty() && m_elevation == 0.0)
        m_elevation = points.front().asVector().dotProduct(m_normal);
    const bool isFitted = m_type == AcDb::k2dFitCurvePoly;
    for (std::size_t i = 0; i < points.size(); ++i) {
        const double height = points[i].asVector().dotProduct(m_normal);
        const AcGePoint3d level = points[i] + m_normal * (m_elevation - height);
        m_definition.push_back(level);
        if (isFitted) continue;
        m_vertices.push_back(level);
        m_bulges.push_back(bulges[i]);
    }
    m_path.reset();
    if (isFitted) fit();
    return Acad::eOk;
}

double AcDb2dPolyline::length() const {
    return keptPath()->length();
}

const CurvePath* AcDb2dPolyline::keptPath() const {
    if (!m_path) m_path.emplace(m_vertices, m_bulges, m_closed, m_normal);
    return &*m_path;
}

std::optional<CurvePath> AcDb2dPolyline::path() const {
    return *keptPath();
}

Acad::ErrorStatus AcDb2dPolyline::getSpline(AcDbSpline*& spline) const {
    spline = nullptr;
    if (m_vertices.size() < 2) return Acad::eDegenerateGeometry;
    spline = new AcDbSpline(m_vertices, m_bulges, m_closed, m_normal);
    return Acad::eOk;
}

Acad::ErrorStatus AcDb2dPolyline::dwgOutFields(AcDbDwgFiler* filer) const {
    const Acad::ErrorStatus status = AcDbCurve::dwgOutFields(filer);
    if (status != Acad::eOk) return status;
    filer->writeInt16(static_cast<Adesk::Int16>(m_type));
    filer->writeBool(m_closed);
    filer->writeDouble(m_elevation);
    filer->writeVector3d(m_normal);
    const bool fitted = m_type == AcDb::k2dFitCurvePoly;
    filer->writeInt32(static_cast<Adesk::Int32>(m_definition.size()));
    for (std::size_t i = 0; i < m_definition.size(); ++i) {
        filer->writePoint3d(m_definition[i]);
        if (!fitted) filer->writeDouble(m_bulges[i]);
    }
    return filer->filerStatus();
}

Acad::ErrorStatus AcDb2dPolyline::dwgInFields(AcDbDwgFiler* filer) {
    const Acad::ErrorStatus status = AcDbCurve::dwgInFields(filer);
    if (status != Acad::eOk) return status;
    Adesk::Int16 type = 0;
    Adesk::Int32 count = 0;
    filer->readInt16(type);
    filer->readBool(m_closed);
    filer->readDouble(m_elevation);
    filer->readVector3d(m_normal);
    filer->readInt32(count);
    if (type < AcDb::k2dSimplePoly || type > AcDb::k2dCubicSplinePoly) return Acad::eBadRecord;
    m_type = static_cast<AcDb::Poly2dType>(type);
    m_definition.clear();
    m_bulges.clear();
    for (Adesk::Int32 i = 0; i < count && filer->filerStatus() == Acad::eOk; ++i) {
        AcGePoint3d point;
        double bulge = 0.0;
        filer->readPoint3d(point);
        if (m_type != AcDb::k2dFitCurvePoly) filer->readDouble(bulge);
        m_definition.push_back(point);
        m_bulges.push_back(bulge);
    }
    fit();
    return filer->filerStatus();
}

bool AcDb2dPolyline::subWorldDraw(AcGiWorldDraw* draw) {
    if (m_type == AcDb::k2dFitCurvePoly || hasArcs()) {
        draw->geometry().fittedCurve({m_definition, m_vertices, m_bulges, m_normal, m_closed});
        return true;
    }
    AcGePoint3dArray points = m_vertices;
    if (m_closed && !points.empty()) points.push_back(points.front());
    draw->geometry().polyline(static_cast<Adesk::UInt32>(points.size()), points.data(), &m_normal);
    return true;
}

void AcDb2dPolyline::subList() const {
    AcDbCurve::subList();
    veldrin::listValue(m_closed ? "Closed," : "Open,", std::to_string(m_vertices.size()) + " vertices");
    for (std::size_t i = 0; i < m_vertices.size(); ++i) {
        veldrin::listPoint(*this, "at point", m_vertices[i]);
        if (m_bulges[i] != 0.0) veldrin::listValue("bulge", veldrin::listedLength(*this, m_bulges[i]));
    }
    veldrin::listValue("length", veldrin::listedLength(*this, length()));
}

Acad::ErrorStatus AcDb2dPolyline::subTransformBy(const AcGeMatrix3d& matrix) {
    if (matrix.isSingular()) return Acad::eInvalidInput;
    if (matrix.scaleInPlane(m_normal) == 0.0 && (hasArcs() || m_type == AcDb::k2dFitCurvePoly))
        return Acad::eCannotScaleNonUniformly;
    m_path.reset();
    const AcGeVector3d x = m_normal.perpVector();
    AcGeVector3d inPlane = x;
    AcGeVector3d square = m_normal.crossProduct(x);
    inPlane.transformBy(matrix);
    square.transformBy(matrix);
    // Seen from its own side, a mirrored arc bends the other way.
    const bool mirrored = matrix.det() < 0.0;
    m_normal = inPlane.crossProduct(square).normal() * (mirrored ? -1.0 : 1.0);
    for (AcGePoint3d& p : m_definition) p.transformBy(matrix);
    for (AcGePoint3d& p : m_vertices) p.transformBy(matrix);
    if (mirrored)
        for (double& bulge : m_bulges) bulge = -bulge;
    m_elevation = m_definition.empty() ? 0.0 : m_definition.front().asVector().dotProduct(m_normal);
    return Acad::eOk;
}

Acad::ErrorStatus AcDb2dPolyline::subExplode(std::vector<AcDbEntity*>& pieces) const {
    const CurvePath& curve = *keptPath();
    if (curve.isEmpty()) return Acad::eDegenerateGeometry;
    veldrin::explodePath(curve, *this, pieces);
    return Acad::eOk;
}

Acad::ErrorStatus AcDb2dPolyline::subGetGripPoints(AcGePoint3dArray& points, AcGeIntArray&,
                                                   AcGeIntArray&) const {
    points.insert(points.end(), m_definition.begin(), m_definition.end());
    return Acad::eOk;
}

Acad::ErrorStatus AcDb2dPolyline::subMoveGripPointsAt(const AcGeIntArray& indices,
                                                      const AcGeVector3d& offset) {
    const AcGeVector3d inPlane = offset - m_normal * offset.dotProduct(m_normal);
    std::vector<bool> moved(m_definition.size(), false);
    for (const int index : indices) {
        const auto i = static_cast<std::size_t>(index);
        if (index < 0 || i >= m_definition.size() || moved[i]) continue;
        moved[i] = true;
        m_definition[i] += inPlane;
    }
    fit();
    return Acad::eOk;
}
