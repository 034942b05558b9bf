#pragma once

#include "database/tables/TableRecord.h"

namespace plumb {

// Which layer a symbolic key means in a layer system; in all of them where that is null.
class tblLayerKey : public TableRecord {
public:
    tblLayerKey(bool isStandards, CDBConnection* connection)
        : TableRecord("tblLayerKey", connection, isStandards) {}

    using TableRecord::Seek;
    // Layer system 0 stands for none.
    bool Seek(std::int32_t layerSystem, const CString& name) {
        return seekOn("isxLayerSystemKey",
                      {layerSystem == 0 ? COleVariant() : COleVariant(layerSystem), name});
    }
    bool Seek(const CString& name) { return seekOn("sKey", {name}); }

    LongColumn ixLayerKey{this, "ixLayerKey"};
    NullableLong ixLayerSystem{this, "ixLayerSystem"};
    LongColumn ixLayer{this, "ixLayer"};
    TextColumn sKey{this, "sKey"};
    PLUMB_MASTER_COLUMNS
};

} // namespace plumb
