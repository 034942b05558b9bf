#pragma once

#include "runtime/acrx.h"

// What the module shows to the host.
extern "C" {
__attribute__((visibility("default"))) AcRx::AppRetCode acrxEntryPoint(AcRx::AppMsgCode message,
                                                                       void* package);
__attribute__((visibility("default"))) unsigned acrxGetApiVersion();
}
