#include "host/vqReactors.h"

#include "editor/aced.h"
#include "host/vqContext.h"
#include "runtime/acrx.h"

namespace plumb {

namespace {

AcEditor* editor() {
    return AcEditor::cast(acrxSysRegistry()->at("AcEditor"));
}

CString textVariable(const char* name) {
    resbuf value{};
    if (acedGetVar(name, &value) != RTNORM || value.restype != RTSTR || !value.resval.rstring) return {};
    const CString text = value.resval.rstring;
    acdbFree(value.resval.rstring);
    return text;
}

} // namespace

vqDocReactor::vqDocReactor(vqContext* context) : m_context(context) {
    if (AcApDocManager* documents = acDocManagerPtr()) documents->addReactor(this);
}

vqDocReactor::~vqDocReactor() {
    if (AcApDocManager* documents = acDocManagerPtr()) documents->removeReactor(this);
}

void vqDocReactor::documentCreateStarted(AcApDocument* document) {
    if (m_context && document) m_context->bCreatingDocument = true;
}

void vqDocReactor::documentCreated(AcApDocument* document) {
    if (!m_context || !document) return;
    m_context->bCreatingDocument = false;
    m_context->setCurrentDocument(document);
}

void vqDocReactor::documentToBeActivated(AcApDocument* document) {
    if (m_context && document) m_context->setCurrentDocument(document);
}

void vqDocReactor::documentToBeDestroyed(AcApDocument* document) {
    if (m_context && document) m_context->removeDocument(document->fileName());
}

vqEditorReactor::vqEditorReactor(vqContext* context) : m_context(context) {
    if (AcEditor* host = editor()) host->addReactor(this);
}

vqEditorReactor::~vqEditorReactor() {
    if (AcEditor* host = editor()) host->removeReactor(this);
}

void vqEditorReactor::saveComplete(AcDbDatabase* database, const char* actualName) {
    const AcApDocument* active = acDocManagerPtr()->mdiActiveDocument();
    if (!active || database != active->database()) return;
    const vqPerDocData* current = m_context->currentDocument();
    if (!current) return;
    const CString path = actualName;
    if (path == current->sFileName) return;       // a plain save
    if (path == textVariable("savefile")) return; // an automatic one, which renames nothing
    const CString oldPath = current->sFileName;
    m_context->removeDocument(oldPath);
    m_context->addOrActivate(path, database);
}

} // namespace plumb
