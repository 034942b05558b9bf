#pragma once

#include "drawing/AcDbForeignEntity.h"

// A dimension as another program drew it: its picture is an anonymous block of its own, which goes with it.
// Of its groups the points are known, so that it can be moved; it is not measured anew.
class VELDRIN_API AcDbDimension : public AcDbForeignEntity {
public:
    ACRX_DECLARE_MEMBERS(AcDbDimension);
    AcDbDimension();
    ~AcDbDimension() override;

    AcDbObjectId block() const { return m_block; } // null without a picture

    Acad::ErrorStatus dwgInFields(AcDbDwgFiler* filer) override;
    Acad::ErrorStatus dwgOutFields(AcDbDwgFiler* filer) const override;
    Acad::ErrorStatus dxfInFields(AcDbDxfFiler* filer) override;

protected:
    bool subWorldDraw(AcGiWorldDraw* draw) override;
    Acad::ErrorStatus subGetGeomExtents(AcDbExtents& extents) const override;
    Acad::ErrorStatus subTransformBy(const AcGeMatrix3d& matrix) override;
    Acad::ErrorStatus subExplode(std::vector<AcDbEntity*>& pieces) const override;
    Markers markersFor(const resbuf* groups) const override;
    std::string textOfGroup(const resbuf& group) const override;

private:
    AcDbObjectId m_block;
};
