#include "editor/aced.h"
#include "lisp/marshal.h"
#include "platform/editor/HostTest.h"
#include "runtime/CException.h"

#include <functional>

namespace lisp = veldrin::lisp;
using lisp::ResbufChain;

namespace {

// What the functions under test do; handlers are plain functions.
std::function<int()> actions[3];

template<int number>
int handler() {
    return actions[number]();
}

class CallsTest : public HostTest {
protected:
    CallsTest() {
        const char* names[] = {"f", "g", "h"};
        int (*const handlers[])() = {handler<0>, handler<1>, handler<2>};
        for (short i = 0; i < 3; ++i) {
            EXPECT_EQ(acedDefun(names[i], i), RTNORM);
            EXPECT_EQ(acedRegFunc(handlers[i], i), RTNORM);
        }
        documents().newDocument();
    }

    static std::string show(const resbuf* chain) {
        std::string text;
        for (; chain; chain = chain->rbnext) {
            switch (chain->restype) {
            case RTSHORT: text += std::to_string(chain->resval.rint); break;
            case RTLONG: text += std::to_string(chain->resval.rlong) + "L"; break;
            case RTREAL: text += lisp::realText(chain->resval.rreal); break;
            case RTSTR: text += '"' + std::string(chain->resval.rstring) + '"'; break;
            case RTPOINT: text += "P2"; break;
            case RT3DPOINT: text += "P3"; break;
            case RTLB: text += "("; break;
            case RTLE: text += ")"; break;
            case RTDOTE: text += "."; break;
            case RTNIL: text += "nil"; break;
            case RTT: text += "T"; break;
            default: text += "?" + std::to_string(chain->restype);
            }
            if (chain->rbnext) text += ' ';
        }
        return text;
    }

    static ResbufChain arguments() { return ResbufChain(acedGetArgs()); }

