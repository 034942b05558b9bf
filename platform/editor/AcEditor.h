#pragma once

#include "drawing/AcDb.h"
#include "runtime/AcRxObject.h"

// Hears of what the editor does with drawings.
class VELDRIN_API AcEditorReactor : public AcRxObject {
public:
    ~AcEditorReactor() override;

    virtual void beginSave(AcDbDatabase* database, const char* intendedName);
    // After every save, automatic ones included, with the path that was written.
    virtual void saveComplete(AcDbDatabase* database, const char* actualName);
    virtual void abortSave(AcDbDatabase* database);
    virtual void commandWillStart(const char* globalName);
    virtual void commandEnded(const char* globalName);
    virtual void commandCancelled(const char* globalName);
    virtual void commandFailed(const char* globalName);
    virtual void lispWillStart(const char* firstLine);
    virtual void lispEnded();
    virtual void lispCancelled();
};

// The editor; found under "AcEditor" in acrxSysRegistry().
class VELDRIN_API AcEditor : public AcRxObject {
public:
    ACRX_DECLARE_MEMBERS(AcEditor);
    virtual void addReactor(AcEditorReactor* reactor) = 0;
    virtual void removeReactor(AcEditorReactor* reactor) = 0;
};
