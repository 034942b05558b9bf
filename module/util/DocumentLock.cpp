#include "util/DocumentLock.h"

#include "drawing/AcDbDatabase.h"

namespace plumb {

DocumentLock::DocumentLock() {
    AcApDocManager* documents = acDocManagerPtr();
    if (!documents) return;
    AcApDocument* document = documents->document(acdbHostApplicationServices()->workingDatabase());
    if (!document) return;
    m_status = documents->lockDocument(document, AcAp::kWrite, nullptr, nullptr, true);
    if (m_status == Acad::eOk) m_document = document;
}

void DocumentLock::release() {
    if (m_document) acDocManagerPtr()->unlockDocument(m_document);
    m_document = nullptr;
}

} // namespace plumb
