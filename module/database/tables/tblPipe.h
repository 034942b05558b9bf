#pragma once

#include "database/tables/TableRecord.h"

namespace plumb {

// Pipes: a row for each pipe entity. Lengths in inches.
class tblPipe : public TableRecord {
public:
    explicit tblPipe(CDBConnection* connection) : TableRecord("tblPipe", connection) {}

    LongColumn ixPipe{this, "ixPipe"};
    LongColumn ixLayerSystem{this, "ixLayerSystem"};
    NullableLong ixValveLNext{this, "ixValveLNext"};
    NullableLong ixValveLPrevious{this, "ixValveLPrevious"};
    NullableLong iValvePreviousPoint{this, "iValvePreviousPoint"};
    NullableLong ixPipeRiserPrevious{this, "ixPipeRiserPrevious"};
    LongColumn ixPipeType{this, "ixPipeType"};
    DoubleColumn dSize{this, "dSize"};
    DoubleColumn dExteriorLining{this, "dExteriorLining"};
    DoubleColumn dSizeMinimum{this, "dSizeMinimum"};
    DoubleColumn dDistanceToFarthestFixture{this, "dDistanceToFarthestFixture"};
    DoubleColumn dMaxFixtureZ{this, "dMaxFixtureZ"};
    DoubleColumn dX1{this, "dX1"};
    DoubleColumn dY1{this, "dY1"};
    DoubleColumn dZ1{this, "dZ1"};
    DoubleColumn dX2{this, "dX2"};
    DoubleColumn dY2{this, "dY2"};
    DoubleColumn dZ2{this, "dZ2"};
    NullableDouble dOffsetPlan{this, "dOffsetPlan"};
    TextColumn sDrawing{this, "sDrawing"};
    TextColumn sOffsetZ{this, "sOffsetZ"};
    TextColumn sOffsetY{this, "sOffsetY"};
    LongColumn iAlignmentPointNumber{this, "iAlignmentPointNumber"};
    YesNoColumn bDeleted{this, "bDeleted"};
    YesNoColumn bPTrap{this, "bPTrap"};
    DoubleColumn dDistanceFromSource{this, "dDistanceFromSource"};
    DoubleColumn dHangerZ{this, "dHangerZ"};
    DoubleColumn dHangerSize{this, "dHangerSize"};
    DoubleColumn dHangerDepth{this, "dHangerDepth"};
    DoubleColumn dHangerStartOffset{this, "dHangerStartOffset"};
    DoubleColumn dHangerSpacing{this, "dHangerSpacing"};
    DoubleColumn dHangerEndOffset{this, "dHangerEndOffset"};
    DoubleColumn dHangerLeftExtension{this, "dHangerLeftExtension"};
    DoubleColumn dHangerRightExtension{this, "dHangerRightExtension"};
    LongColumn iHangerType{this, "iHangerType"};
    LongColumn ixPipeSize{this, "ixPipeSize"};
    NullableLong ixPipeSizingTable{this, "ixPipeSizingTable"};
    YesNoColumn bSizeLocked{this, "bSizeLocked"};
    YesNoColumn bTransparent{this, "bTransparent"};
};

} // namespace plumb
