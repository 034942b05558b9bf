#include "drawing/DatabaseRegistry.h"
#include "platform/editor/HostTest.h"

#include <algorithm>
#include <functional>
#include <stdexcept>

using veldrin::ActivityScope;
using veldrin::ActivityStack;
using veldrin::Document;

namespace {

using Notes = std::vector<std::string>;

// Writes down what it hears, and does what it is told to at one of the notifications.
class Listener : public AcApDocManagerReactor {
public:
    Notes notes;
    std::string trigger;
    std::function<void(AcApDocument*)> action;

    Listener() { acDocManagerPtr()->addReactor(this); }
    ~Listener() override {
        if (acDocManagerPtr()) acDocManagerPtr()->removeReactor(this);
    }

    void documentCreateStarted(AcApDocument* d) override { hear("createStarted", d); }
    void documentCreated(AcApDocument* d) override { hear("created", d); }
    void documentCreateCanceled(AcApDocument* d) override { hear("createCanceled", d); }
    void documentToBeDestroyed(AcApDocument* d) override { hear("toBeDestroyed", d); }
    void documentDestroyed(const char* name) override { notes.push_back(std::string("destroyed ") + name); }
    void documentBecameCurrent(AcApDocument* d) override { hear("becameCurrent", d); }
    void documentToBeActivated(AcApDocument* d) override { hear("toBeActivated", d); }
    void documentToBeDeactivated(AcApDocument* d) override { hear("toBeDeactivated", d); }
    void documentActivated(AcApDocument* d) override { hear("activated", d); }
    void documentLockModeWillChange(AcApDocument*, AcAp::DocLockMode from, AcAp::DocLockMode to) override {
        notes.push_back("will " + std::to_string(from) + " " + std::to_string(to));
    }
    void documentLockModeChanged(AcApDocument* d, AcAp::DocLockMode from, AcAp::DocLockMode to) override {
        notes.push_back("has " + std::to_string(from) + " " + std::to_string(to));
        EXPECT_EQ(d->myLockMode(), to);
    }

