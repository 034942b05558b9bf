#include "drawing/AcDbDatabase.h"
#include "drawing/AcDbLayerTable.h"
#include "drawing/AcDbTextStyleTable.h"
#include "editor/aced.h"
#include "host/LispFunctions.h"
#include "pipe/OpenPipe.h"
#include "util/DrawingHelpers.h"

namespace plumb {

namespace {

bool readValue(const resbuf*& cursor, double& value) {
    return argReal(cursor, value);
}
bool readValue(const resbuf*& cursor, bool& value) {
    return argBool(cursor, value);
}
bool readValue(const resbuf*& cursor, CString& value) {
    return argText(cursor, value);
}

template<auto Field>
void setField(PlumbPipe& pipe, const resbuf*& cursor) {
    auto value = pipe.data().*Field;
    if (readValue(cursor, value)) pipe.edit().*Field = std::move(value);
}

template<void (PlumbPipe::*Set)(const AcGePoint3d&, bool)>
void setPoint(PlumbPipe& pipe, const resbuf*& cursor) {
    AcGePoint3d point;
    if (argPoint(cursor, point)) (pipe.*Set)(point, true);
}

template<const AcGePoint3d& (PlumbPipe::*Get)() const, void (PlumbPipe::*Set)(const AcGePoint3d&, bool)>
void setElevation(PlumbPipe& pipe, const resbuf*& cursor) {
    AcGePoint3d point = (pipe.*Get)();
    if (argReal(cursor, point.z)) (pipe.*Set)(point, true);
}

void setIxPipe(PlumbPipe& pipe, const resbuf*& cursor) {
    Adesk::Int32 ixPipe = 0;
    if (argInt(cursor, ixPipe)) pipe.setIxPipe(ixPipe);
}

void setVerticalRadius(PlumbPipe& pipe, const resbuf*& cursor) {
    double radius = 0.0;
    if (argReal(cursor, radius)) pipe.setVerticalRadius(radius);
}

void setVerticalType(PlumbPipe& pipe, const resbuf*& cursor) {
    CString type;
    if (!argText(cursor, type)) return;
    if (type == "UP")
        pipe.edit().iVerticalType = 0;
    else if (type == "DOWN")
        pipe.edit().iVerticalType = 1;
}

void setVerticalAngles(PlumbPipe& pipe, const resbuf*& cursor) {
    std::vector<double>& angles = pipe.edit().verticalAngles;
    angles.clear();
    for (double angle = 0.0; argReal(cursor, angle);) angles.push_back(angle);
}

// Lengths and angles in twos; a length of 0 drops its pair, and what cannot be read is stepped over.
void setElbows(PlumbPipe& pipe, const resbuf*& cursor) {
    pipe.edit().elbows.clear();
    while (cursor && !argListEnd(cursor)) {
        double length = 0.0;
        double angle = 0.0;
        if (!argReal(cursor, length) || !argReal(cursor, angle))
            argSkip(cursor);
        else if (length != 0.0)
            pipe.addElbow({length, angle});
    }
}

void setArcs(PlumbPipe& pipe, const resbuf*& cursor) {
    pipe.edit().arcs.clear();
    while (cursor && !argListEnd(cursor)) {
        double length = 0.0;
        double offset = 0.0;
        Adesk::Int32 normal = 0;
        if (!argReal(cursor, length) || !argReal(cursor, offset) || !argInt(cursor, normal))
            argSkip(cursor);
        else if (length != 0.0)
            pipe.addArc({length, offset, normal});
    }
}

void setTextHeight(PlumbPipe& pipe, const resbuf*& cursor) {
    double height = 0.0;
    if (argReal(cursor, height)) pipe.labelText().setTextHeight(height);
}

void setPtrap(PlumbPipe& pipe, const resbuf*& cursor) {
    bool value = false;
    pipe.edit().bPtrap = argBool(cursor, value) && value;
}

template<class Table>
AcDbObjectId findRecord(Acad::ErrorStatus (AcDbDatabase::*getTable)(Table*&, AcDb::OpenMode),
                        const CString& name) {
    AcDbDatabase* database = CurrentDatabase();
    Table* table = nullptr;
    AcDbObjectId id;
    if (!database || (database->*getTable)(table, AcDb::kForRead) != Acad::eOk) return id;
    if (table->getAt(name, id) != Acad::eOk) id.setNull();
    table->close();
    return id;
}

AcDbObjectId findLayer(const CString& name) {
    return findRecord(&AcDbDatabase::getLayerTable, name);
}

void setTextStyle(PlumbPipe& pipe, const resbuf*& cursor) {
    CString name;
    if (!argText(cursor, name)) return;
    const AcDbObjectId style = findRecord(&AcDbDatabase::getTextStyleTable, name);
    if (!style.isNull()) pipe.setTextStyle(style);
}

void setHiddenLayer(PlumbPipe& pipe, const resbuf*& cursor) {
    CString name;
    if (!argText(cursor, name)) return;
    const AcDbObjectId layer = findLayer(name);
    if (!layer.isNull()) pipe.edit().hiddenLayerId = layer;
}

// Without such a layer the label goes back to the pipe's own.
void setTextLayer(PlumbPipe& pipe, const resbuf*& cursor) {
    CString name;
    pipe.edit().textLayerId = argText(cursor, name) ? findLayer(name) : AcDbObjectId();
}

constexpr EntityKey<PlumbPipe> kKeys[] = {
    {"P1", setPoint<&PlumbPipe::setStart>},
    {"P2", setPoint<&PlumbPipe::setEnd>},
    {"ixPipe", setIxPipe},
    {"dZ1", setElevation<&PlumbPipe::start, &PlumbPipe::setStart>},
    {"dZ2", setElevation<&PlumbPipe::end, &PlumbPipe::setEnd>},
    {"OFFSETDISTANCE", setField<&PipeData::dOffsetDistance>},
    {"DWG", setField<&PipeData::sDwg>},
    {"DWGSTART", setField<&PipeData::bDwgStart>},
    {"DWGEND", setField<&PipeData::bDwgEnd>},
    {"TAILOFFSET", setField<&PipeData::dTailOffset>},
    {"HEADOFFSET", setField<&PipeData::dHeadOffset>},
    {"ELBOW45OFFSET", setField<&PipeData::dElbow45Offset>},
    {"ELBOWLIST", setElbows},
    {"ARCRADIUS", setField<&PipeData::dArcRadius>},
    {"ARCLIST", setArcs},
    {"TICKOFFSETHEAD", setField<&PipeData::dTickOffsetHead>},
    {"TICKOFFSETTAIL", setField<&PipeData::dTickOffsetTail>},
    {"TICKWIDTH", setField<&PipeData::dTickWidth>},
    {"ELBOW45", setField<&PipeData::bElbow45>},
    {"TEE45", setField<&PipeData::bTee45>},
    {"ELBOWARC", setField<&PipeData::bElbowArc>},
    {"TEEARC", setField<&PipeData::bTeeArc>},
    {"VERTICALTYPE", setVerticalType},
    {"VERTICALANGLELIST", setVerticalAngles},
    {"VERTICALRADIUS", setVerticalRadius},
    {"TEXTDISTANCE", setField<&PipeData::dTextDistance>},
    {"TEXTHEIGHT", setTextHeight},
    {"TEXT", setField<&PipeData::sText>},
    {"TEXTANGLEIS0", setField<&PipeData::bTextAngleIs0>},
    {"TEXTSTYLE", setTextStyle},
    {"PTRAP", setPtrap},
    {"PTRAPWIDTH", setField<&PipeData::dPtrapWidth>},
    {"ISOMETRIC", setField<&PipeData::bIsometric>},
    {"HIDDENLAYER", setHiddenLayer},
    {"TEXTLAYER", setTextLayer},
};

} // namespace

int handlers::setPipeInfo() {
    return withPipe(AcDb::kForWrite, [](PlumbPipe& pipe, const resbuf*& cursor) {
        setByKeys<PlumbPipe>(pipe, cursor, kKeys);
        acedRetT();
        return kDone;
    });
}

} // namespace plumb
