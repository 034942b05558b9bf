#pragma once

#include "drawing/AcDbPathCurve.h"

#include <memory>

// A straight line between two points. Its parameter is the distance from the start.
class VELDRIN_API AcDbLine : public veldrin::PathCurve {
public:
    ACRX_DECLARE_MEMBERS(AcDbLine);

    AcDbLine();
    AcDbLine(const AcGePoint3d& start, const AcGePoint3d& end);
    ~AcDbLine() override;

    AcGePoint3d startPoint() const { return m_start; }
    AcGePoint3d endPoint() const { return m_end; }
    Acad::ErrorStatus setStartPoint(const AcGePoint3d& point);
    Acad::ErrorStatus setEndPoint(const AcGePoint3d& point);
    AcGeVector3d normal() const { return m_normal ? *m_normal : AcGeVector3d::kZAxis; }
    Acad::ErrorStatus setNormal(const AcGeVector3d& normal);

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

private:
    void keepNormal(const AcGeVector3d& normal);

    AcGePoint3d m_start;
    AcGePoint3d m_end;
    std::unique_ptr<AcGeVector3d> m_normal; // null for the usual one: lines are most of a drawing
};
