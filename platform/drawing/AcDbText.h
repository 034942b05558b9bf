#pragma once

#include "drawing/AcDbEntity.h"

namespace AcDb {
enum TextHorzMode {
    kTextLeft = 0,
    kTextCenter = 1,
    kTextRight = 2,
    kTextAlign = 3,
    kTextMid = 4,
    kTextFit = 5
};
enum TextVertMode { kTextBase = 0, kTextBottom = 1, kTextVertMid = 2, kTextTop = 3 };
} // namespace AcDb

// A single line of text. A text that is not set at the left of its baseline has an alignment point, which
// holds it; its position then follows. Aligned and fitted texts run from their position to their alignment
// point: an aligned one takes its height from the distance, a fitted one its width factor. Rotation is
// counted from the X axis of the text's plane.
class VELDRIN_API AcDbText : public AcDbEntity {
public:
    ACRX_DECLARE_MEMBERS(AcDbText);

    AcDbText();
    AcDbText(const AcGePoint3d& position, const std::string& text, double height = 0.0,
             double rotation = 0.0);
    ~AcDbText() override;

    AcGePoint3d position() const { return m_position; } // left end of the baseline, in the world
    Acad::ErrorStatus setPosition(const AcGePoint3d& position);
    AcGePoint3d alignmentPoint() const { return m_alignment; }
    Acad::ErrorStatus setAlignmentPoint(const AcGePoint3d& point);
    bool isDefaultAlignment() const {
        return m_horizontal == AcDb::kTextLeft && m_vertical == AcDb::kTextBase;
    }
    AcDb::TextHorzMode horizontalMode() const { return m_horizontal; }
    AcDb::TextVertMode verticalMode() const { return m_vertical; }
    // Both modes at once, since they belong together.
    Acad::ErrorStatus setModes(AcDb::TextHorzMode horizontal, AcDb::TextVertMode vertical);
    double height() const { return m_height; }
    Acad::ErrorStatus setHeight(double height);
    double widthFactor() const { return m_widthFactor; }
    Acad::ErrorStatus setWidthFactor(double factor);
    double oblique() const { return m_oblique; } // radians
    Acad::ErrorStatus setOblique(double angle);
    double rotation() const { return m_rotation; } // radians
    Acad::ErrorStatus setRotation(double angle);
    AcGeVector3d normal() const { return m_normal; }
    Acad::ErrorStatus setNormal(const AcGeVector3d& normal);
    bool isMirroredInX() const { return m_backwards; }  // reads backwards
    bool isMirroredInY() const { return m_upsideDown; } // stands upside down
    Acad::ErrorStatus mirrorInX(bool mirrored);
    Acad::ErrorStatus mirrorInY(bool mirrored);
    AcDbObjectId textStyle() const { return m_style; }
    // The look of the style is not taken; takeStyleLook() does.
    Acad::ErrorStatus setTextStyle(AcDbObjectId style);
    // Width factor, slant, directions and a fixed height as the style has them.
    Acad::ErrorStatus takeStyleLook();
    const std::string& textString() const { return m_text; }
    Acad::ErrorStatus setTextString(const std::string& text);

    void setDatabaseDefaults(const AcDbDatabase& database) override;

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
    Acad::ErrorStatus subGetStretchPoints(AcGePoint3dArray& points) const override;
    Acad::ErrorStatus subMoveStretchPointsAt(const AcGeIntArray& indices,
                                             const AcGeVector3d& offset) override;
    Acad::ErrorStatus subGetOsnapPoints(AcDb::OsnapMode mode, Adesk::GsMarker marker,
                                        const AcGePoint3d& pickPoint, const AcGePoint3d& lastPoint,
                                        const AcGeMatrix3d& viewTransform, AcGePoint3dArray& snapPoints,
                                        AcGeIntArray& geomIds) const override;

    // As the sinks get it, with another text where a class shows one.
    AcGiText drawn(const std::string& contents) const;
    virtual const std::string& shownText() const { return m_text; }
    // Up to the vertical mode, which classes write in their own part.
    void dxfOutText(AcDbDxfFiler& filer) const;
    // A group of a text or of a class derived from it; for those the group of the vertical mode differs.
    using GroupTaker = std::function<bool(const AcDbDxfItem&)>;
    Acad::ErrorStatus dxfInText(AcDbDxfFiler* filer, int verticalCode, const GroupTaker& take);

private:
    bool runsBetweenPoints() const {
        return m_horizontal == AcDb::kTextAlign || m_horizontal == AcDb::kTextFit;
    }
    AcGeVector3d direction() const;
    void setDirection(const AcGeVector3d& direction);
    void adjust(); // makes the position, or what the points decide, agree with the rest
    void adjustBetweenPoints();
    void mirrorReadably(const AcGeVector3d& before);

    AcGePoint3d m_position;
    AcGePoint3d m_alignment;
    AcGeVector3d m_normal{0.0, 0.0, 1.0};
    double m_height = 0.0; // 0 until it is in a drawing stands for the drawing's text size
    double m_widthFactor = 1.0;
    double m_oblique = 0.0;
    double m_rotation = 0.0;
    AcDb::TextHorzMode m_horizontal = AcDb::kTextLeft;
    AcDb::TextVertMode m_vertical = AcDb::kTextBase;
    bool m_backwards = false;
    bool m_upsideDown = false;
    AcDbObjectId m_style;
    std::string m_text;
};
