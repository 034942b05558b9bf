#pragma once

#include "drawing/AcDbPathCurve.h"

// A full circle. Its parameter is the angle from 0 to a full turn.
class VELDRIN_API AcDbCircle : public veldrin::PathCurve {
public:
    ACRX_DECLARE_MEMBERS(AcDbCircle);

    AcDbCircle();
    AcDbCircle(const AcGePoint3d& center, const AcGeVector3d& normal, double radius);
    ~AcDbCircle() override;

    AcGePoint3d center() const { return m_center; }
    Acad::ErrorStatus setCenter(const AcGePoint3d& center);
    double radius() const { return m_radius; }
    Acad::ErrorStatus setRadius(double radius);
    AcGeVector3d normal() const { return m_normal; }
    Acad::ErrorStatus setNormal(const AcGeVector3d& normal);
    bool isClosed() const override { return true; }

    std::optional<veldrin::CurvePath> path() const override;

    Acad::ErrorStatus dwgInFields(AcDbDwgFiler* filer) override;
    Acad::ErrorStatus dwgOutFields(AcDbDwgFiler* filer) const override;
    Acad::ErrorStatus dxfInFields(AcDbDxfFiler* filer) override;
    Acad::ErrorStatus dxfOutFields(AcDbDxfFiler* filer) const override;

protected:
    bool subWorldDraw(AcGiWorldDraw* draw) override;
    void subList() const override;
    Acad::ErrorStatus subTransformBy(const AcGeMatrix3d& matrix) override;
    double paramOf(double position) const override;
    double positionOf(double param) const override;
    Acad::ErrorStatus subGetGripPoints(AcGePoint3dArray& points, AcGeIntArray& osnapModes,
                                       AcGeIntArray& geomIds) const override;
    Acad::ErrorStatus subMoveGripPointsAt(const AcGeIntArray& indices, const AcGeVector3d& offset) override;
    Acad::ErrorStatus subGetStretchPoints(AcGePoint3dArray& points) const override;

private:
    AcGePoint3d m_center;
    double m_radius = 0.0;
    AcGeVector3d m_normal{0.0, 0.0, 1.0};
};
