#include "host/acrxEntryPoint.h"

#include "editor/aced.h"
#include "host/PlumbModule.h"
#include "runtime/CException.h"
#include "runtime/afx.h"

namespace {

AcRx::AppRetCode answer(AcRx::AppMsgCode message, void* package) {
    switch (message) {
    case AcRx::kInitAppMsg: return plumb::loadModule(package);
    case AcRx::kUnloadAppMsg: return plumb::unloadModule();
    case AcRx::kLoadDwgMsg: return plumb::loadDrawing();
    default: return AcRx::kRetOK;
    }
}

} // namespace

AcRx::AppRetCode acrxEntryPoint(AcRx::AppMsgCode message, void* package) {
    SetLastError(0); // an error of the system from before is none of this call's
    try {
        return answer(message, package);
    } catch (const CException& exception) {
        acutPrintf("\nGeneral Error:  %.1000s", exception.GetErrorMessage().c_str());
    } catch (...) {
        if (const unsigned code = GetLastError())
            acutPrintf("\nSystem error %u.\n", code);
        else
            acutPrintf("\nVeldrin error.  Closing AutoCAD and reopening it should fix this problem.\n");
    }
    return AcRx::kRetError;
}

unsigned acrxGetApiVersion() {
    return plumb::kHostApiVersion;
}
