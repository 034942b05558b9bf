#include "pipe/PlumbPipe.h"

#include "drawing/AcDbLine.h"

namespace plumb {

// To the host a pipe is the straight line between its ends, in space.

Acad::ErrorStatus PlumbPipe::getStartParam(double& param) const {
    assertReadEnabled();
    param = 0.0;
    return Acad::eOk;
}

Acad::ErrorStatus PlumbPipe::getEndParam(double& param) const {
    const PipeData& d = data();
    param = (d.ptEnd - d.ptStart).length();
    return Acad::eOk;
}

Acad::ErrorStatus PlumbPipe::getStartPoint(AcGePoint3d& point) const {
    point = data().ptStart;
    return Acad::eOk;
}

Acad::ErrorStatus PlumbPipe::getEndPoint(AcGePoint3d& point) const {
    point = data().ptEnd;
    return Acad::eOk;
}

Acad::ErrorStatus PlumbPipe::getPointAtParam(double param, AcGePoint3d& point) const {
    const PipeData& d = data();
    point = d.ptStart + (d.ptEnd - d.ptStart).normal() * param;
    return Acad::eOk;
}

Acad::ErrorStatus PlumbPipe::getParamAtPoint(const AcGePoint3d& point, double& param) const {
    const PipeData& d = data();
    param = (point - d.ptStart).dotProduct((d.ptEnd - d.ptStart).normal());
    return Acad::eOk;
}

Acad::ErrorStatus PlumbPipe::getDistAtParam(double param, double& dist) const {
    assertReadEnabled();
    dist = param;
    return Acad::eOk;
}

Acad::ErrorStatus PlumbPipe::getParamAtDist(double dist, double& param) const {
    assertReadEnabled();
    param = dist;
    return Acad::eOk;
}

Acad::ErrorStatus PlumbPipe::getDistAtPoint(const AcGePoint3d& point, double& dist) const {
    dist = (point - data().ptStart).length();
    return Acad::eOk;
}

Acad::ErrorStatus PlumbPipe::getPointAtDist(double dist, AcGePoint3d& point) const {
    return getPointAtParam(dist, point);
}

Acad::ErrorStatus PlumbPipe::extend(double newParam) {
    assertWriteEnabled();
    AcGePoint3d point;
    getPointAtParam(newParam, point);
    return extend(newParam < 0.0, point);
}

Acad::ErrorStatus PlumbPipe::extend(bool extendStart, const AcGePoint3d& toPoint) {
    if (extendStart)
        setStart(toPoint, false);
    else
        setEnd(toPoint, false);
    return Acad::eOk;
}

namespace {
AcDb::Intersect fromTheOtherSide(AcDb::Intersect mode) {
    if (mode == AcDb::kExtendThis) return AcDb::kExtendArg;
    if (mode == AcDb::kExtendArg) return AcDb::kExtendThis;
    return mode;
}
} // namespace

// The other entity is asked about a line in the pipe's place.
Acad::ErrorStatus PlumbPipe::subIntersectWith(const AcDbEntity* other, AcDb::Intersect mode,
                                              AcGePoint3dArray& points, Adesk::GsMarker,
                                              Adesk::GsMarker) const {
    const PipeData& d = data();
    const AcDbLine line(d.ptStart, d.ptEnd);
    return other->intersectWith(&line, fromTheOtherSide(mode), points, 0, 0);
}

Acad::ErrorStatus PlumbPipe::subIntersectWith(const AcDbEntity* other, AcDb::Intersect mode,
                                              const AcGePlane& plane, AcGePoint3dArray& points,
                                              Adesk::GsMarker, Adesk::GsMarker) const {
    const PipeData& d = data();
    const AcDbLine line(d.ptStart, d.ptEnd);
    return other->intersectWith(&line, fromTheOtherSide(mode), plane, points, 0, 0);
}

} // namespace plumb
