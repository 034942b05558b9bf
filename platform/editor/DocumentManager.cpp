#include "editor/DocumentManager.h"

#include "drawing/DatabaseRegistry.h"
#include "editor/CommandLine.h"
#include "editor/EditorEvents.h"
#include "files/DrawingHold.h"
#include "runtime/Host.h"
#include "runtime/ModuleLoader.h"
#include "runtime/afx.h"
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

// The copy that a program wrote before it ended badly, if the user wants it. One that is not wanted is set
// aside, since the next one would replace it.
std::string recoveredCopy(const std::string& drawing) {
    const std::string copy = AutoSaves::copyBeside(drawing);
    std::error_code none;
    if (!fs::exists(copy, none)) return {};
    const std::string aside = copy + ".bak";
    const std::string question = fmt::format(
        "The program that had {} open ended badly and left an automatic save, {}.\n\nGo on with the "
        "automatic save? If not, it is kept as {}.",
        drawing, copy, fs::path(aside).filename().string());
    if (MessageBox(question.c_str(), "Veldrin", MB_YESNO) == IDYES) return copy;
    fs::rename(copy, aside, none);
    return {};
}

} // namespace

std::string drawingPath(const std::string& path) {
    const fs::path given = absolutePath(path);
    return given.has_extension() ? given.string() : given.string() + kEnding;
}

DocumentManager::DocumentManager() = default;
DocumentManager::~DocumentManager() = default;

void DocumentManager::setDrawingFiles(DrawingFiles files) {
    m_autoSaves.setWriter(files.saveCopy);
    m_files = std::move(files);
}

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
    DrawingHold::Attempt attempt;
    if (!path.empty()) attempt = DrawingHold::take(name);
    if (!attempt.holder.empty()) {
        complain(fmt::format("Cannot make drawing {}: it is in use by {}.", name, attempt.holder));
        return nullptr;
    }
    Document* document = admit(name, [] { return std::make_unique<AcDbDatabase>(); });
    if (document) document->m_hold = std::move(attempt.hold);
    return document;
}

Document* DocumentManager::openDocument(const std::string& path, Opening opening) {
    if (!mayChangeDocuments()) return nullptr;
    if (Document* open = find(path)) return activate(open) ? open : nullptr;
    const std::string name = drawingPath(path);
    if (!m_files.load) {
        complain(fmt::format("Cannot open drawing {}: drawing files cannot be read.", name));
        return nullptr;
    }
    std::error_code none;
    if (opening == Opening::kToLook || !fs::exists(name, none)) {
        Document* const looked = openFile(name, {});
        if (looked) looked->m_readOnly = true;
        return looked;
    }
    DrawingHold::Attempt attempt = DrawingHold::take(name);
    Document* document = openFile(name, attempt.hold ? recoveredCopy(name) : std::string());
    if (!document) return nullptr;
    document->m_hold = std::move(attempt.hold);
    document->m_readOnly |= attempt.isDenied || !attempt.holder.empty();
    if (!attempt.holder.empty())
        complain(fmt::format("Drawing {} is in use by {}; it is open read-only.", name, attempt.holder));
    if (attempt.isUnlockable)
        complain(fmt::format("Drawing {}: its folder keeps no locks, so nothing tells who else has it open.",
                             name));
    return document;
}

// From its own file, or with what a copy of it holds.
Document* DocumentManager::openFile(const std::string& name, const std::string& recovered) {
    std::string error;
    Document* document =
        admit(name, [&] { return m_files.load(recovered.empty() ? name : recovered, error); });
    if (!document) {
        complain(error.empty() ? fmt::format("Cannot open drawing {}.", name) : error);
        return nullptr;
    }
    if (recovered.empty()) return document;
    document->database()->setModified(true);
    m_autoSaves.adopt(*document, recovered);
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
    m_autoSaves.restart(*document);
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
    m_clipboard = {};
}

void DocumentManager::remove(Document* document) {
    m_reactors.tell(&AcApDocManagerReactor::documentToBeDestroyed, static_cast<AcApDocument*>(document));
    sendToModules(AcRx::kUnloadDwgMsg, document);
    m_autoSaves.close(*document);
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
    const Document* const other = find(name);
    if (other && other != document) {
        complain(fmt::format("Cannot save as {}: that drawing is open.", name));
        return false;
    }
    DrawingHold::Attempt attempt;
    const bool needsHold = !document->m_hold || other != document;
    if (needsHold) attempt = DrawingHold::take(name);
    if (!attempt.holder.empty()) {
        complain(fmt::format("Cannot save as {}: it is in use by {}.", name, attempt.holder));
        return false;
    }
    if (!writeForGood(*document, name)) return false;
    // Reactors of the save compare its path with the name that the document had.
    const bool renamed = document->path() != name;
    document->m_readOnly = false;
    if (needsHold) document->m_hold = std::move(attempt.hold);
    document->setName(name);
    if (renamed)
        m_reactors.tell(&AcApDocManagerReactor::documentTitleUpdated, static_cast<AcApDocument*>(document));
    return true;
}

bool DocumentManager::autoSave(AcApDocument* saved) {
    Document* document = own(saved);
    return document && m_autoSaves.saveNow(*document);
}

// What was written by itself before counts no more when reactors hear of this save; its file goes only when
// the drawing is safe.
bool DocumentManager::writeForGood(Document& document, const std::string& path) {
    VariableStore copy;
    if (auto node = document.m_variables.extract("SAVEFILE")) copy.insert(std::move(node));
    const bool written = write(document, path);
    document.m_variables.merge(copy);
    if (written) m_autoSaves.drop(document);
    return written;
}

bool DocumentManager::write(Document& document, const std::string& path) {
    EditorEvents& events = Host::current().editorEvents();
    AcDbDatabase* database = document.database();
    if (!m_files.save) {
        complain(fmt::format("Cannot write drawing {}: drawing files cannot be written.", path));
        return false;
    }
    events.tell(&AcEditorReactor::beginSave, database, path.c_str());
    std::string error;
    if (!m_files.save(*database, path, error)) {
        events.tell(&AcEditorReactor::abortSave, database);
        complain(error.empty() ? fmt::format("Cannot write drawing {}.", path) : error);
        return false;
    }
    events.tell(&AcEditorReactor::saveComplete, database, path.c_str());
    return true;
}

} // namespace veldrin
