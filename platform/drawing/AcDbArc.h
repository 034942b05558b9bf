#pragma once

#include "drawing/AcDbPathCurve.h"

// A circular arc, counter-clockwise about its normal from start to end angle (radians, measured from the X
// axis of its plane). Its parameter is the angle.
class VELDRIN_API AcDbArc : public veldrin::PathCurve {
public:
    ACRX_DECLARE_MEMBERS(AcDbArc);

    AcDbArc();
    AcDbArc(const AcGePoint3d& center, double radius, double startAngle, double endAngle);
    AcDbArc(const AcGePoint3d& center, const AcGeVector3d& normal, double radius, double startAngle,
            double endAngle);
    ~AcDbArc() override;

    AcGePoint3d center() const { return m_center; }
    Acad::ErrorStatus setCenter(const AcGePoint3d& center);
    double radius() const { return m_radius; }
    Acad::ErrorStatus setRadius(double radius);
    double startAngle() const { return m_startAngle; } // from 0 up to a full turn
    double endAngle() const { return m_endAngle; }
    Acad::ErrorStatus setStartAngle(double angle);
    Acad::ErrorStatus setEndAngle(double angle);
    AcGeVector3d normal() const { return m_normal; }
    Acad::ErrorStatus setNormal(const AcGeVector3d& normal);
    double sweep() const; // above 0, at most a full turn
    double length() const;

    using AcDbCurve::extend;
    Acad::ErrorStatus extend(double newParam) override;
    Acad::ErrorStatus extend(bool extendStart, const AcGePoint3d& toPoint) override;
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
    Acad::ErrorStatus subMoveStretchPointsAt(const AcGeIntArray& indices,
                                             const AcGeVector3d& offset) override;

private:
    Acad::ErrorStatus setFromChord(const AcGePoint3d& start, const AcGePoint3d& end, double bulge);

    AcGePoint3d m_center;
    double m_radius = 0.0;
    double m_startAngle = 0.0;
    double m_endAngle = 0.0;
    AcGeVector3d m_normal{0.0, 0.0, 1.0};
};
