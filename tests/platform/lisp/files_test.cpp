#include "platform/lisp/LispTest.h"

#include <filesystem>
#include <fstream>
#include <unistd.h>

namespace veldrin::lisp {

// Each test works in an empty folder, which the variable `dir` names.
class Files : public LispTest {
protected:
    Files() : folder(std::filesystem::temp_directory_path() / ("lisp-files-" + std::to_string(getpid()))) {
        std::filesystem::remove_all(folder);
        std::filesystem::create_directory(folder);
        engine.set("dir", Value::text(folder.string() + "/"));
    }
    ~Files() override { std::filesystem::remove_all(folder); }
    std::filesystem::path folder;
};

TEST_F(Files, linesAndCharactersGoOutAndIn) {
    expectLisp({
        {"(setq p (strcat dir \"a.txt\") f (open p \"w\")) (write-line \"one\" f) (princ 2.5 f) (write-char "
         "10 f)"
         "(prin1 \"q\" f) (close f)",
         "nil"},
        {"(setq f (open p \"a\")) (write-line \"\303\244z\" f) (close f) (setq f (open p \"r\")) (type f)",
         "FILE"},
        {"(list (read-line f) (read-char f) (read-line f) (read-line f))",
         "(\"one\" 50 \".5\" \"\\\"q\\\"\303\244z\")"},
        {"(list (read-line f) (read-char f) (close f))", "(nil nil nil)"},
        {"(open (strcat dir \"none/x\") \"w\")", "nil"},
        {"(open dir \"r\")", "nil"},
        {"(open p \"x\")", "error: bad argument value: open mode x"},
    });
    EXPECT_TRUE(give("(read-line f)").starts_with("error: bad argument type: streamp"));
    EXPECT_TRUE(give("(princ 1 f)").starts_with("error: bad argument type: streamp"));
    std::ofstream(folder / "crlf.txt", std::ios::binary) << "a\r\nb\r\n";
    EXPECT_EQ(give("(setq f (open (strcat dir \"crlf.txt\") \"r\")) (list (read-line f) (read-char f) "
                   "(read-char f))"),
              "(\"a\" 98 10)");
}

TEST_F(Files, managing) {
    std::ofstream(folder / "a.TXT") << "12345";
    expectLisp({
        {"(defun at (n) (strcat dir n))", "AT"},
        {"(vl-file-size (at \"a.TXT\"))", "5"},
        {"(vl-file-size (at \"none\"))", "nil"},
        {"(vl-file-copy (at \"a.TXT\") (at \"b.txt\"))", "5"},
        {"(vl-file-copy (at \"a.TXT\") (at \"b.txt\"))", "nil"}, // never over an existing file
        {"(vl-file-copy (at \"a.TXT\") (at \"b.txt\") T)", "5"},
        {"(vl-file-size (at \"b.txt\"))", "10"},
        {"(vl-file-copy (at \"b.txt\") (at \"b.txt\") T)", "nil"},
        {"(vl-file-rename (at \"b.txt\") (at \"a.TXT\"))", "nil"},
        {"(list (vl-mkdir (at \"sub\")) (vl-mkdir (at \"sub\")) (vl-file-directory-p (at \"sub\")))",
         "(T nil T)"},
        {"(vl-directory-files dir \"*.txt\" 1)", "(\"a.TXT\" \"b.txt\")"},
        {"(vl-directory-files dir nil -1)", "(\".\" \"..\" \"sub\")"},
        {"(vl-directory-files (at \"none\"))", "nil"},
        {"(list (vl-file-delete (at \"b.txt\")) (vl-file-delete (at \"b.txt\")) (vl-file-delete (at "
         "\"sub\")))",
         "(T nil nil)"},
        {"(length (vl-file-systime (at \"a.TXT\")))", "7"},
        {"(mapcar 'vl-filename-base '(\"/x/y.dwg\" \"c:\\\\a\\\\b.c.d\" \"plain\"))",
         "(\"y\" \"b.c\" \"plain\")"},
        {"(mapcar 'vl-filename-directory '(\"/x/y.dwg\" \"c:\\\\a\\\\b\" \"plain\" \"/z\"))",
         "(\"/x\" \"c:\\\\a\" \"\" \"/\")"},
        {"(mapcar 'vl-filename-extension '(\"y.dwg\" \"plain\" \".rc\"))", "(\".dwg\" nil nil)"},
        {"(findfile (vl-filename-mktemp \"x.txt\"))", "nil"},
    });
}

TEST_F(Files, loadedFilesRunAndNameTheirErrors) {
    std::ofstream(folder / "m.lsp") << "(defun from-m ()\n\n (car 5))\n'loaded";
    std::ofstream(folder / "bad.lsp") << "(setq half T)\n(a\n";
    expectLisp({{"(load (strcat dir \"m\"))", "LOADED"}, {"(load (strcat dir \"m.lsp\"))", "LOADED"}});
    const Outcome outcome = engine.runText("(from-m)");
    ASSERT_TRUE(outcome.error);
    EXPECT_EQ(outcome.error->file, (folder / "m.lsp").string());
    EXPECT_EQ(outcome.error->line, 3);
    EXPECT_EQ(give("(load (strcat dir \"bad\"))"), "error: malformed list on input");
    EXPECT_EQ(give("half"), "nil");
}

} // namespace veldrin::lisp
