#pragma once

#include "database/tables/TableRecord.h"

namespace plumb {

// Rectangles of drawings that show a part of a floor, each with its alignment point.
class tblAlignmentPointArea : public TableRecord {
public:
    explicit tblAlignmentPointArea(CDBConnection* connection)
        : TableRecord("tblAlignmentPointArea", connection) {}

    using TableRecord::Seek;
    bool Seek(const CString& index, std::int32_t key) { return seekOn(index, {key}); }
    bool Seek(const CString& name) { return seekOn("sName", {name}); }

    LongColumn ixAlignmentPointArea{this, "ixAlignmentPointArea"};
    LongColumn ixFloor{this, "ixFloor"};
    TextColumn sName{this, "sName"};
    TextColumn sDrawing{this, "sDrawing"};
    LongColumn iAlignmentPointNumber{this, "iAlignmentPointNumber"};
    NullableDouble dXMin{this, "dXMin"};
    NullableDouble dXMax{this, "dXMax"};
    NullableDouble dYMin{this, "dYMin"};
    NullableDouble dYMax{this, "dYMax"};
    NullableDouble dX{this, "dX"};
    NullableDouble dY{this, "dY"};
    NullableDouble dAngle{this, "dAngle"};
    YesNoColumn bDeleted{this, "bDeleted"};
};

} // namespace plumb
