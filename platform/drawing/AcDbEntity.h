#pragma once

#include "drawing/AcCmColor.h"
#include "drawing/AcDbObject.h"
#include "drawing/AcGi.h"
#include "geometry/AcDbExtents.h"
#include "geometry/AcGeArrays.h"
#include "geometry/AcGePlane.h"

#include <functional>
#include <vector>

struct AcDbDxfItem;

// Anything that is drawn. Layer, linetype, linetype scale, colour and lineweight that nobody set are taken
// from the drawing's current ones when the entity is added to a block.
//
// The public operations check how the object is open and call the virtual ones (sub...), which classes
// override.
class VELDRIN_API AcDbEntity : public AcDbObject, public AcGiDrawable {
public:
    ACRX_DECLARE_MEMBERS(AcDbEntity);

    AcDbEntity();
    ~AcDbEntity() override;

    AcDbObjectId blockId() const { return ownerId(); }

    // Common properties. Ids that are null stand for "not set".
    AcDbObjectId layerId() const { return m_layer; }
    std::string layer() const; // name
    Acad::ErrorStatus setLayer(AcDbObjectId layer, bool doSubents = true, bool allowHiddenLayer = false);
    Acad::ErrorStatus setLayer(const char* name);
    AcDbObjectId linetypeId() const { return m_linetype; }
    std::string linetype() const; // name
    Acad::ErrorStatus setLinetype(AcDbObjectId linetype, bool doSubents = true);
    Acad::ErrorStatus setLinetype(const char* name);
    double linetypeScale() const { return m_linetypeScale; }
    Acad::ErrorStatus setLinetypeScale(double scale);
    AcCmColor color() const { return m_color; }
    Adesk::UInt16 colorIndex() const { return static_cast<Adesk::UInt16>(m_color.colorIndex()); }
    Acad::ErrorStatus setColor(const AcCmColor& color, bool doSubents = true);
    Acad::ErrorStatus setColorIndex(Adesk::UInt16 index, bool doSubents = true);
    AcDb::LineWeight lineWeight() const { return m_lineWeight; }
    Acad::ErrorStatus setLineWeight(AcDb::LineWeight weight, bool doSubents = true);
    AcDb::Visibility visibility() const { return m_visible ? AcDb::kVisible : AcDb::kInvisible; }
    Acad::ErrorStatus setVisibility(AcDb::Visibility visibility, bool doSubents = true);

    // Layer and so on of another entity.
    void setPropertiesFrom(const AcDbEntity* other);
    // What nobody set becomes the drawing's current value; called when the entity is added to a block.
    virtual void setDatabaseDefaults(const AcDbDatabase& database);
    // The entity looks different from now on.
    void recordGraphicsModified(bool modified = true);

    // Drawing
    void setAttributes(AcGiSubEntityTraits* traits) override;
    bool worldDraw(AcGiWorldDraw* draw) override;
    Adesk::UInt32 viewportDrawLogicalFlags(AcGiViewportDraw* draw);
    Acad::ErrorStatus getGeomExtents(AcDbExtents& extents) const;

    // Editing
    void list() const;
    Acad::ErrorStatus transformBy(const AcGeMatrix3d& matrix);
    // Pieces that stand for the entity; they are in no database and belong to the caller.
    Acad::ErrorStatus explode(std::vector<AcDbEntity*>& pieces) const;
    Acad::ErrorStatus getGripPoints(AcGePoint3dArray& points, AcGeIntArray& osnapModes,
                                    AcGeIntArray& geomIds) const;
    Acad::ErrorStatus moveGripPointsAt(const AcGeIntArray& indices, const AcGeVector3d& offset);
    Acad::ErrorStatus getStretchPoints(AcGePoint3dArray& points) const;
    Acad::ErrorStatus moveStretchPointsAt(const AcGeIntArray& indices, const AcGeVector3d& offset);
    Acad::ErrorStatus getOsnapPoints(AcDb::OsnapMode mode, Adesk::GsMarker marker,
                                     const AcGePoint3d& pickPoint, const AcGePoint3d& lastPoint,
                                     const AcGeMatrix3d& viewTransform, AcGePoint3dArray& snapPoints,
                                     AcGeIntArray& geomIds) const;
    // Common points of two entities. The mode names which of them is taken beyond its ends; with a plane,
    // as they are seen along its normal, and the points lie on this entity.
    Acad::ErrorStatus intersectWith(const AcDbEntity* other, AcDb::Intersect mode, AcGePoint3dArray& points,
                                    Adesk::GsMarker thisMarker = 0, Adesk::GsMarker otherMarker = 0) const;
    Acad::ErrorStatus intersectWith(const AcDbEntity* other, AcDb::Intersect mode, const AcGePlane& plane,
                                    AcGePoint3dArray& points, Adesk::GsMarker thisMarker = 0,
                                    Adesk::GsMarker otherMarker = 0) const;

