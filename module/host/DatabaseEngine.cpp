#include "host/DatabaseEngine.h"

#include "host/DownloadOffer.h"
#include "runtime/afx.h"

namespace plumb {

namespace {

constexpr unsigned kEngineGeneration = 0x0601;
constexpr MissingPart kDrivers{"Error loading database drivers.\n"
                               "Would you like to download a fix to this error?",
                               "drivers", "https://veldrin.example/database-drivers"};

} // namespace

bool startDatabaseEngine(bool& owned) {
    AFX_MODULE_STATE* state = AfxGetModuleState();
    if (state->m_pDaoState) return true;
    owned = true;
    state->m_dwVersion = kEngineGeneration;
    try {
        AfxDaoInit();
        return true;
    } catch (...) {
        owned = false;
        offerDownload(kDrivers);
        return false;
    }
}

void stopDatabaseEngine(bool& owned) {
    if (!owned) return;
    owned = false;
    AFX_MODULE_STATE* state = AfxGetModuleState();
    AfxDaoTerm();
    delete state->m_pDaoState;
    state->m_pDaoState = nullptr;
}

} // namespace plumb
