#pragma once

#include "drawing/AcDbCurvePath.h"
#include "drawing/AcDbEntity.h"

#include <optional>

// An entity that is a curve with a parameter. Distances are measured along it from its start. The base
// class answers eNotApplicable to everything.
class VELDRIN_API AcDbCurve : public AcDbEntity {
public:
    ACRX_DECLARE_MEMBERS(AcDbCurve);

    AcDbCurve();
    ~AcDbCurve() override;

    virtual bool isClosed() const;
    virtual Acad::ErrorStatus getStartParam(double& param) const;
    virtual Acad::ErrorStatus getEndParam(double& param) const;
    virtual Acad::ErrorStatus getStartPoint(AcGePoint3d& point) const;
    virtual Acad::ErrorStatus getEndPoint(AcGePoint3d& point) const;
    virtual Acad::ErrorStatus getPointAtParam(double param, AcGePoint3d& point) const;
    virtual Acad::ErrorStatus getParamAtPoint(const AcGePoint3d& point, double& param) const;
    virtual Acad::ErrorStatus getDistAtParam(double param, double& dist) const;
    virtual Acad::ErrorStatus getParamAtDist(double dist, double& param) const;
    virtual Acad::ErrorStatus getDistAtPoint(const AcGePoint3d& point, double& dist) const;
    virtual Acad::ErrorStatus getPointAtDist(double dist, AcGePoint3d& point) const;
    virtual Acad::ErrorStatus getFirstDeriv(double param, AcGeVector3d& deriv) const;
    virtual Acad::ErrorStatus getFirstDeriv(const AcGePoint3d& point, AcGeVector3d& deriv) const;
    virtual Acad::ErrorStatus getClosestPointTo(const AcGePoint3d& given, AcGePoint3d& onCurve,
                                                bool extend = false) const;
    // As seen along the direction; the point lies on the curve itself.
    virtual Acad::ErrorStatus getClosestPointTo(const AcGePoint3d& given, const AcGeVector3d& direction,
                                                AcGePoint3d& onCurve, bool extend = false) const;
    // A spline of the same shape that the caller owns.
    virtual Acad::ErrorStatus getSpline(AcDbSpline*& spline) const;
    virtual Acad::ErrorStatus extend(double newParam);
    virtual Acad::ErrorStatus extend(bool extendStart, const AcGePoint3d& toPoint);

    // The curve as straight and circular pieces, by which two curves are intersected; none for a curve that
    // answers its intersections itself.
    virtual std::optional<veldrin::CurvePath> path() const;
};
