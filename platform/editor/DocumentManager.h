#pragma once

#include "editor/Activity.h"
#include "editor/AutoSaves.h"
#include "editor/Document.h"
#include "editor/ReactorList.h"
#include "runtime/acrx.h"

#include <functional>
#include <string>

namespace veldrin {

// The file that a drawing's name means: absolute, with ".vqd" where the ending is missing.
VELDRIN_API std::string drawingPath(const std::string& path);

// How drawings come from files and go there. What fails is told in `error`, in one line that names the file.
struct DrawingFiles {
    using Save = std::function<bool(AcDbDatabase& database, const std::string& path, std::string& error)>;
    std::function<std::unique_ptr<AcDbDatabase>(const std::string& path, std::string& error)>
        load;      // null: failed
    Save save;     // the drawing's own file from then on
    Save saveCopy; // the drawing stays as modified as it was
};

// Copies of entities, for any drawing of the host, and the point that they are placed by.
struct Clipboard {
    std::unique_ptr<AcDbDatabase> drawing; // null: nothing was copied
    AcGePoint3d base;
};

// The documents of a host, for modules (AcApDocManager) and for the host itself. Relative paths start at the
// working directory. What fails leaves everything as it was and prints one line on the command line, where
// the result is a null or false; no other document is touched.
class VELDRIN_API DocumentManager : public AcApDocManager {
public:
    DocumentManager();
    ~DocumentManager() override;

    // Without them, opening and saving fail.
    void setDrawingFiles(DrawingFiles files);

    // A new drawing "Drawing1.vqd", "Drawing2.vqd", ..., current and active; with a path it has that name
    // before the file is there.
    Document* newDocument(const std::string& path = {});
    // Opens a drawing and makes it current and active; one that is open already is activated. One that
    // another program holds is read-only, and a line tells who has it. After a crash the user is asked
    // whether to go on with the copy that was written automatically.
    // Who only looks asks and holds nothing, and cannot save under that name.
    enum class Opening { kToWork, kToLook };
    Document* openDocument(const std::string& path, Opening opening = Opening::kToWork);
    // Unsaved changes are dropped. Refused while the document is locked, as it is by a command that waits.
    bool closeDocument(AcApDocument* document);
    // Ends all, without activating one after the other.
    void closeAll();

    // Under its own name. An unnamed one is refused.
    bool save(AcApDocument* document);
    // Under another name, which the document has from then on; ".vqd" is added where the ending is missing.
    bool saveAs(AcApDocument* document, const std::string& path);
    // A copy for the case of a crash; the document keeps its name, the variable SAVEFILE has the copy's.
    bool autoSave(AcApDocument* document);
    AutoSaves& autoSaves() { return m_autoSaves; }

    const std::vector<std::unique_ptr<Document>>& documents() const { return m_documents; }
    // By the name that fileName() gives, or by a path that means the same; null when none is open.
    Document* find(const std::string& name) const;
    Document* current() const { return m_current; }
    Document* active() const { return m_active; }
    // Runs the work with each document current in turn, and puts the current one back.
    void forEachAsCurrent(const std::function<void(Document&)>& work);

    Clipboard& clipboard() { return m_clipboard; }
    ActivityStack& activities() { return m_activities; }
    // False, with a line printed, while a modal window is open: documents may not come, go or change places.
    bool mayChangeDocuments() const;

    AcApDocument* curDocument() const override { return m_current; }
    AcApDocument* mdiActiveDocument() const override { return m_active; }
    AcApDocument* document(const AcDbDatabase* database) const override;
    int documentCount() const override { return static_cast<int>(m_documents.size()); }
    AcApDocumentIterator* newAcApDocumentIterator() override;
    Acad::ErrorStatus lockDocument(AcApDocument* document, AcAp::DocLockMode mode,
                                   const char* globalCommandName, const char* localCommandName,
                                   bool prompt) override;
    Acad::ErrorStatus unlockDocument(AcApDocument* document) override;
    Acad::ErrorStatus setCurDocument(AcApDocument* document, AcAp::DocLockMode mode, bool activate) override;
    Acad::ErrorStatus activateDocument(AcApDocument* document) override;
    void addReactor(AcApDocManagerReactor* reactor) override { m_reactors.add(reactor); }
    void removeReactor(AcApDocManagerReactor* reactor) override { m_reactors.remove(reactor); }

private:
    using Maker = std::function<std::unique_ptr<AcDbDatabase>()>;

    Document* own(const AcApDocument* document) const; // null when it is none of ours (any more)
    Document* admit(const std::string& fileName, const Maker& makeDatabase);
    Document* openFile(const std::string& path, const std::string& recovered);
    void makeCurrent(Document* document);
    bool activate(Document* document, bool isNew = false);
    void remove(Document* document);
    void sendToModules(AcRx::AppMsgCode message, Document* document);
    bool write(Document& document, const std::string& path);
    bool writeForGood(Document& document, const std::string& path);
    void setLocks(Document& document, std::vector<Document::Lock> locks);

    std::vector<std::unique_ptr<Document>> m_documents;
    std::vector<Document*> m_activationOrder; // the one in front last
    Document* m_current = nullptr;
    Document* m_active = nullptr;
    int m_lastNumber = 0;
    DrawingFiles m_files;
    Clipboard m_clipboard;
    AutoSaves m_autoSaves{*this};
    ReactorList<AcApDocManagerReactor> m_reactors;
    ActivityStack m_activities;
};

} // namespace veldrin
