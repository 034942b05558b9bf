#pragma once

#include "runtime/CString.h"
#include "runtime/acrx.h"

#include <memory>

namespace plumb {

class RunningDatabase;
class vqPlumbContext;

inline constexpr const char* moduleVersion = "4.1.45 (26111)";
inline constexpr unsigned kHostApiVersion = 0x170000;

// What lives from load to unload.
struct ModuleState {
    std::unique_ptr<vqPlumbContext> theContext;
    bool bDoDocumentActivated = true; // whether activating a drawing calls the Lisp layer's to-do function
    const RunningDatabase* runningDatabase = nullptr; // of the innermost call; null without one
    bool bOwnDaoState = false; // this module has started the database engine, and stops it
};
ModuleState& moduleState();

// What the host's messages ask for. What is thrown here is the entry point's to tell.
AcRx::AppRetCode loadModule(void* package);
AcRx::AppRetCode loadDrawing(); // once for each document: banner and functions
AcRx::AppRetCode unloadModule();

} // namespace plumb
