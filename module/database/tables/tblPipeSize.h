#pragma once

#include "database/tables/TableRecord.h"

namespace plumb {

// Sizes that a pipe type comes in. Diameters in inches.
class tblPipeSize : public TableRecord {
public:
    tblPipeSize(bool isStandards, CDBConnection* connection)
        : TableRecord("tblPipeSize", connection, isStandards) {}

    using TableRecord::Seek;
    bool Seek(std::int32_t pipeType, const CString& label) {
        return seekOn("ixPipeType_sLabel", {pipeType, label});
    }
    bool SeekPipeType(std::int32_t pipeType) { return seekOn("ixPipeType", {pipeType}); }

    LongColumn ixPipeSize{this, "ixPipeSize"};
    LongColumn ixPipeType{this, "ixPipeType"};
    TextColumn sLabel{this, "sLabel"};
    DoubleColumn dInteriorDiameter{this, "dInteriorDiameter"};
    DoubleColumn dExteriorDiameter{this, "dExteriorDiameter"};
    PLUMB_MASTER_COLUMNS
};

} // namespace plumb
