#include "platform/lisp/LispTest.h"

namespace veldrin::lisp {

using Language = LispTest;

TEST_F(Language, formsAnswerAsUsersKnow) {
    expectLisp({
        {"(if nil 1)", "nil"},
        {"(if T 1 (undefined))", "1"},
        {"(if)", "error: too few arguments"},
        {"(if T 1 2 3)", "error: too many arguments"},
        {"(cond)", "nil"},
        {"(cond (nil 1) (2) (T 3))", "2"},
        {"(and)", "T"},
        {"(and 1 2)", "T"},
        {"(or nil 3)", "T"},
        {"(or)", "nil"},
        {"(progn)", "nil"},
        {"(while nil 1)", "nil"},
        {"(progn (setq i 0) (while (< i 3) (setq i (1+ i)) (* 10 i)))", "30"},
        {"(repeat 3 'x)", "X"},
        {"(repeat 0 'x)", "nil"},
        {"(repeat -5 'x)", "nil"},
        {"(repeat 2.0 'x)", "error: bad argument type: fixnump: 2.0"},
        {"(foreach x '(1 2 3) (* x x))", "9"},
        {"(foreach x nil 1)", "nil"},
        {"(progn (setq x 'kept) (foreach x '(1 2)) x)", "KEPT"},
        {"(setq a 1 b 2)", "2"},
        {"(setq a)", "error: too few arguments"},
        {"(setq 3 4)", "error: bad argument type: symbolp 3"},
        {"(set 'a 7)", "7"},
        {"a", "7"},
        {"''a", "(QUOTE A)"},
        {"(eval (list '+ 1 2))", "3"},
        {"(defun f (x) (* 2 x))", "F"},
        {"(mapcar 'f '(1 2 3))", "(2 4 6)"},
        {"(mapcar '+ '(1 2 3) '(10 20))", "(11 22)"},
        {"((lambda (x y) (+ x y)) 1 2)", "3"},
        {"(mapcar (function (lambda (x) (1+ x))) '(1 2))", "(2 3)"},
        {"(apply 'and '(T nil))", "nil"},
        {"(apply '+ nil)", "0"},
        {"(boundp 'never-set)", "nil"},
        {"(read \"(a . b) rest\")", "(A . B)"},
        {"(mapcar 'type (list 1 1.0 \"\" 'a '(1) car f nil))", "(INT REAL STR SYM LIST SUBR USUBR nil)"},
    });
}

TEST_F(Language, scopeIsDynamicAndLocalsEndWithTheirCall) {
    expectLisp({
        {"(setq v 'outer)", "OUTER"},
        {"(defun show () v)", "SHOW"},
        {"(defun hide (/ v) (setq v 'inner) (show))", "HIDE"},
        {"(list (hide) v)", "(INNER OUTER)"},
        {"(defun try (fn v) (fn v))", "TRY"}, // a function given by name, and by lambda list
        {"(list (try 'abs -3) (try '(lambda (x) (list x v)) 4))", "(3 (4 4))"},
        {"(defun swap (a b) (list b a))", "SWAP"},
        {"(progn (setq a 1 b 2) (swap (swap a b) b))", "(2 (2 1))"},
        {"(progn (defun twice (f x) (f (f x))) (twice '1+ 5))", "7"},
        {"(defun locals (/ list) (list 1))", "LOCALS"}, // a local hides a built-in
        {"(locals)", "error: no function definition: LIST"},
        {"(list 1)", "(1)"},
    });
}

TEST_F(Language, redefiningIsSeenByCodeThatIsAlreadyCompiled) {
    expectLisp({
        {"(defun g () 1)", "G"},
        {"(defun h (a b) (list (g) (+ a b) (if a 'yes 'no)))", "H"},
        {"(h 2 3)", "(1 5 YES)"},
        {"(defun g () 2)", "G"},
        {"(progn (setq plus + + -) (h 2 3))", "(2 -1 YES)"},
    });
    EXPECT_EQ(give("(setq + plus) (h 2 3)"), "(2 5 YES)");
    EXPECT_EQ(give("(defun if (a b c) 'mine) (h 2 3)"), "(2 5 MINE)");
    EXPECT_EQ(give("(defun once () (defun once () 'new) 'old) (list (once) (once))"), "(OLD NEW)");
    EXPECT_EQ(give("(setq car cdr) (defun c2 (l) (car l)) (c2 '(1 2))"), "(2)");
}

TEST_F(Language, definitionsKeptAsListsCanBeEdited) {
    expectLisp({
        {"(defun-q start () (setq trace '(a)))", "START"},
        {"(defun-q more () (setq trace (cons 'b trace)))", "MORE"},
        {"(defun-q-list-set 'start (append (defun-q-list-ref 'start) (cdr (defun-q-list-ref 'more))))",
         "START"},
        {"(start)", "(B A)"},
    });
}

TEST_F(Language, protectedNamesKeepTheirValues) {
    expectLisp({
        {"(setq T 5)", "5"},
        {"T", "T"},
        {"(setq pi 3)", "3"},
        {"pi", "3.14159"},
        {"(setq nil 1)", "error: bad argument type: symbolp nil"},
        {"(defun local (t) (setq t (1+ t)) t)", "LOCAL"},
        {"(list (local 1) T)", "(2 T)"},
    });
    EXPECT_NE(services.printed.find("assignment to protected symbol: PI"), std::string::npos);
}

TEST_F(Language, codeInBranchesThatNeverRunMayBeWrong) {
    expectLisp({{"(defun f (x) (if x (setq 1) 'fine))", "F"},
                {"(f nil)", "FINE"},
                {"(f 1)", "error: too few arguments"}});
}

TEST_F(Language, nothingIsLeftWhenAnEngineEnds) {
    const std::size_t before = Heap::instance().liveCells();
    {
        Engine other;
        other.runText(
            "(defun f (n / l) (repeat n (setq l (cons (strcat \"x\" (itoa n)) l))) l) (setq k (f 50))"
            "(setq deep nil) (repeat 300000 (setq deep (list deep)))" // freed without recursion
            "(vl-catch-all-apply 'f '(\"wrong\")) (+ 1 (f nil))");
    }
    EXPECT_EQ(Heap::instance().liveCells(), before);
}

TEST_F(Language, evaluatingTheSameFormAgainTakesNoMemory) {
    const Value form =
        engine
            .runText(
                "'(progn (mapcar '(lambda (x) (strcat (itoa x) \"!\")) '(1 2 3)) (eval '(setq q (list 1 "
                "2.5)))"
                "(vl-catch-all-apply '+ '(1 nil)) ((lambda (a) a) 1) (if (< 1 2) (repeat 2 (cons 1 2))))")
            .value;
    engine.runForm(form);
    const std::size_t cells = Heap::instance().liveCells();
    for (int i = 0; i < 1000; ++i) engine.runForm(form);
    EXPECT_EQ(Heap::instance().liveCells(), cells);
}

TEST_F(Language, aTextGrownInItsVariableLeavesOtherHoldersAlone) {
    expectLisp({
        {"(progn (setq s \"a\") (setq other s) (setq s (strcat s \"b\")) (setq kept (list s))"
         " (setq s (strcat s \"c\" s)) (list s other kept))",
         "(\"abcab\" \"a\" (\"ab\"))"},
        {"(progn (setq s \"x\") (repeat 3 (setq s (strcat s s))) s)", "\"xxxxxxxx\""},
        {"(progn (setq s \"x\") (setq s (strcat s (progn (setq s \"y\") \"z\"))) s)", "\"xz\""},
        {"(progn (setq s \"\") (repeat 1000 (setq s (strcat s \"\303\251\"))) (strlen s))", "1000"},
        {"(setq s (strcat s 5))", "error: bad argument type: stringp 5"},
    });
}

} // namespace veldrin::lisp
