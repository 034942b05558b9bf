#pragma once

#include "database/tables/TableRecord.h"

namespace plumb {

// Points of a flow category's lookup table: fixtures to flow.
class tblPipeFlowLookup : public TableRecord {
public:
    explicit tblPipeFlowLookup(CDBConnection* connection) : TableRecord("tblPipeFlowLookup", connection) {}

    LongColumn ixPipeFlowLookup{this, "ixPipeFlowLookup"};
    LongColumn ixPipeSumCategory{this, "ixPipeSumCategory"};
    LongColumn iFixtures{this, "iFixtures"};
    DoubleColumn dFlow{this, "dFlow"};
    NullableLong ixPipeSizeMin{this, "ixPipeSizeMin"};
};

} // namespace plumb
