#include "editor/DocumentManager.h"
#include "host/LispFunctions.h"
#include "host/PlumbModule.h"
#include "host/vqPlumbContext.h"
#include "module/ModuleTest.h"
#include "runtime/CException.h"
#include "runtime/resbuf.h"

using namespace plumb;

namespace {

AcAp::DocLockMode lockInHandler = AcAp::kNone;
int statusToGive = 0;

int giveStatus() {
    lockInHandler = acDocManagerPtr()->curDocument()->myLockMode();
    return statusToGive;
}
int throwHostException() {
    throw CException("from the host");
}
int throwNumber() {
    throw 5;
}
int neverRun() {
    ADD_FAILURE() << "the handler must not run";
    return kDone;
}

} // namespace

class HandlerFrame : public ModuleTest {};

TEST_F(HandlerFrame, TellsStatusesInOneWording) {
    const struct {
        int status;
        const char* text;
        int code;
    } rows[] = {
        {0, "", RSRSLT},
        {1, "\nToo few arguments passed.\n", RSERR},
        {2, "\nWrong type of arguments passed.\n", RSERR},
        {3, "\nBad data passed .\n", RSERR},
        {4, "", RSERR},
        {5, "", RSRSLT},
        {-1, "", RSRSLT},
    };
    for (const auto& row : rows) {
        statusToGive = row.status;
        EXPECT_EQ(runInFrame(giveStatus, nullptr), row.code) << row.status;
        EXPECT_EQ(takePrinted(), row.text) << row.status;
    }
}

TEST_F(HandlerFrame, HoldsTheDocumentAndLetsGoOnEveryWayOut) {
    const AcApDocument* document = acDocManagerPtr()->curDocument();
    const AcAp::DocLockMode before = document->myLockMode();
    statusToGive = kDone;
    runInFrame(giveStatus, nullptr);
    EXPECT_NE(lockInHandler & AcAp::kWrite, 0);
    EXPECT_EQ(document->myLockMode(), before);

    EXPECT_THROW(runInFrame(throwHostException, nullptr), CException);
    EXPECT_EQ(takePrinted(), "\nGeneral Exception");
    EXPECT_EQ(document->myLockMode(), before);

    EXPECT_THROW(runInFrame(throwNumber, nullptr), int);
    EXPECT_EQ(takePrinted(), "\nError");
    EXPECT_EQ(document->myLockMode(), before);
}

TEST_F(HandlerFrame, WithoutAProjectTheCallGivesNil) {
    vqPlumbContext* context = moduleState().theContext.get();
    EXPECT_EQ(runInFrame(neverRun, context), RSRSLT);
    EXPECT_EQ(takePrinted(), "\nCannot connect to the plumbing database (Connection Error Code 1).")
        << "an unnamed drawing has no folder to search";
}

// A Lisp call that a module's exception leaves is an error there, and the host goes on.
TEST_F(HandlerFrame, AnExceptionIsALispError) {
    lisp("(setq e (vq_plumb-insertPipe 1 '(0 0 0) '(9 0 0)))");
    EXPECT_EQ(lisp("(vq_plumb-pipe-setElbowBreaks e '((\"x\" 3 1.0)))"), "error: ADS request error");
    EXPECT_EQ(takePrinted(), "\nGeneral Exception");
    EXPECT_EQ(lisp("(vq_plumb-getPipeElbowLength e)"), "0.0");
}

TEST_F(HandlerFrame, EveryFunctionOfTheTableIsThereAndAnswers) {
    EXPECT_EQ(lispFunctions().size(), 34U);
    for (const LispFunction& function : lispFunctions())
        EXPECT_EQ(lisp("(type (quote " + std::string(function.name) + "))"), "SYM");
    EXPECT_EQ(lisp("(vq_plumb-options \"x\")"), "nil");
    EXPECT_EQ(takePrinted(), "");
    EXPECT_EQ(lisp("(vq_plumb-getLayer \"x\" 1)"), "nil") << "it wants a project";
    EXPECT_EQ(takePrinted(), "\nCannot connect to the plumbing database (Connection Error Code 1).");
}
