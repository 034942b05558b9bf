#pragma once

#include "runtime/CString.h"

namespace plumb {

// The connection to one project database. It cannot open one yet: Open fails, and the project counts as not
// connected.
class CDBConnection {
public:
    // The path of the database that is open then; "" for a failure.
    CString Open(const CString& path, bool exclusive, bool readOnly);
    void Close();
    bool IsOpen() const { return false; }
    // Whether the last operation failed; what there is to say of it goes to the command line.
    bool ReportDatabaseError() const { return true; }
};

} // namespace plumb
