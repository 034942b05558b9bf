#pragma once

#include "drawing/AcDbCurve.h"

namespace veldrin {

// What the plain curves share: each is a row of straight and circular pieces, and everything that is asked
// of a curve follows from those. A class says what its pieces are and how its parameter counts along them.
// Points count as on the curve within kOnCurve; parameters and distances outside of it are eInvalidInput.
class VELDRIN_API PathCurve : public AcDbCurve {
public:
    PathCurve();
    ~PathCurve() override;

    Acad::ErrorStatus getStartParam(double& param) const override;
    Acad::ErrorStatus getEndParam(double& param) const override;
    Acad::ErrorStatus getStartPoint(AcGePoint3d& point) const override;
    Acad::ErrorStatus getEndPoint(AcGePoint3d& point) const override;
    Acad::ErrorStatus getPointAtParam(double param, AcGePoint3d& point) const override;
    Acad::ErrorStatus getParamAtPoint(const AcGePoint3d& point, double& param) const override;
    Acad::ErrorStatus getDistAtParam(double param, double& dist) const override;
    Acad::ErrorStatus getParamAtDist(double dist, double& param) const override;
    Acad::ErrorStatus getDistAtPoint(const AcGePoint3d& point, double& dist) const override;
    Acad::ErrorStatus getPointAtDist(double dist, AcGePoint3d& point) const override;
    Acad::ErrorStatus getFirstDeriv(double param, AcGeVector3d& deriv) const override;
    Acad::ErrorStatus getFirstDeriv(const AcGePoint3d& point, AcGeVector3d& deriv) const override;
    Acad::ErrorStatus getClosestPointTo(const AcGePoint3d& given, AcGePoint3d& onCurve,
                                        bool extend = false) const override;
    Acad::ErrorStatus getClosestPointTo(const AcGePoint3d& given, const AcGeVector3d& direction,
                                        AcGePoint3d& onCurve, bool extend = false) const override;

protected:
    // The path of a curve that keeps it built; null of one that builds it for every question.
    virtual const CurvePath* keptPath() const { return nullptr; }
    // Between the curve's own parameter and positions on its path; as it stands, they are the same.
    virtual double paramOf(double position) const;
    virtual double positionOf(double param) const;

    Acad::ErrorStatus subGetGeomExtents(AcDbExtents& extents) const override;
    // Ends and joints, middles, centres and quadrants of arcs; feet and touching points from the last
    // point; the place nearest to the pick point as seen from above. Modes without a point give none.
    Acad::ErrorStatus subGetOsnapPoints(AcDb::OsnapMode mode, Adesk::GsMarker marker,
                                        const AcGePoint3d& pickPoint, const AcGePoint3d& lastPoint,
                                        const AcGeMatrix3d& viewTransform, AcGePoint3dArray& snapPoints,
                                        AcGeIntArray& geomIds) const override;

private:
    class UsablePath;

    Acad::ErrorStatus positionAtPoint(const CurvePath& path, const AcGePoint3d& point,
                                      double& position) const;
    Acad::ErrorStatus positionAtParam(const CurvePath& path, double param, double& position) const;
};

// Lines and arcs that take the place of a path, with the properties of the entity that it belongs to; the
// caller owns them.
void explodePath(const CurvePath& path, const AcDbEntity& like, std::vector<AcDbEntity*>& pieces);

} // namespace veldrin
