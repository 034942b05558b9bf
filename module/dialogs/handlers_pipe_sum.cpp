#include "dialogs/CDialogPipeSum.h"
#include "dialogs/DialogDatabase.h"
#include "host/LispArguments.h"
#include "host/LispFunctions.h"

namespace plumb::handlers {

// [path], ixPipe, T or nil
int pipeSum() {
    LispArguments args;
    const std::optional<CString> path = argPath(args.cursor);
    Adesk::Int32 ixPipe = 0;
    bool usableTypesForm = false;
    if (!argInt(args.cursor, ixPipe) || !argBool(args.cursor, usableTypesForm)) return kWrongType;
    const DialogDatabase database(path);
    if (!database.connection()) return kDone;
    CDialogPipeSum dialog;
    dialog.Setup(database.connection(), database.isStandards(), ixPipe, usableTypesForm);
    showDialog(dialog);
    dialog.Release();
    return kDone;
}

} // namespace plumb::handlers
