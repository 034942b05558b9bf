#pragma once

#include "database/tables/TableRecord.h"

namespace plumb {

// Groups of fixture types.
class tblValveSGroup : public TableRecord {
public:
    explicit tblValveSGroup(CDBConnection* connection) : TableRecord("tblValveSGroup", connection) {}

    LongColumn ixValveSGroup{this, "ixValveSGroup"};
    TextColumn sName{this, "sName"};
};

} // namespace plumb
