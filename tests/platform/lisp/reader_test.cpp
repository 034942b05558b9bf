#include "lisp/Reader.h"
#include "platform/lisp/LispTest.h"

namespace veldrin::lisp {

using Reading = LispTest;

TEST_F(Reading, printedFormsReadBackTheSame) {
    for (const char* text :
         {"nil", "T", "(1 -2 3.5 1.0e+20)", "(A (B . C) . D)", "\"a\\\"b\\\\c\\n\\t\\e\\r\"", "((()))",
          "(QUOTE X)", "1+", "-", "12AB", "1.5.2", "\"\303\251\""}) {
        const std::string once = give("'" + std::string(text));
        EXPECT_EQ(give("'" + once), once) << text;
    }
}

TEST_F(Reading, tokensAndCharacters) {
    expectLisp({
        {"'(a;comment\n b ;| all (of\n this |; c)", "(A B C)"},
        {"'(.5 5. +7 -7 1e3 1e 007)", "(0.5 5.0 7 -7 1000.0 1E 7)"},
        {"'((a.b)'c\"d\")", "((A.B) (QUOTE C) \"d\")"},
        {"'(a . (b . (c)))", "(A B C)"},
        {"\"\\101\\U+00E9\\x\\\\\"", "\"A\303\251x\\\\\""},
        {"(mapcar 'princ '(\"a\\nb\"))", "(\"a\\nb\")"},
    });
    EXPECT_EQ(services.printed, "a\nb");
}

TEST_F(Reading, realsShowSixDigits) {
    expectLisp({
        {"(mapcar 'vl-princ-to-string '(3.0 0.1 123456.789 1234567.0 1e-5 100000.0 1e100 -0.5))",
         "(\"3.0\" \"0.1\" \"123457.0\" \"1.23457e+06\" \"1.0e-05\" \"100000.0\" \"1.0e+100\" \"-0.5\")"},
    });
}

TEST_F(Reading, mistakesNameTheirLine) {
    const struct {
        const char *text, *message;
        int line;
    } cases[] = {
        {"(a)\n\n(b\n (c)\n", "malformed list on input", 3},
        {"(a\n(b\n", "malformed list on input", 2},
        {"(a)\n)", "extra right paren on input", 2},
        {"(a)\n\"x\ny\n", "malformed string on input", 2},
        {"\n(a . )", "misplaced dot on input", 2},
        {"( . a)", "misplaced dot on input", 1},
        {"(a . b c)", "misplaced dot on input", 1},
        {"\n;| open", "malformed comment on input", 2},
        {"(a ')", "syntax error: quote without a form", 1},
    };
    for (const auto& c : cases) {
        const Outcome outcome = engine.runText(c.text, "f.lsp");
        ASSERT_TRUE(outcome.error) << c.text;
        EXPECT_EQ(outcome.error->message, c.message) << c.text;
        EXPECT_EQ(outcome.error->line, c.line) << c.text;
        EXPECT_EQ(outcome.error->file, "f.lsp") << c.text;
    }
}

TEST_F(Reading, nothingRunsOfATextThatCannotBeReadWhole) {
    engine.runText("(setq ran T) (");
    EXPECT_EQ(give("ran"), "nil");
}

TEST_F(Reading, nestingIsNotLimitedByTheStack) {
    std::string deep(500000, '(');
    deep += std::string(500000, ')');
    EXPECT_EQ(give("(setq d '" + deep + ") (listp d)"), "T");
    EXPECT_EQ(give("(equal d d)"), "T");
    EXPECT_EQ(prin1Text(engine.get("D")), deep.substr(0, 499999) + "nil" + deep.substr(500001));
}

TEST_F(Reading, aPromptKnowsWhenAFormIsOpen) {
    for (const char* open : {"(a", "(a \"b)", "\"x", "(a ;| )", "(a ; )"})
        EXPECT_FALSE(isComplete(open)) << open;
    for (const char* whole : {"", "a", "(a)", "(a \")\" )", "(a) ; (", ")"})
        EXPECT_TRUE(isComplete(whole)) << whole;
}

} // namespace veldrin::lisp
