#pragma once

#include "database/tables/TableRecord.h"

namespace plumb {

// Linetypes of a pipe type in a layer system, by the length from which each is used.
class tblPipeLinetype : public TableRecord {
public:
    tblPipeLinetype(bool isStandards, CDBConnection* connection)
        : TableRecord("tblPipeLinetype", connection, isStandards) {}

    LongColumn ixPipeLinetype{this, "ixPipeLinetype"};
    LongColumn ixPipeType{this, "ixPipeType"};
    LongColumn ixLayerSystem{this, "ixLayerSystem"};
    TextColumn sLinetype{this, "sLinetype"};
    DoubleColumn dMinimumLength{this, "dMinimumLength"};
    PLUMB_MASTER_COLUMNS
};

} // namespace plumb
