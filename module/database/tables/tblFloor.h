#pragma once

#include "database/tables/TableRecord.h"

namespace plumb {

// Floors of the building. Lengths in inches.
class tblFloor : public TableRecord {
public:
    explicit tblFloor(CDBConnection* connection) : TableRecord("tblFloor", connection) {}

    using TableRecord::Seek;
    bool Seek(const CString& name) { return seekOn("sName", {name}); }

    LongColumn ixFloor{this, "ixFloor"};
    NullableLong ixFloorAbove{this, "ixFloorAbove"};
    TextColumn sName{this, "sName"};
    DoubleColumn dElevation{this, "dElevation"};
    DoubleColumn dCeilingHeight{this, "dCeilingHeight"};
    DoubleColumn dFloorToFloorHeight{this, "dFloorToFloorHeight"};
    NullableLong ixElecFloor{this, "ixElecFloor"};
    NullableLong ixHVACFloor{this, "ixHVACFloor"};
};

} // namespace plumb
