#pragma once

#include "database/tables/TableRecord.h"

namespace plumb {

// Text styles by symbolic key. The style name is the font file's, without its ending.
class tblTextStyle : public TableRecord {
public:
    tblTextStyle(bool isStandards, CDBConnection* connection)
        : TableRecord("tblTextStyle", connection, isStandards) {}

    using TableRecord::Seek;
    bool Seek(const CString& name) { return seekOn("sKey", {name}); }

    LongColumn ixTextStyle{this, "ixTextStyle"};
    TextColumn sKey{this, "sKey"};
    NullableText sStyleName{this, "sStyleName"};
    NullableDouble dHeight{this, "dHeight"};
    NullableDouble dScaleFactor{this, "dScaleFactor"};
    PLUMB_MASTER_COLUMNS
};

} // namespace plumb
