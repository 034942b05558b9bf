#pragma once

#include "drawing/AcDbEntity.h"

// A place, shown as the drawing's PDMODE and PDSIZE say.
class VELDRIN_API AcDbPoint : public AcDbEntity {
public:
    ACRX_DECLARE_MEMBERS(AcDbPoint);

    AcDbPoint();
    explicit AcDbPoint(const AcGePoint3d& position);
    ~AcDbPoint() override;

    AcGePoint3d position() const { return m_position; }
    Acad::ErrorStatus setPosition(const AcGePoint3d& position);
    AcGeVector3d normal() const { return m_normal; }
    Acad::ErrorStatus setNormal(const AcGeVector3d& normal);

    Acad::ErrorStatus dwgInFields(AcDbDwgFiler* filer) override;
    Acad::ErrorStatus dwgOutFields(AcDbDwgFiler* filer) const override;
    Acad::ErrorStatus dxfInFields(AcDbDxfFiler* filer) override;
    Acad::ErrorStatus dxfOutFields(AcDbDxfFiler* filer) const override;

protected:
    bool subWorldDraw(AcGiWorldDraw* draw) override;
    Acad::ErrorStatus subGetGeomExtents(AcDbExtents& extents) const override;
    void subList() const override;
    Acad::ErrorStatus subTransformBy(const AcGeMatrix3d& matrix) override;
    Acad::ErrorStatus subGetGripPoints(AcGePoint3dArray& points, AcGeIntArray& osnapModes,
                                       AcGeIntArray& geomIds) const override;
    Acad::ErrorStatus subMoveGripPointsAt(const AcGeIntArray& indices, const AcGeVector3d& offset) override;
    Acad::ErrorStatus subGetOsnapPoints(AcDb::OsnapMode mode, Adesk::GsMarker marker,
                                        const AcGePoint3d& pickPoint, const AcGePoint3d& lastPoint,
                                        const AcGeMatrix3d& viewTransform, AcGePoint3dArray& snapPoints,
                                        AcGeIntArray& geomIds) const override;

private:
    AcGePoint3d m_position;
    AcGeVector3d m_normal{0.0, 0.0, 1.0};
    double m_xAngle = 0.0; // of the figure, radians
};