    Acad::ErrorStatus dwgInFields(AcDbDwgFiler* filer) override;
    Acad::ErrorStatus dwgOutFields(AcDbDwgFiler* filer) const override;
    Acad::ErrorStatus dxfInFields(AcDbDxfFiler* filer) override;
    Acad::ErrorStatus dxfOutFields(AcDbDxfFiler* filer) const override;

protected:
    virtual bool subWorldDraw(AcGiWorldDraw* draw);
    virtual Adesk::UInt32 subViewportDrawLogicalFlags(AcGiViewportDraw* draw);
    virtual Acad::ErrorStatus subGetGeomExtents(AcDbExtents& extents) const;
    virtual void subList() const;
    virtual Acad::ErrorStatus subTransformBy(const AcGeMatrix3d& matrix);
    virtual Acad::ErrorStatus subExplode(std::vector<AcDbEntity*>& pieces) const;
    virtual Acad::ErrorStatus subGetGripPoints(AcGePoint3dArray& points, AcGeIntArray& osnapModes,
                                               AcGeIntArray& geomIds) const;
    virtual Acad::ErrorStatus subMoveGripPointsAt(const AcGeIntArray& indices, const AcGeVector3d& offset);
    virtual Acad::ErrorStatus subGetStretchPoints(AcGePoint3dArray& points) const;
    virtual Acad::ErrorStatus subMoveStretchPointsAt(const AcGeIntArray& indices, const AcGeVector3d& offset);
    virtual Acad::ErrorStatus subGetOsnapPoints(AcDb::OsnapMode mode, Adesk::GsMarker marker,
                                                const AcGePoint3d& pickPoint, const AcGePoint3d& lastPoint,
                                                const AcGeMatrix3d& viewTransform,
                                                AcGePoint3dArray& snapPoints, AcGeIntArray& geomIds) const;
    virtual Acad::ErrorStatus subIntersectWith(const AcDbEntity* other, AcDb::Intersect mode,
                                               AcGePoint3dArray& points, Adesk::GsMarker thisMarker,
                                               Adesk::GsMarker otherMarker) const;
    virtual Acad::ErrorStatus subIntersectWith(const AcDbEntity* other, AcDb::Intersect mode,
                                               const AcGePlane& plane, AcGePoint3dArray& points,
                                               Adesk::GsMarker thisMarker, Adesk::GsMarker otherMarker) const;

    // For the exchange readers of classes: offers each group up to the end of the object's data, or its
    // extended data, to `take`, and those that it does not want to the common properties. Markers and groups
    // that nobody wants are passed over, so that lists written by hand may have any order.
    Acad::ErrorStatus dxfInGroups(AcDbDxfFiler* filer, const std::function<bool(const AcDbDxfItem&)>& take);

    // Layer, colour, linetype and the like, and what an object's head has.
    static bool isCommonGroup(int code);

private:
    Acad::ErrorStatus dxfInCommon(const AcDbDxfItem& item, AcDbDxfFiler* filer, bool& known);

    static constexpr AcDb::LineWeight kLineWeightNotSet = -99;

    AcDbObjectId m_layer;
    AcDbObjectId m_linetype;
    double m_linetypeScale = 0.0; // 0 while not set
    AcCmColor m_color;
    AcDb::LineWeight m_lineWeight = kLineWeightNotSet;
    bool m_colorIsSet = false;
    bool m_visible = true;
};
