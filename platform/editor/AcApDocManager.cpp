#include "drawing/DatabaseRegistry.h"
#include "editor/DocumentManager.h"
#include "runtime/Host.h"

AcApDocManagerReactor::~AcApDocManagerReactor() = default;
void AcApDocManagerReactor::documentCreateStarted(AcApDocument*) {}
void AcApDocManagerReactor::documentCreated(AcApDocument*) {}
void AcApDocManagerReactor::documentCreateCanceled(AcApDocument*) {}
void AcApDocManagerReactor::documentToBeDestroyed(AcApDocument*) {}
void AcApDocManagerReactor::documentDestroyed(const char*) {}
void AcApDocManagerReactor::documentBecameCurrent(AcApDocument*) {}
void AcApDocManagerReactor::documentToBeActivated(AcApDocument*) {}
void AcApDocManagerReactor::documentToBeDeactivated(AcApDocument*) {}
void AcApDocManagerReactor::documentActivated(AcApDocument*) {}
void AcApDocManagerReactor::documentLockModeWillChange(AcApDocument*, AcAp::DocLockMode, AcAp::DocLockMode) {}
void AcApDocManagerReactor::documentLockModeChanged(AcApDocument*, AcAp::DocLockMode, AcAp::DocLockMode) {}
void AcApDocManagerReactor::documentTitleUpdated(AcApDocument*) {}

AcApDocumentIterator::~AcApDocumentIterator() = default;
AcApDocManager::~AcApDocManager() = default;

AcApDocManager* acDocManagerPtr() {
    return veldrin::Host::exists() ? &veldrin::Host::current().documents() : nullptr;
}

namespace veldrin {

namespace {

// Over the documents as they were when it was made.
class Iterator : public AcApDocumentIterator {
public:
    explicit Iterator(std::vector<AcApDocument*> documents) : m_documents(std::move(documents)) {}
    bool done() const override { return m_at >= m_documents.size(); }
    void step() override { ++m_at; }
    AcApDocument* document() const override { return done() ? nullptr : m_documents[m_at]; }

private:
    std::vector<AcApDocument*> m_documents;
    std::size_t m_at = 0;
};

} // namespace

AcApDocumentIterator* DocumentManager::newAcApDocumentIterator() {
    std::vector<AcApDocument*> documents;
    for (const auto& document : m_documents) documents.push_back(document.get());
    return new Iterator(std::move(documents));
}

AcApDocument* DocumentManager::document(const AcDbDatabase* database) const {
    for (const auto& document : m_documents)
        if (database && document->database() == database) return document.get();
    return nullptr;
}

Document* DocumentManager::own(const AcApDocument* document) const {
    for (const auto& candidate : m_documents)
        if (candidate.get() == document) return candidate.get();
    return nullptr;
}

Acad::ErrorStatus DocumentManager::lockDocument(AcApDocument* document, AcAp::DocLockMode mode, const char*,
                                                const char*, bool) {
    Document* locked = own(document);
    if (!locked) return Acad::eNoDocument;
    if (mode == AcAp::kNone || mode == AcAp::kNotLocked) return Acad::eInvalidInput;
    const std::uint32_t activity = m_activities.innermost();
    if (!locked->admits(mode, activity)) return Acad::eLockViolation;
    std::vector<Document::Lock> locks = locked->m_locks;
    locks.push_back({mode, activity});
    setLocks(*locked, std::move(locks));
    return Acad::eOk;
}

Acad::ErrorStatus DocumentManager::unlockDocument(AcApDocument* document) {
    Document* locked = own(document);
    if (!locked) return Acad::eNoDocument;
    if (locked->m_locks.empty()) return Acad::eInvalidInput;
    std::vector<Document::Lock> locks = locked->m_locks;
    // The last one that is the caller's; a command that waited may end behind others.
    const std::uint32_t activity = m_activities.innermost();
    auto mine = std::find_if(locks.rbegin(), locks.rend(),
                             [activity](const Document::Lock& lock) { return lock.activity == activity; });
    if (mine == locks.rend()) mine = locks.rbegin();
    locks.erase(std::next(mine).base());
    setLocks(*locked, std::move(locks));
    return Acad::eOk;
}

void DocumentManager::setLocks(Document& document, std::vector<Document::Lock> locks) {
    const AcAp::DocLockMode before = document.myLockMode();
    const AcAp::DocLockMode after = Document::strongest(locks);
    if (before != after)
        m_reactors.tell(&AcApDocManagerReactor::documentLockModeWillChange, &document, before, after);
    document.m_locks = std::move(locks);
    if (before != after)
        m_reactors.tell(&AcApDocManagerReactor::documentLockModeChanged, &document, before, after);
}

Acad::ErrorStatus DocumentManager::setCurDocument(AcApDocument* document, AcAp::DocLockMode mode,
                                                  bool activateIt) {
    Document* next = own(document);
    if (!next) return Acad::eNoDocument;
    if (mode != AcAp::kNone && mode != AcAp::kNotLocked)
        if (const Acad::ErrorStatus status = lockDocument(document, mode, nullptr, nullptr, false);
            status != Acad::eOk)
            return status;
    if (activateIt)
        activate(next);
    else
        makeCurrent(next);
    return Acad::eOk;
}

Acad::ErrorStatus DocumentManager::activateDocument(AcApDocument* document) {
    Document* next = own(document);
    if (!next) return Acad::eNoDocument;
    if (!mayChangeDocuments()) return Acad::eNotApplicable;
    return activate(next) ? Acad::eOk : Acad::eNoDocument;
}

void DocumentManager::makeCurrent(Document* document) {
    if (m_current == document) return;
    m_current = document;
    Host::current().databases().setWorking(document ? document->database() : nullptr);
    if (document)
        m_reactors.tell(&AcApDocManagerReactor::documentBecameCurrent, static_cast<AcApDocument*>(document));
}

// A reactor may close the document that is about to come to the front; then it does not.
bool DocumentManager::activate(Document* document, bool isNew) {
    if (m_active == document) {
        makeCurrent(document);
        return true;
    }
    AcApDocument* told = document;
    if (m_active)
        m_reactors.tell(&AcApDocManagerReactor::documentToBeDeactivated,
                        static_cast<AcApDocument*>(m_active));
    m_reactors.tell(&AcApDocManagerReactor::documentToBeActivated, told);
    if (!own(told)) return false;
    m_active = document;
    std::erase(m_activationOrder, document);
    m_activationOrder.push_back(document);
    makeCurrent(document);
    if (isNew) sendToModules(AcRx::kLoadDwgMsg, document);
    if (own(told)) m_reactors.tell(&AcApDocManagerReactor::documentActivated, told);
    return own(told) != nullptr;
}

} // namespace veldrin
