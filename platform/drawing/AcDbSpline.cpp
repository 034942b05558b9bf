#include "drawing/AcDbSpline.h"

#include "drawing/AcDbDwgFiler.h"
#include "drawing/AcDbObjectExtras.h"
#include "drawing/DxfListFiler.h"
#include "drawing/dxf_groups.h"
#include "drawing/list_lines.h"
#include "drawing/spline_points.h"
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
    veldrin::writeChain(*filer, m_exchange.get());
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
    m_exchange.reset();
    return filer->filerStatus() == Acad::eOk ? veldrin::readChain(*filer, m_exchange) : filer->filerStatus();
}

// As a curve through fit points: the joints of its pieces and the middles of the arcs between them.
Acad::ErrorStatus AcDbSpline::dxfOutFields(AcDbDxfFiler* filer) const {
    const Acad::ErrorStatus status = AcDbCurve::dxfOutFields(filer);
    if (status != Acad::eOk) return status;
    if (m_exchange) {
        filer->writeItem(AcDb::kDxfSubclass, "AcDbSpline");
        for (const resbuf* group = m_exchange.get(); group; group = group->rbnext)
            veldrin::writeDxfItem(*filer, *group);
        return filer->filerStatus();
    }
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

// Where the shape of a spline comes from a polyline, exchange data changes its common properties alone.
Acad::ErrorStatus AcDbSpline::dxfInFields(AcDbDxfFiler* filer) {
    const Acad::ErrorStatus status = AcDbCurve::dxfInFields(filer);
    if (status != Acad::eOk) return status;
    const bool isExact = !m_exchange && !m_vertices.empty();
    veldrin::ResbufBuilder groups;
    const Acad::ErrorStatus read = dxfInGroups(filer, [&](const AcDbDxfItem& item) {
        const bool isOwn = !isExact && item.code != AcDb::kDxfSubclass && !isCommonGroup(item.code);
        if (isOwn) veldrin::addDxfItem(groups, item);
        return isOwn;
    });
    veldrin::ResbufPtr taken = groups.take();
    if (read != Acad::eOk) return read;
    if (taken) {
        m_exchange = std::move(taken);
        followDefinition();
    }
    return m_vertices.empty() ? Acad::eInvalidInput : Acad::eOk;
}

void AcDbSpline::followDefinition() {
    int degree = 3;
    std::vector<double> knots, weights;
    AcGePoint3dArray controls, fitPoints;
    for (const resbuf* group = m_exchange.get(); group; group = group->rbnext) {
        const auto& value = group->resval;
        const AcGePoint3d point(value.rpoint[0], value.rpoint[1], value.rpoint[2]);
        switch (group->restype) {
        case 10: controls.push_back(point); break;
        case 11: fitPoints.push_back(point); break;
        case 40: knots.push_back(value.rreal); break;
        case 41: weights.push_back(value.rreal); break;
        case 70: m_closed = (value.rint & 1) != 0; break;
        case 71: degree = value.rint; break;
        case AcDb::kDxfNormalX:
            if (!point.asVector().isZeroLength()) m_normal = point.asVector().normal();
            break;
        default: break;
        }
    }
    m_vertices = veldrin::splinePoints(degree, knots, controls, weights);
    if (m_vertices.empty()) m_vertices = veldrin::pointsThrough(fitPoints, m_closed);
    // A closed path comes back to its first vertex by itself.
    if (m_closed && m_vertices.size() > 2 && m_vertices.front().isEqualTo(m_vertices.back()))
        m_vertices.pop_back();
    m_bulges.assign(m_vertices.size(), 0.0);
    m_path.reset();
}

bool AcDbSpline::subWorldDraw(AcGiWorldDraw* draw) {
    if (m_exchange) {
        AcGePoint3dArray row = m_vertices;
        if (m_closed && !row.empty()) row.push_back(row.front());
        draw->geometry().polyline(static_cast<Adesk::UInt32>(row.size()), row.data());
        return true;
    }
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
    if (m_exchange) return transformDefinition(matrix);
    if (matrix.scaleInPlane(m_normal) == 0.0) return Acad::eCannotScaleNonUniformly;
    m_path.reset();
    for (AcGePoint3d& p : m_vertices) p.transformBy(matrix);
    if (matrix.det() < 0.0)
        for (double& bulge : m_bulges) bulge = -bulge;
    m_normal.transformBy(matrix).normalize();
    return Acad::eOk;
}

// Points are moved, tangents at the ends turned and stretched; knots and weights stay.
Acad::ErrorStatus AcDbSpline::transformDefinition(const AcGeMatrix3d& matrix) {
    for (resbuf* group = m_exchange.get(); group; group = group->rbnext) {
        double* const at = group->resval.rpoint;
        AcGePoint3d point(at[0], at[1], at[2]);
        if (group->restype == 10 || group->restype == 11)
            point.transformBy(matrix);
        else if (group->restype == 12 || group->restype == 13 || group->restype == AcDb::kDxfNormalX) {
            AcGeVector3d vector = point.asVector();
            vector.transformBy(matrix);
            point = AcGePoint3d(vector.x, vector.y, vector.z);
        } else
            continue;
        at[0] = point.x;
        at[1] = point.y;
        at[2] = point.z;
    }
    followDefinition();
    return Acad::eOk;
}

Acad::ErrorStatus AcDbSpline::subExplode(std::vector<AcDbEntity*>& pieces) const {
    const CurvePath& curve = *keptPath();
    if (curve.isEmpty()) return Acad::eDegenerateGeometry;
    veldrin::explodePath(curve, *this, pieces);
    return Acad::eOk;
}
