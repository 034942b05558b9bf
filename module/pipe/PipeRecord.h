#pragma once

#include "pipe/PipeData.h"

#include <type_traits>

class AcDbMText;

// The order of a pipe's record, told once for reading and writing. A Record gives item(field), which passes
// one field and is false when that failed, and embedded(text).
//
// Version 13 is what is written. 12 has one offset for both ticks, 11 has no breaks in traps; 1 and 2 are of
// a time when a pipe had at most one elbow and one arc to each side.

namespace plumb {

namespace record {

// Fields that a record does not hold are left as they are.
template<class Record, class Data>
bool ends(Record& r, Data& d) {
    return r.item(d.ptStart) && r.item(d.ptEnd) && r.item(d.ixPipe) && r.item(d.bDwgStart) &&
           r.item(d.bDwgEnd) && r.item(d.sDwg) && r.item(d.dOffsetDistance) && r.item(d.dTailOffset) &&
           r.item(d.dHeadOffset) && r.item(d.dElbow45Offset);
}

template<class Record, class Data>
bool turns(Record& r, Data& d) {
    return r.item(d.elbows) && r.item(d.dArcRadius) && r.item(d.arcs);
}

// Lengths of an elbow to each side, then of an arc to each side; a length of 0 stands for none.
template<class Record>
bool turnsToBothSides(Record& r, PipeData& d) {
    double elbow[2] = {};
    double arc[2] = {};
    double offset[2] = {};
    if (!(r.item(elbow[0]) && r.item(elbow[1]) && r.item(d.dArcRadius) && r.item(arc[0]) && r.item(arc[1]) &&
          r.item(offset[0]) && r.item(offset[1])))
        return false;
    d.elbows.clear();
    d.arcs.clear();
    if (elbow[0] != 0.0) d.elbows.emplace_back(elbow[0], kEighthTurn);
    if (elbow[1] != 0.0) d.elbows.emplace_back(elbow[1], -kEighthTurn);
    if (arc[0] != 0.0) d.arcs.emplace_back(arc[0], offset[0], 1);
    if (arc[1] != 0.0) d.arcs.emplace_back(arc[1], offset[1], -1);
    return true;
}

template<class Record, class Data>
bool tickOffsets(Record& r, Data& d, int version) {
    if (!r.item(d.dTickOffsetHead)) return false;
    if (version >= 13) return r.item(d.dTickOffsetTail);
    if constexpr (!std::is_const_v<Data>) d.dTickOffsetTail = d.dTickOffsetHead;
    return true;
}

template<class Record, class Data>
bool riserAngles(Record& r, Data& d, int version) {
    if (!(r.item(d.iVerticalType) && r.item(d.dVerticalRadius))) return false;
    if constexpr (!std::is_const_v<Data>) {
        double dropped = 0.0; // version 1 had one number more here
        if (version == 1 && !r.item(dropped)) return false;
    }
    return r.item(d.verticalAngles);
}

template<class Record, class Data, class Text>
bool label(Record& r, Data& d, Text& text) {
    return r.item(d.dTextDistance) && r.item(d.sText) && r.item(d.bTextAngleIs0) && r.embedded(text) &&
           r.item(d.textStyleId);
}

template<class Record, class Data>
bool trap(Record& r, Data& d, int version) {
    if (version >= 11 && !(r.item(d.textLayerId) && r.item(d.bPtrap) && r.item(d.dPtrapWidth))) return false;
    if (version >= 12)
        return r.item(d.ptrapLine1Breaks) && r.item(d.ptrapPolylineBreaks) && r.item(d.ptrapLine2Breaks);
    if constexpr (!std::is_const_v<Data>) {
        d.ptrapLine1Breaks.clear();
        d.ptrapPolylineBreaks.clear();
        d.ptrapLine2Breaks.clear();
    }
    return true;
}

} // namespace record

// Everything behind the version number, which must be a known one. Data is const for writing.
template<class Record, class Data, class Text>
bool filePipe(Record& r, Data& d, Text& text, int version) {
    if (!record::ends(r, d)) return false;
    if constexpr (std::is_const_v<Data>) {
        if (!record::turns(r, d)) return false;
    } else {
        if (!(version >= 11 ? record::turns(r, d) : record::turnsToBothSides(r, d))) return false;
    }
    return record::tickOffsets(r, d, version) && r.item(d.dTickWidth) && r.item(d.bElbow45) &&
           r.item(d.bTee45) && r.item(d.bElbowArc) && r.item(d.bTeeArc) &&
           record::riserAngles(r, d, version) && r.item(d.dBreakWidth) && r.item(d.pipeBreaks) &&
           record::label(r, d, text) && record::trap(r, d, version) && r.item(d.bIsometric) &&
           (version < 11 || r.item(d.hiddenLayerId));
}

} // namespace plumb
