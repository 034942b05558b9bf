#pragma once

#include "host/EntityKeys.h"
#include "pipe/PlumbPipe.h"

namespace plumb {

template<class Work>
int withPipe(AcDb::OpenMode mode, Work&& work) {
    return withEntity<PlumbPipe>(mode, std::forward<Work>(work));
}

} // namespace plumb
