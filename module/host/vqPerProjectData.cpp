#include "host/vqContext.h"

#include "database/CDBConnection.h"
#include "database/ProjectFile.h"
#include "database/tables/tblGlobal.h"
#include "database/tables/tblLayer.h"
#include "database/tables/tblLayerKey.h"
#include "database/tables/tblLayerSystem.h"
#include "database/tables/tblTextStyle.h"
#include "drawing/AcDbBlockTable.h"
#include "drawing/AcDbDatabase.h"
#include "editor/aced.h"
#include "host/LispCall.h"
#include "util/DrawingHelpers.h"

#include <utility>

namespace plumb {

namespace {

constexpr const char* kNeedsRepair = "*REPAIR*";

// What an engineer should know of the file before anything is built on it.
void tellOfDoubts(CDBConnection& connection) {
    for (const CString& doubt : connection.Doubts()) acutPrintf("\n%s", doubt.c_str());
}

} // namespace

StandardsTables::StandardsTables(CDBConnection* connection)
    : global(std::make_unique<tblGlobal>(connection))
    , layer(std::make_unique<tblLayer>(true, connection))
    , layerKey(std::make_unique<tblLayerKey>(true, connection))
    , layerSystem(std::make_unique<tblLayerSystem>(true, connection))
    , textStyle(std::make_unique<tblTextStyle>(true, connection)) {}

StandardsTables::~StandardsTables() = default;

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
    m_standards.reset();
    if (isConnected()) m_connection->Close();
    m_connection.reset();
}

bool vqPerProjectData::ConnectProject(bool report) {
    if (!isConnected()) OpenProjectDatabase(sFolder, report);
    if (BuildContextTables()) return true;
    if (report) acutPrintf("\nCannot connect to the plumbing database (Connection Error Code 1).");
    return false;
}

bool vqPerProjectData::BuildContextTables() {
    if (!isConnected()) return false;
    if (!m_standards) m_standards = std::make_unique<StandardsTables>(m_connection.get());
    return true;
}

bool vqPerProjectData::OpenProjectDatabase(const CString& folder, bool report) {
    if (isConnected()) return false;
    const CString trimmed = folder.substr(0, folder.find_last_not_of(' ') + 1);
    if (trimmed.empty()) return false;
    sFolder = trimmed;
    m_standards.reset();
    const CString path = FindDatabaseFile(sFolder, m_moduleName);
    if (path.empty()) {
        if (report) acutPrintf("\nError finding the plumbing database.");
        m_connection.reset();
        return false;
    }
    m_connection = std::make_shared<CDBConnection>();
    if (!openOrRepair(path)) return false;
    if (isConnected()) tellOfDoubts(*m_connection);
    return true;
}

// False when the user was told why it cannot be opened; there is no connection then. True may leave it
// closed: a repair that did not come about says nothing here.
bool vqPerProjectData::openOrRepair(const CString& path) {
    CString opened = m_connection->Open(path, false, false);
    if (opened.empty()) return giveUp();
    if (opened != kNeedsRepair) return true;
    m_connection->Close();
    const LispAnswer answer = callLisp(
        ResbufChain(acutBuildList(RTSTR, "compactDatabase", RTSTR, path.c_str(), RTNIL, RTSTR, "Repair", 0)));
    if (!answer.succeeded || answer.isNil()) return giveUp();
    opened = m_connection->Open(path, false, false);
    return opened.empty() || opened == kNeedsRepair ? giveUp() : true;
}

bool vqPerProjectData::giveUp() {
    if (!ReportDatabaseError(*m_connection)) return true;
    m_connection.reset();
    return false;
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
        if (OpenProjectDatabase(sFolder, false)) BuildContextTables();
}

} // namespace plumb
