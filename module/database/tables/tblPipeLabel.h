#pragma once

#include "database/tables/TableRecord.h"

namespace plumb {

// Label formats by pipe type and layer system.
class tblPipeLabel : public TableRecord {
public:
    tblPipeLabel(bool isStandards, CDBConnection* connection)
        : TableRecord("tblPipeLabel", connection, isStandards) {}

    using TableRecord::Seek;
    bool Seek(std::int32_t pipeType, std::int32_t layerSystem) {
        return seekOn("ixPipeTypeLayerSystem", {pipeType, layerSystem});
    }

    LongColumn ixPipeLabel{this, "ixPipeLabel"};
    LongColumn ixPipeType{this, "ixPipeType"};
    LongColumn ixLayerSystem{this, "ixLayerSystem"};
    TextColumn sLabelFormat{this, "sLabelFormat"};
    TextColumn sLabelFormatIsometric{this, "sLabelFormatIsometric"};
    PLUMB_MASTER_COLUMNS
};

} // namespace plumb
