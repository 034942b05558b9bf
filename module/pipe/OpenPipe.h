#pragma once

#include "host/HandlerFrame.h"
#include "host/LispArguments.h"
#include "pipe/PlumbPipe.h"

namespace plumb {

// The frame of every handler whose first argument is a pipe: opens it, hands pipe and cursor to the work, and
// closes it on every way out. No entity name is a wrong type; a pipe that does not open (erased, of another
// class) gives nil without a word.
template<class Work>
int withPipe(AcDb::OpenMode mode, Work&& work) {
    LispArguments args;
    AcDbObjectId id;
    if (!argObjectId(args.cursor, id)) return kWrongType;
    const AcDbObjectPointer<PlumbPipe> pipe(id, mode);
    if (!pipe) return kDone;
    return work(*pipe, args.cursor);
}

} // namespace plumb
