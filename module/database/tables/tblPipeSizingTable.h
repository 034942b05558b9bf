#pragma once

#include "database/tables/TableRecord.h"

namespace plumb {

// Sizing tables of a pipe type.
class tblPipeSizingTable : public TableRecord {
public:
    explicit tblPipeSizingTable(CDBConnection* connection) : TableRecord("tblPipeSizingTable", connection) {}

    LongColumn ixPipeSizingTable{this, "ixPipeSizingTable"};
    LongColumn ixPipeType{this, "ixPipeType"};
    LongColumn iSortOrder{this, "iSortOrder"};
    TextColumn sName{this, "sName"};
    YesNoColumn bActive{this, "bActive"};
    YesNoColumn bHorizontalOnly{this, "bHorizontalOnly"};
};

} // namespace plumb
