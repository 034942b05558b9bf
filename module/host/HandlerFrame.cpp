#include "host/HandlerFrame.h"

#include "editor/aced.h"
#include "host/vqPlumbContext.h"
#include "runtime/CException.h"
#include "util/DocumentLock.h"

namespace plumb {

int hostCodeOf(int status) {
    switch (status) {
    case kTooFewArguments: acutPrintf("\nToo few arguments passed.\n"); return RSERR;
    case kWrongType: acutPrintf("\nWrong type of arguments passed.\n"); return RSERR;
    case kBadData: acutPrintf("\nBad data passed .\n"); return RSERR;
    case kTextScreen: acedTextScr(); return RSERR;
    default: return RSRSLT;
    }
}

int runInFrame(Handler handler, vqPlumbContext* context) {
    if (context && !context->currentDocument()) return RSRSLT;
    DocumentLock lock;
    // Nobody may write into a drawing that another one holds.
    if (lock.status() != Acad::eOk) return RSERR;
    try {
        if (context && !context->ConnectProject(true)) return RSRSLT;
        return hostCodeOf(handler());
    } catch (const CException&) {
        lock.release();
        acutPrintf("\nGeneral Exception");
        throw;
    } catch (...) {
        lock.release();
        acutPrintf("\nError");
        throw;
    }
}

} // namespace plumb
