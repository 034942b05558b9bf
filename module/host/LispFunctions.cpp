#include "host/LispFunctions.h"

#include "editor/aced.h"
#include "host/PlumbModule.h"
#include "host/vqPlumbContext.h"

namespace plumb {

namespace {

template<Handler Function>
int inDocument() {
    return runInFrame(Function, nullptr);
}

// The current document's project is connected first.
template<Handler Function>
int inProject() {
    return runInFrame(Function, moduleState().theContext.get());
}

// For functions whose work is not written yet.
int answerNil() {
    acedRetNil();
    return RSRSLT;
}

constexpr LispFunction kFunctions[] = {
    {"vq_plumb-disconnect", inDocument<handlers::disconnect>},
    {"vq_plumb-insertPipe", inDocument<handlers::insertPipe>},
    {"vq_plumb-insertPipeArrow", inDocument<handlers::insertPipeArrow>},
    {"vq_plumb-setPipeInfo", inDocument<handlers::setPipeInfo>},
    {"vq_plumb-setPipeArrowInfo", inDocument<handlers::setPipeArrowInfo>},
    {"vq_plumb-getLayer", inProject<handlers::getLayer>},
    {"vq_plumb-setPipeBreaks", inDocument<handlers::setPipeBreaks>},
    {"vq_plumb-pipe-setElbowBreaks", inDocument<handlers::setElbowBreaks>},
    {"vq_plumb-pipe-setArcBreaks", inDocument<handlers::setArcBreaks>},
    {"vq_plumb-pipe-setPtrapLine1Breaks", inDocument<handlers::setPtrapLine1Breaks>},
    {"vq_plumb-pipe-setPtrapPolylineBreaks", inDocument<handlers::setPtrapPolylineBreaks>},
    {"vq_plumb-pipe-setPtrapLine2Breaks", inDocument<handlers::setPtrapLine2Breaks>},
    {"vq_plumb-explodePipe", inDocument<handlers::explodePipe>},
    {"vq_plumb-getPipeElbowLength", inDocument<handlers::getPipeElbowLength>},
    {"vq_plumb-pipe-elbowList", inDocument<handlers::elbowList>},
    {"vq_plumb-pipe-arcList", inDocument<handlers::arcList>},
    {"vq_plumb-options", answerNil},
    {"vq_plumb-pipeLinetype", answerNil},
    {"vq_plumb-tblDwgValve", answerNil},
    {"vq_plumb-pipeSumCategory", answerNil},
    {"vq_plumb-pipeType", answerNil},
    {"vq_plumb-pipeSum", inDocument<handlers::pipeSum>},
    {"vq_plumb-editFloorDefinition", answerNil},
    {"vq_plumb-insertFixtureConnection", answerNil},
    {"vq_plumb-pipeLabel", answerNil},
    {"vq_plumb-ProjectExplorer", answerNil},
    {"vq_plumb-alignmentPoint-Query", answerNil},
    {"vq_plumb-intersectPtrapLine", inDocument<handlers::intersectPtrapLine>},
    {"vq_plumb-intersectPtrapArc", inDocument<handlers::intersectPtrapArc>},
    {"vq_plumb-intersectPtrapPtrap", inDocument<handlers::intersectPtrapPtrap>},
    {"vq_plumb-pipe-getHangerList", inDocument<handlers::getHangerList>},
    {"vq_plumb-pipeSize", answerNil},
    {"vq_plumb-pipeSizingTable", answerNil},
    {"vq_plumb-setDoDocumentActivated", inDocument<handlers::setDoDocumentActivated>},
};
static_assert(std::size(kFunctions) == 34);

} // namespace

std::span<const LispFunction> lispFunctions() {
    return kFunctions;
}

void defineLispFunctions() {
    short code = 0;
    for (const LispFunction& function : kFunctions) {
        acedDefun(function.name, code);
        acedRegFunc(function.handler, code);
        ++code;
    }
}

} // namespace plumb