    static int invoke(ResbufChain call, std::string* shown = nullptr) {
        resbuf* result = nullptr;
        const int code = acedInvoke(call.get(), &result);
        const ResbufChain owned(result);
        if (shown) *shown = result ? show(result) : "none";
        return code;
    }
};

TEST_F(CallsTest, argumentsArriveInTheFormOfTheDialect) {
    std::string seen;
    actions[0] = [&] {
        seen = show(arguments().get());
        EXPECT_EQ(show(arguments().get()), seen); // a fresh chain each time
        return RSRSLT;
    };
    const std::pair<const char*, const char*> cases[] = {
        {"(f)", ""},
        {"(f 1 40000 2.5 \"a\" nil t 'sym)", "1 40000L 2.5 \"a\" nil T \"SYM\""},
        {"(f '(1 2) '(1.0 2 3) '(1 2 3 4) '(1 \"a\"))", "P2 P3 ( 1 2 3 4 ) ( 1 \"a\" )"},
        {"(f '(\"k\" . 5) '((\"a\" . 1) (\"b\" . \"c\")))", "( \"k\" 5 . ( ( \"a\" 1 . ( \"b\" \"c\" . )"},
    };
    for (const auto& [call, expected] : cases) {
        EXPECT_EQ(lisp(call), "nil");
        EXPECT_EQ(seen, expected) << call;
    }
    EXPECT_TRUE(lisp("(f car)").starts_with("error: bad argument type")) << "a function cannot leave Lisp";
}

TEST_F(CallsTest, theLastResultCounts) {
    const auto answer = [&](std::function<int()> set) {
        actions[0] = [set] {
            set();
            return RSRSLT;
        };
        return lisp("(f)");
    };
    const ads_point point{1.0, 2.0, 3.0};
    EXPECT_EQ(answer([&] { return acedRetInt(5), acedRetPoint(point); }), "(1.0 2.0 3.0)");
    EXPECT_EQ(answer([] { return acedRetInt(5), acedRetStr("x"); }), "\"x\"");
    EXPECT_EQ(answer([] { return acedRetT(), acedRetNil(); }), "nil");
    EXPECT_EQ(answer([] { return acedRetVoid(); }), "");
    const auto listOf = [&](ResbufChain chain) {
        return answer([&chain] { return acedRetList(chain.get()); });
    };
    EXPECT_EQ(listOf(ResbufChain(acutBuildList(RTSTR, "a", RTSHORT, 1, 0))), "(\"a\" 1)");
    EXPECT_EQ(listOf(ResbufChain(acutBuildList(RTSTR, "a", 0))), "(\"a\")");
    EXPECT_EQ(listOf(ResbufChain(acutBuildList(RTLB, RTLB, RTSTR, "k", RTDOTE, RTREAL, 1.5, RTLE, RTLB, RTSTR,
                                               "n", RTDOTE, RTNIL, RTLE, RTLE, 0))),
              "((\"k\" . 1.5) (\"n\"))");
    EXPECT_EQ(listOf({}), "nil");

    const ResbufChain open(acutBuildList(RTLB, RTSHORT, 1, 0));
    EXPECT_EQ(answer([&] {
                  acedRetInt(7);
                  EXPECT_EQ(acedRetList(open.get()), RTERROR);
                  return RTNORM;
              }),
              "7");
    EXPECT_EQ(acedRetT(), RTERROR); // no call runs
    EXPECT_EQ(acedGetArgs(), nullptr);
}

TEST_F(CallsTest, nestedCallsKeepTheirOwnArgumentsAndResults) {
    actions[0] = [&] {
        acedRetInt(1);
        std::string result;
        EXPECT_EQ(invoke(ResbufChain(acutBuildList(RTSTR, "through", RTSHORT, 20, 0)), &result), RTNORM);
        EXPECT_EQ(result, "21");
        EXPECT_EQ(show(arguments().get()), "\"outer\"");
        return RSRSLT;
    };
    actions[1] = [&] {
        const ResbufChain own = arguments();
        EXPECT_EQ(host->callFrames().depth(), 2);
        acedRetInt(own->resval.rint + 1);
        return RSRSLT;
    };
    lisp("(defun through (n) (g n))");
    EXPECT_EQ(lisp("(f \"outer\")"), "1");
    EXPECT_EQ(host->callFrames().depth(), 0);
}

TEST_F(CallsTest, aHandlerThatFailsIsALispErrorAndLeavesNoFrame) {
    actions[0] = [] {
        acedRetInt(1);
        return static_cast<int>(RSERR);
    };
    actions[1] = []() -> int { throw CException("module"); };
    actions[2] = []() -> int { throw 7; };
    for (const char* call : {"(f)", "(g)", "(h)"}) EXPECT_EQ(lisp(call), "error: ADS request error") << call;
    EXPECT_EQ(lisp("(vl-catch-all-error-p (vl-catch-all-apply 'g nil))"), "T");
    EXPECT_EQ(host->callFrames().depth(), 0);
    EXPECT_TRUE(documents().current()->isQuiescent());
}

TEST_F(CallsTest, invokeTellsDefinedFromUndefined) {
    std::string result;
    EXPECT_EQ(invoke(ResbufChain(acutBuildList(RTSTR, "no-such-function", 0))), RTERROR);
    EXPECT_EQ(invoke(ResbufChain(acutBuildList(RTSHORT, 1, 0))), RTERROR);
    EXPECT_EQ(acedInvoke(nullptr, nullptr), RTERROR);
    EXPECT_EQ(takePrinted(), "");

    lisp("(defun c:go () nil) (defun echo (x) x) (defun bad () (/ 1 0))");
    EXPECT_EQ(invoke(ResbufChain(acutBuildList(RTSTR, "C:Go", 0)), &result), RTNORM);
    EXPECT_EQ(result, "none");
    EXPECT_EQ(invoke(ResbufChain(acutBuildList(RTSTR, "echo", RTLB, RTSTR, "a", RTLB, RTSHORT, 1, RTSTR, "b",
                                               RTLE, RTLE, 0)),
                     &result),
              RTNORM);
    EXPECT_EQ(result, "\"a\" ( 1 \"b\" )");
    EXPECT_EQ(
        invoke(ResbufChain(acutBuildList(RTSTR, "echo", RTLB, RTLB, RTSHORT, 1, RTSTR, "x", RTLE, RTLE, 0)),
               &result),
        RTNORM);
    EXPECT_EQ(result, "( 1 \"x\" )");
    EXPECT_EQ(invoke(ResbufChain(acutBuildList(RTSTR, "echo", RTREAL, 1.0, RTREAL, 2.0, 0)), &result),
              RTERROR);
    EXPECT_EQ(invoke(ResbufChain(acutBuildList(RTSTR, "bad", 0)), &result), RTERROR);
    EXPECT_NE(takePrinted().find("divide by zero"), std::string::npos);
}

TEST_F(CallsTest, quitGoesOnBehindTheCppFrames) {
    bool returned = false;
    lisp("(defun stop () (quit 4))");
    actions[0] = [&] {
        std::string result;
        EXPECT_EQ(invoke(ResbufChain(acutBuildList(RTSTR, "stop", 0)), &result), RTERROR);
        EXPECT_EQ(result, "none");
        returned = true;
        acedRetT();
        return RSRSLT;
    };
    EXPECT_EQ(lisp("(setq after nil) (vl-catch-all-apply 'f nil) (setq after t)"), "quit 4");
    EXPECT_TRUE(returned);
    EXPECT_EQ(lisp("after"), "nil");
    EXPECT_EQ(host->callFrames().depth(), 0);
}

TEST_F(CallsTest, undefinedFunctionsAreGone) {
    actions[0] = [] { return static_cast<int>(RSRSLT); };
    EXPECT_EQ(acedUndef("g", 0), RTERROR);
    EXPECT_EQ(acedUndef("f", 0), RTNORM);
    EXPECT_TRUE(lisp("(f)").starts_with("error: no function definition"));
    host->callFrames().forgetModule(nullptr);
    EXPECT_TRUE(lisp("(h)").starts_with("error: no function definition"));
}

} // namespace
