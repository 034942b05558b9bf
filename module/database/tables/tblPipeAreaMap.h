#pragma once

#include "database/tables/TableRecord.h"

namespace plumb {

// Which pipe types an area shows.
class tblPipeAreaMap : public TableRecord {
public:
    explicit tblPipeAreaMap(CDBConnection* connection) : TableRecord("tblPipeAreaMap", connection) {}

    LongColumn ixPipeAreaMap{this, "ixPipeAreaMap"};
    LongColumn ixAlignmentPointArea{this, "ixAlignmentPointArea"};
    LongColumn ixPipeType{this, "ixPipeType"};
};

} // namespace plumb
