#pragma once

#include "host/HandlerFrame.h"

#include <span>

namespace plumb {

// The functions that the module offers to Lisp. A row's index is the code under which the host knows it.
struct LispFunction {
    const char* name;
    Handler handler; // answers the host's code
};

std::span<const LispFunction> lispFunctions();

// In the document for which the host asks.
void defineLispFunctions();

// Handlers, by the file that holds them. Each reads its arguments, sets its result and gives a HandlerStatus.
namespace handlers {
// host/handlers_context.cpp
int disconnect();
int setDoDocumentActivated();
// database/handlers_layer.cpp
int getLayer();
// pipe/handlers_pipe.cpp
int insertPipe();
int explodePipe();
int getPipeElbowLength();
int elbowList();
int arcList();
// pipe/handlers_setPipeInfo.cpp
int setPipeInfo();
// pipe/handlers_breaks.cpp
int setPipeBreaks();
int setElbowBreaks();
int setArcBreaks();
int setPtrapLine1Breaks();
int setPtrapPolylineBreaks();
int setPtrapLine2Breaks();
// pipe/handlers_ptrap.cpp
int intersectPtrapLine();
int intersectPtrapArc();
int intersectPtrapPtrap();
// dialogs/handlers_pipe_sum.cpp
int pipeSum();
// arrow/handlers_arrow.cpp
int insertPipeArrow();
int setPipeArrowInfo();
int getHangerList();
} // namespace handlers

} // namespace plumb
