#pragma once

#include "database/tables/TableRecord.h"

namespace plumb {

// Fixture and valve types, as the schedule knows them.
class tblValveS : public TableRecord {
public:
    explicit tblValveS(CDBConnection* connection) : TableRecord("tblValveS", connection) {}

    LongColumn ixValveS{this, "ixValveS"};
    LongColumn ixDwgValve{this, "ixDwgValve"};
    LongColumn ixValveSGroup{this, "ixValveSGroup"};
    TextColumn sName{this, "sName"};
    DoubleColumn dFU{this, "dFU"};
    TextColumn sScheduleNote1{this, "sScheduleNote1"};
    TextColumn sScheduleNote2{this, "sScheduleNote2"};
    TextColumn sScheduleNote3{this, "sScheduleNote3"};
    TextColumn sDwgNote1{this, "sDwgNote1"};
    TextColumn sDwgNote2{this, "sDwgNote2"};
    TextColumn sDwgNote3{this, "sDwgNote3"};
    YesNoColumn bShowInSchedule{this, "bShowInSchedule"};
    YesNoColumn bIncludeOnIsometric{this, "bIncludeOnIsometric"};
    YesNoColumn bIncludeOnPlanView{this, "bIncludeOnPlanView"};
};

} // namespace plumb
