#pragma once

#include "database/tables/TableRecord.h"

namespace plumb {

// Rows of a sizing table: up to which flow a size is used.
class tblPipeSizingValue : public TableRecord {
public:
    explicit tblPipeSizingValue(CDBConnection* connection) : TableRecord("tblPipeSizingValue", connection) {}

    LongColumn ixPipeSizingValue{this, "ixPipeSizingValue"};
    LongColumn ixPipeSizingTable{this, "ixPipeSizingTable"};
    LongColumn ixPipeSize{this, "ixPipeSize"};
    DoubleColumn dFlow{this, "dFlow"};
    DoubleColumn dFlowVertical{this, "dFlowVertical"};
    DoubleColumn bEnable{this, "bEnable"}; // a yes/no as 1 or 0
};

} // namespace plumb
