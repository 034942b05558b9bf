#include "pipe/PlumbPipe.h"

#include "drawing/AcDbLine.h"
#include "runtime/acut.h"
#include "util/NumberText.h"

#include <algorithm>

namespace plumb {

// What the host's editors see and do. They work in plan: grips and stretch points lie at elevation 0 and
// moves keep the stored Z; snap points are the true ends.

namespace {
AcGePoint3d flat(const AcGePoint3d& p) {
    return {p.x, p.y, 0.0};
}
AcGePoint3d middle(const PipeData& d) {
    return d.ptStart + 0.5 * (d.ptEnd - d.ptStart);
}
} // namespace

bool PlumbPipe::isVerticalInPlan() const {
    return m_data.ptStart.convert2d().isEqualTo(m_data.ptEnd.convert2d());
}

Acad::ErrorStatus PlumbPipe::subGetGripPoints(AcGePoint3dArray& points, AcGeIntArray&, AcGeIntArray&) const {
    const PipeData& d = data();
    points.push_back(flat(middle(d)));
    if (isVerticalInPlan()) return Acad::eOk;
    points.push_back(flat(d.ptStart));
    points.push_back(flat(d.ptEnd));
    return Acad::eOk;
}

// Each end moves once, however many of its grips are dragged.
Acad::ErrorStatus PlumbPipe::subMoveGripPointsAt(const AcGeIntArray& indices, const AcGeVector3d& offset) {
    assertWriteEnabled();
    const auto has = [&](int grip) {
        return std::find(indices.begin(), indices.end(), grip) != indices.end();
    };
    const bool both = has(0);
    const bool moveStart = both || has(1);
    const bool moveEnd = both || has(2);
    if (moveStart) setStart(m_data.ptStart + offset, false);
    if (moveEnd) setEnd(m_data.ptEnd + offset, false);
    return Acad::eOk;
}

Acad::ErrorStatus PlumbPipe::subGetStretchPoints(AcGePoint3dArray& points) const {
    const PipeData& d = data();
    const AcGePoint3d first = flat(d.ptStart);
    const AcGePoint3d second = flat(d.ptEnd);
    points.push_back(first);
    if (!first.isEqualTo(second)) points.push_back(second);
    return Acad::eOk;
}

Acad::ErrorStatus PlumbPipe::subMoveStretchPointsAt(const AcGeIntArray& indices, const AcGeVector3d& offset) {
    assertWriteEnabled();
    if (isVerticalInPlan()) {
        if (indices.empty() || indices.front() != 0) return Acad::eOk;
        setStart(m_data.ptStart + offset, false);
        setEnd(m_data.ptEnd + offset, false);
        return Acad::eOk;
    }
    for (const int index : indices) {
        if (index == 0)
            setStart(m_data.ptStart + offset, false);
        else if (index == 1)
            setEnd(m_data.ptEnd + offset, false);
    }
    return Acad::eOk;
}

// The sizes that the pipe stores stay as they are under a scale or a mirror.
Acad::ErrorStatus PlumbPipe::subTransformBy(const AcGeMatrix3d& matrix) {
    assertWriteEnabled();
    AcGePoint3d newStart = m_data.ptStart;
    AcGePoint3d newEnd = m_data.ptEnd;
    setStart(newStart.transformBy(matrix), false);
    setEnd(newEnd.transformBy(matrix), false);
    return Acad::eOk;
}

Acad::ErrorStatus PlumbPipe::subExplode(std::vector<AcDbEntity*>&) const {
    assertReadEnabled();
    return Acad::eNotApplicable;
}

Acad::ErrorStatus PlumbPipe::subGetGeomExtents(AcDbExtents& extents) const {
    const PipeData& d = data();
    extents.addPoint(d.ptStart);
    if (!isVerticalInPlan()) extents.addPoint(d.ptEnd);
    return Acad::eOk;
}

void PlumbPipe::appendSnapEnds(AcGePoint3dArray& snapPoints) const {
    snapPoints.push_back(m_data.ptStart);
    if (!isVerticalInPlan()) snapPoints.push_back(m_data.ptEnd);
}

// Sought in plan; the point lies on the pipe as it slopes.
Acad::ErrorStatus PlumbPipe::appendClosest(const AcGePoint3d& to, AcGePoint3dArray& snapPoints) const {
    if (isVerticalInPlan()) {
        appendSnapEnds(snapPoints);
        return Acad::eOk;
    }
    const AcDbLine line(m_data.ptStart, m_data.ptEnd);
    AcGePoint3d closest;
    const Acad::ErrorStatus status = line.getClosestPointTo(to, AcGeVector3d::kZAxis, closest, false);
    if (status == Acad::eOk) snapPoints.push_back(closest);
    return status;
}

Acad::ErrorStatus PlumbPipe::subGetOsnapPoints(AcDb::OsnapMode mode, Adesk::GsMarker,
                                               const AcGePoint3d& pickPoint, const AcGePoint3d& lastPoint,
                                               const AcGeMatrix3d&, AcGePoint3dArray& snapPoints,
                                               AcGeIntArray&) const {
    assertReadEnabled();
    switch (mode) {
    case AcDb::kOsModeEnd: appendSnapEnds(snapPoints); return Acad::eOk;
    case AcDb::kOsModeMid: snapPoints.push_back(middle(m_data)); return Acad::eOk;
    case AcDb::kOsModeCen:
        if (!isVerticalInPlan()) return Acad::eInvalidInput;
        appendSnapEnds(snapPoints);
        return Acad::eOk;
    case AcDb::kOsModePerp: return appendClosest(lastPoint, snapPoints);
    case AcDb::kOsModeNear: return appendClosest(pickPoint, snapPoints);
    default: return Acad::eInvalidInput;
    }
}

void PlumbPipe::subList() const {
    assertReadEnabled();
    AcDbEntity::subList();
    acutPrintf("                   Pipe ID = %d\n", m_data.ixPipe);
    acutPrintf("                   Starting elevation = %s\n",
               DoubleToText(m_data.ptStart.z, 2, true).c_str());
    acutPrintf("                   Ending elevation = %s\n", DoubleToText(m_data.ptEnd.z, 2, true).c_str());
}

} // namespace plumb
