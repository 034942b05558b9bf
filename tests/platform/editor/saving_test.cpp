#include "drawing/AcDbDatabase.h"
#include "editor/SystemVariables.h"
#include "files/DrawingHold.h"
#include "platform/editor/HostTest.h"
#include "runtime/acrx.h"
#include "ui/UiBackend.h"

#include <chrono>
#include <fstream>
#include <thread>

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

// Automatic saves under a clock that the test moves.
class AutoSaveTest : public HostTest {
protected:
    AutoSaveTest() {
        documents().autoSaves().setClock([this] { return now; });
        documents().newDocument(folder.file("a"));
        change();
        EXPECT_TRUE(documents().save(documents().current()));
    }
    ~AutoSaveTest() override { host.reset(); } // it looks at the clock at its end

    void change() {
        const veldrin::UndoStep step("test");
        host->variables().set("LTSCALE", scale() + 1.0);
    }
    double scale() { return host->variables().real("LTSCALE"); }
    bool isCopied() const { return std::filesystem::exists(copy); }
    // Some time goes by, with something to do at its end; then the copy is waited for.
    void wait(std::chrono::minutes minutes) {
        now += minutes;
        change();
        for (int i = 0; i < 500 && documents().current()->autoSave().writer != 0; ++i) {
            now += std::chrono::seconds(2);
            std::this_thread::sleep_for(std::chrono::milliseconds(5));
            documents().autoSaves().look();
        }
    }

    std::chrono::steady_clock::time_point now = std::chrono::steady_clock::now();
    std::string copy = folder.file("a.vqd.sv$");
};

TEST_F(AutoSaveTest, comesWhenItsTimeIsOverAndSomethingHasChanged) {
    wait(std::chrono::minutes(9));
    EXPECT_FALSE(isCopied());
    wait(std::chrono::minutes(2));
    EXPECT_TRUE(isCopied());
    EXPECT_TRUE(documents().current()->database()->isModified());
    std::filesystem::remove(copy);
    now += std::chrono::minutes(11);
    documents().autoSaves().look();
    EXPECT_EQ(documents().current()->autoSave().writer, 0); // nothing new
    host->variables().set("SAVETIME", 0);
    wait(std::chrono::minutes(500));
    EXPECT_FALSE(isCopied());
    EXPECT_EQ(takePrinted(), "");
}

TEST_F(AutoSaveTest, isRemovedAtAGoodEndAndOfferedAfterABadOne) {
    wait(std::chrono::minutes(11));
    ASSERT_TRUE(isCopied());
    const double copied = scale();
    EXPECT_TRUE(documents().save(documents().current()));
    EXPECT_FALSE(isCopied());
    change();
    EXPECT_TRUE(documents().autoSave(documents().current()));
    const std::string kept = folder.file("kept");
    std::filesystem::copy_file(copy, kept);
    documents().closeDocument(documents().current());
    EXPECT_FALSE(isCopied());

    // As after a crash: refused it is set aside, accepted it is the drawing, not saved yet.
    auto& ui = dynamic_cast<veldrin::HeadlessUi&>(host->ui());
    std::filesystem::copy_file(kept, copy);
    ui.queue([](const veldrin::WindowRequest&) { return "No"; });
    Document* document = documents().openDocument(folder.file("a"));
    EXPECT_EQ(scale(), copied);
    EXPECT_TRUE(std::filesystem::exists(copy + ".bak"));
    documents().closeDocument(document);

    std::filesystem::copy_file(kept, copy);
    document = documents().openDocument(folder.file("a"));
    EXPECT_EQ(scale(), copied + 1.0);
    EXPECT_TRUE(document->database()->isModified());
    EXPECT_EQ(document->path(), folder.file("a.vqd"));
    EXPECT_TRUE(isCopied());
    EXPECT_TRUE(documents().save(document));
    EXPECT_FALSE(isCopied());
    documents().closeDocument(document);
    documents().openDocument(folder.file("a"));
    EXPECT_EQ(scale(), copied + 1.0);
    EXPECT_EQ(ui.takeLog().size(), 2U);
}

TEST_F(AutoSaveTest, thatFailsSaysSoAndIsNotThere) {
    host->variables().set("SAVETIME", 1);
    std::filesystem::create_directory(copy);
    wait(std::chrono::minutes(2));
    const std::string line = takePrinted();
    EXPECT_TRUE(line.starts_with("Automatic save: Cannot save drawing " + copy)) << line;
    EXPECT_EQ(std::count(line.begin(), line.end(), '\n'), 1);
}

// Another host's hold, in this process: a lock of one's own shuts out as well.
TEST_F(AutoSaveTest, aDrawingThatAnotherHoldsIsReadOnly) {
    documents().closeDocument(documents().current());
    {
        const auto other = veldrin::DrawingHold::take(folder.file("a.vqd"));
        ASSERT_NE(other.hold, nullptr);
        Document* document = documents().openDocument(folder.file("a"));
        ASSERT_NE(document, nullptr);
        EXPECT_TRUE(document->isReadOnly());
        EXPECT_NE(takePrinted().find(folder.file("a.vqd") + " is in use by "), std::string::npos);
        EXPECT_FALSE(documents().save(document));
        EXPECT_TRUE(takePrinted().ends_with("the file is read-only.\n"));
        EXPECT_EQ(documents().newDocument(folder.file("a")), nullptr);
        documents().newDocument();
        EXPECT_TRUE(documents().saveAs(document, folder.file("b")));
        EXPECT_FALSE(document->isReadOnly());
        EXPECT_FALSE(documents().saveAs(documents().current(), folder.file("a")));
        EXPECT_NE(takePrinted().find("Cannot save as " + folder.file("a.vqd")), std::string::npos);
    }
    EXPECT_FALSE(documents().openDocument(folder.file("a"))->isReadOnly());
    EXPECT_EQ(veldrin::DrawingHold::take(folder.file("b.vqd")).hold, nullptr);
}

} // namespace
