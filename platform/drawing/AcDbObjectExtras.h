#pragma once

#include "drawing/AcDbDwgFiler.h"
#include "drawing/AcDbObject.h"
#include "runtime/ResbufChain.h"

// What few objects have, kept apart so that the others stay small.
struct AcDbObject::Extras {
    veldrin::ResbufPtr xdata;
    AcDbObjectId dictionary;
};

namespace veldrin {

// A chain of group codes and values as items of a record, with their count before them.
void writeChain(AcDbDwgFiler& filer, const resbuf* chain);
Acad::ErrorStatus readChain(AcDbDwgFiler& filer, ResbufPtr& chain);

} // namespace veldrin
