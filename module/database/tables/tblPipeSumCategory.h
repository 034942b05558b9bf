#pragma once

#include "database/tables/TableRecord.h"

namespace plumb {

// Flow categories of a pipe type: the quantities that such a pipe carries.
class tblPipeSumCategory : public TableRecord {
public:
    tblPipeSumCategory(bool isStandards, CDBConnection* connection)
        : TableRecord("tblPipeSumCategory", connection, isStandards) {}

    using TableRecord::Seek;
    bool Seek(std::int32_t pipeType, const CString& name) {
        return seekOn("ixPipeTypeName", {pipeType, name});
    }

    LongColumn ixPipeSumCategory{this, "ixPipeSumCategory"};
    TextColumn sName{this, "sName"};
    LongColumn ixPipeType{this, "ixPipeType"};
    LongColumn iOrder{this, "iOrder"};
    LongColumn iConversionType{this, "iConversionType"};
    DoubleColumn dMultiplier{this, "dMultiplier"};
    NullableText sLabelPrefix{this, "sLabelPrefix"};
    NullableText sLabelSuffix{this, "sLabelSuffix"};
    PLUMB_MASTER_COLUMNS
};

} // namespace plumb
