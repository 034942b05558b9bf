// A module for the tests of the loader. It tells each message, with a count of its own, in the variable
// TEST_MODULE_LOG; TEST_MODULE_DOES names what it does wrong while it is initialised.

#include "runtime/AcRxClass.h"
#include "runtime/CException.h"
#include "runtime/acrx.h"

#include <cstdio>
#include <cstdlib>
#include <string>

namespace {

class Part : public AcRxObject {};

int messages = 0;

std::string variable(const char* name) {
    const char* const value = std::getenv(name);
    return value ? value : "";
}

AcRx::AppRetCode initialise(void* package) {
    newAcRxClass(
        "TestModulePart", "AcRxObject", 1, 0, 0, []() -> AcRxObject* { return new Part; }, "", "Tests");
    acrxBuildClassHierarchy();
    const std::string does = variable("TEST_MODULE_DOES");
    if (does == "refuse") return AcRx::kRetError;
    if (does == "throw") throw CException("the module says no");
    if (does != "lock") acrxUnlockApplication(package);
    char address[32];
    std::snprintf(address, sizeof address, "%p", package);
    setenv("TEST_MODULE_PACKAGE", address, 1);
    return AcRx::kRetOK;
}

} // namespace

extern "C" VELDRIN_API AcRx::AppRetCode acrxEntryPoint(AcRx::AppMsgCode message, void* package) {
    const std::string entry = std::to_string(message) + ":" + std::to_string(++messages) + " ";
    setenv("TEST_MODULE_LOG", (variable("TEST_MODULE_LOG") + entry).c_str(), 1);
    return message == AcRx::kInitAppMsg ? initialise(package) : AcRx::kRetOK;
}

extern "C" VELDRIN_API unsigned acrxGetApiVersion() {
    return 0x170000;
}
