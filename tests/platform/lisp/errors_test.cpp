// Errors, *error*, quit and break, and where they stop.
#include "platform/lisp/LispTest.h"

#include <thread>

namespace veldrin::lisp {

using Errors = LispTest;

TEST_F(Errors, messagesAreTheDialects) {
    expectLisp({
        {"(foo 1)", "error: no function definition: FOO"},
        {"(3 4)", "error: bad function: 3"},
        {"(setq f 3) (f)", "error: bad function: 3"},
        {"(\"x\")", "error: bad function: \"x\""},
        {"(defun f (a) a) (f)", "error: too few arguments"},
        {"(f 1 2)", "error: too many arguments"},
        {"(car)", "error: too few arguments"},
        {"(car 1 2)", "error: too many arguments"},
        {"(quit 4)", "quit 4"},
        {"(apply 'foo nil)", "error: no function definition: FOO"},
        {"(mapcar 'foo nil)", "error: no function definition: FOO"},
        {"(load \"no-such-file\")", "error: LOAD failed: \"no-such-file\""},
        {"(load \"no-such-file\" 'absent)", "ABSENT"},
    });
}

TEST_F(Errors, reportNamesPlaceAndCalls) {
    const Outcome outcome =
        engine.runText("(defun inner (x)\n  (+ x nil))\n(defun outer ()\n (inner 1))\n\n(outer)", "a.lsp");
    ASSERT_TRUE(outcome.error);
    EXPECT_EQ(outcome.error->report(), "bad argument type: numberp: nil (a.lsp:2)\n"
                                       "  in +, called at a.lsp:2\n"
                                       "  in INNER, called at a.lsp:4\n"
                                       "  in OUTER, called at a.lsp:6");
}

TEST_F(Errors, catchingGivesAnErrorObject) {
    expectLisp({
        {"(setq c (vl-catch-all-apply '/ '(1 0)))", "#<%catch-all-apply-error%>"},
        {"(list (vl-catch-all-error-p c) (vl-catch-all-error-message c))", "(T \"divide by zero\")"},
        {"(vl-catch-all-error-p (vl-catch-all-apply '+ '(1 2)))", "nil"},
        {"(defun change (v) (setq v 2) (car 5)) (setq v 1) (vl-catch-all-apply 'change '(9)) v", "1"},
        {"(vl-catch-all-apply 'quit '(7))", "quit 7"},
        {"(vl-catch-all-error-message 5)", "error: bad argument type: catch-all-apply-error-p 5"},
    });
}

TEST_F(Errors, handlerSeesLocalsAndThenTheyAreGone) {
    give("(setq v 'outer seen nil)"
         "(defun *error* (m) (setq seen (list m v)))"
         "(defun f (/ v) (setq v 'inner) (car 5))");
    EXPECT_EQ(give("(f)"), "error: bad argument type: listp 5");
    EXPECT_EQ(give("(list seen v)"), "((\"bad argument type: listp 5\" INNER) OUTER)");
    give("(defun g (/ *error*) (defun *error* (m) (setq seen 'local)) (car 5))"); // a local one wins
    EXPECT_EQ(give("(g)"), "error: bad argument type: listp 5");
    EXPECT_EQ(give("seen"), "LOCAL");
    EXPECT_EQ(give("(quit)"), "quit 0");
    EXPECT_EQ(give("(car seen)"), "\"quit / exit abort\"");
}

TEST_F(Errors, aFailingHandlerIsReportedOnce) {
    give("(defun *error* (m) (car 6))");
    EXPECT_EQ(give("(car 5)"), "error: bad argument type: listp 5");
    EXPECT_NE(services.printed.find("listp 6"), std::string::npos);
    EXPECT_EQ(give("(setq *error* nil) (+ 1 1)"), "2");
}

TEST_F(Errors, recursionIsDeepAndEndsInAnError) {
    give("(defun deep (n) (if (= n 0) 0 (1+ (deep (1- n)))))");
    EXPECT_EQ(give("(deep 20000)"), "20000");
    give("(setq m nil) (defun *error* (s) (setq m s))");
    EXPECT_EQ(give("(defun endless () (1+ (endless))) (endless)"),
              "error: hard error occurred ***<internal stack limit reached>");
    EXPECT_EQ(give("m"), "\"hard error occurred ***<internal stack limit reached>\"");
    expectLisp({
        {"(vl-catch-all-error-p (vl-catch-all-apply 'endless nil))", "T"},
        {"(defun by-apply (n) (apply 'by-apply (list (mapcar '(lambda (x) x) (list n)))))", "BY-APPLY"},
        {"(vl-catch-all-error-p (vl-catch-all-apply 'by-apply '(1)))", "T"},
        {"(deep 10)", "10"},
    });
    engine.setLimits({.callDepth = 100});
    EXPECT_EQ(give("(deep 200)"), "error: hard error occurred ***<internal stack limit reached>");
}

TEST_F(Errors, memoryHasALimit) {
    engine.setLimits({.heapBytes = Heap::instance().liveBytes() + (std::size_t{8} << 20)});
    EXPECT_EQ(give("(defun grow (/ l) (while T (setq l (cons 1 l)))) (grow)"),
              "error: insufficient node space");
    EXPECT_EQ(give("(defun widen (/ s) (setq s \"x\") (while T (setq s (strcat s s)))) (widen)"),
              "error: insufficient string space");
    EXPECT_EQ(give("(length (list 1 2 3))"), "3");
    engine.setLimits({});
}

TEST_F(Errors, aBreakStopsLoopsAndRunsTheHandler) {
    give("(defun *error* (m) (setq seen m))");
    for (const char* endless : {"(while T)", "(defun e () (e2)) (defun e2 () (e)) (repeat 1000000000 nil)",
                                "(vl-sort '(1 2 3) '(lambda (a b) (while T 1)))"}) {
        std::thread user([this] {
            std::this_thread::sleep_for(std::chrono::milliseconds(20));
            engine.requestBreak();
        });
        const Outcome outcome = engine.runText(endless);
        user.join();
        EXPECT_EQ(outcome.status, Outcome::Status::Broken) << endless;
        EXPECT_EQ(give("seen"), "\"Function cancelled\"");
    }
}

// ---- Borders of C++: `border` calls the Lisp function that it is given, as a module's handler would.

class Borders : public LispTest {
protected:
    Borders() {
        engine.defineExternal("border", [this](Engine& e, Args args) {
            const Outcome outcome = e.protectedApply(args[0], args.from(1));
            statuses.push_back(outcome.status);
            undefined = outcome.isUndefined;
            ++finished;
            return outcome ? outcome.value : Value::text("failed");
        });
    }
    std::vector<Outcome::Status> statuses;
    bool undefined = false;
    int finished = 0;
};

TEST_F(Borders, anErrorIsAFailureThereAndTheCallerGoesOn) {
    expectLisp({
        {"(border '+ 1 2)", "3"},
        {"(list (border 'car 5) 'after)", "(\"failed\" AFTER)"},
        {"(setq v 1) (defun f (v) (car v)) (border 'f 2) v", "1"},
        {"(border 'no-such-function)", "\"failed\""},
    });
    EXPECT_TRUE(undefined);
    EXPECT_TRUE(services.printed.empty());
}

TEST_F(Borders, quitGoesOnBehindEveryBorder) {
    give("(defun inner () (quit 5)) (defun middle () (border 'inner) (setq reached T))");
    EXPECT_EQ(give("(border 'middle) (setq reached-too T)"), "quit 5");
    EXPECT_EQ(finished, 2);
    EXPECT_EQ(give("(list reached reached-too)"), "(nil nil)");
    EXPECT_EQ(give("(+ 1 2)"), "3"); // and is forgotten then
}

TEST_F(Borders, afterQuitTheSameFrameCannotRunMoreLisp) {
    engine.defineExternal("twice", [](Engine& e, Args) {
        const Value arg = Value::integer(3);
        e.protectedApply(Value::symbol(&e.intern("quit")), Args(&arg, 1));
        return Value::boolean(bool(e.protectedRun([&] { return e.evaluateText("(setq second T)"); })));
    });
    EXPECT_EQ(give("(twice)"), "quit 3");
    EXPECT_EQ(give("second"), "nil");
}

TEST_F(Borders, errorsGoOnOnlyWhenAsked) {
    engine.defineExternal("strict", [](Engine& e, Args args) {
        e.protectedApply(args[0], args.from(1), Engine::HoldBack::ErrorsToo);
        return Value();
    });
    EXPECT_EQ(give("(strict 'car 5)"), "error: bad argument type: listp 5");
    EXPECT_EQ(give("(vl-catch-all-error-message (vl-catch-all-apply 'strict '(car 5)))"),
              "\"bad argument type: listp 5\"");
}

TEST_F(Borders, aFunctionMayUndefineItselfWhileItRuns) {
    engine.defineExternal("vanish", [](Engine& e, Args) {
        e.undefineExternal("vanish");
        return Value::text("done");
    });
    expectLisp({{"(vanish)", "\"done\""}, {"(vanish)", "error: no function definition: VANISH"}});
}

} // namespace veldrin::lisp
