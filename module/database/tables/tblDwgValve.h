#pragma once

#include "database/tables/TableRecord.h"

namespace plumb {

// Symbol blocks of fixtures and valves.
class tblDwgValve : public TableRecord {
public:
    tblDwgValve(bool isStandards, CDBConnection* connection)
        : TableRecord("tblDwgValve", connection, isStandards) {}

    LongColumn ixDwgValve{this, "ixDwgValve"};
    LongColumn iSortOrder{this, "iSortOrder"};
    TextColumn sDescription{this, "sDescription"};
    TextColumn sBlockName{this, "sBlockName"};
    YesNoColumn bToScale{this, "bToScale"};
    PLUMB_MASTER_COLUMNS
};

} // namespace plumb
