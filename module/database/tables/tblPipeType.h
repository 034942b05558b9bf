#pragma once

#include "database/tables/TableRecord.h"

namespace plumb {

// Kinds of pipe systems. Nearly every other table hangs on them.
class tblPipeType : public TableRecord {
public:
    tblPipeType(bool isStandards, CDBConnection* connection)
        : TableRecord("tblPipeType", connection, isStandards) {}

    LongColumn ixPipeType{this, "ixPipeType"};
    TextColumn sName{this, "sName"};
    TextColumn sShortName{this, "sShortName"};
    LongColumn iSortOrder{this, "iSortOrder"};
    YesNoColumn bReversed{this, "bReversed"};
    LongColumn iElbow{this, "iElbow"};
    LongColumn iTee{this, "iTee"};
    YesNoColumn bFittingTicks{this, "bFittingTicks"};
    LongColumn iLabelLocation{this, "iLabelLocation"};
    YesNoColumn bHidePipe{this, "bHidePipe"};
    PLUMB_MASTER_COLUMNS
};

} // namespace plumb
