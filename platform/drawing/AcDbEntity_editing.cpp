// The public operations of entities: each checks how the object is open and calls the class's own, whose
// answers as they stand are at the end.

#include "drawing/AcDbBlockReference.h"
#include "drawing/AcDbCurve.h"
#include "drawing/intersect_curves.h"

bool AcDbEntity::worldDraw(AcGiWorldDraw* draw) {
    assertReadEnabled();
    return subWorldDraw(draw);
}

Adesk::UInt32 AcDbEntity::viewportDrawLogicalFlags(AcGiViewportDraw* draw) {
    assertReadEnabled();
    return subViewportDrawLogicalFlags(draw);
}

Acad::ErrorStatus AcDbEntity::getGeomExtents(AcDbExtents& extents) const {
    assertReadEnabled();
    return subGetGeomExtents(extents);
}

void AcDbEntity::list() const {
    assertReadEnabled();
    subList();
}

Acad::ErrorStatus AcDbEntity::transformBy(const AcGeMatrix3d& matrix) {
    assertWriteEnabled();
    return subTransformBy(matrix);
}

Acad::ErrorStatus AcDbEntity::explode(std::vector<AcDbEntity*>& pieces) const {
    assertReadEnabled();
    return subExplode(pieces);
}

Acad::ErrorStatus AcDbEntity::getGripPoints(AcGePoint3dArray& points, AcGeIntArray& osnapModes,
                                            AcGeIntArray& geomIds) const {
    assertReadEnabled();
    return subGetGripPoints(points, osnapModes, geomIds);
}

Acad::ErrorStatus AcDbEntity::moveGripPointsAt(const AcGeIntArray& indices, const AcGeVector3d& offset) {
    assertWriteEnabled();
    return subMoveGripPointsAt(indices, offset);
}

Acad::ErrorStatus AcDbEntity::getStretchPoints(AcGePoint3dArray& points) const {
    assertReadEnabled();
    return subGetStretchPoints(points);
}

Acad::ErrorStatus AcDbEntity::moveStretchPointsAt(const AcGeIntArray& indices, const AcGeVector3d& offset) {
    assertWriteEnabled();
    return subMoveStretchPointsAt(indices, offset);
}

Acad::ErrorStatus AcDbEntity::getOsnapPoints(AcDb::OsnapMode mode, Adesk::GsMarker marker,
                                             const AcGePoint3d& pickPoint, const AcGePoint3d& lastPoint,
                                             const AcGeMatrix3d& viewTransform, AcGePoint3dArray& snapPoints,
                                             AcGeIntArray& geomIds) const {
    assertReadEnabled();
    return subGetOsnapPoints(mode, marker, pickPoint, lastPoint, viewTransform, snapPoints, geomIds);
}

Acad::ErrorStatus AcDbEntity::intersectWith(const AcDbEntity* other, AcDb::Intersect mode,
                                            AcGePoint3dArray& points, Adesk::GsMarker thisMarker,
                                            Adesk::GsMarker otherMarker) const {
    if (!other) return Acad::eNullObjectPointer;
    assertReadEnabled();
    return subIntersectWith(other, mode, points, thisMarker, otherMarker);
}

Acad::ErrorStatus AcDbEntity::intersectWith(const AcDbEntity* other, AcDb::Intersect mode,
                                            const AcGePlane& plane, AcGePoint3dArray& points,
                                            Adesk::GsMarker thisMarker, Adesk::GsMarker otherMarker) const {
    if (!other) return Acad::eNullObjectPointer;
    assertReadEnabled();
    return subIntersectWith(other, mode, plane, points, thisMarker, otherMarker);
}

bool AcDbEntity::subWorldDraw(AcGiWorldDraw*) {
    return true;
}
Adesk::UInt32 AcDbEntity::subViewportDrawLogicalFlags(AcGiViewportDraw*) {
    return 0;
}
Acad::ErrorStatus AcDbEntity::subGetGeomExtents(AcDbExtents&) const {
    return Acad::eNullExtents;
}
Acad::ErrorStatus AcDbEntity::subTransformBy(const AcGeMatrix3d&) {
    return Acad::eNotApplicable;
}
Acad::ErrorStatus AcDbEntity::subExplode(std::vector<AcDbEntity*>&) const {
    return Acad::eNotApplicable;
}

