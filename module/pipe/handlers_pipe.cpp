#include "editor/aced.h"
#include "host/LispFunctions.h"
#include "host/LispResults.h"
#include "pipe/OpenPipe.h"
#include "util/DrawingHelpers.h"

namespace plumb::handlers {

// (ixPipe start end [radius]): the row in the project's pipe table is the caller's work.
int insertPipe() {
    LispArguments args;
    Adesk::Int32 ixPipe = 0;
    AcGePoint3d start;
    AcGePoint3d end;
    if (!argInt(args.cursor, ixPipe) || !argPoint(args.cursor, start) || !argPoint(args.cursor, end))
        return kWrongType;

    auto* pipe = new PlumbPipe;
    pipe->setIxPipe(ixPipe);
    pipe->setStart(start, true);
    pipe->setEnd(end, true);
    double radius = 0.0;
    if (argReal(args.cursor, radius)) pipe->setVerticalRadius(radius);
    if (!AppendToModelSpace(pipe)) return kDone;
    retNewEntity(pipe);
    pipe->close();
    return kDone;
}

int explodePipe() {
    return withPipe(AcDb::kForRead, [](const PlumbPipe& pipe, const resbuf*&) {
        CList<AcDbEntity*> pieces;
        pipe.buildEntityList(&pieces);
        ResultList result;
        result.listBegin();
        while (!pieces.IsEmpty()) result.pairEntity("obj", pieces.RemoveHead());
        result.listFinish();
        return kDone;
    });
}

int getPipeElbowLength() {
    return withPipe(AcDb::kForRead, [](const PlumbPipe& pipe, const resbuf*&) {
        acedRetReal(pipe.elbowLength());
        return kDone;
    });
}

int elbowList() {
    return withPipe(AcDb::kForRead, [](const PlumbPipe& pipe, const resbuf*&) {
        ResultList result;
        result.listBegin();
        Adesk::Int32 i = 0;
        for (const elbowInfo& elbow : pipe.data().elbows) {
            result.pairInt("i", i++);
            result.pairReal("dLength", elbow.dLength);
            result.pairReal("dAngle", elbow.dAngle);
        }
        result.listFinish();
        return kDone;
    });
}

int arcList() {
    return withPipe(AcDb::kForRead, [](const PlumbPipe& pipe, const resbuf*&) {
        ResultList result;
        result.listBegin();
        Adesk::Int32 i = 0;
        for (const arcInfo& arc : pipe.data().arcs) {
            result.pairInt("i", i++);
            result.pairReal("dLength", arc.dLength);
            result.pairReal("dOffset", arc.dOffset);
            result.pairInt("iNormal", arc.iNormal);
        }
        result.listFinish();
        return kDone;
    });
}

} // namespace plumb::handlers
