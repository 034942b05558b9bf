#include "editor/aced.h"
#include "host/LispFunctions.h"
#include "pipe/OpenPipe.h"

namespace plumb {

namespace {

using AddBreak = void (PlumbPipe::*)(double);
using AddBreakAt = void (PlumbPipe::*)(Adesk::Int32, double);
using ClearBreaks = void (PlumbPipe::*)();

// An optional list of a label, which is not used, and positions.
int readBreakList(PlumbPipe& pipe, const resbuf*& cursor, AddBreak add) {
    if (argListBegin(cursor)) {
        CString label;
        if (!argText(cursor, label)) return kWrongType;
        for (double position = 0.0; argReal(cursor, position);) (pipe.*add)(position);
    }
    acedRetT();
    return kDone;
}

template<BreakList PipeData::*List, AddBreak Add>
int setTrapBreaks() {
    return withPipe(AcDb::kForWrite, [](PlumbPipe& pipe, const resbuf*& cursor) {
        (pipe.edit().*List).clear();
        return readBreakList(pipe, cursor, Add);
    });
}

// Elbows or arcs: an optional list of lists of a label, an index and positions. What is cleared stays cleared
// when a list turns out wrong.
template<ClearBreaks Clear, AddBreakAt Add>
int setElementBreaks() {
    return withPipe(AcDb::kForWrite, [](PlumbPipe& pipe, const resbuf*& cursor) -> int {
        (pipe.*Clear)();
        const bool hasList = argListBegin(cursor);
        while (hasList && cursor) {
            if (!argListBegin(cursor)) {
                argSkip(cursor);
                continue;
            }
            CString label;
            Adesk::Int32 index = 0;
            if (!argText(cursor, label) || !argInt(cursor, index)) return kWrongType;
            for (double position = 0.0; argReal(cursor, position);) (pipe.*Add)(index, position);
        }
        acedRetT();
        return kDone;
    });
}

} // namespace

namespace handlers {

int setPipeBreaks() {
    return withPipe(AcDb::kForWrite, [](PlumbPipe& pipe, const resbuf*& cursor) -> int {
        double width = 0.0;
        if (!argReal(cursor, width)) return kWrongType;
        pipe.setBreakWidth(width);
        pipe.edit().pipeBreaks.clear();
        return readBreakList(pipe, cursor, &PlumbPipe::addPipeBreak);
    });
}

int setElbowBreaks() {
    return setElementBreaks<&PlumbPipe::clearElbowBreaks, &PlumbPipe::addElbowBreak>();
}
int setArcBreaks() {
    return setElementBreaks<&PlumbPipe::clearArcBreaks, &PlumbPipe::addArcBreak>();
}

int setPtrapLine1Breaks() {
    return setTrapBreaks<&PipeData::ptrapLine1Breaks, &PlumbPipe::addPtrapLine1Break>();
}
int setPtrapPolylineBreaks() {
    return setTrapBreaks<&PipeData::ptrapPolylineBreaks, &PlumbPipe::addPtrapPolylineBreak>();
}
int setPtrapLine2Breaks() {
    return setTrapBreaks<&PipeData::ptrapLine2Breaks, &PlumbPipe::addPtrapLine2Break>();
}

} // namespace handlers

} // namespace plumb
