#include "drawing/AcDbBlockReference.h"

#include "drawing/AcDbAttribute.h"
#include "drawing/AcDbBlockBegin.h"
#include "drawing/AcDbBlockTable.h"
#include "drawing/AcDbDatabase.h"
#include "drawing/AcDbObjectAccess.h"
#include "drawing/list_lines.h"
#include "geometry/angles.h"
#include "runtime/AcRxMacros.h"

#include <algorithm>
#include <cmath>
#include <fmt/format.h>

ACRX_DEFINE_MEMBERS(AcDbBlockReference, AcDbEntity, "INSERT");

AcDbBlockReference::AcDbBlockReference() = default;
AcDbBlockReference::AcDbBlockReference(const AcGePoint3d& position, AcDbObjectId block)
    : m_block(block), m_position(position) {}
AcDbBlockReference::~AcDbBlockReference() = default;

Acad::ErrorStatus AcDbBlockReference::setBlockTableRecord(AcDbObjectId block) {
    if (block.isErased()) return Acad::eNullObjectId;
    const AcRxClass* found = block.objectClass();
    if (!found || !found->isDerivedFrom(AcDbBlockTableRecord::desc())) return Acad::eNotThatKindOfClass;
    if (database() && block.database() != database()) return Acad::eWrongDatabase;
    assertWriteEnabled();
    m_block = block;
    return Acad::eOk;
}

Acad::ErrorStatus AcDbBlockReference::setPosition(const AcGePoint3d& position) {
    assertWriteEnabled();
    m_position = position;
    return Acad::eOk;
}

Acad::ErrorStatus AcDbBlockReference::setScaleFactors(const AcGeScale3d& scale) {
    const auto isFactor = [](double factor) { return std::isfinite(factor) && factor != 0.0; };
    if (!isFactor(scale.sx) || !isFactor(scale.sy) || !isFactor(scale.sz)) return Acad::eInvalidInput;
    assertWriteEnabled();
    m_scale = scale;
    return Acad::eOk;
}

Acad::ErrorStatus AcDbBlockReference::setRotation(double angle) {
    assertWriteEnabled();
    m_rotation = veldrin::withinTurn(angle);
    return Acad::eOk;
}

Acad::ErrorStatus AcDbBlockReference::setNormal(const AcGeVector3d& normal) {
    if (normal.isZeroLength()) return Acad::eInvalidInput;
    assertWriteEnabled();
    m_normal = normal.normal();
    return Acad::eOk;
}

AcGeMatrix3d AcDbBlockReference::blockTransform() const {
    const AcGeVector3d x = m_normal.perpVector();
    const AcGeMatrix3d plane = AcGeMatrix3d::coordSystem(m_position, x, m_normal.crossProduct(x), m_normal);
    const AcGeMatrix3d turned = plane * AcGeMatrix3d::rotation(m_rotation, AcGeVector3d::kZAxis);
    const auto* block = AcDbBlockTableRecord::cast(AcDbObjectAccess::object(m_block));
    const AcGePoint3d base = block ? block->origin() : AcGePoint3d::kOrigin;
    return turned * AcGeMatrix3d::scaling(AcGeVector3d(m_scale.sx, m_scale.sy, m_scale.sz)) *
           AcGeMatrix3d::translation(-base.asVector());
}

namespace {

bool areSquare(const AcGeVector3d& x, const AcGeVector3d& y, const AcGeVector3d& z) {
    constexpr double kSquare = 1.0e-9; // cosine
    return std::abs(x.dotProduct(y)) <= kSquare && std::abs(y.dotProduct(z)) <= kSquare &&
           std::abs(x.dotProduct(z)) <= kSquare;
}

} // namespace

// What mirrors does so along X or along Y, whichever leaves the reference closer to how it stood.
Acad::ErrorStatus AcDbBlockReference::setBlockTransform(const AcGeMatrix3d& transform) {
    if (transform.isSingular()) return Acad::eInvalidInput;
    AcGeVector3d axes[3] = {AcGeVector3d::kXAxis, AcGeVector3d::kYAxis, AcGeVector3d::kZAxis};
    double* factors[3] = {&m_scale.sx, &m_scale.sy, &m_scale.sz};
    double lengths[3];
    for (int i = 0; i < 3; ++i) {
        axes[i].transformBy(transform);
        lengths[i] = axes[i].length();
        axes[i] = axes[i] / (*factors[i] < 0.0 ? -lengths[i] : lengths[i]);
    }
    if (!areSquare(axes[0], axes[1], axes[2])) return Acad::eCannotScaleNonUniformly;
    assertWriteEnabled();
    AcGeVector3d before = AcGeVector3d::kXAxis;
    before.transformBy(blockTransform());
    const auto* block = AcDbBlockTableRecord::cast(AcDbObjectAccess::object(m_block));
    AcGePoint3d position = block ? block->origin() : AcGePoint3d::kOrigin;
    m_position = position.transformBy(transform);
    const bool keepsX = axes[0].dotProduct(before) * (m_scale.sx < 0.0 ? -1.0 : 1.0) >= 0.0;
    for (int i = 0; i < 3; ++i) *factors[i] = std::copysign(lengths[i], *factors[i]);
    if (axes[0].crossProduct(axes[1]).dotProduct(axes[2]) < 0.0) {
        const int mirrored = keepsX ? 1 : 0;
        axes[mirrored] = -axes[mirrored];
        *factors[mirrored] = -*factors[mirrored];
    }
    m_normal = axes[2].normal() + AcGeVector3d(); // no minus in front of a zero
    const AcGeVector3d x = m_normal.perpVector();
    m_rotation =
        veldrin::withinTurn(std::atan2(axes[0].dotProduct(m_normal.crossProduct(x)), axes[0].dotProduct(x)));
    return Acad::eOk;
}

