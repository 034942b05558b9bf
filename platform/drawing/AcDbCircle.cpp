#include "drawing/AcDbCircle.h"

#include "drawing/AcDbDwgFiler.h"
#include "drawing/dxf_groups.h"
#include "drawing/list_lines.h"
#include "runtime/AcRxMacros.h"

#include <numbers>

using veldrin::CurvePath;
using veldrin::CurvePiece;

namespace {

constexpr double kFullTurn = 2.0 * std::numbers::pi;

}

ACRX_DEFINE_MEMBERS(AcDbCircle, AcDbCurve, "CIRCLE");

AcDbCircle::AcDbCircle() = default;
AcDbCircle::~AcDbCircle() = default;

AcDbCircle::AcDbCircle(const AcGePoint3d& center, const AcGeVector3d& normal, double radius)
    : m_center(center), m_radius(radius), m_normal(normal.normal()) {}

Acad::ErrorStatus AcDbCircle::setCenter(const AcGePoint3d& center) {
    assertWriteEnabled();
    m_center = center;
    return Acad::eOk;
}

Acad::ErrorStatus AcDbCircle::setRadius(double radius) {
    if (!(radius > 0.0)) return Acad::eInvalidInput;
    assertWriteEnabled();
    m_radius = radius;
    return Acad::eOk;
}

Acad::ErrorStatus AcDbCircle::setNormal(const AcGeVector3d& normal) {
    if (normal.isZeroLength()) return Acad::eInvalidInput;
    assertWriteEnabled();
    m_normal = normal.normal();
    return Acad::eOk;
}

std::optional<CurvePath> AcDbCircle::path() const {
    if (!(m_radius > 0.0)) return CurvePath();
    return CurvePath({CurvePiece::arc(m_center, m_radius, m_normal, m_normal.perpVector(), kFullTurn)}, true);
}

double AcDbCircle::paramOf(double position) const {
    return position * kFullTurn;
}
double AcDbCircle::positionOf(double param) const {
    return param / kFullTurn;
}

Acad::ErrorStatus AcDbCircle::dwgOutFields(AcDbDwgFiler* filer) const {
    const Acad::ErrorStatus status = AcDbCurve::dwgOutFields(filer);
    if (status != Acad::eOk) return status;
    filer->writePoint3d(m_center);
    filer->writeDouble(m_radius);
    filer->writeVector3d(m_normal);
    return filer->filerStatus();
}

Acad::ErrorStatus AcDbCircle::dwgInFields(AcDbDwgFiler* filer) {
    const Acad::ErrorStatus status = AcDbCurve::dwgInFields(filer);
    if (status != Acad::eOk) return status;
    filer->readPoint3d(m_center);
    filer->readDouble(m_radius);
    filer->readVector3d(m_normal);
    return filer->filerStatus();
}

Acad::ErrorStatus AcDbCircle::dxfOutFields(AcDbDxfFiler* filer) const {
    const Acad::ErrorStatus status = AcDbCurve::dxfOutFields(filer);
    if (status != Acad::eOk) return status;
    filer->writeItem(AcDb::kDxfSubclass, "AcDbCircle");
    filer->writePoint3d(10, veldrin::worldToPlane(m_center, m_normal));
    filer->writeDouble(40, m_radius);
    veldrin::writeNormal(*filer, m_normal);
    return filer->filerStatus();
}

Acad::ErrorStatus AcDbCircle::dxfInFields(AcDbDxfFiler* filer) {
    Acad::ErrorStatus status = AcDbCurve::dxfInFields(filer);
    if (status != Acad::eOk) return status;
    AcGePoint3d center = veldrin::worldToPlane(m_center, m_normal);
    status = dxfInGroups(filer, [&](const AcDbDxfItem& item) {
        switch (item.code) {
        case 10: center = item.point; return true;
        case 40: m_radius = veldrin::realOf(item); return true;
        case AcDb::kDxfNormalX: m_normal = veldrin::normalOf(item); return true;
        default: return false;
        }
    });
    m_center = veldrin::planeToWorld(center, m_normal);
    return status == Acad::eOk && !(m_radius > 0.0) ? Acad::eDegenerateGeometry : status;
}

bool AcDbCircle::subWorldDraw(AcGiWorldDraw* draw) {
    draw->geometry().circle(m_center, m_radius, m_normal);
    return true;
}

void AcDbCircle::subList() const {
    AcDbCurve::subList();
    veldrin::listPoint(*this, "center point", m_center);
    veldrin::listValue("radius", veldrin::listedLength(*this, m_radius));
    veldrin::listValue("circumference", veldrin::listedLength(*this, kFullTurn * m_radius));
    veldrin::listValue("area", veldrin::listedLength(*this, std::numbers::pi * m_radius * m_radius));
}

Acad::ErrorStatus AcDbCircle::subTransformBy(const AcGeMatrix3d& matrix) {
    if (matrix.isSingular()) return Acad::eInvalidInput;
    const double scale = matrix.scaleInPlane(m_normal);
    if (scale == 0.0) return Acad::eCannotScaleNonUniformly;
    m_center.transformBy(matrix);
    m_radius *= scale;
    m_normal.transformBy(matrix).normalize();
    return Acad::eOk;
}

// The centre, then the four quadrants.
Acad::ErrorStatus AcDbCircle::subGetGripPoints(AcGePoint3dArray& points, AcGeIntArray&, AcGeIntArray&) const {
    const AcGeVector3d x = m_normal.perpVector() * m_radius;
    const AcGeVector3d y = m_normal.crossProduct(x);
    for (const AcGeVector3d& v : {AcGeVector3d(), x, y, -x, -y}) points.push_back(m_center + v);
    return Acad::eOk;
}

// The centre takes the circle along, a quadrant changes its size.
Acad::ErrorStatus AcDbCircle::subMoveGripPointsAt(const AcGeIntArray& indices, const AcGeVector3d& offset) {
    for (const int index : indices) {
        if (index != 0) continue;
        m_center += offset;
        return Acad::eOk;
    }
    AcGePoint3dArray grips;
    AcGeIntArray none;
    subGetGripPoints(grips, none, none);
    for (const int index : indices) {
        if (index < 1 || index > 4) continue;
        const double radius = m_center.distanceTo(grips[static_cast<std::size_t>(index)] + offset);
        if (!(radius > 0.0)) return Acad::eDegenerateGeometry;
        m_radius = radius;
        return Acad::eOk;
    }
    return Acad::eOk;
}

Acad::ErrorStatus AcDbCircle::subGetStretchPoints(AcGePoint3dArray& points) const {
    points.push_back(m_center);
    return Acad::eOk;
}
