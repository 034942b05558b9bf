#include "drawing/AcDbDimension.h"

#include "drawing/AcDbBlockTable.h"
#include "drawing/AcDbDatabase.h"
#include "drawing/AcDbDwgFiler.h"
#include "drawing/AcDbDxfFiler.h"
#include "drawing/AcDbObjectAccess.h"
#include "drawing/block_copies.h"
#include "drawing/block_parts.h"
#include "runtime/AcRxMacros.h"

#include <algorithm>
#include <array>

ACRX_DEFINE_MEMBERS(AcDbDimension, AcDbForeignEntity, "DIMENSION");

using veldrin::pointOf;

namespace {

constexpr int kBlockName = 2;
// In the world: the definition points of all kinds of dimension, and where its text stands.
constexpr std::array kPoints = {10, 11, 12, 13, 14, 15, 16};

} // namespace

AcDbDimension::AcDbDimension() : AcDbForeignEntity("DIMENSION") {}
AcDbDimension::~AcDbDimension() = default;

Acad::ErrorStatus AcDbDimension::dwgOutFields(AcDbDwgFiler* filer) const {
    const Acad::ErrorStatus status = AcDbForeignEntity::dwgOutFields(filer);
    return status == Acad::eOk ? filer->writeHardPointerId(m_block) : status;
}

Acad::ErrorStatus AcDbDimension::dwgInFields(AcDbDwgFiler* filer) {
    const Acad::ErrorStatus status = AcDbForeignEntity::dwgInFields(filer);
    if (status != Acad::eOk) return status;
    filer->readHardPointerId(m_block);
    return filer->filerStatus();
}

Acad::ErrorStatus AcDbDimension::dxfInFields(AcDbDxfFiler* filer) {
    const Acad::ErrorStatus status = AcDbForeignEntity::dxfInFields(filer);
    if (status != Acad::eOk || !filer->database()) return status;
    const std::string name = AcDbForeignEntity::textGroup(kBlockName);
    m_block =
        name.empty() ? AcDbObjectId() : AcDbObjectAccess::findRecord(filer->database()->blockTableId(), name);
    return Acad::eOk;
}

// A copy in another drawing has a block of another name.
std::string AcDbDimension::textOfGroup(const resbuf& group) const {
    const auto* block = AcDbBlockTableRecord::cast(AcDbObjectAccess::object(m_block));
    if (group.restype == kBlockName && block) return block->getName();
    return AcDbForeignEntity::textOfGroup(group);
}

AcDbForeignEntity::Markers AcDbDimension::markersFor(const resbuf* groups) const {
    static const Markers kinds[] = {
        {{"AcDbDimension"}, {"AcDbAlignedDimension"}, {12, 13, 14, 40, 50, 52}, {"AcDbRotatedDimension"}},
        {{"AcDbDimension"}, {"AcDbAlignedDimension"}, {12, 13, 14, 40, 50, 52}, {}},
        {{"AcDbDimension"}, {"AcDb2LineAngularDimension"}, {13, 14, 15, 16, 40}, {}},
        {{"AcDbDimension"}, {"AcDbDiametricDimension"}, {15, 40}, {}},
        {{"AcDbDimension"}, {"AcDbRadialDimension"}, {15, 40}, {}},
        {{"AcDbDimension"}, {"AcDb3PointAngularDimension"}, {13, 14, 15, 40}, {}},
        {{"AcDbDimension"}, {"AcDbOrdinateDimension"}, {13, 14}, {}},
    };
    constexpr int kKindBits = 7;
    constexpr int kFlags = 70;
    for (; groups; groups = groups->rbnext)
        if (groups->restype == kFlags)
            return kinds[std::min<std::size_t>(groups->resval.rint & kKindBits, 6)];
    return kinds[0];
}

bool AcDbDimension::subWorldDraw(AcGiWorldDraw* draw) {
    if (m_block.isErased() || !draw->geometry().beginBlock(m_block, AcGeMatrix3d())) return true;
    for (const AcDbObjectId id : veldrin::livingEntities(m_block)) {
        const AcDbObjectPointer<AcDbEntity> entity(id);
        if (entity) draw->geometry().draw(entity.object());
    }
    draw->geometry().endBlock();
    return true;
}

Acad::ErrorStatus AcDbDimension::subGetGeomExtents(AcDbExtents& extents) const {
    AcDbExtents all;
    for (const AcDbObjectId id : veldrin::livingEntities(m_block)) {
        const AcDbObjectPointer<AcDbEntity> entity(id);
        AcDbExtents own;
        if (entity && entity->getGeomExtents(own) == Acad::eOk) all.addExt(own);
    }
    if (all.isEmpty()) return Acad::eNullExtents;
    extents = all;
    return Acad::eOk;
}

// The picture is moved as a block of another name, so that going back brings the old one back.
Acad::ErrorStatus AcDbDimension::subTransformBy(const AcGeMatrix3d& matrix) {
    if (matrix.isSingular()) return Acad::eInvalidInput;
    if (database() && !m_block.isErased()) {
        AcDbObjectId moved;
        Acad::ErrorStatus status = veldrin::startBlock(*database(), veldrin::freeBlockName(*database(), "*D"),
                                                       AcGePoint3d::kOrigin, moved);
        if (status == Acad::eOk) status = veldrin::copyInto(moved, veldrin::livingEntities(m_block), matrix);
        if (status != Acad::eOk) return status;
        m_block = moved;
    }
    for (resbuf* group = mutableGroups(); group; group = group->rbnext)
        if (std::find(kPoints.begin(), kPoints.end(), group->restype) != kPoints.end())
            veldrin::setPoint(*group, pointOf(*group).transformBy(matrix));
    return Acad::eOk;
}

Acad::ErrorStatus AcDbDimension::subExplode(std::vector<AcDbEntity*>& pieces) const {
    if (m_block.isErased()) return Acad::eNotApplicable;
    for (const AcDbObjectId id : veldrin::livingEntities(m_block)) {
        const AcDbObjectPointer<AcDbEntity> entity(id);
        if (!entity) continue;
        if (auto copy = veldrin::placedCopy(*entity, AcGeMatrix3d())) pieces.push_back(copy.release());
    }
    return Acad::eOk;
}
