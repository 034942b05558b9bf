#include "dialogs/DialogDatabase.h"

#include "database/CDBConnection.h"
#include "host/LispArguments.h"
#include "host/PlumbModule.h"
#include "host/vqPlumbContext.h"
#include "runtime/afx.h"

namespace plumb {

namespace {

constexpr const char* kTitle = "Veldrin";
constexpr const char* kReadOnly = "Database is read-only. Cannot be viewed at this time.";

} // namespace

DialogDatabase::DialogDatabase(const std::optional<CString>& path)
    : m_running(path.value_or("")), m_isStandards(path.has_value()) {
    if (path)
        openFile(*path);
    else
        connectProject();
}

DialogDatabase::~DialogDatabase() {
    if (m_isStandards && m_connection) m_connection->Close();
}

void DialogDatabase::openFile(const CString& path) {
    const auto connection = std::make_shared<CDBConnection>();
    bool isReadOnly = false;
    if (!connection->OpenOrFlagReadOnly(path, isReadOnly))
        ReportDatabaseError(*connection);
    else if (isReadOnly)
        MessageBox(kReadOnly, kTitle, MB_OK | MB_ICONWARNING);
    else
        m_connection = connection;
}

void DialogDatabase::connectProject() {
    vqPlumbContext* context = moduleState().theContext.get();
    vqPerProjectData* project = context ? context->currentProject() : nullptr;
    if (project && project->ConnectProject(true)) m_connection = project->sharedConnection();
}

std::optional<CString> argPath(const resbuf*& cursor) {
    CString path;
    return argText(cursor, path) ? std::optional(path) : std::nullopt;
}

} // namespace plumb
