#pragma once

#include "database/tables/TableRecord.h"

namespace plumb {

// Layers of the project's standards.
class tblLayer : public TableRecord {
public:
    tblLayer(bool isStandards, CDBConnection* connection)
        : TableRecord("tblLayer", connection, isStandards) {}

    using TableRecord::Seek;
    bool Seek(const CString& name) { return seekOn("sName", {name}); }
    void MoveLast() { moveLast(); }

    LongColumn ixLayer{this, "ixLayer"};
    TextColumn sName{this, "sName"};
    YesNoColumn bRGBColor{this, "bRGBColor"};
    NullableLong iColor{this, "iColor"};
    NullableLong iRed{this, "iRed"};
    NullableLong iGreen{this, "iGreen"};
    NullableLong iBlue{this, "iBlue"};
    TextColumn sLinetype{this, "sLinetype"};
    YesNoColumn bPlot{this, "bPlot"};
    NullableText sLineweight{this, "sLineweight"};
    NullableText sPlotstyle{this, "sPlotstyle"};
    PLUMB_MASTER_COLUMNS
};

} // namespace plumb