Acad::ErrorStatus AcDbEntity::subGetGripPoints(AcGePoint3dArray&, AcGeIntArray&, AcGeIntArray&) const {
    return Acad::eOk;
}

Acad::ErrorStatus AcDbEntity::subMoveGripPointsAt(const AcGeIntArray&, const AcGeVector3d&) {
    return Acad::eNotApplicable;
}

Acad::ErrorStatus AcDbEntity::subGetStretchPoints(AcGePoint3dArray& points) const {
    AcGeIntArray osnapModes;
    AcGeIntArray geomIds;
    return subGetGripPoints(points, osnapModes, geomIds);
}

Acad::ErrorStatus AcDbEntity::subMoveStretchPointsAt(const AcGeIntArray& indices,
                                                     const AcGeVector3d& offset) {
    return subMoveGripPointsAt(indices, offset);
}

Acad::ErrorStatus AcDbEntity::subGetOsnapPoints(AcDb::OsnapMode, Adesk::GsMarker, const AcGePoint3d&,
                                                const AcGePoint3d&, const AcGeMatrix3d&, AcGePoint3dArray&,
                                                AcGeIntArray&) const {
    return Acad::eNotApplicable;
}

namespace {

AcDb::Intersect swapped(AcDb::Intersect mode) {
    if (mode == AcDb::kExtendThis) return AcDb::kExtendArg;
    if (mode == AcDb::kExtendArg) return AcDb::kExtendThis;
    return mode;
}

// Moves points that another entity answered onto this curve, along the direction of view.
void moveOnto(const veldrin::CurvePath& path, const AcGeVector3d& along, bool extend,
              AcGePoint3dArray& points, std::size_t first) {
    for (std::size_t i = first; i < points.size(); ++i)
        points[i] = path.pointAt(path.closestAlong(points[i], along, extend));
}

// A curve that has no pieces to show answers by its own means, so the question goes to it the other way
// round.
Acad::ErrorStatus intersect(const AcDbEntity& self, const AcDbEntity& other, AcDb::Intersect mode,
                            const AcGePlane* plane, AcGePoint3dArray& points) {
    if (other.isKindOf(AcDbBlockReference::desc()) && !self.isKindOf(AcDbBlockReference::desc()))
        return plane ? other.intersectWith(&self, swapped(mode), *plane, points)
                     : other.intersectWith(&self, swapped(mode), points);
    const auto* curve = dynamic_cast<const AcDbCurve*>(&self);
    const auto path = curve ? curve->path() : std::nullopt;
    if (!path) return Acad::eNotApplicable;
    const auto* otherCurve = dynamic_cast<const AcDbCurve*>(&other);
    if (!otherCurve) return Acad::eNotApplicable;
    const bool extendThis = mode == AcDb::kExtendThis || mode == AcDb::kExtendBoth;
    const bool extendArg = mode == AcDb::kExtendArg || mode == AcDb::kExtendBoth;
    if (const auto otherPath = otherCurve->path()) {
        veldrin::intersectPaths(*path, *otherPath, extendThis, extendArg, plane, points);
        return Acad::eOk;
    }
    if (!plane) return other.intersectWith(&self, swapped(mode), points);
    const std::size_t first = points.size();
    const Acad::ErrorStatus status = other.intersectWith(&self, swapped(mode), *plane, points);
    if (status == Acad::eOk && !path->isEmpty()) moveOnto(*path, plane->normal(), extendThis, points, first);
    return status;
}

} // namespace

Acad::ErrorStatus AcDbEntity::subIntersectWith(const AcDbEntity* other, AcDb::Intersect mode,
                                               AcGePoint3dArray& points, Adesk::GsMarker,
                                               Adesk::GsMarker) const {
    return intersect(*this, *other, mode, nullptr, points);
}

Acad::ErrorStatus AcDbEntity::subIntersectWith(const AcDbEntity* other, AcDb::Intersect mode,
                                               const AcGePlane& plane, AcGePoint3dArray& points,
                                               Adesk::GsMarker, Adesk::GsMarker) const {
    return intersect(*this, *other, mode, &plane, points);
}
