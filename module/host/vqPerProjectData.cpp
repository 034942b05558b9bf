#include "host/vqContext.h"

#include "database/CDBConnection.h"
#include "database/ProjectFile.h"
#include "drawing/AcDbBlockTable.h"
#include "drawing/AcDbDatabase.h"
#include "editor/aced.h"
#include "util/DrawingHelpers.h"

#include <utility>

namespace plumb {

vqPerProjectData::vqPerProjectData(CString folder, const char* moduleName)
    : sFolder(std::move(folder)), m_moduleName(moduleName) {
    connectMarkedDrawing();
}

vqPerProjectData::~vqPerProjectData() {
    disconnect();
}

bool vqPerProjectData::isConnected() const {
    return m_connection && m_connection->IsOpen();
}

void vqPerProjectData::disconnect() {
    if (isConnected()) m_connection->Close();
    m_connection.reset();
}

bool vqPerProjectData::ConnectProject(bool report) {
    if (!isConnected()) OpenProjectDatabase(sFolder, report);
    if (isConnected()) return true;
    if (report) acutPrintf("\nCannot connect to the plumbing database (Connection Error Code 1).");
    return false;
}

bool vqPerProjectData::OpenProjectDatabase(const CString& folder, bool report) {
    if (isConnected()) return false;
    const CString trimmed = folder.substr(0, folder.find_last_not_of(' ') + 1);
    if (trimmed.empty()) return false;
    sFolder = trimmed;
    const CString path = FindDatabaseFile(sFolder, m_moduleName);
    if (path.empty()) {
        if (report) acutPrintf("\nError finding the plumbing database.");
        m_connection.reset();
        return false;
    }
    m_connection = std::make_unique<CDBConnection>();
    if (m_connection->Open(path, false, false).empty() && m_connection->ReportDatabaseError()) {
        m_connection.reset();
        return false;
    }
    return true;
}

// Only a drawing that says it belongs to the module opens its project without being asked.
void vqPerProjectData::connectMarkedDrawing() {
    AcDbDatabase* drawing = CurrentDatabase();
    AcDbBlockTable* blocks = nullptr;
    if (!drawing || drawing->getBlockTable(blocks, AcDb::kForRead) != Acad::eOk) return;
    AcDbObjectPointer<AcDbBlockTable> table;
    table.acquire(blocks);
    AcDbBlockTableRecord* modelSpace = nullptr;
    if (blocks->getAt(ACDB_MODEL_SPACE, modelSpace, AcDb::kForRead) != Acad::eOk) return;
    AcDbObjectPointer<AcDbBlockTableRecord> record;
    record.acquire(modelSpace);
    if (GetDocumentMark(*modelSpace, documentMarkKey(m_moduleName)) == "YES")
        OpenProjectDatabase(sFolder, false);
}

} // namespace plumb
