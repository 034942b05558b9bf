#pragma once

#include "database/tables/TableRecord.h"

namespace plumb {

// Layer systems; every pipe and every label format belongs to one.
class tblLayerSystem : public TableRecord {
public:
    tblLayerSystem(bool isStandards, CDBConnection* connection)
        : TableRecord("tblLayerSystem", connection, isStandards) {}

    LongColumn ixLayerSystem{this, "ixLayerSystem"};
    TextColumn sDescription{this, "sDescription"};
    LongColumn iSortOrder{this, "iSortOrder"};
    YesNoColumn bSolid{this, "bSolid"};
    TextColumn sPrefix{this, "sPrefix"};
    TextColumn sSuffix{this, "sSuffix"};
    YesNoColumn supplyHatchOn{this, "supplyHatchOn"};
    TextColumn supplyHatchType{this, "supplyHatchType"};
    TextColumn supplyHatchPattern{this, "supplyHatchPattern"};
    DoubleColumn supplyHatchAngle{this, "supplyHatchAngle"};
    DoubleColumn supplyHatchScale{this, "supplyHatchScale"};
    YesNoColumn returnHatchOn{this, "returnHatchOn"};
    TextColumn returnHatchType{this, "returnHatchType"};
    TextColumn returnHatchPattern{this, "returnHatchPattern"};
    DoubleColumn returnHatchAngle{this, "returnHatchAngle"};
    DoubleColumn returnHatchScale{this, "returnHatchScale"};
    YesNoColumn exhaustHatchOn{this, "exhaustHatchOn"};
    TextColumn exhaustHatchType{this, "exhaustHatchType"};
    TextColumn exhaustHatchPattern{this, "exhaustHatchPattern"};
    DoubleColumn exhaustHatchAngle{this, "exhaustHatchAngle"};
    DoubleColumn exhaustHatchScale{this, "exhaustHatchScale"};
    YesNoColumn outsideHatchOn{this, "outsideHatchOn"};
    TextColumn outsideHatchType{this, "outsideHatchType"};
    TextColumn outsideHatchPattern{this, "outsideHatchPattern"};
    DoubleColumn outsideHatchAngle{this, "outsideHatchAngle"};
    DoubleColumn outsideHatchScale{this, "outsideHatchScale"};
    YesNoColumn bHatchFlexDucts{this, "bHatchFlexDucts"};
    DoubleColumn dHatchOverhang{this, "dHatchOverhang"};
    PLUMB_MASTER_COLUMNS
};

} // namespace plumb
