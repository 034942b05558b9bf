#include "host/vqContext.h"

#include "database/CDBConnection.h"
#include "util/Folders.h"

#include <algorithm>
#include <utility>

namespace plumb {

vqPerDocData::vqPerDocData(CString path, AcDbDatabase* drawing, vqPerProjectData* itsProject)
    : sFileName(std::move(path))
    , sShortName(GetShortName(sFileName))
    , project(itsProject)
    , database(drawing) {
    ++project->nDocuments;
}

vqPerDocData::~vqPerDocData() {
    --project->nDocuments;
}

vqContext::vqContext(Factories factories) : m_factories(std::move(factories)) {
    m_docReactor = std::make_unique<vqDocReactor>(this);
    m_editorReactor = std::make_unique<vqEditorReactor>(this);
    AcApDocManager* host = acDocManagerPtr();
    if (!host) return;
    const std::unique_ptr<AcApDocumentIterator> open(host->newAcApDocumentIterator());
    for (; open && !open->done(); open->step()) setCurrentDocument(open->document());
}

vqContext::~vqContext() {
    m_docReactor.reset();
    m_editorReactor.reset();
    while (!m_documents.IsEmpty()) m_documents.RemoveHead();
    while (!m_projects.IsEmpty()) m_projects.RemoveHead();
}

vqPerDocData* vqContext::currentDocument() const {
    return m_documents.IsEmpty() ? nullptr : m_documents.GetHead().get();
}

vqPerProjectData* vqContext::currentProject() const {
    const vqPerDocData* document = currentDocument();
    return document ? document->project : nullptr;
}

CDBConnection* vqContext::currentConnection() const {
    const vqPerProjectData* project = currentProject();
    return project ? project->connection() : nullptr;
}

const StandardsTables* vqContext::currentStandards() const {
    const vqPerProjectData* project = currentProject();
    return project ? project->standards() : nullptr;
}

bool vqContext::setCurrentDocument(AcApDocument* document) {
    return document && addOrActivate(document->fileName(), document->database());
}

vqPerProjectData* vqContext::projectOf(const CString& path) {
    const CString folder = GetFolder(path);
    for (const ProjectRecord& project : m_projects)
        if (project->sFolder == folder) return project.get();
    m_projects.AddHead(m_factories.makeProjectRecord(folder));
    return m_projects.GetHead().get();
}

bool vqContext::addOrActivate(const CString& path, AcDbDatabase* database) {
    for (DocumentRecord& document : m_documents) {
        if (document->sFileName != path) continue;
        std::swap(document, m_documents.GetHead());
        return true;
    }
    vqPerProjectData* project = projectOf(path);
    m_documents.AddHead(m_factories.makeDocumentRecord(path, database, project));
    return true;
}

bool vqContext::removeDocument(const CString& path) {
    const auto document = std::find_if(m_documents.begin(), m_documents.end(),
                                       [&](const DocumentRecord& d) { return d->sFileName == path; });
    if (document == m_documents.end()) return true;
    const vqPerProjectData* project = (*document)->project;
    m_documents.RemoveAt(document);
    if (project->nDocuments > 0) return true;
    const auto unused = std::find_if(m_projects.begin(), m_projects.end(),
                                     [&](const ProjectRecord& p) { return p.get() == project; });
    if (unused != m_projects.end()) m_projects.RemoveAt(unused);
    return true;
}

bool vqContext::ConnectProject(bool report) {
    vqPerProjectData* project = currentProject();
    return project && project->ConnectProject(report);
}

void vqContext::disconnect() {
    if (vqPerProjectData* project = currentProject()) project->disconnect();
}

} // namespace plumb
