#pragma once

#include "drawing/AcDb.h"
#include "runtime/AcRxObject.h"

#include <memory>
#include <string>

class AcApDocManager;

// How strongly a document is locked for the one who works on it.
namespace AcAp {
enum DocLockMode {
    kNone = 0x00,
    kAutoWrite = 0x01,
    kNotLocked = 0x02,
    kWrite = 0x04,
    kProtectedAutoWrite = 0x14,
    kRead = 0x20,
    kXWrite = 0x40,
};
} // namespace AcAp

// A drawing that is open in the program.
class VELDRIN_API AcApDocument : public AcRxObject {
public:
    ~AcApDocument() override;

    virtual const char* fileName() const = 0; // full path; the bare name while it was never saved
    virtual const char* docTitle() const = 0;
    virtual AcDbDatabase* database() const = 0;
    virtual AcAp::DocLockMode myLockMode() const = 0;
    // No command, no Lisp call of a module and no modal window is at work in it.
    virtual bool isQuiescent() const = 0;
    virtual bool isReadOnly() const = 0;
};

// Hears of documents. The host's order when one is opened or made: documentCreateStarted, documentCreated,
// (the old one) documentToBeDeactivated, documentToBeActivated, documentBecameCurrent, documentActivated.
// When one is closed: documentToBeDestroyed, documentDestroyed, then the activation of another.
class VELDRIN_API AcApDocManagerReactor : public AcRxObject {
public:
    ~AcApDocManagerReactor() override;

    virtual void documentCreateStarted(AcApDocument* document);
    virtual void documentCreated(AcApDocument* document);
    virtual void documentCreateCanceled(AcApDocument* document);
    virtual void documentToBeDestroyed(AcApDocument* document);
    virtual void documentDestroyed(const char* fileName);
    virtual void documentBecameCurrent(AcApDocument* document);
    virtual void documentToBeActivated(AcApDocument* document);
    virtual void documentToBeDeactivated(AcApDocument* document);
    virtual void documentActivated(AcApDocument* document);
    virtual void documentLockModeWillChange(AcApDocument* document, AcAp::DocLockMode current,
                                            AcAp::DocLockMode next);
    virtual void documentLockModeChanged(AcApDocument* document, AcAp::DocLockMode previous,
                                         AcAp::DocLockMode current);
    virtual void documentTitleUpdated(AcApDocument* document);
};

class VELDRIN_API AcApDocumentIterator {
public:
    virtual ~AcApDocumentIterator();
    virtual bool done() const = 0;
    virtual void step() = 0;
    virtual AcApDocument* document() const = 0;
};

// The open documents. The current one is where commands and handlers work; the active one is what the user
// looks at; they differ only while code works on another drawing than the one in front. The database that
// calls without one work on is a third thing (acdbHostApplicationServices()->workingDatabase()).
class VELDRIN_API AcApDocManager : public AcRxObject {
public:
    ~AcApDocManager() override;

    virtual AcApDocument* curDocument() const = 0;       // null without any
    virtual AcApDocument* mdiActiveDocument() const = 0; // null without any
    virtual AcApDocument* document(const AcDbDatabase* database) const = 0;
    virtual int documentCount() const = 0;
    // The caller deletes it. Documents come in the order in which they were opened.
    virtual AcApDocumentIterator* newAcApDocumentIterator() = 0;

    // Locks nest; each needs its unlock. eLockViolation when another holds a stronger one.
    virtual Acad::ErrorStatus lockDocument(AcApDocument* document, AcAp::DocLockMode mode = AcAp::kWrite,
                                           const char* globalCommandName = nullptr,
                                           const char* localCommandName = nullptr, bool prompt = true) = 0;
    virtual Acad::ErrorStatus unlockDocument(AcApDocument* document) = 0;
    virtual Acad::ErrorStatus setCurDocument(AcApDocument* document, AcAp::DocLockMode mode = AcAp::kNone,
                                             bool activate = false) = 0;
    virtual Acad::ErrorStatus activateDocument(AcApDocument* document) = 0;

    virtual void addReactor(AcApDocManagerReactor* reactor) = 0;
    virtual void removeReactor(AcApDocManagerReactor* reactor) = 0;
};

// Null while no host runs.
VELDRIN_API AcApDocManager* acDocManagerPtr();
