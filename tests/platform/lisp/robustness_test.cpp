// No built-in may crash, whatever it is given.
#include "platform/lisp/LispTest.h"

#include <filesystem>
#include <unistd.h>

namespace veldrin::lisp {

class Robustness : public LispTest {
protected:
    // What the built-ins make on disk lands in an empty folder.
    Robustness()
        : before(std::filesystem::current_path())
        , folder(std::filesystem::temp_directory_path() / ("lisp-robust-" + std::to_string(getpid()))) {
        std::filesystem::create_directory(folder);
        std::filesystem::current_path(folder);
    }
    ~Robustness() override {
        std::filesystem::current_path(before);
        std::filesystem::remove_all(folder);
    }
    std::filesystem::path before, folder;
};

constexpr const char* awkward[] = {
    "nil",
    "T",
    "0",
    "-1",
    "2147483647",
    "-2147483648",
    "1e308",
    "-0.5",
    "(expt 10.0 400)",
    "(- (expt 10.0 400) (expt 10.0 400))",
    "\"\"",
    "\"x\"",
    "\"\303(\"",
    "\"[a-\"",
    "'sym",
    "'(1 . 2)",
    "'(1 2 . \"z\")",
    "'(\"a\" nil 3)",
    "'(1.0 2.0 3.0)",
    "'((1 . 2) (3))",
    "car",
    "(function (lambda (x) x))",
    "'(lambda x)",
    "'(lambda (1) 2)",
    "closed-file",
    "dead-name",
    "error-object",
    "'endless",
};

TEST_F(Robustness, everyBuiltInSurvivesEveryArgument) {
    engine.set("dead-name", Value::ename({{-1, 99}}));
    give("(setq closed-file (open \"c\" \"w\")) (close closed-file)"
         "(setq error-object (vl-catch-all-apply 'car '(5))) (defun endless (a b) T)");
    std::vector<Value> values;
    for (const char* text : awkward) values.push_back(engine.runText(text).value);
    std::vector<Value> functions;
    for (const Symbol* symbol : engine.symbolsWithPrefix(""))
        if (symbol->get().is(Kind::Builtin) && symbol->name != "WHILE" &&
            symbol->name != "REPEAT") // may be endless
            functions.push_back(symbol->get());
    ASSERT_GT(functions.size(), 150u);
    int errors = 0;
    for (const Value& function : functions) {
        const auto call = [&](std::initializer_list<Value> args) {
            errors += !engine.runFunction(function, Args(args.begin(), args.size()));
        };
        call({});
        for (const Value& a : values) {
            call({a});
            for (const Value& b : values) {
                call({a, b});
                call({values[11], a, b, values[3]});
            }
        }
    }
    EXPECT_GT(errors, 10000);
    EXPECT_EQ(give("(+ 1 2)"), "3");
}

TEST_F(Robustness, everyFormSurvivesEveryShape) {
    for (const char* form :
         {"quote", "function", "setq", "if", "cond", "and", "or", "progn", "while nil", "repeat", "foreach",
          "lambda", "defun", "defun-q", "defun f", "foreach x", "setq a", "lambda ()"})
        for (const char* rest : {"", "1", "1 2", "(1 . 2)", ". 5", "x . 5", "nil nil", "(x / 1) x", "((a)) b",
                                 "\"s\" \"t\" u", "(x y) (z . w)", "'a 'b 'c 'd"})
            give("(" + std::string(form) + " " + rest + ")");
    EXPECT_EQ(give("(+ 1 2)"), "3");
}

// The same form over and over: what it made is gone, compiled code and caches included.
TEST_F(Robustness, evaluationsLeaveNothingBehind) {
    struct Case {
        const char* form;
        int count;
    };
    const Case cases[] = {
        {"(setq a (cons 1 a) a (cdr a))", 1000000},
        {"(mapcar '(lambda (x) (strcat \"n\" (itoa x))) '(1 2 3))", 100000},
        {"(eval (list '+ 1 (list 'car ''(2))))", 100000},
        {"(read \"(1 (2 . \\\"text\\\") sym)\")", 100000},
        {"(vl-catch-all-apply 'car '(5))", 20000},
        {"(progn (defun made (x / y) (setq y x)) (made 1))", 50000},
        {"(apply '(lambda (x) x) (list 1))", 100000},
        {"(vl-sort '(3 1 2) '(lambda (x y) (< x y)))", 50000},
    };
    for (const Case& c : cases) {
        const std::string once = std::string("(progn ") + c.form + " nil)";
        for (int i = 0; i < 3; ++i) give(once); // names and caches are made
        give("(repeat 1000 " + once + ")");
        const std::size_t cells = Heap::instance().liveCells();
        const std::size_t bytes = Heap::instance().liveBytes();
        give("(repeat " + std::to_string(c.count) + " " + once + ")");
        // The form was read anew, so that what is kept of the last function lists may be its own now.
        constexpr std::size_t kOfOneForm = 100;
        EXPECT_LT(Heap::instance().liveCells(), cells + kOfOneForm) << c.form;
        EXPECT_LT(Heap::instance().liveBytes(), bytes + kOfOneForm * 32) << c.form;
    }
}

} // namespace veldrin::lisp
