// Numbers, lists and texts.
#include "platform/lisp/LispTest.h"

namespace veldrin::lisp {

using Values = LispTest;

TEST_F(Values, integersWrapAndDivideWhole) {
    expectLisp({
        {"(+ 2147483647 1)", "-2147483648"},
        {"(1- -2147483648)", "2147483647"},
        {"(* 65536 65536)", "0"},
        {"(- -2147483648)", "-2147483648"},
        {"2147483648", "2.14748e+09"},
        {"(/ 7 2)", "3"},
        {"(/ -7 2)", "-3"},
        {"(/ 7 2.0)", "3.5"},
        {"(/ 100 3 2)", "16"},
        {"(/ -2147483648 -1)", "-2147483648"},
        {"(rem -2147483648 -1)", "0"},
        {"(/ 1 0)", "error: divide by zero"},
        {"(/ 1.0 0)", "error: divide by zero"},
        {"(rem 5 0)", "error: divide by zero"},
        {"(rem 7.5 2)", "1.5"},
        {"(list (+) (*) (-) (- 5) (+ 1 2.5))", "(0 0 0 -5 3.5)"},
        {"(list (fix 2.9) (fix -2.9) (fix 1e12))", "(2 -2 1.0e+12)"},
        {"(list (max 1 2.0 3) (min 4 2))", "(3.0 2)"},
        {"(list (expt 2 10) (expt 2 40) (expt 2.0 3) (expt 2 -1))", "(1024 1.09951e+12 8.0 0.5)"},
        {"(sqrt -1)", "error: function undefined for argument: -1"},
        {"(list (lsh 1 4) (lsh 255 -4) (lsh -1 -28) (lsh 1 40) (~ 0) (logand 12 10) (logior 12 10))",
         "(16 15 15 0 -1 8 14)"},
        {"(list (boole 1 12 10) (boole 6 12 10) (boole 7 12 10) (boole 8 12 10))", "(8 6 14 -15)"},
        {"(gcd 12 18)", "6"},
        {"(atan 1 -1)", "2.35619"},
        {"(+ 1 nil)", "error: bad argument type: numberp: nil"},
        {"(+ nil 1)", "error: bad argument type: numberp: nil"},
        {"(logand 1.5)", "error: bad argument type: fixnump: 1.5"},
    });
}

TEST_F(Values, comparingMixesKindsAsTheDialectDoes) {
    expectLisp({
        {"(= 1 1.0)", "T"},
        {"(= \"a\" \"a\")", "T"},
        {"(= \"a\" 1)", "nil"},
        {"(= nil nil)", "T"},
        {"(= 1 nil)", "nil"},
        {"(/= 1 2 1)", "T"},
        {"(/= 1 1)", "nil"},
        {"(< 1 2 3)", "T"},
        {"(< 1 3 2)", "nil"},
        {"(< \"abc\" \"abd\")", "T"},
        {"(< 1 nil)", "error: bad argument type for compare: 1 nil"},
        {"(eq '(1) '(1))", "nil"},
        {"(list (eq 1 1) (eq 1.0 1.0) (eq 'a 'A))", "(T T T)"},
        {"(equal '(1.0 (2 \"x\")) '(1.0 (2 \"x\")))", "T"},
        {"(equal '(1.0 2.0) '(1.001 2.0) 0.01)", "T"},
        {"(equal '(1.0 2.0) '(1.1 2.0) 0.01)", "nil"},
        {"(equal '(1 2) '(1 2 3))", "nil"},
    });
}

TEST_F(Values, listsComeApartAndTogether) {
    expectLisp({
        {"(list (car nil) (cadr '(1)) (cdddr '(1 2)) (caddr '(1 2 3)) (cddddr '(1 2 3 4 5)))",
         "(nil nil nil 3 (5))"},
        {"(list (cadar '((1 2))) (cdar '((1 2))) (caaddr '(1 2 (3))))", "(2 (2) 3)"},
        {"(cdr '(1 . 2))", "2"},
        {"(cadr '(1 . 2))", "error: bad argument type: consp 2"},
        {"(car 5)", "error: bad argument type: listp 5"},
        {"(append '(1) nil '(2) '(3 . 4))", "(1 2 3 . 4)"},
        {"(append '(1) 2)", "error: bad argument type: listp 2"},
        {"(reverse '(1 2 3))", "(3 2 1)"},
        {"(list (nth 1 '(a b)) (nth 5 '(a b)) (last '(1 2)) (last nil))", "(B nil 2 nil)"},
        {"(length '(1 . 2))", "error: bad argument type: listp (1 . 2)"},
        {"(vl-list-length '(1 . 2))", "nil"},
        {"(member 2.0 '(1 2 3))", "(2 3)"},
        {"(assoc 'b '((a . 1) nil (b . 2)))", "(B . 2)"},
        {"(assoc 'b '(a))", "error: bad argument type: listp A"},
        {"(subst 'x 1 '(1 (1) 2 1))", "(X (1) 2 X)"},
        {"(list (atom nil) (listp nil) (vl-consp nil))", "(T T nil)"},
        {"(vl-list* 1 2 '(3))", "(1 2 3)"},
        {"(vl-remove 1 '(1 2 1.0 3))", "(2 3)"},
        {"(vl-remove-if-not 'numberp '(a 1 b 2.5))", "(1 2.5)"},
        {"(list (vl-position 'c '(a b c)) (vl-member-if 'minusp '(1 -2 3)))", "(2 (-2 3))"},
        {"(list (vl-some '> '(1 5) '(2 3)) (vl-every '< '(1 2) '(2 3)) (vl-every '< nil))", "(T T T)"},
    });
}

TEST_F(Values, sortingDropsEqualIntegersAlone) {
    expectLisp({
        {"(vl-sort '(3 1 2 3 1) '<)", "(1 2 3)"},
        {"(vl-sort '(2.0 1 2.0 1.5) '>)", "(2.0 2.0 1.5 1)"},
        {"(vl-sort '(\"b\" \"a\" \"b\") '<)", "(\"a\" \"b\" \"b\")"},
        {"(vl-sort '((2 a) (1 b) (2 c)) '(lambda (p q) (< (car p) (car q))))", "((1 B) (2 A) (2 C))"},
        {"(vl-sort-i '(30 10 20 10) '<)", "(1 3 2 0)"},
        {"(vl-sort '(1 2 3 4 5) '(lambda (a b) T))", "(5 4 3 2 1)"}, // no order at all, and still an end
        {"(vl-sort '(1 \"a\") '<)", "error: bad argument type for compare: \"a\" 1"},
        {"(acad_strlsort '(\"b\" \"c\" \"a\"))", "(\"a\" \"b\" \"c\")"},
    });
}

TEST_F(Values, textsCountCharactersFromOne) {
    expectLisp({
        {"(strlen \"\303\244\303\266\" \"ab\")", "4"},
        {"(substr \"abcdef\" 2 3)", "\"bcd\""},
        {"(substr \"abc\" 4)", "\"\""},
        {"(substr \"abc\" 9 2)", "\"\""},
        {"(substr \"abc\" 0)", "error: bad argument value: positive 0"},
        {"(substr \"\303\244bc\" 2 1)", "\"b\""},
        {"(strcase \"\303\244b\")", "\"\303\204B\""},
        {"(strcase \"AB\" T)", "\"ab\""},
        {"(list (ascii \"A\") (ascii \"\") (chr 65) (ascii (chr 228)))", "(65 0 \"A\" 228)"},
        {"(list (atoi \" 12.7x\") (atoi \"x\") (atof \"1.5e2ft\") (atof \"-.5\") (itoa -3))",
         "(12 0 150.0 -0.5 \"-3\")"},
        {"(strcat \"a\" nil)", "error: bad argument type: stringp nil"},
        {"(strlen nil)", "error: bad argument type: stringp nil"},
        {"(itoa 1.5)", "error: bad argument type: fixnump: 1.5"},
        {"(vl-string-search \"b\" \"abcb\" 2)", "3"},
        {"(vl-string-search \"x\" \"abc\" 99)", "nil"},
        {"(vl-string-subst \"X\" \"b\" \"abb\")", "\"aXb\""},
        {"(vl-string-position 98 \"abcb\" 0 T)", "3"},
        {"(vl-string-trim \" -\" \" -a b- \")", "\"a b\""},
        {"(vl-string-left-trim \"a\" \"aaa\")", "\"\""},
        {"(vl-string-right-trim \"\303\244\" \"x\303\244\")", "\"x\""},
        {"(vl-string-translate \"ab\" \"xy\" \"aabc\")", "\"xxyc\""},
        {"(vl-string->list \"A\303\244\")", "(65 228)"},
        {"(vl-list->string '(65 228))", "\"A\303\244\""},
        {"(vl-list->string '(-1))", "error: bad argument value: character code -1"},
        {"(vl-string-elt \"ab\" 2)", "error: bad argument value: string index 2"},
    });
}

TEST_F(Values, wildCardsMatch) {
    expectLisp({
        {"(wcmatch \"Name\" \"N*\")", "T"},
        {"(wcmatch \"Name\" \"???,*m*\")", "T"},
        {"(wcmatch \"Name\" \"~*m*\")", "nil"},
        {"(wcmatch \"Name\" \"*m\")", "nil"},
        {"(wcmatch \"A1-\" \"@#.\")", "T"},
        {"(wcmatch \"B\" \"[A-C]\")", "T"},
        {"(wcmatch \"B\" \"[~A-C]\")", "nil"},
        {"(wcmatch \"a,b\" \"a`,b\")", "T"},
        {"(wcmatch \"*\" \"`*\")", "T"},
        {"(wcmatch \"x*\" \"`*\")", "nil"},
        {"(wcmatch \"\" \"*\")", "T"},
        {"(wcmatch \"abc\" \"\")", "nil"},
        {"(wcmatch \"]\" \"[]]\")", "T"},
        {"(wcmatch \"[\" \"[\")", "T"},
        {"(wcmatch \"aXbXc\" \"a*X?\")", "T"},
        {"(wcmatch \"name\" \"NAME\")", "nil"},
        {"(wcmatch \"aaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaab\" \"*a*a*a*a*a*a*a*a*a*a*c\")", "nil"},
    });
}

TEST_F(Values, pointsMeasure) {
    expectLisp({
        {"(distance '(0 0) '(3 4))", "5.0"},
        {"(distance '(0 0 0) '(0 0 2))", "2.0"},
        {"(distance '(0 0) '(0 0 2))", "0.0"},
        {"(distance 1 '(0 0))", "error: bad argument type: 2D/3D point: 1"},
        {"(angle '(0 0) '(0 -1))", "4.71239"},
        {"(polar '(1 2 3) 0.0 2)", "(3.0 2.0 3.0)"},
        {"(inters '(0 0) '(2 2) '(0 2) '(2 0))", "(1.0 1.0)"},
        {"(inters '(0 0) '(1 1) '(0 4) '(4 0))", "nil"},
        {"(inters '(0 0) '(1 1) '(0 4) '(4 0) nil)", "(2.0 2.0)"},
        {"(inters '(0 0 0) '(2 2 0) '(0 2 1) '(2 0 1))", "nil"}, // they pass at a distance
        {"(inters '(0 0) '(1 1) '(0 1) '(1 2) nil)", "nil"},
    });
}

} // namespace veldrin::lisp
