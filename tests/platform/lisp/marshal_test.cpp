#include "lisp/marshal.h"
#include "platform/lisp/LispTest.h"

namespace veldrin::lisp {

class Marshal : public LispTest {
protected:
    static std::string describe(const resbuf* chain) {
        std::string text;
        for (; chain; chain = chain->rbnext) {
            if (!text.empty()) text += ' ';
            const auto& v = chain->resval;
            switch (chain->restype) {
            case RTSHORT: text += "s" + std::to_string(v.rint); break;
            case RTLONG: text += "l" + std::to_string(v.rlong); break;
            case RTREAL: text += realText(v.rreal); break;
            case RTSTR: text += std::string("'") + v.rstring + "'"; break;
            case RTPOINT: text += "p2:" + realText(v.rpoint[0]) + "," + realText(v.rpoint[1]); break;
            case RT3DPOINT: text += "p3:" + realText(v.rpoint[0]) + "," + realText(v.rpoint[2]); break;
            case RTENAME:
                text += "e" + std::to_string(v.rlname[0]) + "/" + std::to_string(v.rlname[1]);
                break;
            case RTLB: text += "("; break;
            case RTLE: text += ")"; break;
            case RTDOTE: text += "."; break;
            case RTNIL: text += "nil"; break;
            case RTT: text += "T"; break;
            default: text += "?" + std::to_string(chain->restype);
            }
        }
        return text;
    }
    // How `text` reaches a C++ function as its one argument, and how it comes back.
    std::string sent(const char* text) {
        const Value value = engine.runText(text).value;
        return describe(toResbufs(engine, Args(&value, 1)).get());
    }
    std::string result(const char* text) {
        return describe(resultToResbufs(engine, engine.runText(text).value).get());
    }
    template<class... Items>
    std::string received(Items... items) {
        const ResbufChain chain(acutBuildList(items..., 0));
        return prin1Text(resultFromResbufs(engine, chain.get()));
    }
};

TEST_F(Marshal, argumentsTakeTheFormsThatHandlersRead) {
    const struct {
        const char *lisp, *chain;
    } cases[] = {
        {"5", "s5"},
        {"-32768", "s-32768"},
        {"32768", "l32768"},
        {"2.5", "2.5"},
        {"\"x\"", "'x'"},
        {"T", "T"},
        {"nil", "nil"},
        {"'sym", "'SYM'"},
        {"'(1 2)", "p2:1.0,2.0"},
        {"'(1.0 2 3)", "p3:1.0,3.0"},
        {"'(1 2 3 4)", "( s1 s2 s3 s4 )"},
        {"'(1)", "( s1 )"},
        {"'(\"a\" . 5)", "( 'a' s5 ."},
        {"'(1 . 2)", "( s1 s2 ."},
        {"'(1 2 . 3)", "( s1 s2 s3 ."},
        {"'(\"P1\" (1.0 2.0 3.0))", "( 'P1' p3:1.0,3.0 )"},
        {"'(\"TEXT\" 5.0 6.0)", "( 'TEXT' 5.0 6.0 )"},
        {"'((\"a\" . 1) (nil T))", "( ( 'a' s1 . ( nil T ) )"},
        {"'(\"k\" . (1 \"x\"))", "( 'k' s1 'x' )"},
    };
    for (const auto& c : cases) EXPECT_EQ(sent(c.lisp), c.chain) << c.lisp;
    const Value name = Value::ename({{77, 5}});
    EXPECT_EQ(describe(toResbufs(engine, Args(&name, 1)).get()), "e77/5");
    EXPECT_THROW(sent("car"), Error);
}

TEST_F(Marshal, resultsOfLispArriveWithoutTheirBrackets) {
    EXPECT_EQ(result("'(1 (\"a\" . 2))"), "s1 ( 'a' s2 .");
    EXPECT_EQ(result("'((1) (2))"), "( s1 ) ( s2 )");
    EXPECT_EQ(result("'(1.0 2.0 3.0)"), "p3:1.0,3.0");
    EXPECT_EQ(result("7"), "s7");
    EXPECT_EQ(result("nil"), "nil");
    EXPECT_EQ(result("'(\"a\" . 2)"), "( 'a' s2 .");
}

TEST_F(Marshal, bothFormsOfPairsAreUnderstood) {
    const double point[] = {1, 2, 3};
    EXPECT_EQ(received(RTLB, RTLB, RTSTR, "a", RTDOTE, RTSHORT, 5, RTLE, RTLE), "((\"a\" . 5))");
    EXPECT_EQ(received(RTLB, RTLB, RTSTR, "a", RTSHORT, 5, RTDOTE, RTSTR, "x", RTLE), "((\"a\" . 5) \"x\")");
    EXPECT_EQ(received(RTLB, RTSHORT, 1, RTSHORT, 2, RTDOTE, RTSHORT, 3, RTLE), "(1 2 . 3)");
    EXPECT_EQ(received(RTLB, RTSTR, "p", RTDOTE, RT3DPOINT, point, RTLE), "(\"p\" 1.0 2.0 3.0)");
    EXPECT_EQ(received(RTLB, RTSTR, "k", RTDOTE, RTLB, RTLONG, 70000, RTLE, RTLE), "(\"k\" 70000)");
    EXPECT_EQ(received(RTLB, RTSTR, "k", RTDOTE, RTNIL, RTLE), "(\"k\")");
    EXPECT_EQ(received(RTSHORT, 1, RTT), "(1 T)");
    EXPECT_EQ(received(RTLB, RTLE), "nil");
    for (const char* text :
         {"(\"a\" (1 . 2) ((3 4 5 6)) nil T -70000 \"\")", "((\"x\" . \"y\") (\"z\" . 2.5))"}) {
        const Value value = engine.runText("'" + std::string(text)).value;
        EXPECT_EQ(prin1Text(fromResbufs(engine, toResbufs(engine, Args(&value, 1)).get()).at(0)), text);
    }
}

TEST_F(Marshal, brokenChainsAreErrors) {
    EXPECT_THROW(received(RTLB, RTSHORT, 1), Error);
    EXPECT_THROW(received(RTSHORT, 1, RTLE), Error);
    EXPECT_THROW(received(RTDOTE), Error);
    EXPECT_THROW(received(RTLB, RTSTR, "a", RTDOTE, RTLE), Error);
    EXPECT_THROW(received(RTLB, RTSTR, "a", RTDOTE, RTSHORT, 1, RTSHORT, 2, RTLE), Error);
    EXPECT_THROW(sent("(progn (setq d nil) (repeat 100000 (setq d (list d))) d)"), Error);
}

} // namespace veldrin::lisp
