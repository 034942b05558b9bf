#include "drawing/AcDbSpline.h"

#include "drawing/AcDbDwgFiler.h"
#include "drawing/dxf_groups.h"
#include "drawing/list_lines.h"
#include "runtime/AcRxMacros.h"

using veldrin::CurvePath;

ACRX_DEFINE_MEMBERS(AcDbSpline, AcDbCurve, "SPLINE");

AcDbSpline::AcDbSpline() = default;
AcDbSpline::~AcDbSpline() = default;

AcDbSpline::AcDbSpline(AcGePoint3dArray vertices, AcGeDoubleArray bulges, bool closed,
                       const AcGeVector3d& normal)
    : m_vertices(std::move(vertices))
    , m_bulges(std::move(bulges))
    , m_closed(closed)
    , m_normal(normal.normal()) {
    m_bulges.resize(m_vertices.size(), 0.0);
}

const CurvePath* AcDbSpline::keptPath() const {
    if (!m_path) m_path.emplace(m_vertices, m_bulges, m_closed, m_normal);
    return &*m_path;
}

std::optional<CurvePath> AcDbSpline::path() const {
    return *keptPath();
}

Acad::ErrorStatus AcDbSpline::dwgOutFields(AcDbDwgFiler* filer) const {
    const Acad::ErrorStatus status = AcDbCurve::dwgOutFields(filer);
    if (status != Acad::eOk) return status;
    filer->writeBool(m_closed);
    filer->writeVector3d(m_normal);
    filer->writeInt32(static_cast<Adesk::Int32>(m_vertices.size()));
    for (std::size_t i = 0; i < m_vertices.size(); ++i) {
        filer->writePoint3d(m_vertices[i]);
        filer->writeDouble(m_bulges[i]);
    }
    return filer->filerStatus();
}

Acad::ErrorStatus AcDbSpline::dwgInFields(AcDbDwgFiler* filer) {
    const Acad::ErrorStatus status = AcDbCurve::dwgInFields(filer);
    if (status != Acad::eOk) return status;
    Adesk::Int32 count = 0;
    filer->readBool(m_closed);
    filer->readVector3d(m_normal);
    filer->readInt32(count);
    m_path.reset();
    m_vertices.clear();
    m_bulges.clear();
    for (Adesk::Int32 i = 0; i < count && filer->filerStatus() == Acad::eOk; ++i) {
        AcGePoint3d point;
        double bulge = 0.0;
        filer->readPoint3d(point);
        filer->readDouble(bulge);
        m_vertices.push_back(point);
        m_bulges.push_back(bulge);
    }
    return filer->filerStatus();
}

// As a curve through fit points: the joints of its pieces and the middles of the arcs between them.
Acad::ErrorStatus AcDbSpline::dxfOutFields(AcDbDxfFiler* filer) const {
    const Acad::ErrorStatus status = AcDbCurve::dxfOutFields(filer);
    if (status != Acad::eOk) return status;
    constexpr int kPlanar = 8;
    AcGePoint3dArray fitPoints;
    const CurvePath& curve = *keptPath();
    for (const veldrin::CurvePiece& piece : curve.pieces()) {
        fitPoints.push_back(piece.start);
        if (piece.isArc()) fitPoints.push_back(piece.pointAt(0.5));
    }
    if (!curve.isEmpty()) fitPoints.push_back(curve.pieces().back().end);
    filer->writeItem(AcDb::kDxfSubclass, "AcDbSpline");
    veldrin::writeNormal(*filer, m_normal);
    filer->writeInt16(70, kPlanar | (m_closed ? 1 : 0));
    filer->writeInt16(71, 3);
    filer->writeInt16(74, static_cast<int>(fitPoints.size()));
    for (const AcGePoint3d& p : fitPoints) filer->writePoint3d(11, p);
    return filer->filerStatus();
}

// The shape of a spline comes from a polyline; exchange data changes its common properties alone.
Acad::ErrorStatus AcDbSpline::dxfInFields(AcDbDxfFiler* filer) {
    const Acad::ErrorStatus status = AcDbCurve::dxfInFields(filer);
    if (status != Acad::eOk) return status;
    return dxfInGroups(filer, [](const AcDbDxfItem&) { return false; });
}

bool AcDbSpline::subWorldDraw(AcGiWorldDraw* draw) {
    draw->geometry().fittedCurve({m_vertices, m_vertices, m_bulges, m_normal, m_closed});
    return true;
}

void AcDbSpline::subList() const {
    AcDbCurve::subList();
    veldrin::listValue(m_closed ? "Closed," : "Open,", std::to_string(m_vertices.size()) + " joints");
    for (const AcGePoint3d& p : m_vertices) veldrin::listPoint(*this, "at point", p);
    veldrin::listValue("length", veldrin::listedLength(*this, keptPath()->length()));
}

Acad::ErrorStatus AcDbSpline::subTransformBy(const AcGeMatrix3d& matrix) {
    if (matrix.isSingular()) return Acad::eInvalidInput;
    if (matrix.scaleInPlane(m_normal) == 0.0) return Acad::eCannotScaleNonUniformly;
    m_path.reset();
    for (AcGePoint3d& p : m_vertices) p.transformBy(matrix);
    if (matrix.det() < 0.0)
        for (double& bulge : m_bulges) bulge = -bulge;
    m_normal.transformBy(matrix).normalize();
    return Acad::eOk;
}

Acad::ErrorStatus AcDbSpline::subExplode(std::vector<AcDbEntity*>& pieces) const {
    const CurvePath& curve = *keptPath();
    if (curve.isEmpty()) return Acad::eDegenerateGeometry;
    veldrin::explodePath(curve, *this, pieces);
    return Acad::eOk;
}
