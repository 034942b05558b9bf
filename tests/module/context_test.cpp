#include "database/CDBConnection.h"
#include "drawing/AcDbDatabase.h"
#include "editor/DocumentManager.h"
#include "host/PlumbModule.h"
#include "host/vqPlumbContext.h"
#include "module/ModuleTest.h"

using namespace plumb;

class Context : public ModuleTest {
protected:
    vqPlumbContext& context() { return *moduleState().theContext; }
    veldrin::DocumentManager& documents() { return host->documents(); }

    // Names of the drawings, current one first, and behind them the projects with their counts.
    std::string records() {
        std::string text;
        for (const auto& document : context().documents()) text += document->sShortName + " ";
        text += "|";
        for (const auto& project : context().projects())
            text += " " + project->sFolder.substr(project->sFolder.find_last_of('/') + 1) + ":" +
                    std::to_string(project->nDocuments);
        return text;
    }
    // Without the unnamed drawing that every host of these tests starts with.
    void closeUnnamed() { documents().closeDocument(documents().find("Drawing1.vqd")); }
};

TEST_F(Context, DrawingsOfOneFolderShareAProject) {
    folder.makeFolder("a");
    folder.makeFolder("b");
    EXPECT_EQ(records(), " | :1") << "unnamed: no short name, no folder";
    documents().newDocument(folder.file("a/one.vqd"));
    documents().newDocument(folder.file("a/two.vqd"));
    documents().newDocument(folder.file("b/three.vqd"));
    closeUnnamed();
    EXPECT_EQ(records(), "three.vqd two.vqd one.vqd | b:1 a:2");

    documents().closeDocument(documents().find(folder.file("a/one.vqd")));
    EXPECT_EQ(context().projects().GetCount(), 2);
    documents().closeDocument(documents().find(folder.file("a/two.vqd")));
    EXPECT_EQ(records(), "three.vqd | b:1");
}

TEST_F(Context, ActivatingChangesPlacesAndNothingElse) {
    folder.makeFolder("a");
    documents().newDocument(folder.file("a/one.vqd"));
    documents().newDocument(folder.file("a/two.vqd"));
    documents().newDocument(folder.file("a/three.vqd"));
    closeUnnamed();
    const std::string order = records();
    const vqPerProjectData* project = context().currentProject();
    documents().activateDocument(documents().find(folder.file("a/one.vqd")));
    EXPECT_EQ(context().currentDocument()->sShortName, "one.vqd");
    EXPECT_EQ(context().documents().GetCount(), 3);
    EXPECT_EQ(context().currentProject(), project);
    EXPECT_EQ(project->nDocuments, 3);
    documents().activateDocument(documents().find(folder.file("a/three.vqd")));
    EXPECT_EQ(records(), order) << "one exchange undoes the other";
}

TEST_F(Context, SavingUnderAnotherNameMovesTheDrawing) {
    folder.makeFolder("a");
    folder.makeFolder("b");
    documents().newDocument(folder.file("a/one.vqd"));
    closeUnnamed();
    const vqPerDocData* record = context().currentDocument();
    documents().save(documents().current());
    EXPECT_EQ(context().currentDocument(), record) << "a plain save renames nothing";
    documents().autoSave(documents().current());
    EXPECT_EQ(context().currentDocument(), record) << "nor does an automatic one";
    documents().saveAs(documents().current(), folder.file("a/two.vqd"));
    EXPECT_EQ(records(), "two.vqd | a:1");
    documents().saveAs(documents().current(), folder.file("b/two.vqd"));
    EXPECT_EQ(records(), "two.vqd | b:1");
    EXPECT_EQ(context().currentDocument()->database, documents().current()->database());
}

TEST_F(Context, AFoundDatabaseThatDoesNotOpenFailsToConnect) {
    folder.makeFolder("a");
    documents().newDocument(folder.file("a/one.vqd"));
    takePrinted();
    EXPECT_FALSE(context().ConnectProject(false));
    EXPECT_EQ(takePrinted(), "");
    EXPECT_FALSE(context().ConnectProject(true));
    EXPECT_EQ(takePrinted(), "\nError finding the plumbing database."
                             "\nCannot connect to the plumbing database (Connection Error Code 1).");
    folder.touch("a/P vq_plumb.vq");
    EXPECT_FALSE(context().ConnectProject(true));
    EXPECT_EQ(takePrinted(), "\nCannot connect to the plumbing database (Connection Error Code 1).");
    EXPECT_FALSE(context().currentConnection()->IsOpen()) << "nobody could repair it";
    EXPECT_EQ(lisp("(vq_plumb-disconnect)"), "nil");
    EXPECT_EQ(context().currentConnection(), nullptr);
}

TEST_F(Context, WithoutADrawingThereIsNothingToAsk) {
    documents().closeDocument(documents().current());
    EXPECT_EQ(context().currentDocument(), nullptr);
    EXPECT_EQ(context().currentConnection(), nullptr);
    EXPECT_FALSE(context().ConnectProject(true));
    context().disconnect();
}

TEST_F(Context, ActivationCallsTheToDoFunctionUnlessSwitchedOff) {
    folder.makeFolder("a");
    lisp("(setq calls 0) (defun c:vq_plumb-doToDo () (setq calls (1+ calls)))");
    documents().newDocument(folder.file("a/one.vqd"));
    EXPECT_EQ(lisp("calls"), "1");
    lisp("(vq_plumb-setDoDocumentActivated nil)");
    documents().newDocument(folder.file("a/two.vqd"));
    EXPECT_EQ(lisp("calls"), "1");
    lisp("(vq_plumb-setDoDocumentActivated)");
    EXPECT_FALSE(moduleState().bDoDocumentActivated) << "no argument leaves it";
    lisp("(vq_plumb-setDoDocumentActivated T)");
    documents().newDocument(folder.file("a/three.vqd"));
    EXPECT_EQ(lisp("calls"), "2");

    const veldrin::ActivityScope busy(veldrin::ActivityStack::Kind::Command, "LINE");
    documents().activateDocument(documents().find(folder.file("a/one.vqd")));
    EXPECT_EQ(lisp("calls"), "2") << "not while a command runs";
}
