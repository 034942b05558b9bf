#include "editor/SystemVariables.h"
#include "platform/editor/HostTest.h"
#include "runtime/acrx.h"

#include <fstream>

using veldrin::Document;

namespace {

// Keeps what the editor tells of saves, with the document's name at the time.
class SaveListener : public AcEditorReactor {
public:
    std::vector<std::string> notes;

    void beginSave(AcDbDatabase* database, const char* name) override { note("begin", database, name); }
    void saveComplete(AcDbDatabase* database, const char* name) override { note("complete", database, name); }
    void abortSave(AcDbDatabase* database) override { note("abort", database, ""); }

private:
    void note(const std::string& what, AcDbDatabase* database, const std::string& path) {
        const AcApDocument* document = acDocManagerPtr()->document(database);
        const bool isAutomatic = path == veldrin::Host::current().variables().text("SAVEFILE");
        notes.push_back(what + " " + std::filesystem::path(path).filename().string() + " as " +
                        document->docTitle() + (isAutomatic && !path.empty() ? " by itself" : ""));
    }
};

// Files that hold nothing but can be missing or refused.
class SavingTest : public HostTest {
protected:
    SavingTest() {
        const auto write = [this](AcDbDatabase&, const std::string& path, std::string& error) {
            if (isDiskFull)
                error = "Cannot write drawing " + path + ": disk full";
            else
                std::ofstream(path) << "drawing";
            return !isDiskFull;
        };
        veldrin::DrawingFiles files;
        files.save = files.saveCopy = write;
        files.load = [](const std::string& path, std::string& error) -> std::unique_ptr<AcDbDatabase> {
            if (std::filesystem::exists(path)) return std::make_unique<AcDbDatabase>();
            error = "Cannot open drawing " + path + ": no such file";
            return nullptr;
        };
        documents().setDrawingFiles(files);
        AcEditor::cast(acrxSysRegistry()->at("AcEditor"))->addReactor(&listener);
    }
    ~SavingTest() override { host->editorEvents().removeReactor(&listener); }

    bool isDiskFull = false;
    SaveListener listener;
};

TEST_F(SavingTest, aDrawingIsRenamedAfterItsReactorsHaveHeard) {
    Document* document = documents().newDocument();
    EXPECT_FALSE(documents().save(document));
    EXPECT_NE(takePrinted().find("no file yet"), std::string::npos);
    EXPECT_TRUE(documents().saveAs(document, folder.file("a")));
    EXPECT_EQ(document->path(), folder.file("a.vqd"));
    EXPECT_EQ(document->database()->getFilename(), folder.file("a.vqd"));
    EXPECT_TRUE(documents().save(document));
    EXPECT_TRUE(documents().saveAs(document, folder.file("b.vqd")));
    EXPECT_EQ(listener.notes,
              (std::vector<std::string>{"begin a.vqd as Drawing1.vqd", "complete a.vqd as Drawing1.vqd",
                                        "begin a.vqd as a.vqd", "complete a.vqd as a.vqd",
                                        "begin b.vqd as a.vqd", "complete b.vqd as a.vqd"}));
}

TEST_F(SavingTest, anAutomaticSaveIsMarkedAndLeavesTheName) {
    Document* document = documents().newDocument(folder.file("a"));
    EXPECT_TRUE(documents().autoSave(document));
    const std::string copy = host->variables().text("SAVEFILE");
    ASSERT_EQ(listener.notes.size(), 2U);
    EXPECT_TRUE(listener.notes[1].ends_with("as a.vqd by itself")) << listener.notes[1];
    EXPECT_TRUE(std::filesystem::exists(copy));
    EXPECT_EQ(document->path(), folder.file("a.vqd"));

    // A real save that fails keeps the copy; one that succeeds needs it no more.
    isDiskFull = true;
    EXPECT_FALSE(documents().save(document));
    EXPECT_EQ(listener.notes.back(), "abort  as a.vqd");
    EXPECT_EQ(host->variables().text("SAVEFILE"), copy);
    EXPECT_NE(takePrinted().find("disk full\n"), std::string::npos);
    isDiskFull = false;
    EXPECT_TRUE(documents().save(document));
    EXPECT_EQ(listener.notes.back(), "complete a.vqd as a.vqd");
    EXPECT_FALSE(std::filesystem::exists(copy));
    EXPECT_EQ(host->variables().text("SAVEFILE"), "");
}

TEST_F(SavingTest, whatFailsChangesNothing) {
    Document* first = documents().newDocument(folder.file("a"));
    EXPECT_TRUE(documents().save(first));
    Document* second = documents().newDocument(folder.file("b"));
    EXPECT_FALSE(documents().saveAs(second, folder.file("a")));
    EXPECT_NE(takePrinted().find("is open"), std::string::npos);
    EXPECT_EQ(second->path(), folder.file("b.vqd"));

    EXPECT_EQ(documents().openDocument(folder.file("missing")), nullptr);
    EXPECT_EQ(takePrinted(), "Cannot open drawing " + folder.file("missing.vqd") + ": no such file\n");
    EXPECT_EQ(documents().documentCount(), 2);
    EXPECT_EQ(documents().current(), second);

    // Opening what is open brings it to the front.
    EXPECT_EQ(documents().openDocument(folder.file("a")), first);
    EXPECT_EQ(documents().documentCount(), 2);
    EXPECT_EQ(documents().active(), first);
}

} // namespace
