#include "editor/DocumentManager.h"

#include "drawing/DatabaseRegistry.h"
#include "editor/CommandLine.h"
#include "editor/EditorEvents.h"
#include "runtime/Host.h"
#include "runtime/ModuleLoader.h"
#include "ui/UiBackend.h"

#include <filesystem>
#include <fmt/format.h>
#include <unistd.h>

namespace fs = std::filesystem;

namespace veldrin {

namespace {

constexpr const char* kEnding = ".vqd";

void complain(const std::string& text) {
    CommandLine& line = Host::current().commandLine();
    line.freshLine();
    line.print(text + "\n");
}

std::string absolutePath(const std::string& path) {
    std::error_code error;
    const fs::path absolute = fs::absolute(path, error);
    return (error ? fs::path(path) : absolute).lexically_normal().string();
}

} // namespace

std::string drawingPath(const std::string& path) {
    const fs::path given = absolutePath(path);
    return given.has_extension() ? given.string() : given.string() + kEnding;
}

DocumentManager::DocumentManager() = default;
DocumentManager::~DocumentManager() = default;

bool DocumentManager::mayChangeDocuments() const {
    if (Host::current().ui().openWindows() == 0) return true;
    complain("Drawings cannot be opened, closed or exchanged while a dialog is open.");
    return false;
}

Document* DocumentManager::find(const std::string& name) const {
    for (const auto& document : m_documents)
        if (document->path() == name) return document.get();
    if (name.empty()) return nullptr;
    const std::string given = drawingPath(name);
    for (const auto& document : m_documents) {
        if (!document->isTitled()) continue;
        std::error_code error;
        if (document->path() == given || fs::equivalent(document->path(), given, error))
            return document.get();
    }
    return nullptr;
}

Document* DocumentManager::newDocument(const std::string& path) {
    if (!mayChangeDocuments()) return nullptr;
    const std::string name =
        path.empty() ? fmt::format("Drawing{}{}", ++m_lastNumber, kEnding) : drawingPath(path);
    if (!path.empty() && find(name)) {
        complain(fmt::format("Cannot make drawing {}: it is open already.", name));
        return nullptr;
    }
    return admit(name, [] { return std::make_unique<AcDbDatabase>(); });
}

Document* DocumentManager::openDocument(const std::string& path) {
    if (!mayChangeDocuments()) return nullptr;
    if (Document* open = find(path)) return activate(open) ? open : nullptr;
    const std::string name = drawingPath(path);
    if (!m_files.load) {
        complain(fmt::format("Cannot open drawing {}: drawing files cannot be read.", name));
        return nullptr;
    }
    std::string error;
    Document* document = admit(name, [&] { return m_files.load(name, error); });
    if (!document) complain(error.empty() ? fmt::format("Cannot open drawing {}.", name) : error);
    return document;
}

Document* DocumentManager::admit(const std::string& fileName, const Maker& makeDatabase) {
    auto made = std::make_unique<Document>(fileName, false);
    std::error_code none;
    made->m_readOnly = made->isTitled() && fs::exists(fileName, none) && access(fileName.c_str(), W_OK) != 0;
    Document* document = made.get();
    AcApDocument* told = document;
    m_reactors.tell(&AcApDocManagerReactor::documentCreateStarted, told);
    document->m_database = makeDatabase();
    if (!document->m_database) {
        m_reactors.tell(&AcApDocManagerReactor::documentCreateCanceled, told);
        return nullptr;
    }
    document->setName(fileName);
    m_documents.push_back(std::move(made));
    m_reactors.tell(&AcApDocManagerReactor::documentCreated, told);
    return own(told) && activate(document, true) ? document : nullptr;
}

bool DocumentManager::closeDocument(AcApDocument* closing) {
    Document* document = own(closing);
    if (!document || !mayChangeDocuments()) return false;
    if (document->isLocked()) {
        complain(fmt::format("Cannot close drawing {}: it is in use.", document->path()));
        return false;
    }
    const bool wasInFront = document == m_active || document == m_current;
    remove(document);
    if (wasInFront && !m_activationOrder.empty()) activate(m_activationOrder.back());
    return true;
}

void DocumentManager::closeAll() {
    while (!m_documents.empty()) remove(m_documents.back().get());
}

void DocumentManager::remove(Document* document) {
    m_reactors.tell(&AcApDocManagerReactor::documentToBeDestroyed, static_cast<AcApDocument*>(document));
    sendToModules(AcRx::kUnloadDwgMsg, document);
    dropAutoSave(*document);
    std::erase(m_activationOrder, document);
    if (m_active == document) m_active = nullptr;
    if (m_current == document) m_current = nullptr;
    DatabaseRegistry& databases = Host::current().databases();
    if (databases.working() == document->database())
        databases.setWorking(m_current ? m_current->database() : nullptr);
    const auto place =
        std::find_if(m_documents.begin(), m_documents.end(),
                     [document](const auto& candidate) { return candidate.get() == document; });
    const std::unique_ptr<Document> gone = std::move(*place);
    m_documents.erase(place);
    const std::string name = gone->path();
    gone->m_database.reset();
    m_reactors.tell(&AcApDocManagerReactor::documentDestroyed, name.c_str());
}

// A module registers for a document, or forgets it, while that document is current.
void DocumentManager::sendToModules(AcRx::AppMsgCode message, Document* document) {
    Document* before = m_current;
    makeCurrent(document);
    Host::current().modules().sendToAll(message);
    if (own(before)) makeCurrent(before);
}

void DocumentManager::forEachAsCurrent(const std::function<void(Document&)>& work) {
    std::vector<Document*> documents;
    for (const auto& document : m_documents) documents.push_back(document.get());
    Document* before = m_current;
    for (Document* document : documents) {
        if (!own(document)) continue;
        makeCurrent(document);
        work(*document);
    }
    if (own(before)) makeCurrent(before);
}

bool DocumentManager::save(AcApDocument* saved) {
    Document* document = own(saved);
    if (!document) return false;
    if (!document->isTitled()) {
        complain(fmt::format("Cannot save {}: the drawing has no file yet.", document->path()));
        return false;
    }
    if (document->isReadOnly()) {
        complain(fmt::format("Cannot save {}: the file is read-only.", document->path()));
        return false;
    }
    return writeForGood(*document, document->path());
}

bool DocumentManager::saveAs(AcApDocument* saved, const std::string& path) {
    Document* document = own(saved);
    if (!document || path.empty() || !mayChangeDocuments()) return false;
    const std::string name = drawingPath(path);
    if (const Document* other = find(name); other && other != document) {
        complain(fmt::format("Cannot save as {}: that drawing is open.", name));
        return false;
    }
    if (!writeForGood(*document, name)) return false;
    // Reactors of the save compare its path with the name that the document had.
    const bool renamed = document->path() != name;
    document->m_readOnly = false;
    document->setName(name);
    if (renamed)
        m_reactors.tell(&AcApDocManagerReactor::documentTitleUpdated, static_cast<AcApDocument*>(document));
    return true;
}

bool DocumentManager::autoSave(AcApDocument* saved) {
    Document* document = own(saved);
    if (!document) return false;
    const std::string stem = fs::path(document->path()).stem().string();
    const std::string folder = Host::current().variables().text("TEMPPREFIX");
    const std::string path = fmt::format("{}{}_{}.sv$", folder, stem, getpid());
    document->m_variables["SAVEFILE"] = path;
    if (write(*document, path, m_files.saveCopy)) return true;
    document->m_variables.erase("SAVEFILE");
    return false;
}

// What was written by itself before counts no more when reactors hear of this save; its file goes only when
// the drawing is safe.
bool DocumentManager::writeForGood(Document& document, const std::string& path) {
    VariableStore copy;
    if (auto node = document.m_variables.extract("SAVEFILE")) copy.insert(std::move(node));
    const bool written = write(document, path, m_files.save);
    document.m_variables.merge(copy);
    if (!written) return false;
    dropAutoSave(document);
    return true;
}

void DocumentManager::dropAutoSave(Document& document) {
    const auto copy = document.m_variables.find("SAVEFILE");
    if (copy == document.m_variables.end()) return;
    std::error_code ignored; // the copy may be gone already
    fs::remove(std::get<std::string>(copy->second), ignored);
    document.m_variables.erase(copy);
}

bool DocumentManager::write(Document& document, const std::string& path, const DrawingFiles::Save& save) {
    EditorEvents& events = Host::current().editorEvents();
    AcDbDatabase* database = document.database();
    if (!save) {
        complain(fmt::format("Cannot write drawing {}: drawing files cannot be written.", path));
        return false;
    }
    events.tell(&AcEditorReactor::beginSave, database, path.c_str());
    std::string error;
    if (!save(*database, path, error)) {
        events.tell(&AcEditorReactor::abortSave, database);
        complain(error.empty() ? fmt::format("Cannot write drawing {}.", path) : error);
        return false;
    }
    events.tell(&AcEditorReactor::saveComplete, database, path.c_str());
    return true;
}

} // namespace veldrin
