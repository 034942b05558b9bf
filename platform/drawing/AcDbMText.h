#pragma once

#include "drawing/AcDbEntity.h"

namespace veldrin {
struct TextSize;
}

// Text of one or more lines with inline codes. Rotation is counted from the X axis of the current user
// coordinate system; what is stored is the direction in the world.
class VELDRIN_API AcDbMText : public AcDbEntity {
public:
    ACRX_DECLARE_MEMBERS(AcDbMText);

    enum AttachmentPoint {
        kTopLeft = 1,
        kTopCenter = 2,
        kTopRight = 3,
        kMiddleLeft = 4,
        kMiddleCenter = 5,
        kMiddleRight = 6,
        kBottomLeft = 7,
        kBottomCenter = 8,
        kBottomRight = 9,
    };

    AcDbMText();
    ~AcDbMText() override;

    AcGePoint3d location() const { return m_location; }
    Acad::ErrorStatus setLocation(const AcGePoint3d& location);
    AcGeVector3d direction() const { return m_direction; } // unit vector in the world
    Acad::ErrorStatus setDirection(const AcGeVector3d& direction);
    double rotation() const; // radians, relative to the current user coordinate system
    Acad::ErrorStatus setRotation(double rotation);
    double worldRotation() const;            // radians, in the world
    double width() const { return m_width; } // set width at which lines break, 0 for none
    Acad::ErrorStatus setWidth(double width);
    // As set; 0 stands for the style's fixed height or, without one, the drawing's text size.
    double textHeight() const { return m_height; }
    Acad::ErrorStatus setTextHeight(double height);
    AcDbObjectId textStyle() const { return m_style; }
    Acad::ErrorStatus setTextStyle(AcDbObjectId style);
    AttachmentPoint attachment() const { return m_attachment; }
    Acad::ErrorStatus setAttachment(AttachmentPoint attachment);
    const std::string& contents() const { return m_contents; }
    Acad::ErrorStatus setContents(const std::string& contents);

    // Size of what is drawn, drawing units. Text without a style measures as Standard does.
    double actualWidth() const;
    double actualHeight(AcGiWorldDraw* draw = nullptr) const;

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
    const AcDbDatabase* drawing() const; // its own, else the working one
    AcDbObjectId effectiveStyle() const; // Standard for none
    double effectiveHeight() const;
    veldrin::TextSize actualSize() const;
    AcGiText drawn() const;

    AcGePoint3d m_location;
    AcGeVector3d m_direction{1.0, 0.0, 0.0};
    AcGeVector3d m_normal{0.0, 0.0, 1.0};
    double m_width = 0.0;
    double m_height = 0.0;
    AcDbObjectId m_style;
    AttachmentPoint m_attachment = kTopLeft;
    std::string m_contents;
};
