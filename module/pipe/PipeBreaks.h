#pragma once

#include "pipe/PipeData.h"

#include <span>

// Gaps where a pipe passes under another. Run, elbows, arcs and the three parts of a trap all store, merge
// and cut by what stands here.

namespace plumb {

// Keeps a list in order; a position that it holds already is not taken twice.
void insertBreak(BreakList& breaks, double position);
// Into the first slot that is free or holds more. What is there moves up and the tenth falls off; without
// such a slot the position is dropped. Equal positions are both kept.
void insertBreak(BreakSlots& breaks, double position);

// The gaps of one element, from positions in stored order: what touches or overlaps becomes one gap.
class GapMerger {
public:
    enum Zeros { kTakeZeros, kSkipZeros }; // slots that hold 0.0 are free

    GapMerger(std::span<const double> positions, double width, Zeros zeros)
        : m_positions(positions), m_width(width), m_zeros(zeros) {}

    // False behind the last gap.
    bool next(breakInfo& gap) {
        if (!nextPosition(gap.dPosition)) return false;
        gap.dWidth = m_width;
        for (double position = 0.0; nextPosition(position);) {
            if (gap.high() < position - m_width * 0.5) {
                --m_index; // stands apart: the next gap begins with it
                break;
            }
            const double low = gap.low();
            const double high = position + m_width * 0.5;
            gap = {(low + high) / 2.0, high - low};
        }
        return true;
    }

private:
    bool nextPosition(double& position) {
        while (m_index < m_positions.size()) {
            position = m_positions[m_index++];
            if (m_zeros == kTakeZeros || position != 0.0) return true;
        }
        return false;
    }

    std::span<const double> m_positions;
    double m_width;
    Zeros m_zeros;
    std::size_t m_index = 0;
};

enum class PiecePlace { First, Between, Last };

// Cuts an element that begins at `start` and ends at `length`, both as distances from where it is measured.
// Calls piece(low, high, place) for what lies beside the gaps, in order. Pieces are not clamped to the
// element: its ends only decide whether there is a first and a last piece. There must be a gap. Gives whether
// there was a first piece.
template<class Piece>
bool cutAtGaps(GapMerger gaps, double start, double length, Piece&& piece) {
    breakInfo gap;
    if (!gaps.next(gap)) return false;
    const bool hasFirst = gap.low() > start;
    if (hasFirst) piece(start, gap.low(), PiecePlace::First);
    double from = gap.high();
    while (gaps.next(gap)) {
        piece(from, gap.low(), PiecePlace::Between);
        from = gap.high();
    }
    if (length > from) piece(from, length, PiecePlace::Last);
    return hasFirst;
}

} // namespace plumb
