#pragma once

#include "database/tables/TableRecord.h"

namespace plumb {

// Values of flow categories on pipes: entered (fixed) or calculated.
class tblPipeSum : public TableRecord {
public:
    explicit tblPipeSum(CDBConnection* connection) : TableRecord("tblPipeSum", connection) {}

    using TableRecord::Seek;
    bool Seek(std::int32_t pipe, std::int32_t category, bool fixed) {
        const COleVariant isFixed(static_cast<std::int16_t>(fixed ? -1 : 0), VT_BOOL);
        return seekOn("ixPipePipeSumCategoryFixed", {pipe, category, isFixed});
    }

    LongColumn ixPipeSum{this, "ixPipeSum"};
    LongColumn ixPipe{this, "ixPipe"};
    LongColumn ixPipeSumCategory{this, "ixPipeSumCategory"};
    YesNoColumn bFixed{this, "bFixed"};
    DoubleColumn dValue{this, "dValue"};
};

} // namespace plumb
