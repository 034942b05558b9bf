#pragma once

#include "runtime/VeldrinApi.h"

#include <string>

class AcRxObject;

// Between host and module: the messages that a module's entry point is sent, and what it answers.
namespace AcRx {

enum AppMsgCode {
    kNullMsg = 0,
    kInitAppMsg = 1,
    kUnloadAppMsg = 2,
    kLoadDwgMsg = 3,
    kUnloadDwgMsg = 4,
    kInvkSubrMsg = 5,
    kQuitMsg = 8,
};

enum AppRetCode {
    kRetOK = 0,
    kRetError = 3,
};

} // namespace AcRx

// A module may be unloaded once it has unlocked itself; the package is what its entry point was handed.
VELDRIN_API bool acrxUnlockApplication(void* package);
VELDRIN_API bool acrxRegisterAppMDIAware(void* package);

// The named objects that the host offers, "AcEditor" among them.
class VELDRIN_API AcRxDictionary {
public:
    virtual ~AcRxDictionary() = default;
    virtual AcRxObject* at(const char* key) const = 0; // null when there is none
};
VELDRIN_API AcRxDictionary* acrxSysRegistry();

// Loads or unloads a module by path, or by name beside the program. False when it fails, with a line printed.
VELDRIN_API bool acrxLoadModule(const char* fileName, bool printIt = true);
VELDRIN_API bool acrxUnloadModule(const char* fileName, bool printIt = true);
