#include "host/LispArguments.h"
#include "host/LispFunctions.h"
#include "host/PlumbModule.h"
#include "host/vqPlumbContext.h"

namespace plumb::handlers {

int disconnect() {
    if (vqPlumbContext* context = moduleState().theContext.get()) context->disconnect();
    return kDone;
}

int setDoDocumentActivated() {
    LispArguments args;
    bool value = false;
    if (argBool(args.cursor, value)) moduleState().bDoDocumentActivated = value;
    return kDone;
}

} // namespace plumb::handlers
