#pragma once

#include "database/tables/TableRecord.h"

namespace plumb {

// Settings of the project, a row for each key.
class tblGlobal : public TableRecord {
public:
    explicit tblGlobal(CDBConnection* connection) : TableRecord("tblGlobal", connection) {}

    using TableRecord::Seek;
    bool Seek(const CString& name) { return seekOn("sKey", {name}); }

    LongColumn ixGlobal{this, "ixGlobal"};
    TextColumn sKey{this, "sKey"};
    YesNoColumn bNumeric{this, "bNumeric"};
    NullableText sText{this, "sText"};
    NullableDouble dNumber{this, "dNumber"};
};

} // namespace plumb
