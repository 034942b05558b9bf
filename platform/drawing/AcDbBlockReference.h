#pragma once

#include "drawing/AcDbEntity.h"
#include "geometry/AcGeScale3d.h"

#include <functional>

class AcDbAttribute;

// A block placed in a drawing: its base point at the position, scaled along its own axes, turned in the plane
// with that normal (rotation is counted from the plane's X axis). Parts on layer 0 look as on the reference's
// layer, what is by block has the reference's colour, linetype and lineweight.
//
// A reference owns its attributes, and behind them a SEQEND: they are objects of the drawing whose owner is
// the reference, and are transformed, erased and copied with it. A copy that is in no drawing (clone()) has
// none.
class VELDRIN_API AcDbBlockReference : public AcDbEntity {
public:
    ACRX_DECLARE_MEMBERS(AcDbBlockReference);

    AcDbBlockReference();
    AcDbBlockReference(const AcGePoint3d& position, AcDbObjectId block);
    ~AcDbBlockReference() override;

    AcDbObjectId blockTableRecord() const { return m_block; }
    Acad::ErrorStatus setBlockTableRecord(AcDbObjectId block);
    AcGePoint3d position() const { return m_position; }
    Acad::ErrorStatus setPosition(const AcGePoint3d& position);
    AcGeScale3d scaleFactors() const { return m_scale; }
    Acad::ErrorStatus setScaleFactors(const AcGeScale3d& scale); // none may be 0
    double rotation() const { return m_rotation; }               // radians
    Acad::ErrorStatus setRotation(double angle);
    AcGeVector3d normal() const { return m_normal; }
    Acad::ErrorStatus setNormal(const AcGeVector3d& normal);

    // From the block's coordinates to those that the reference stands in.
    AcGeMatrix3d blockTransform() const;
    // eCannotScaleNonUniformly for one that no position, factors and rotation can give.
    Acad::ErrorStatus setBlockTransform(const AcGeMatrix3d& transform);

    // The reference must be in a drawing and open for write; the attribute is then the drawing's, open for
    // write, and the last one. A SEQEND comes with the first.
    Acad::ErrorStatus appendAttribute(AcDbAttribute* attribute);
    Acad::ErrorStatus appendAttribute(AcDbObjectId& id, AcDbAttribute* attribute);
    bool hasAttributes() const;
    std::vector<AcDbObjectId> attributeIds() const; // in order, erased ones left out
    AcDbObjectId sequenceEndId() const { return m_sequenceEnd; }

    // Calls with each part of the block as it stands in the drawing, nested references taken apart: a copy
    // that is in no drawing and lives as long as the call, or an attribute. Definitions of attributes are
    // left out but for their constant texts. False from the function ends it.
    using PartVisitor = std::function<bool(AcDbEntity& part)>;
    void visitParts(const PartVisitor& visit) const;
    // Puts copies of the block's entities, one level deep, into the block that the reference is in. What
    // cannot be scaled as the reference is becomes polylines. The reference stays. On failure nothing was
    // added.
    Acad::ErrorStatus explodeToOwnerSpace(std::vector<AcDbObjectId>* pieces = nullptr) const;

    Acad::ErrorStatus dwgInFields(AcDbDwgFiler* filer) override;
    Acad::ErrorStatus dwgOutFields(AcDbDwgFiler* filer) const override;
    Acad::ErrorStatus dxfInFields(AcDbDxfFiler* filer) override;
    Acad::ErrorStatus dxfOutFields(AcDbDxfFiler* filer) const override;

protected:
    bool subWorldDraw(AcGiWorldDraw* draw) override;
    Acad::ErrorStatus subGetGeomExtents(AcDbExtents& extents) const override;
    void subList() const override;
    Acad::ErrorStatus subTransformBy(const AcGeMatrix3d& matrix) override;
    Acad::ErrorStatus subExplode(std::vector<AcDbEntity*>& pieces) const override;
    Acad::ErrorStatus subGetGripPoints(AcGePoint3dArray& points, AcGeIntArray& osnapModes,
                                       AcGeIntArray& geomIds) const override;
    Acad::ErrorStatus subMoveGripPointsAt(const AcGeIntArray& indices, const AcGeVector3d& offset) override;
    Acad::ErrorStatus subGetOsnapPoints(AcDb::OsnapMode mode, Adesk::GsMarker marker,
                                        const AcGePoint3d& pickPoint, const AcGePoint3d& lastPoint,
                                        const AcGeMatrix3d& viewTransform, AcGePoint3dArray& snapPoints,
                                        AcGeIntArray& geomIds) const override;
    Acad::ErrorStatus subIntersectWith(const AcDbEntity* other, AcDb::Intersect mode,
                                       AcGePoint3dArray& points, Adesk::GsMarker thisMarker,
                                       Adesk::GsMarker otherMarker) const override;
    Acad::ErrorStatus subIntersectWith(const AcDbEntity* other, AcDb::Intersect mode, const AcGePlane& plane,
                                       AcGePoint3dArray& points, Adesk::GsMarker thisMarker,
                                       Adesk::GsMarker otherMarker) const override;
    Acad::ErrorStatus subErase(bool erasing) override;

private:
    friend class AcDbObjectAccess;
    void becomeOwner(AcDbEntity& owned) const;

    AcDbObjectId m_block;
    AcGePoint3d m_position;
    AcGeScale3d m_scale;
    double m_rotation = 0.0;
    AcGeVector3d m_normal{0.0, 0.0, 1.0};
    std::vector<AcDbObjectId> m_attributes; // only grows, as a block's list of entities does
    AcDbObjectId m_sequenceEnd;
};
