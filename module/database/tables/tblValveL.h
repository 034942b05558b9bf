#pragma once

#include "database/tables/TableRecord.h"

namespace plumb {

// Fixtures and valves placed in drawings.
class tblValveL : public TableRecord {
public:
    explicit tblValveL(CDBConnection* connection) : TableRecord("tblValveL", connection) {}

    LongColumn ixValveL{this, "ixValveL"};
    LongColumn ixValveS{this, "ixValveS"};
    LongColumn ixLayerSystem{this, "ixLayerSystem"};
    LongColumn ixPipeType{this, "ixPipeType"};
    NullableText sDwgNote1{this, "sDwgNote1"};
    NullableText sDwgNote2{this, "sDwgNote2"};
    NullableText sDwgNote3{this, "sDwgNote3"};
    DoubleColumn dX{this, "dX"};
    DoubleColumn dY{this, "dY"};
    DoubleColumn dZ{this, "dZ"};
    YesNoColumn bMirrored{this, "bMirrored"};
    DoubleColumn dRotation{this, "dRotation"};
    TextColumn sDrawing{this, "sDrawing"};
    LongColumn iAlignmentPointNumber{this, "iAlignmentPointNumber"};
    YesNoColumn bDeleted{this, "bDeleted"};
};

} // namespace plumb
