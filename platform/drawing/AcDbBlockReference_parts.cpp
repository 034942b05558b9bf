// What a reference shows: its block's entities, drawn, asked and taken apart.

#include "drawing/AcDbAttribute.h"
#include "drawing/AcDbBlockReference.h"
#include "drawing/AcDbBlockTable.h"
#include "drawing/AcDbDatabase.h"
#include "drawing/AcDbLayerTable.h"
#include "drawing/AcDbObjectAccess.h"
#include "drawing/block_parts.h"

#include <algorithm>

namespace {

using BlockPointer = AcDbObjectPointer<AcDbBlockTableRecord>;

// A constant text of the block, as the sinks draw any drawable.
class ConstantText : public AcGiDrawable {
public:
    explicit ConstantText(AcDbAttributeDefinition& definition) : m_definition(definition) {}
    void setAttributes(AcGiSubEntityTraits* traits) override { m_definition.setAttributes(traits); }
    bool worldDraw(AcGiWorldDraw* draw) override {
        m_definition.drawValue(*draw);
        return true;
    }

private:
    AcDbAttributeDefinition& m_definition;
};

// A reference on a frozen layer shows nothing, whatever layers its parts are on.
bool isFrozenReference(const AcDbEntity& entity) {
    if (!entity.isKindOf(AcDbBlockReference::desc())) return false;
    const auto* layer = AcDbLayerTableRecord::cast(AcDbObjectAccess::object(entity.layerId()));
    return layer && layer->isFrozen();
}

void drawContents(AcDbObjectId blockId, AcGiWorldDraw& draw) {
    const BlockPointer block(blockId);
    if (!block) return;
    for (const AcDbObjectId id : block->entityIds()) {
        if (draw.regenAbort()) return;
        if (id.isErased()) continue;
        const AcDbObjectPointer<AcDbEntity> entity(id);
        if (!entity || entity->visibility() != AcDb::kVisible || isFrozenReference(*entity)) continue;
        if (auto* definition = AcDbAttributeDefinition::cast(entity.object())) {
            ConstantText text(*definition);
            if (definition->isConstant()) draw.geometry().draw(&text);
            continue;
        }
        draw.geometry().draw(entity.object());
    }
}

} // namespace

// The reference's own traits are set when it is asked to draw.
bool AcDbBlockReference::subWorldDraw(AcGiWorldDraw* draw) {
    AcGiWorldGeometry& geometry = draw->geometry();
    if (!m_block.isErased() && geometry.beginBlock(m_block, blockTransform())) {
        drawContents(m_block, *draw);
        geometry.endBlock();
    }
    for (const AcDbObjectId id : attributeIds()) {
        const AcDbObjectPointer<AcDbAttribute> attribute(id);
        if (attribute && attribute->visibility() == AcDb::kVisible) geometry.draw(attribute.object());
    }
    return true;
}

namespace {

// One walk through the parts of a reference and of those in it.
class PartWalk {
public:
    explicit PartWalk(const AcDbBlockReference::PartVisitor& visit) : m_visit(visit) {}

    void enter(const AcDbBlockReference& reference, const AcGeMatrix3d& around) {
        const AcDbObjectId blockId = reference.blockTableRecord();
        const bool isInside = std::ranges::find(m_open, blockId) != m_open.end();
        if (!isInside && m_open.size() < veldrin::kDeepestBlock && ++m_begun <= veldrin::kMostBlocks) {
            m_open.push_back(blockId);
            const BlockPointer block(blockId);
            const AcGeMatrix3d placing = around * reference.blockTransform();
            if (block)
                for (const AcDbObjectId id : block->entityIds()) show(id, placing);
            m_open.pop_back();
        }
        for (const AcDbObjectId id : reference.attributeIds()) {
            const AcDbObjectPointer<AcDbAttribute> attribute(id);
            if (attribute && attribute->visibility() == AcDb::kVisible && !attribute->isInvisible())
                showCopy(*attribute, around);
        }
    }

private:
    void show(AcDbObjectId id, const AcGeMatrix3d& placing) {
        if (m_done || id.isErased()) return;
        const AcDbObjectPointer<AcDbEntity> entity(id);
        if (!entity || entity->visibility() != AcDb::kVisible) return;
        if (const auto* reference = AcDbBlockReference::cast(entity.object()))
            return enter(*reference, placing);
        if (const auto* definition = AcDbAttributeDefinition::cast(entity.object())) {
            AcDbAttribute text;
            if (definition->isConstant() && text.setFromDefinition(*definition, placing) == Acad::eOk)
                m_done = !m_visit(text);
            return;
        }
        showCopy(*entity, placing);
    }

    void showCopy(const AcDbEntity& entity, const AcGeMatrix3d& placing) {
        if (m_done) return;
        std::unique_ptr<AcDbEntity> part = veldrin::placedCopy(entity, placing);
        if (part) m_done = !m_visit(*part);
    }

    const AcDbBlockReference::PartVisitor& m_visit;
    std::vector<AcDbObjectId> m_open;
    std::size_t m_begun = 0;
    bool m_done = false;
};

} // namespace

void AcDbBlockReference::visitParts(const PartVisitor& visit) const {
    PartWalk(visit).enter(*this, AcGeMatrix3d::kIdentity);
}

Acad::ErrorStatus AcDbBlockReference::subGetGeomExtents(AcDbExtents& extents) const {
    AcDbExtents all;
    visitParts([&](AcDbEntity& part) {
        AcDbExtents own;
        if (part.getGeomExtents(own) == Acad::eOk) all.addExt(own);
        return true;
    });
    if (all.isEmpty()) return Acad::eNullExtents;
    extents.addExt(all);
    return Acad::eOk;
}

// Its own point, and those of its parts.
Acad::ErrorStatus AcDbBlockReference::subGetOsnapPoints(
    AcDb::OsnapMode mode, Adesk::GsMarker marker, const AcGePoint3d& pickPoint, const AcGePoint3d& lastPoint,
    const AcGeMatrix3d& viewTransform, AcGePoint3dArray& snapPoints, AcGeIntArray& geomIds) const {
    if (mode == AcDb::kOsModeIns) snapPoints.push_back(m_position);
    visitParts([&](AcDbEntity& part) {
        AcGePoint3dArray points;
        if (part.getOsnapPoints(mode, marker, pickPoint, lastPoint, viewTransform, points, geomIds) ==
            Acad::eOk)
            snapPoints.insert(snapPoints.end(), points.begin(), points.end());
        return true;
    });
    return Acad::eOk;
}

Acad::ErrorStatus AcDbBlockReference::subIntersectWith(const AcDbEntity* other, AcDb::Intersect mode,
                                                       AcGePoint3dArray& points, Adesk::GsMarker,
                                                       Adesk::GsMarker) const {
    visitParts([&](AcDbEntity& part) {
        AcGePoint3dArray found;
        if (part.intersectWith(other, mode, found) == Acad::eOk)
            points.insert(points.end(), found.begin(), found.end());
        return true;
    });
    return Acad::eOk;
}

Acad::ErrorStatus AcDbBlockReference::subIntersectWith(const AcDbEntity* other, AcDb::Intersect mode,
                                                       const AcGePlane& plane, AcGePoint3dArray& points,
                                                       Adesk::GsMarker, Adesk::GsMarker) const {
    visitParts([&](AcDbEntity& part) {
        AcGePoint3dArray found;
        if (part.intersectWith(other, mode, plane, found) == Acad::eOk)
            points.insert(points.end(), found.begin(), found.end());
        return true;
    });
    return Acad::eOk;
}
