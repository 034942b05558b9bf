#include "drawing/AcDb2dPolyline.h"

#include "drawing/dxf_groups.h"

namespace {

enum Flag { kClosed = 1, kFitted = 2, kSplined = 4 };
constexpr int kQuadratic = 5;
constexpr int kCubic = 6;

} // namespace

// The head of a polyline; its vertices are records of their own behind it.
Acad::ErrorStatus AcDb2dPolyline::dxfOutFields(AcDbDxfFiler* filer) const {
    const Acad::ErrorStatus status = AcDbCurve::dxfOutFields(filer);
    if (status != Acad::eOk) return status;
    const bool splined = m_type == AcDb::k2dQuadSplinePoly || m_type == AcDb::k2dCubicSplinePoly;
    filer->writeItem(AcDb::kDxfSubclass, "AcDb2dPolyline");
    filer->writeInt16(66, 1);
    filer->writePoint3d(10, {0.0, 0.0, m_elevation});
    filer->writeInt16(70, (m_closed ? kClosed : 0) | (m_type == AcDb::k2dFitCurvePoly ? kFitted : 0) |
                              (splined ? kSplined : 0));
    if (filer->isEntityList()) {
        filer->writeDouble(40, 0.0);
        filer->writeDouble(41, 0.0);
    }
    veldrin::writeNormal(*filer, m_normal);
    if (splined) filer->writeInt16(75, m_type == AcDb::k2dQuadSplinePoly ? kQuadratic : kCubic);
    return filer->filerStatus();
}

Acad::ErrorStatus AcDb2dPolyline::dxfInFields(AcDbDxfFiler* filer) {
    Acad::ErrorStatus status = AcDbCurve::dxfInFields(filer);
    if (status != Acad::eOk) return status;
    int flags = (m_closed ? kClosed : 0) | (m_type == AcDb::k2dFitCurvePoly ? kFitted : 0);
    int smooth = m_type == AcDb::k2dQuadSplinePoly    ? kQuadratic
                 : m_type == AcDb::k2dCubicSplinePoly ? kCubic
                                                      : 0;
    status = dxfInGroups(filer, [&](const AcDbDxfItem& item) {
        switch (item.code) {
        case 10: m_elevation = item.point.z; return true;
        case 70: flags = static_cast<int>(veldrin::integerOf(item)); return true;
        case 75: smooth = static_cast<int>(veldrin::integerOf(item)); return true;
        case AcDb::kDxfNormalX: m_normal = veldrin::normalOf(item); return true;
        default: return false;
        }
    });
    m_closed = (flags & kClosed) != 0;
    m_type = (flags & kFitted) != 0 ? AcDb::k2dFitCurvePoly
             : smooth == kQuadratic ? AcDb::k2dQuadSplinePoly
             : smooth == kCubic     ? AcDb::k2dCubicSplinePoly
                                    : AcDb::k2dSimplePoly;
    setHeights();
    fit();
    return status;
}
