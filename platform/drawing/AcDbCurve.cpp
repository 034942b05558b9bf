#include "drawing/AcDbCurve.h"

#include "runtime/AcRxMacros.h"

ACRX_NO_CONS_DEFINE_MEMBERS(AcDbCurve, AcDbEntity);

AcDbCurve::AcDbCurve() = default;
AcDbCurve::~AcDbCurve() = default;

bool AcDbCurve::isClosed() const {
    return false;
}
Acad::ErrorStatus AcDbCurve::getStartParam(double&) const {
    return Acad::eNotApplicable;
}
Acad::ErrorStatus AcDbCurve::getEndParam(double&) const {
    return Acad::eNotApplicable;
}
Acad::ErrorStatus AcDbCurve::getStartPoint(AcGePoint3d&) const {
    return Acad::eNotApplicable;
}
Acad::ErrorStatus AcDbCurve::getEndPoint(AcGePoint3d&) const {
    return Acad::eNotApplicable;
}
Acad::ErrorStatus AcDbCurve::getPointAtParam(double, AcGePoint3d&) const {
    return Acad::eNotApplicable;
}
Acad::ErrorStatus AcDbCurve::getParamAtPoint(const AcGePoint3d&, double&) const {
    return Acad::eNotApplicable;
}
Acad::ErrorStatus AcDbCurve::getDistAtParam(double, double&) const {
    return Acad::eNotApplicable;
}
Acad::ErrorStatus AcDbCurve::getParamAtDist(double, double&) const {
    return Acad::eNotApplicable;
}
Acad::ErrorStatus AcDbCurve::getDistAtPoint(const AcGePoint3d&, double&) const {
    return Acad::eNotApplicable;
}
Acad::ErrorStatus AcDbCurve::getPointAtDist(double, AcGePoint3d&) const {
    return Acad::eNotApplicable;
}
Acad::ErrorStatus AcDbCurve::getFirstDeriv(double, AcGeVector3d&) const {
    return Acad::eNotApplicable;
}
Acad::ErrorStatus AcDbCurve::getFirstDeriv(const AcGePoint3d&, AcGeVector3d&) const {
    return Acad::eNotApplicable;
}
Acad::ErrorStatus AcDbCurve::getClosestPointTo(const AcGePoint3d&, AcGePoint3d&, bool) const {
    return Acad::eNotApplicable;
}
Acad::ErrorStatus AcDbCurve::getClosestPointTo(const AcGePoint3d&, const AcGeVector3d&, AcGePoint3d&,
                                               bool) const {
    return Acad::eNotApplicable;
}
Acad::ErrorStatus AcDbCurve::getSpline(AcDbSpline*& spline) const {
    spline = nullptr;
    return Acad::eNotApplicable;
}
Acad::ErrorStatus AcDbCurve::extend(double) {
    return Acad::eNotApplicable;
}
Acad::ErrorStatus AcDbCurve::extend(bool, const AcGePoint3d&) {
    return Acad::eNotApplicable;
}
std::optional<veldrin::CurvePath> AcDbCurve::path() const {
    return std::nullopt;
}
