#include "drawing/dxf_groups.h"

namespace veldrin {

AcGePoint3d worldToPlane(const AcGePoint3d& point, const AcGeVector3d& normal) {
    const AcGeVector3d z = normal.normal();
    const AcGeVector3d x = z.perpVector();
    const AcGeVector3d v = point.asVector();
    return {v.dotProduct(x), v.dotProduct(z.crossProduct(x)), v.dotProduct(z)};
}

AcGePoint3d planeToWorld(const AcGePoint3d& point, const AcGeVector3d& normal) {
    const AcGeVector3d z = normal.normal();
    const AcGeVector3d x = z.perpVector();
    return AcGePoint3d::kOrigin + x * point.x + z.crossProduct(x) * point.y + z * point.z;
}

void writeNormal(AcDbDxfFiler& filer, const AcGeVector3d& normal) {
    if (filer.isEntityList() || !normal.isEqualTo(AcGeVector3d::kZAxis))
        filer.writeVector3d(AcDb::kDxfNormalX, normal);
}

} // namespace veldrin
