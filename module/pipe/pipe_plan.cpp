#include "pipe/PipePicture.h"

namespace plumb {

// Everything here is derived from PipeData. A size of exactly 0.0 switches its feature off; nothing is
// clamped, so offsets may exceed the pipe's length. Elbows and arcs start from ptOffsetEnd, not from the
// run's end.

void PipePicture::drawPlanPipe() {
    m_points = getPlanPoints(m_data, m_frame);
    if (m_data.bPtrap) drawPtrap();
    prepareLabel();
    drawRun();
    drawDropLine();
    drawElbows();
    drawArcs();
}

void PipePicture::drawRun() {
    if (m_data.pipeBreaks.empty())
        emitWholeRun();
    else
        emitBrokenRun();
}

// The run is drawn flat at its start elevation; what a sloped pipe falls or rises shows as a line at its
// head.
void PipePicture::drawDropLine() {
    const AcGePoint3d& top = m_points.ptRunEnd;
    if (m_data.bIsometric || top.z == m_data.ptEnd.z) return;
    emitLine(top, {top.x, top.y, m_data.ptEnd.z});
}

void PipePicture::drawElbows() {
    if (m_data.elbows.empty()) return;
    const AcGePoint3d base = m_frame.along(m_points.ptOffsetEnd, -m_data.dElbow45Offset);
    for (const elbowInfo& elbow : m_data.elbows) {
        const AcGePoint3d tip = m_frame.turned(base, elbow, elbow.dLength);
        if (elbow.breaks[0] == 0.0) {
            emitLine(base, tip);
            continue;
        }
        const PlanFrame stub(base, tip); // an elbow of negative length points the other way
        cutAtGaps(gaps(elbow.breaks), 0.0, planDistance(base, tip), [&](double low, double high, PiecePlace) {
            emitLine(stub.along(base, low), stub.along(base, high));
        });
    }
}

void PipePicture::drawArcs() {
    for (const arcInfo& arc : m_data.arcs) {
        const double radius = m_data.dArcRadius;
        const AcGePoint3d first = m_frame.along(m_points.ptOffsetEnd, -arc.dOffset);
        AcGePoint3d center;
        if (arc.iNormal == 1)
            center = m_frame.left(first, radius);
        else if (arc.iNormal == -1)
            center = m_frame.right(first, radius);
        else
            center = PolarPoint(
                first, arc.iNormal * kQuarterTurn + AngleBetween(m_data.ptStart, m_data.ptEnd), radius);

        if (arc.breaks[0] == 0.0)
            emitArc(first, center, radius, arc.iNormal, arc.dLength);
        else
            drawBrokenArc(arc, first, center);
    }
}

// Pieces go out counter-clockwise whatever the arc's sense is, so that of one that turns right the far end of
// each piece comes first. A broken arc of no radius has no length to cut, and nothing of it is drawn.
void PipePicture::drawBrokenArc(const arcInfo& arc, const AcGePoint3d& first, const AcGePoint3d& center) {
    const double radius = m_data.dArcRadius;
    if (radius == 0.0) return;
    const double length = arc.dLength * radius;
    const double firstAngle = AngleBetween(center, first);
    const double startAngle = arc.iNormal == 1 ? firstAngle : firstAngle - arc.dLength;
    cutAtGaps(gaps(arc.breaks), 0.0, length, [&](double low, double high, PiecePlace) {
        const double from = arc.iNormal == 1 ? low : length - high;
        emitArc(PolarPoint(center, startAngle + from / radius, radius), center, radius, 1,
                (high - low) / radius);
    });
}

} // namespace plumb
