#include "editor/CommandRegistry.h"
#include "platform/scripting/ScriptingTest.h"

namespace {

struct Case {
    std::deque<std::string> lines;
    const char* form;
    const char* result;
};

class InputTest : public ScriptingTest {
protected:
    void check(const std::vector<Case>& cases) {
        for (const Case& c : cases) {
            lisp("(setvar \"LASTPOINT\" '(1 1 0))");
            EXPECT_EQ(answer(c.lines, c.form), c.result) << c.form << " with \"" << c.lines.front() << '"';
        }
    }
};

TEST_F(InputTest, pointsInEveryNotation) {
    lisp("(command \"UCS\" '(100 0 0))");
    check({
        {{"1,2"}, "(getpoint)", "(1.0 2.0 0.0)"},
        {{" 1 , 2.5,3 "}, "(getpoint \"\\nWhere: \")", "(1.0 2.5 3.0)"},
        {{"@2,3"}, "(getpoint)", "(3.0 4.0 0.0)"},
        {{"@"}, "(getpoint)", "(1.0 1.0 0.0)"},
        {{"@10<90"}, "(mapcar 'fix (getpoint))", "(1 11 0)"},
        {{"2<0"}, "(getpoint '(5 5))", "(2.0 0.0 0.0)"},
        {{"*100,7"}, "(getpoint)", "(0.0 7.0 0.0)"},
        {{"1'6\",0"}, "(getpoint)", "(18.0 0.0 0.0)"},
        {{"x", "1", "1,2,3,4", "1,", "<45", "5,5"}, "(getpoint)", "(5.0 5.0 0.0)"},
        {{""}, "(getpoint)", "nil"},
    });
}

TEST_F(InputTest, distancesAndAngles) {
    check({
        {{"2.5"}, "(getdist)", "2.5"},
        {{"3,4"}, "(getdist '(0 0))", "5.0"},
        {{"0,0", "3,4"}, "(getdist \"Length: \")", "5.0"},
        {{"3'"}, "(getdist)", "36.0"},
        {{"180"}, "(/ (getangle) pi)", "1.0"},
        {{"1r"}, "(getangle)", "1.0"},
        {{"0,0", "0,5"}, "(/ (getangle) pi)", "0.5"},
        {{"0,5"}, "(/ (getorient '(0 0)) pi)", "0.5"},
        {{"many", "1e3"}, "(getreal)", "1000.0"},
        {{"2.5", "7"}, "(getint)", "7"},
    });
    lisp("(setvar \"ANGBASE\" (/ pi 2))");
    check({
        {{"0,5"}, "(getangle '(0 0))", "0.0"},
        {{"0"}, "(/ (getorient) pi)", "0.5"},
    });
}

TEST_F(InputTest, initgetRulesTheNextQuestionAlone) {
    check({
        {{"", "3"}, "(progn (initget 1) (getint))", "3"},
        {{"0", "-1", "2"}, "(progn (initget 6) (getint))", "2"},
        {{"0"}, "(progn (initget 6) (getint) (getint))", "error: Function cancelled"},
        {{"c"}, "(progn (initget \"Close Undo\") (getpoint))", "\"Close\""},
        {{"_undo"}, "(progn (initget \"Close Undo\") (getkword))", "\"Undo\""},
        {{"x", "un"}, "(progn (initget 1 \"Close UNdo\") (getkword))", "\"UNdo\""},
        {{"LT"}, "(progn (initget \"LTYPE,LT LAYER\") (getkword))", "\"LTYPE\""},
        {{"anything at all"}, "(progn (initget 128) (getpoint))", "\"anything at all\""},
        {{"two words"}, "(getstring)", "\"two\""},
        {{"two words"}, "(getstring T \"Text: \")", "\"two words\""},
    });
}

TEST_F(InputTest, keysComeOneByOneFromTypedLines) {
    check({
        {{"ab"}, "(list (grread) (grread T 15) (grread))", "((2 97) (2 98) (2 13))"},
        {{""}, "(grread)", "(2 13)"},
    });
    EXPECT_EQ(answer({}, "(grread)"), "error: Function cancelled");
}

TEST_F(InputTest, endOfInputIsACancelThatHandlersSee) {
    EXPECT_EQ(answer({}, "(vl-catch-all-error-message (vl-catch-all-apply 'getpoint nil))"),
              "\"Function cancelled\"");
    answer({}, "(defun *error* (m) (setq told m))");
    EXPECT_EQ(answer({}, "(getint)"), "error: Function cancelled");
    EXPECT_EQ(lisp("told"), "\"Function cancelled\"");
}

TEST_F(InputTest, entitiesByPoint) {
    lisp("(progn (command \"LINE\" '(0 0) '(10 0) \"\") (command \"ZOOM\" \"W\" '(-1 -1) '(11 8)))");
    check({
        {{"5,0"}, "(equal (entsel) (list (entlast) '(5.0 0.0 0.0)))", "T"},
        {{"5,5"}, "(list (entsel) (getvar \"ERRNO\"))", "(nil 7)"},
        {{""}, "(list (entsel) (getvar \"ERRNO\"))", "(nil 52)"},
        {{"5,0", ""}, "(sslength (ssget))", "1"},
        {{"5,0"}, "(sslength (ssget \":S\"))", "1"},
        {{"5,5", "6,6", ""}, "(ssget)", "nil"},
    });
}

// At the prompt a command asks for what its line does not say.
TEST_F(InputTest, commandsTypedAtThePrompt) {
    typed = {"3,4", "nonsense", "@5,0", ""};
    EXPECT_TRUE(host->commands().runTyped("_line 1,2"));
    EXPECT_EQ(lisp("(sslength (ssget \"X\" '((0 . \"LINE\"))))"), "2");
    EXPECT_EQ(lisp("(cdr (assoc 11 (entget (entlast))))"), "(8.0 4.0 0.0)");
    typed = {"3,4"};
    EXPECT_FALSE(host->commands().runTyped("LINE 1,2")) << "the end of input cancels";
    EXPECT_FALSE(host->commands().isWaiting());
    EXPECT_FALSE(host->commands().runTyped("FROB"));
}

TEST_F(InputTest, pauseHandsOverToTheUser) {
    typed = {"oops", "7,7"};
    lisp("(command \"LINE\" '(0 0) pause '(9 9) \"\")");
    EXPECT_EQ(lisp("(mapcar '(lambda (c) (cdr (assoc c (entget (entlast))))) '(10 11))"),
              "((7.0 7.0 0.0) (9.0 9.0 0.0))");
    EXPECT_TRUE(typed.empty());
}

} // namespace
