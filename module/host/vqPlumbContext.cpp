#include "host/vqPlumbContext.h"

#include "database/CDBConnection.h"
#include "host/LispCall.h"
#include "host/PlumbModule.h"

namespace plumb {

PlumbDocReactor::PlumbDocReactor() {
    if (AcApDocManager* documents = acDocManagerPtr()) documents->addReactor(this);
}

PlumbDocReactor::~PlumbDocReactor() {
    if (AcApDocManager* documents = acDocManagerPtr()) documents->removeReactor(this);
}

void PlumbDocReactor::documentActivated(AcApDocument* document) {
    if (!moduleState().bDoDocumentActivated || !document || !document->isQuiescent()) return;
    callLisp("c:vq_plumb-doToDo"); // a Lisp layer without a to-do list is fine
}

namespace {
vqContext::Factories recordFactories() {
    return {
        [](const CString& path, AcDbDatabase* database, vqPerProjectData* project) {
            return std::make_unique<vqPerDocData>(path, database, project);
        },
        [](const CString& folder) { return std::make_unique<vqPerProjectData>(folder, kModuleName); },
    };
}
} // namespace

vqPlumbContext::vqPlumbContext()
    : vqContext(recordFactories()), m_docManagerReactor(std::make_unique<PlumbDocReactor>()) {}

vqPlumbContext::~vqPlumbContext() {
    m_docManagerReactor.reset();
}

} // namespace plumb
