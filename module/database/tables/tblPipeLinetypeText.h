#pragma once

#include "database/tables/TableRecord.h"

namespace plumb {

// The text in the linetype of a pipe type in a layer system.
class tblPipeLinetypeText : public TableRecord {
public:
    explicit tblPipeLinetypeText(CDBConnection* connection)
        : TableRecord("tblPipeLinetypeText", connection) {}

    using TableRecord::Seek;
    bool Seek(std::int32_t pipeType, std::int32_t layerSystem) {
        return seekOn("ixPipeType_ixLayerSystem", {pipeType, layerSystem});
    }

    LongColumn ixPipeLinetypeText{this, "ixPipeLinetypeText"};
    LongColumn ixPipeType{this, "ixPipeType"};
    LongColumn ixLayerSystem{this, "ixLayerSystem"};
    TextColumn sLinetypeText{this, "sLinetypeText"};
    YesNoColumn bLinetypeTextRotateTo0{this, "bLinetypeTextRotateTo0"};
};

} // namespace plumb
