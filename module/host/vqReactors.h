#pragma once

#include "editor/AcEditor.h"
#include "editor/acDocManager.h"

namespace plumb {

class vqContext;

// Tells the context which drawings come, go and are in front. Registered for as long as it lives.
class vqDocReactor : public AcApDocManagerReactor {
public:
    explicit vqDocReactor(vqContext* context);
    ~vqDocReactor() override;

    void documentCreateStarted(AcApDocument* document) override;
    void documentCreated(AcApDocument* document) override;
    void documentToBeActivated(AcApDocument* document) override;
    void documentToBeDestroyed(AcApDocument* document) override;

private:
    vqContext* m_context;
};

// Tells the context when a drawing was saved under another name, which may move it to another project.
class vqEditorReactor : public AcEditorReactor {
public:
    explicit vqEditorReactor(vqContext* context);
    ~vqEditorReactor() override;

    void saveComplete(AcDbDatabase* database, const char* actualName) override;

private:
    vqContext* m_context;
};

} // namespace plumb
