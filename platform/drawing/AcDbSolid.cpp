#include "drawing/AcDbSolid.h"

#include "drawing/dxf_groups.h"
#include "runtime/AcRxMacros.h"

ACRX_DEFINE_MEMBERS(AcDbSolid, AcDbForeignEntity, "SOLID");
ACRX_DEFINE_MEMBERS(AcDbTrace, AcDbSolid, "TRACE");
ACRX_DEFINE_MEMBERS(AcDbFace, AcDbForeignEntity, "3DFACE");

using veldrin::pointOf;

namespace {

constexpr int kCorners = 4;
constexpr int kFirstCorner = 10;
constexpr int kHiddenEdges = 70;

bool isCorner(const resbuf& group) {
    return group.restype >= kFirstCorner && group.restype < kFirstCorner + kCorners;
}

} // namespace

AcDbSolid::AcDbSolid() : AcDbSolid("SOLID") {}
AcDbSolid::AcDbSolid(const char* dxfName) : AcDbForeignEntity(dxfName) {}
AcDbSolid::~AcDbSolid() = default;
AcDbTrace::AcDbTrace() : AcDbSolid("TRACE") {}
AcDbTrace::~AcDbTrace() = default;
AcDbFace::AcDbFace() : AcDbForeignEntity("3DFACE") {}
AcDbFace::~AcDbFace() = default;

AcDbForeignEntity::Markers AcDbSolid::markersFor(const resbuf*) const {
    return {{"AcDbTrace"}, {}, {}, {}}; // of both kinds
}

AcDbForeignEntity::Markers AcDbFace::markersFor(const resbuf*) const {
    return {{"AcDbFace"}, {}, {}, {}};
}

std::vector<AcDbForeignEntity::Outline> AcDbSolid::outlines() const {
    Outline outline{{}, true};
    const AcGeVector3d normal = normalGroup();
    for (const int corner : {0, 1, 3, 2}) {
        AcGePoint3d point;
        if (pointGroup(kFirstCorner + corner, point))
            outline.points.push_back(veldrin::planeToWorld(point, normal));
    }
    return {outline};
}

Acad::ErrorStatus AcDbSolid::subTransformBy(const AcGeMatrix3d& matrix) {
    if (matrix.isSingular()) return Acad::eInvalidInput;
    const AcGeVector3d before = normalGroup();
    AcGeVector3d after = before;
    after.transformBy(matrix).normalize();
    if (matrix.det() < 0.0 && after.isEqualTo(before * -1.0)) after = before; // seen from the same side
    for (resbuf* group = mutableGroups(); group; group = group->rbnext) {
        if (isCorner(*group)) {
            AcGePoint3d point = veldrin::planeToWorld(pointOf(*group), before);
            veldrin::setPoint(*group, veldrin::worldToPlane(point.transformBy(matrix), after));
        } else if (group->restype == AcDb::kDxfNormalX)
            veldrin::setPoint(*group, AcGePoint3d(after.x, after.y, after.z));
    }
    return Acad::eOk;
}

std::vector<AcDbForeignEntity::Outline> AcDbFace::outlines() const {
    AcGePoint3dArray corners;
    for (int corner = 0; corner < kCorners; ++corner) {
        AcGePoint3d point;
        if (pointGroup(kFirstCorner + corner, point)) corners.push_back(point);
    }
    const int hidden = integerGroup(kHiddenEdges);
    std::vector<Outline> edges;
    for (std::size_t i = 0; i < corners.size(); ++i)
        if ((hidden >> i & 1) == 0) edges.push_back({{corners[i], corners[(i + 1) % corners.size()]}, false});
    return edges;
}

Acad::ErrorStatus AcDbFace::subTransformBy(const AcGeMatrix3d& matrix) {
    if (matrix.isSingular()) return Acad::eInvalidInput;
    for (resbuf* group = mutableGroups(); group; group = group->rbnext)
        if (isCorner(*group)) veldrin::setPoint(*group, pointOf(*group).transformBy(matrix));
    return Acad::eOk;
}
