#include "arrow/PlumbPipeArrow.h"
#include "editor/aced.h"
#include "host/EntityKeys.h"
#include "host/LispFunctions.h"
#include "host/LispResults.h"
#include "util/DrawingHelpers.h"

namespace plumb {

namespace {

template<void (PlumbPipeArrow::*Set)(const AcGePoint3d&)>
void setPoint(PlumbPipeArrow& arrow, const resbuf*& cursor) {
    AcGePoint3d point;
    if (argPoint(cursor, point)) (arrow.*Set)(point);
}

template<double ArrowData::*Field>
void setReal(PlumbPipeArrow& arrow, const resbuf*& cursor) {
    double value = 0.0;
    if (argReal(cursor, value)) arrow.edit().*Field = value;
}

void setIxPipe(PlumbPipeArrow& arrow, const resbuf*& cursor) {
    Adesk::Int32 ixPipe = 0;
    if (argInt(cursor, ixPipe)) arrow.edit().ixPipe = ixPipe;
}

void setReverse(PlumbPipeArrow& arrow, const resbuf*& cursor) {
    bool value = false;
    if (argBool(cursor, value)) arrow.edit().bReverseArrows = value;
}

// What is no number among the distances is passed over.
void setHangers(PlumbPipeArrow& arrow, const resbuf*& cursor) {
    std::vector<double>& hangers = arrow.edit().hangerDistances;
    hangers.clear();
    while (cursor && !argListEnd(cursor)) {
        double distance = 0.0;
        if (argReal(cursor, distance))
            hangers.push_back(distance);
        else
            argSkip(cursor);
    }
}

constexpr EntityKey<PlumbPipeArrow> kKeys[] = {
    {"P1", setPoint<&PlumbPipeArrow::setStart>},
    {"P2", setPoint<&PlumbPipeArrow::setEnd>},
    {"ARROWLENGTH", setReal<&ArrowData::dArrowLength>},
    {"ixPipe", setIxPipe},
    {"HANGERDIST", setHangers},
    {"TAILOFFSET", setReal<&ArrowData::dTailOffset>},
    {"HEADOFFSET", setReal<&ArrowData::dHeadOffset>},
    {"REVERSEARROWS", setReverse},
};

} // namespace

namespace handlers {

// (start end tail-offset head-offset reverse): all five must be there.
int insertPipeArrow() {
    LispArguments args;
    ArrowData data;
    if (!argPoint(args.cursor, data.ptStart) || !argPoint(args.cursor, data.ptEnd) ||
        !argReal(args.cursor, data.dTailOffset) || !argReal(args.cursor, data.dHeadOffset) ||
        !argBool(args.cursor, data.bReverseArrows))
        return kWrongType;
    auto* arrow = new PlumbPipeArrow;
    arrow->edit() = data;
    if (!AppendToModelSpace(arrow)) return kDone;
    retNewEntity(arrow);
    arrow->close();
    return kDone;
}

int setPipeArrowInfo() {
    return withEntity<PlumbPipeArrow>(AcDb::kForWrite, [](PlumbPipeArrow& arrow, const resbuf*& cursor) {
        setByKeys<PlumbPipeArrow>(arrow, cursor, kKeys);
        acedRetT();
        return kDone;
    });
}

int getHangerList() {
    return withEntity<PlumbPipeArrow>(AcDb::kForRead, [](const PlumbPipeArrow& arrow, const resbuf*&) {
        ResultList result;
        result.listBegin();
        for (const double distance : arrow.data().hangerDistances) result.pairReal("d", distance);
        result.listFinish();
        return kDone;
    });
}

} // namespace handlers

} // namespace plumb
