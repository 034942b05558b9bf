#pragma once

#include "drawing/AcDbDxfFiler.h"

#include <numbers>

namespace veldrin {

// Numbers as groups carry them: lists written by hand have whole numbers where reals belong, and the other
// way round.
inline double realOf(const AcDbDxfItem& item) {
    return item.kind == AcDbDxfItem::kReal ? item.real : static_cast<double>(item.integer);
}
inline std::int64_t integerOf(const AcDbDxfItem& item) {
    return item.kind == AcDbDxfItem::kReal ? static_cast<std::int64_t>(item.real) : item.integer;
}
// A unit vector; the Z axis for one of no length.
inline AcGeVector3d normalOf(const AcDbDxfItem& item) {
    const AcGeVector3d v = item.point.asVector();
    return v.isZeroLength() ? AcGeVector3d::kZAxis : v.normal();
}

// Radians of one unit of an angle: lists carry radians, files degrees.
inline double angleUnit(const AcDbDxfFiler& filer) {
    return filer.isEntityList() ? 1.0 : std::numbers::pi / 180.0;
}

// Points of plane entities stand in the frame of their normal, not in the world's.
AcGePoint3d worldToPlane(const AcGePoint3d& point, const AcGeVector3d& normal);
AcGePoint3d planeToWorld(const AcGePoint3d& point, const AcGeVector3d& normal);

// Group 210; exchange files leave out the usual one.
void writeNormal(AcDbDxfFiler& filer, const AcGeVector3d& normal);

} // namespace veldrin
