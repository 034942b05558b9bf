#include "host/RunningDatabase.h"

#include "host/PlumbModule.h"

#include <utility>

namespace plumb {

RunningDatabase::RunningDatabase(CString path)
    : m_path(std::move(path)), m_outer(moduleState().runningDatabase) {
    moduleState().runningDatabase = this;
}

RunningDatabase::~RunningDatabase() {
    moduleState().runningDatabase = m_outer;
}

const CString& RunningDatabase::path() {
    static const CString none;
    const RunningDatabase* innermost = moduleState().runningDatabase;
    return innermost ? innermost->m_path : none;
}

} // namespace plumb
