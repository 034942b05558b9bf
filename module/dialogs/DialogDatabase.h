#pragma once

#include "host/RunningDatabase.h"
#include "runtime/CString.h"

#include <memory>
#include <optional>

struct resbuf;

namespace plumb {

class CDBConnection;

// What a dialog works on that Lisp has opened: the database of the path that Lisp gave, opened for it alone
// and closed at the end, or the current project's. When it cannot be had the user has been told, and Lisp
// gets nil.
class DialogDatabase {
public:
    explicit DialogDatabase(const std::optional<CString>& path);
    ~DialogDatabase();
    DialogDatabase(const DialogDatabase&) = delete;
    DialogDatabase& operator=(const DialogDatabase&) = delete;

    // Null when no dialog is to open. A connection that Lisp ends meanwhile is closed, but still there.
    CDBConnection* connection() const { return m_connection.get(); }
    // One of a path: its rows are in nobody's use, and none comes from other standards.
    bool isStandards() const { return m_isStandards; }

private:
    void openFile(const CString& path);
    void connectProject();

    RunningDatabase m_running;
    std::shared_ptr<CDBConnection> m_connection;
    bool m_isStandards;
};

// The path among a Lisp call's arguments, when there is one at this place.
std::optional<CString> argPath(const resbuf*& cursor);

} // namespace plumb
