#include "host/RunningDatabase.h"

#include <utility>

namespace plumb {

namespace {

const RunningDatabase* innermost = nullptr;

} // namespace

RunningDatabase::RunningDatabase(CString path) : m_path(std::move(path)), m_outer(innermost) {
    innermost = this;
}

RunningDatabase::~RunningDatabase() {
    innermost = m_outer;
}

const CString& RunningDatabase::path() {
    static const CString none;
    return innermost ? innermost->m_path : none;
}

} // namespace plumb