void AcDbBlockReference::becomeOwner(AcDbEntity& owned) const {
    if (!layerId().isNull() && owned.layerId().isNull()) owned.setLayer(layerId());
}

Acad::ErrorStatus AcDbBlockReference::appendAttribute(AcDbAttribute* attribute) {
    if (!attribute) return Acad::eNullObjectPointer;
    if (!attribute->objectId().isNull()) return Acad::eAlreadyInDatabase;
    if (!database()) return Acad::eNotInDatabase;
    if (!isWriteEnabled()) return Acad::eNotOpenForWrite;
    becomeOwner(*attribute);
    attribute->setDatabaseDefaults(*database());
    const Acad::ErrorStatus status = AcDbObjectAccess::add(*database(), attribute, objectId());
    if (status != Acad::eOk) return status;
    m_attributes.push_back(attribute->objectId());
    if (!m_sequenceEnd.isErased()) return Acad::eOk;
    auto end = std::make_unique<AcDbSequenceEnd>();
    becomeOwner(*end);
    const Acad::ErrorStatus ended = AcDbObjectAccess::add(*database(), end.get(), objectId());
    if (ended != Acad::eOk) return ended;
    AcDbSequenceEnd* const added = end.release();
    added->close();
    m_sequenceEnd = added->objectId();
    return Acad::eOk;
}

Acad::ErrorStatus AcDbBlockReference::appendAttribute(AcDbObjectId& id, AcDbAttribute* attribute) {
    const Acad::ErrorStatus status = appendAttribute(attribute);
    id = status == Acad::eOk ? attribute->objectId() : AcDbObjectId();
    return status;
}

bool AcDbBlockReference::hasAttributes() const {
    return std::ranges::any_of(m_attributes, [](AcDbObjectId id) { return !id.isErased(); });
}

std::vector<AcDbObjectId> AcDbBlockReference::attributeIds() const {
    std::vector<AcDbObjectId> ids;
    std::ranges::copy_if(m_attributes, std::back_inserter(ids),
                         [](AcDbObjectId id) { return !id.isErased(); });
    return ids;
}

// An attribute never comes or goes alone, so all of them follow.
Acad::ErrorStatus AcDbBlockReference::subErase(bool erasing) {
    for (const AcDbObjectId id : m_attributes) AcDbObjectAccess::setErased(id, erasing);
    if (!m_sequenceEnd.isNull()) AcDbObjectAccess::setErased(m_sequenceEnd, erasing);
    return Acad::eOk;
}

Acad::ErrorStatus AcDbBlockReference::subTransformBy(const AcGeMatrix3d& matrix) {
    const Acad::ErrorStatus status = setBlockTransform(matrix * blockTransform());
    if (status != Acad::eOk) return status;
    for (const AcDbObjectId id : attributeIds()) {
        const AcDbObjectPointer<AcDbAttribute> attribute(id, AcDb::kForWrite);
        const Acad::ErrorStatus moved = attribute ? attribute->transformBy(matrix) : attribute.openStatus();
        if (moved != Acad::eOk) return moved;
    }
    return Acad::eOk;
}

Acad::ErrorStatus AcDbBlockReference::subGetGripPoints(AcGePoint3dArray& points, AcGeIntArray&,
                                                       AcGeIntArray&) const {
    points.push_back(m_position);
    return Acad::eOk;
}

Acad::ErrorStatus AcDbBlockReference::subMoveGripPointsAt(const AcGeIntArray& indices,
                                                          const AcGeVector3d& offset) {
    if (std::find(indices.begin(), indices.end(), 0) == indices.end()) return Acad::eOk;
    return subTransformBy(AcGeMatrix3d::translation(offset));
}

void AcDbBlockReference::subList() const {
    AcDbEntity::subList();
    const AcDbObjectPointer<AcDbBlockTableRecord> block(m_block, AcDb::kForRead, true);
    veldrin::listValue("Block Name:", fmt::format("\"{}\"", block ? block->getName() : ""));
    veldrin::listPoint(*this, "at point", m_position);
    veldrin::listValue("X scale factor:", veldrin::listedLength(*this, m_scale.sx));
    veldrin::listValue("Y scale factor:", veldrin::listedLength(*this, m_scale.sy));
    veldrin::listValue("rotation angle:", veldrin::listedAngle(m_rotation));
    veldrin::listValue("Z scale factor:", veldrin::listedLength(*this, m_scale.sz));
    for (const AcDbObjectId id : attributeIds()) {
        const AcDbObjectPointer<AcDbAttribute> attribute(id);
        if (attribute) attribute->list();
    }
}
