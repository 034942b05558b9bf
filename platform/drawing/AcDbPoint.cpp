#include "drawing/AcDbPoint.h"

#include "drawing/AcDbDatabase.h"
#include "drawing/AcDbDwgFiler.h"
#include "drawing/dxf_groups.h"
#include "drawing/list_lines.h"
#include "runtime/AcRxMacros.h"

#include <algorithm>
#include <cmath>

ACRX_DEFINE_MEMBERS(AcDbPoint, AcDbEntity, "POINT");

AcDbPoint::AcDbPoint() = default;
AcDbPoint::AcDbPoint(const AcGePoint3d& position) : m_position(position) {}
AcDbPoint::~AcDbPoint() = default;

Acad::ErrorStatus AcDbPoint::setPosition(const AcGePoint3d& position) {
    assertWriteEnabled();
    m_position = position;
    return Acad::eOk;
}

Acad::ErrorStatus AcDbPoint::setNormal(const AcGeVector3d& normal) {
    if (normal.isZeroLength()) return Acad::eInvalidInput;
    assertWriteEnabled();
    m_normal = normal.normal();
    return Acad::eOk;
}

Acad::ErrorStatus AcDbPoint::dwgOutFields(AcDbDwgFiler* filer) const {
    const Acad::ErrorStatus status = AcDbEntity::dwgOutFields(filer);
    if (status != Acad::eOk) return status;
    filer->writePoint3d(m_position);
    filer->writeVector3d(m_normal);
    return filer->writeDouble(m_xAngle);
}

Acad::ErrorStatus AcDbPoint::dwgInFields(AcDbDwgFiler* filer) {
    const Acad::ErrorStatus status = AcDbEntity::dwgInFields(filer);
    if (status != Acad::eOk) return status;
    filer->readPoint3d(m_position);
    filer->readVector3d(m_normal);
    return filer->readDouble(m_xAngle);
}

Acad::ErrorStatus AcDbPoint::dxfOutFields(AcDbDxfFiler* filer) const {
    const Acad::ErrorStatus status = AcDbEntity::dxfOutFields(filer);
    if (status != Acad::eOk) return status;
    filer->writeItem(AcDb::kDxfSubclass, "AcDbPoint");
    filer->writePoint3d(10, m_position);
    veldrin::writeNormal(*filer, m_normal);
    if (filer->isEntityList() || m_xAngle != 0.0)
        filer->writeDouble(50, m_xAngle / veldrin::angleUnit(*filer));
    return filer->filerStatus();
}

Acad::ErrorStatus AcDbPoint::dxfInFields(AcDbDxfFiler* filer) {
    const Acad::ErrorStatus status = AcDbEntity::dxfInFields(filer);
    if (status != Acad::eOk) return status;
    return dxfInGroups(filer, [this, filer](const AcDbDxfItem& item) {
        switch (item.code) {
        case 10: m_position = item.point; return true;
        case 50: m_xAngle = veldrin::realOf(item) * veldrin::angleUnit(*filer); return true;
        case AcDb::kDxfNormalX: m_normal = veldrin::normalOf(item); return true;
        default: return false;
        }
    });
}

namespace {

enum Figure { kDot = 0, kNothing = 1, kPlus = 2, kCross = 3, kTick = 4, kCircle = 32, kSquare = 64 };

// PDSIZE below or at 0 is a share of the view, of which a drawing knows nothing but its usual height.
double figureSize(double pdsize) {
    constexpr double kUsualView = 9.0;
    constexpr double kUsualShare = 0.05;
    if (pdsize > 0.0) return pdsize;
    return kUsualView * (pdsize < 0.0 ? -pdsize / 100.0 : kUsualShare);
}

} // namespace

bool AcDbPoint::subWorldDraw(AcGiWorldDraw* draw) {
    const AcDbDatabase* drawing = database() ? database() : acdbHostApplicationServices()->workingDatabase();
    const veldrin::HeaderVariables header = drawing ? drawing->header() : veldrin::HeaderVariables();
    const double half = figureSize(header.pdsize) / 2.0;
    const AcGeVector3d axis = m_normal.perpVector();
    const AcGeVector3d side = m_normal.crossProduct(axis);
    const AcGeVector3d x = (axis * std::cos(m_xAngle) + side * std::sin(m_xAngle)) * half;
    const AcGeVector3d y = m_normal.crossProduct(x);
    AcGiWorldGeometry& geometry = draw->geometry();
    const auto line = [&](const AcGeVector3d& from, const AcGeVector3d& to) {
        const AcGePoint3d ends[2] = {m_position + from, m_position + to};
        geometry.polyline(2, ends);
    };
    switch (header.pdmode & (kCircle - 1)) {
    case kDot: line({}, {}); break;
    case kPlus:
        line(x * -2.0, x * 2.0);
        line(y * -2.0, y * 2.0);
        break;
    case kCross:
        line((x + y) * -2.0, (x + y) * 2.0);
        line((y - x) * 2.0, (x - y) * 2.0);
        break;
    case kTick: line({}, y); break;
    default: break;
    }
    if ((header.pdmode & kCircle) != 0) geometry.circle(m_position, half, m_normal);
    if ((header.pdmode & kSquare) != 0) {
        line(-x - y, x - y);
        line(x - y, x + y);
        line(x + y, y - x);
        line(y - x, -x - y);
    }
    return true;
}

Acad::ErrorStatus AcDbPoint::subGetGeomExtents(AcDbExtents& extents) const {
    extents.addPoint(m_position);
    return Acad::eOk;
}

void AcDbPoint::subList() const {
    AcDbEntity::subList();
    veldrin::listPoint(*this, "at point", m_position);
}

Acad::ErrorStatus AcDbPoint::subTransformBy(const AcGeMatrix3d& matrix) {
    if (matrix.isSingular()) return Acad::eInvalidInput;
    m_position.transformBy(matrix);
    m_normal.transformBy(matrix).normalize();
    return Acad::eOk;
}

Acad::ErrorStatus AcDbPoint::subGetGripPoints(AcGePoint3dArray& points, AcGeIntArray&, AcGeIntArray&) const {
    points.push_back(m_position);
    return Acad::eOk;
}

Acad::ErrorStatus AcDbPoint::subMoveGripPointsAt(const AcGeIntArray& indices, const AcGeVector3d& offset) {
    if (std::find(indices.begin(), indices.end(), 0) != indices.end()) m_position += offset;
    return Acad::eOk;
}

Acad::ErrorStatus AcDbPoint::subGetOsnapPoints(AcDb::OsnapMode mode, Adesk::GsMarker, const AcGePoint3d&,
                                               const AcGePoint3d&, const AcGeMatrix3d&,
                                               AcGePoint3dArray& snapPoints, AcGeIntArray&) const {
    if (mode == AcDb::kOsModeNode) snapPoints.push_back(m_position);
    return Acad::eOk;
}
