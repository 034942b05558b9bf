#include "drawing/block_parts.h"

#include "drawing/AcDbBlockReference.h"
#include "drawing/AcDbBlockTable.h"
#include "drawing/AcDbCurve.h"
#include "drawing/AcDbDatabase.h"
#include "drawing/AcDbObjectAccess.h"
#include "drawing/AcDbPolyline.h"
#include "drawing/dxf_groups.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <unordered_set>

namespace veldrin {

namespace {

constexpr double kChordAngle = std::numbers::pi / 36.0;

AcGeVector3d planeOf(const CurvePath& path) {
    for (const CurvePiece& piece : path.pieces())
        if (piece.isArc()) return piece.normal();
    return AcGeVector3d::kZAxis;
}

AcGePoint3dArray chordsOf(const CurvePath& path) {
    AcGePoint3dArray points;
    for (const CurvePiece& piece : path.pieces()) {
        const int chords =
            piece.isArc() ? std::max(2, static_cast<int>(std::ceil(std::abs(piece.sweep) / kChordAngle))) : 1;
        for (int i = 0; i < chords; ++i) points.push_back(piece.pointAt(i / static_cast<double>(chords)));
    }
    if (!path.isClosed()) points.push_back(path.pieces().back().end);
    return points;
}

} // namespace

std::unique_ptr<AcDbPolyline> flattened(const AcDbCurve& curve, const AcGeMatrix3d& placing) {
    const auto path = curve.path();
    if (!path || path->isEmpty()) return nullptr;
    const AcGeVector3d normal = planeOf(*path);
    AcGeVector3d x = normal.perpVector();
    AcGeVector3d y = normal.crossProduct(x);
    const AcGeVector3d plane = x.transformBy(placing).crossProduct(y.transformBy(placing)).normal();
    auto polyline = std::make_unique<AcDbPolyline>();
    polyline->setPropertiesFrom(&curve);
    polyline->setNormal(plane);
    for (AcGePoint3d& point : chordsOf(*path)) {
        const AcGePoint3d inPlane = worldToPlane(point.transformBy(placing), plane);
        polyline->setElevation(inPlane.z);
        polyline->addVertexAt(polyline->numVerts(), inPlane.convert2d());
    }
    polyline->setClosed(path->isClosed());
    return polyline;
}

std::unique_ptr<AcDbEntity> placedCopy(const AcDbEntity& entity, const AcGeMatrix3d& placing) {
    std::unique_ptr<AcDbObject> copy(entity.clone());
    auto* part = AcDbEntity::cast(copy.get());
    if (!part) return nullptr;
    const Acad::ErrorStatus status = part->transformBy(placing);
    if (status == Acad::eOk) {
        copy.release();
        return std::unique_ptr<AcDbEntity>(part);
    }
    const auto* curve = dynamic_cast<const AcDbCurve*>(&entity);
    if (status != Acad::eCannotScaleNonUniformly || !curve) return nullptr;
    return flattened(*curve, placing);
}

void takeByBlock(AcDbEntity& part, const AcDbBlockReference& reference) {
    if (part.color().isByBlock()) part.setColor(reference.color());
    const AcDbDatabase* database = part.linetypeId().database();
    if (database && part.linetypeId() == database->byBlockLinetype() && !reference.linetypeId().isNull())
        part.setLinetype(reference.linetypeId());
    if (part.lineWeight() == AcDb::kLnWtByBlock) part.setLineWeight(reference.lineWeight());
}

// A worklist and no recursion, since drawings from outside may nest blocks as deep as they like.
bool blockShows(AcDbObjectId block, AcDbObjectId searched) {
    std::unordered_set<AcDbObjectId> seen{block};
    std::vector<AcDbObjectId> toVisit{block};
    while (!toVisit.empty()) {
        const AcDbObjectId next = toVisit.back();
        toVisit.pop_back();
        if (next == searched) return true;
        const auto* record = AcDbBlockTableRecord::cast(AcDbObjectAccess::object(next));
        if (!record) continue;
        for (const AcDbObjectId id : record->entityIds()) {
            const auto* reference =
                id.isErased() ? nullptr : AcDbBlockReference::cast(AcDbObjectAccess::object(id));
            if (reference && seen.insert(reference->blockTableRecord()).second)
                toVisit.push_back(reference->blockTableRecord());
        }
    }
    return false;
}

} // namespace veldrin
