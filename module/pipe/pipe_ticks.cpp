#include "pipe/PipePicture.h"

namespace plumb {

// Fitting ticks. The head tick stands at the run's start and the tail tick at its end, the other way round
// than the names of the run's offsets.

void PipePicture::emitTick(const AcGePoint3d& center) {
    const double half = m_data.dTickWidth * 0.5;
    emitLine(m_frame.left(center, half), m_frame.right(center, half));
}

// The tick, and the short stretch between it and the piece's end, which never carries a label. What is left
// of the piece begins, or ends, at the tick.
void PipePicture::emitHeadTick(AcGePoint3d& from) {
    const AcGePoint3d center = m_frame.along(m_points.ptRunStart, m_data.dTickOffsetHead);
    emitTick(center);
    emitLine(from, center);
    from = center;
}

void PipePicture::emitTailTick(AcGePoint3d& to) {
    const AcGePoint3d center = m_frame.along(m_points.ptRunEnd, -m_data.dTickOffsetTail);
    emitTick(center);
    emitLine(to, center);
    to = center;
}

void PipePicture::emitWholeRun() {
    AcGePoint3d from = m_points.ptRunStart;
    AcGePoint3d to = m_points.ptRunEnd;
    if (m_data.dTickWidth != 0.0) {
        if (m_data.dTickOffsetHead != 0.0) emitHeadTick(from);
        if (m_data.dTickOffsetTail != 0.0) emitTailTick(to);
    }
    emitRunPiece(from, to);
}

namespace {

// Where a tick has to find clear pipe to be drawn, as a distance from the offset start: a tick width inside
// the run, however far in the tick itself stands. 0 for no tick.
struct Guard {
    double at = 0.0;

    bool isIn(double low, double high, PiecePlace place) const {
        if (at == 0.0) return false;
        switch (place) {
        case PiecePlace::First: return high > at;
        case PiecePlace::Last: return at > low;
        case PiecePlace::Between: break;
        }
        return low < at && at < high;
    }
};

} // namespace

void PipePicture::emitBrokenRun() {
    const AcGePoint3d& origin = m_points.ptOffsetStart;
    const double start = planDistance(origin, m_points.ptRunStart);
    const double end = planDistance(origin, m_points.ptRunEnd);
    const double width = m_data.dTickWidth;
    Guard head;
    Guard tail;
    if (width != 0.0 && m_data.dTickOffsetHead != 0.0) head.at = start + width;
    if (width != 0.0 && m_data.dTickOffsetTail != 0.0) tail.at = end - width;

    cutAtGaps(gaps(m_data.pipeBreaks), start, end, [&](double low, double high, PiecePlace place) {
        // A trap whose top lies in a gap has taken the end of the run with it.
        if (place == PiecePlace::Last && m_trapStartBroken) return;
        AcGePoint3d from = m_frame.along(origin, low);
        AcGePoint3d to = m_frame.along(origin, high);
        if (head.isIn(low, high, place)) emitHeadTick(from);
        if (tail.isIn(low, high, place)) emitTailTick(to);
        emitRunPiece(from, to);
    });
}

} // namespace plumb
