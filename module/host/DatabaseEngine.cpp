#include "host/DatabaseEngine.h"

#include "editor/aced.h"
#include "runtime/CString.h"
#include "runtime/afx.h"

namespace plumb {

namespace {

constexpr unsigned kEngineGeneration = 0x0601;
constexpr const char* kErrorTitle = "Veldrin Error";
constexpr const char* kDownloadLocation = "https://veldrin.example/database-drivers";

void offerDownload() {
    const int answer = MessageBox("Error loading database drivers.\n"
                                  "Would you like to download a fix to this error?",
                                  kErrorTitle, MB_YESNO | MB_ICONSTOP);
    if (answer != IDYES) return;
    if (ShellExecute("open", kDownloadLocation) > 32) {
        acutPrintf("\nDownloading %s", kDownloadLocation);
        MessageBox("When the download is complete, close the program, run the installer that was downloaded "
                   "and start the program again.",
                   kErrorTitle, MB_OK);
    } else {
        const CString failed =
            CString("The download failed. The drivers can be found at ") + kDownloadLocation;
        acutPrintf("\n%s", failed.c_str());
        MessageBox(failed.c_str(), kErrorTitle, MB_OK | MB_ICONSTOP);
    }
}

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
        offerDownload();
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
