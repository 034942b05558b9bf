#include "host/PlumbModule.h"

#include "arrow/PlumbPipeArrow.h"
#include "database/CDBConnection.h"
#include "database/ProjectFile.h"
#include "editor/aced.h"
#include "host/DatabaseEngine.h"
#include "host/LispFunctions.h"
#include "host/RunningDatabase.h"
#include "host/vqPlumbContext.h"
#include "pipe/PlumbPipe.h"
#include "projects/ProjectFiles.h"
#include "runtime/AcRxClass.h"

namespace plumb {

ModuleState& moduleState() {
    static ModuleState state;
    return state;
}

namespace {

// The one whose path Lisp gave, else the project's database, open or not.
CString databaseOfRunningCall() {
    const CString& given = RunningDatabase::path();
    if (!given.empty()) return given;
    const vqPlumbContext* context = moduleState().theContext.get();
    const vqPerProjectData* project = context ? context->currentProject() : nullptr;
    if (!project) return {};
    const CDBConnection* connection = project->connection();
    return connection && connection->IsOpen() ? connection->GetName()
                                              : FindDatabaseFile(project->sFolder, kModuleName);
}

} // namespace

AcRx::AppRetCode loadModule(void* package) {
    ModuleState& state = moduleState();
    if (!startDatabaseEngine(state.bOwnDaoState)) return AcRx::kRetError;
    try {
        acrxUnlockApplication(package);
        acrxRegisterAppMDIAware(package);
        state.theContext = std::make_unique<vqPlumbContext>();
        veldrin::setProjectDatabaseSource(databaseOfRunningCall);
        state.theContext->ConnectProject(false); // a drawing without a project is as good
        PlumbPipe::rxInit();
        PlumbPipeArrow::rxInit();
        acrxBuildClassHierarchy();
    } catch (...) {
        // A module that does not load leaves nothing behind in the host.
        unloadModule();
        throw;
    }
    return AcRx::kRetOK;
}

AcRx::AppRetCode loadDrawing() {
    acutPrintf("\nLoading Veldrin Plumbing ARX %s", moduleVersion);
    acutPrintf("\n\u00A9 Veldrin contributors. Free software under the MIT License.\n");
    defineLispFunctions();
    return AcRx::kRetOK;
}

AcRx::AppRetCode unloadModule() {
    ModuleState& state = moduleState();
    veldrin::setProjectDatabaseSource(nullptr);
    state.theContext.reset();
    PlumbPipe::unregister();
    PlumbPipeArrow::unregister();
    stopDatabaseEngine(state.bOwnDaoState);
    return AcRx::kRetOK;
}

} // namespace plumb
