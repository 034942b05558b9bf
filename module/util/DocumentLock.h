#pragma once

#include "editor/acDocManager.h"

namespace plumb {

// Holds the document of the host's working database locked for writing. Without a document there is nothing
// to lock, which counts as held.
class [[nodiscard]] DocumentLock {
public:
    DocumentLock();
    ~DocumentLock() { release(); }
    DocumentLock(const DocumentLock&) = delete;
    DocumentLock& operator=(const DocumentLock&) = delete;

    Acad::ErrorStatus status() const { return m_status; }
    void release();

private:
    AcApDocument* m_document = nullptr;
    Acad::ErrorStatus m_status = Acad::eOk;
};

} // namespace plumb