    Notes take() { return std::exchange(notes, {}); }

private:
    void hear(const std::string& what, AcApDocument* document) {
        notes.push_back(what + " " + document->docTitle());
        if (what == trigger && action) action(document);
    }
};

class DocumentsTest : public HostTest {
protected:
    Document* make() { return documents().newDocument(); }
    AcDbDatabase* working() { return acdbHostApplicationServices()->workingDatabase(); }
};

TEST_F(DocumentsTest, reactorsHearOfDocumentsInOrder) {
    Listener listener;
    Document* first = make();
    EXPECT_EQ(listener.take(),
              (Notes{"createStarted Drawing1.vqd", "created Drawing1.vqd", "toBeActivated Drawing1.vqd",
                     "becameCurrent Drawing1.vqd", "activated Drawing1.vqd"}));
    Document* second = make();
    EXPECT_EQ(listener.take(),
              (Notes{"createStarted Drawing2.vqd", "created Drawing2.vqd", "toBeDeactivated Drawing1.vqd",
                     "toBeActivated Drawing2.vqd", "becameCurrent Drawing2.vqd", "activated Drawing2.vqd"}));
    EXPECT_EQ(documents().activateDocument(second), Acad::eOk);
    EXPECT_EQ(listener.take(), Notes{});

    EXPECT_TRUE(documents().closeDocument(second));
    EXPECT_EQ(listener.take(),
              (Notes{"toBeDestroyed Drawing2.vqd", "destroyed Drawing2.vqd", "toBeActivated Drawing1.vqd",
                     "becameCurrent Drawing1.vqd", "activated Drawing1.vqd"}));
    EXPECT_EQ(documents().current(), first);
    EXPECT_TRUE(documents().closeDocument(first));
    EXPECT_EQ(listener.take(), (Notes{"toBeDestroyed Drawing1.vqd", "destroyed Drawing1.vqd"}));
    EXPECT_EQ(documents().curDocument(), nullptr);
    EXPECT_EQ(documents().mdiActiveDocument(), nullptr);
    EXPECT_EQ(working(), nullptr);
    EXPECT_STREQ(make()->fileName(), "Drawing3.vqd");
}

TEST_F(DocumentsTest, currentActiveAndWorkingAreThreeThings) {
    Document* first = make();
    Document* second = make();
    Listener listener;
    EXPECT_EQ(documents().setCurDocument(first, AcAp::kNone, false), Acad::eOk);
    EXPECT_EQ(listener.take(), Notes{"becameCurrent Drawing1.vqd"});
    EXPECT_EQ(documents().current(), first);
    EXPECT_EQ(documents().active(), second);
    EXPECT_EQ(working(), first->database());

    acdbHostApplicationServices()->setWorkingDatabase(second->database());
    EXPECT_EQ(documents().current(), first);
    EXPECT_EQ(listener.take(), Notes{});
    EXPECT_EQ(documents().document(second->database()), second);

    // Closing the one that is current but not in front leaves the other one in front, and current.
    EXPECT_TRUE(documents().closeDocument(first));
    EXPECT_EQ(documents().active(), second);
    EXPECT_EQ(documents().current(), second);
    EXPECT_EQ(working(), second->database());
    EXPECT_EQ(documents().setCurDocument(first, AcAp::kNone, false), Acad::eNoDocument);
}

TEST_F(DocumentsTest, reactorsMayComeGoAndFailWhileTheyAreTold) {
    Listener before, middle, after;
    std::unique_ptr<Listener> born;
    middle.trigger = "created";
    middle.action = [&](AcApDocument*) {
        documents().removeReactor(&middle);
        documents().removeReactor(&after);
        born = std::make_unique<Listener>();
        throw std::runtime_error("no patience");
    };
    make();
    EXPECT_EQ(before.notes.size(), 5U);
    EXPECT_EQ(middle.notes.size(), 2U);
    EXPECT_EQ(after.notes, Notes{"createStarted Drawing1.vqd"});
    EXPECT_EQ(born->notes.front(), "toBeActivated Drawing1.vqd");
    EXPECT_NE(printed.find("no patience"), std::string::npos);
}

TEST_F(DocumentsTest, aReactorMayCloseTheDocumentThatIsAboutToShow) {
    Document* first = make();
    Listener listener;
    listener.trigger = "toBeActivated";
    listener.action = [&](AcApDocument* document) {
        listener.action = nullptr;
        documents().closeDocument(document);
    };
    EXPECT_EQ(make(), nullptr);
    EXPECT_EQ(documents().documentCount(), 1);
    EXPECT_EQ(documents().active(), first);
    EXPECT_EQ(documents().current(), first);
}

TEST_F(DocumentsTest, locksNestAndTellOfRealChangesOnly) {
    Document* document = make();
    Listener listener;
    EXPECT_EQ(document->myLockMode(), AcAp::kNotLocked);
    EXPECT_EQ(documents().unlockDocument(document), Acad::eInvalidInput);
    EXPECT_EQ(documents().lockDocument(nullptr, AcAp::kWrite, nullptr, nullptr, true), Acad::eNoDocument);

    for (int i = 0; i < 2; ++i)
        EXPECT_EQ(documents().lockDocument(document, AcAp::kWrite, nullptr, nullptr, true), Acad::eOk);
    EXPECT_EQ(documents().lockDocument(document, AcAp::kRead, nullptr, nullptr, true), Acad::eOk);
    EXPECT_EQ(listener.take(), (Notes{"will 2 4", "has 2 4"}));
    EXPECT_FALSE(documents().closeDocument(document));
    EXPECT_NE(takePrinted().find("in use"), std::string::npos);
    for (int i = 0; i < 3; ++i) EXPECT_EQ(documents().unlockDocument(document), Acad::eOk);
    EXPECT_EQ(listener.take(), (Notes{"will 4 2", "has 4 2"}));
    EXPECT_TRUE(documents().closeDocument(document));
}

TEST_F(DocumentsTest, anExclusiveLockShutsOutOtherWorkButNotItsOwn) {
    Document* document = make();
    const auto lock = [&](AcAp::DocLockMode mode) {
        return documents().lockDocument(document, mode, nullptr, nullptr, true);
    };
    const ActivityScope command(ActivityStack::Kind::Command, "AUDIT");
    EXPECT_EQ(lock(AcAp::kXWrite), Acad::eOk);
    EXPECT_EQ(lock(AcAp::kWrite), Acad::eOk);
    {
        const ActivityScope handler(ActivityStack::Kind::Handler, "other");
        EXPECT_EQ(lock(AcAp::kWrite), Acad::eLockViolation);
        EXPECT_EQ(lock(AcAp::kRead), Acad::eLockViolation);
    }
    EXPECT_EQ(documents().unlockDocument(document), Acad::eOk);
    EXPECT_EQ(documents().unlockDocument(document), Acad::eOk);
    EXPECT_EQ(document->myLockMode(), AcAp::kNotLocked);
}

TEST_F(DocumentsTest, commandsAndHandlersEndQuiescenceUntilTheLastHasEnded) {
    Document* document = make();
    EXPECT_TRUE(document->isQuiescent());
    auto waiting = std::make_unique<ActivityScope>(ActivityStack::Kind::Command, "LINE");
    {
        const ActivityScope handler(ActivityStack::Kind::Handler, "f");
        waiting.reset(); // a command that waited ends first
        EXPECT_FALSE(document->isQuiescent());
    }
    EXPECT_TRUE(document->isQuiescent());
}

TEST_F(DocumentsTest, drawingsAreFoundByTheirNames) {
    Document* unnamed = make();
    Document* named = documents().newDocument(folder.file("plan"));
    EXPECT_EQ(named->path(), folder.file("plan.vqd"));
    EXPECT_EQ(documents().find("Drawing1.vqd"), unnamed);
    EXPECT_EQ(documents().find(folder.file("plan.vqd")), named);
    EXPECT_EQ(documents().find(folder.file("./plan")), named);
    EXPECT_EQ(documents().find(folder.file("other")), nullptr);
    EXPECT_EQ(documents().newDocument(folder.file("plan")), nullptr);
    EXPECT_NE(printed.find("open already"), std::string::npos);
}

TEST_F(DocumentsTest, anUndoStepOutlivesItsDrawing) {
    Document* document = make();
    {
        const veldrin::UndoStep step("CLOSE");
        EXPECT_TRUE(documents().closeDocument(document));
    }
    EXPECT_EQ(documents().documentCount(), 0);
}

} // namespace
