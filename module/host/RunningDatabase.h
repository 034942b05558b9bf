#pragma once

#include "runtime/CString.h"

namespace plumb {

// The database that a call from Lisp works on while it lasts, for the Lisp functions that it calls. Calls lie
// within each other.
class RunningDatabase {
public:
    explicit RunningDatabase(CString path); // "" for the current project's
    ~RunningDatabase();
    RunningDatabase(const RunningDatabase&) = delete;
    RunningDatabase& operator=(const RunningDatabase&) = delete;

    static const CString& path(); // of the innermost call

private:
    CString m_path;
    const RunningDatabase* m_outer;
};

} // namespace plumb
