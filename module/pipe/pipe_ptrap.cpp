#include "pipe/PipePicture.h"
#include "pipe/PlumbPipe.h"

#include "drawing/AcDbSpline.h"

#include <algorithm>

namespace plumb {

// The trap: a U that hangs below the last dPtrapWidth of the pipe. A width of 0 or less has no trap to draw;
// the run then ends where its points say.

void PipePicture::drawPtrap() {
    if (!(m_data.dPtrapWidth > 0.0)) return;
    AcGePoint3dArray points;
    AcGePoint3d curveStart;
    AcGePoint3d curveEnd;
    buildPtrapPoints(m_data, m_frame, m_points.ptOffsetEnd, m_points.ptRunEnd, curveStart, curveEnd, points);
    drawPtrapCurve(points);
    m_trapStartBroken = !drawPtrapLine(m_points.ptRunEnd, curveStart, -1.0, m_data.ptrapLine1Breaks);
    drawPtrapLine(curveEnd, m_points.ptOffsetEnd, 1.0, m_data.ptrapLine2Breaks);
}

bool PipePicture::drawPtrapLine(const AcGePoint3d& from, const AcGePoint3d& to, double alongY,
                                const BreakList& breaks) {
    if (breaks.empty()) {
        emitLine(from, to);
        return true;
    }
    const auto at = [&](double distance) { return from + AcGeVector3d(0.0, alongY * distance, 0.0); };
    return cutAtGaps(gaps(breaks), 0.0, m_data.dPtrapWidth * 0.5,
                     [&](double low, double high, PiecePlace) { emitLine(at(low), at(high)); });
}

void PipePicture::drawPtrapCurve(AcGePoint3dArray& points) {
    auto curve = std::make_unique<AcDb2dPolyline>(AcDb::k2dFitCurvePoly, points);
    curve->setLayer(m_pipe.layerId(), true, false);
    curve->setLinetype(m_pipe.linetypeId(), true);
    if (!m_data.ptrapPolylineBreaks.empty()) {
        AcGePoint3d end;
        double length = 0.0;
        curve->getEndPoint(end);
        curve->getDistAtPoint(end, length);
        // The pieces are taken from the curve itself should it not turn into a spline.
        AcDbSpline* converted = nullptr;
        curve->getSpline(converted);
        const std::unique_ptr<AcDbSpline> spline(converted);
        const AcDbCurve* source = curve.get();
        if (spline) source = spline.get();
        drawBrokenPtrapCurve(*source, length, gaps(m_data.ptrapPolylineBreaks));
        return;
    }
    if (m_geometry)
        m_geometry->draw(curve.get());
    else if (m_sink.list)
        append(curve.release());
    if (!m_hasTwins) return;

    for (AcGePoint3d& point : points) point.z = kHiddenElevation;
    auto twin = std::make_unique<AcDb2dPolyline>(AcDb::k2dFitCurvePoly, points);
    twin->setLayer(m_data.hiddenLayerId, true, false);
    if (m_geometry)
        m_geometry->draw(twin.get());
    else if (m_sink.list)
        append(twin.release());
}

void PipePicture::drawBrokenPtrapCurve(const AcDbCurve& curve, double length, GapMerger curveGaps) {
    AcGePoint3d end;
    double reach = 0.0;
    curve.getEndPoint(end);
    curve.getDistAtPoint(end, reach);
    cutAtGaps(curveGaps, 0.0, length, [&](double low, double high, PiecePlace place) {
        emitCurveRange(curve, low, place == PiecePlace::Last ? reach : high, reach);
    });
}

// A stretch of the curve as chords. Chords that do not lie on the curve wholly are left out.
void PipePicture::emitCurveRange(const AcDbCurve& curve, double from, double to, double length) {
    const double chord = m_data.dPtrapWidth * kTrapChordShare;
    for (double d = from; to > d && d <= length;) {
        const double e = std::min(d + chord, to);
        if (e == d) return; // a chord below the last digit
        AcGePoint3d a;
        AcGePoint3d b;
        if (curve.getPointAtDist(d, a) == Acad::eOk && curve.getPointAtDist(e, b) == Acad::eOk)
            emitLine(a, b);
        d = e;
    }
}

} // namespace plumb
