#include "runtime/acrx.h"

#include "runtime/Host.h"
#include "runtime/ModuleLoader.h"

using veldrin::Host;
using veldrin::ModuleStatus;

bool acrxUnlockApplication(void* package) {
    return Host::current().modules().unlock(package);
}

// Every module works with several documents here, so there is nothing to note but who asks.
bool acrxRegisterAppMDIAware(void* package) {
    return Host::current().modules().isPackage(package);
}

bool acrxLoadModule(const char* fileName, bool printIt) {
    const ModuleStatus status = Host::current().modules().load(fileName ? fileName : "", printIt);
    return status == ModuleStatus::kDone || status == ModuleStatus::kAlreadyLoaded;
}

bool acrxUnloadModule(const char* fileName, bool printIt) {
    return Host::current().modules().unload(fileName ? fileName : "", printIt) == ModuleStatus::kDone;
}
