#pragma once

#include "drawing/AcDbPathCurve.h"

// An ellipse or a part of one. The parameter is the angle on the circle that it is squeezed from, counted
// from the major axis, radians. Lengths and places along it are those of short straight pieces, 1 degree of
// the parameter each.
class VELDRIN_API AcDbEllipse : public veldrin::PathCurve {
public:
    ACRX_DECLARE_MEMBERS(AcDbEllipse);

    AcDbEllipse();
    AcDbEllipse(const AcGePoint3d& center, const AcGeVector3d& normal, const AcGeVector3d& majorAxis,
                double radiusRatio, double startParam, double endParam);
    ~AcDbEllipse() override;

    AcGePoint3d center() const { return m_center; }
    AcGeVector3d majorAxis() const { return m_major; }
    AcGeVector3d minorAxis() const { return m_normal.crossProduct(m_major) * m_ratio; }
    AcGeVector3d normal() const { return m_normal; }
    double radiusRatio() const { return m_ratio; } // minor to major
    bool isClosed() const override;
    std::optional<veldrin::CurvePath> path() const override;

    Acad::ErrorStatus dwgInFields(AcDbDwgFiler* filer) override;
    Acad::ErrorStatus dwgOutFields(AcDbDwgFiler* filer) const override;
    Acad::ErrorStatus dxfInFields(AcDbDxfFiler* filer) override;
    Acad::ErrorStatus dxfOutFields(AcDbDxfFiler* filer) const override;

protected:
    bool subWorldDraw(AcGiWorldDraw* draw) override;
    void subList() const override;
    Acad::ErrorStatus subTransformBy(const AcGeMatrix3d& matrix) override;

private:
    double sweep() const;
    AcGePoint3dArray points() const;

    AcGePoint3d m_center;
    AcGeVector3d m_normal{0.0, 0.0, 1.0};
    AcGeVector3d m_major{1.0, 0.0, 0.0};
    double m_ratio = 1.0;
    double m_start = 0.0;
    double m_end = 0.0; // equal to the start: a whole one
};
