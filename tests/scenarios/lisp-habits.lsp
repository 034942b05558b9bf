;;; The habits of the dialect where people trip. Each row is a form and its value.

(load "lib/check")

(defun holds (rows / row form)
  (foreach row rows
    (setq form (car row))
    (check (vl-prin1-to-string form) (eval form) (cadr row))))
;; A form that fails, and its message.
(defun fails (rows / row got)
  (foreach row rows
    (setq got (vl-catch-all-apply 'eval (list (car row))))
    (check (vl-prin1-to-string (car row))
           (if (vl-catch-all-error-p got) (vl-catch-all-error-message got) (list "no error" got))
           (cadr row))))

;; Numbers: 32 bits that wrap, whole division, types that are contagious.
(holds '(((/ 7 2) 3) ((/ -7 2) -3) ((/ 7 2.0) 3.5) ((/ 7) 7) ((+) 0) ((*) 0) ((- 5) -5) ((- 10 1 2) 7)
         ((+ 2147483647 1) -2147483648) ((* 65536 65536) 0) ((1+ 2147483647) -2147483648)
         ((+ 1 2.0) 3.0) ((type (+ 1 2.0)) REAL) ((max 1 2.0) 2.0) ((max 1 2) 2) ((min 1.0 2) 1.0)
         ((rem 7 3) 1) ((rem -7 3) -1) ((rem 7.5 2) 1.5) ((fix 2.9) 2) ((fix -2.9) -2) ((float 3) 3.0)
         ((abs -3) 3) ((expt 2 10) 1024) ((expt 2 0.5) 1.4142135623730951) ((expt 2.0 3) 8.0)
         ((sqrt 4) 2.0) ((gcd 12 18) 6) ((logand 7 15 3) 3) ((logior 1 2 4) 7) ((lsh 1 4) 16) ((lsh 16 -2) 4)
         ((~ 0) -1) ((boole 6 12 10) 6) ((zerop 0.0) T) ((minusp -0.5) T) ((numberp nil) nil)
         ((= 1 1.0) T) ((= "a" "a") T) ((= "a" 1) nil) ((= 1 1 2) nil) ((/= 1 2) T) ((/= 1 1) nil)
         ((< 1 2 3) T) ((< 1 3 2) nil) ((< "a" "b") T) ((> "b" "a") T) ((<= 2 2.0 3) T) ((eq 1 1) T)
         ((equal 1 1.0) T) ((equal 1.0 1.05 0.1) T) ((equal '(1.0 2.0) '(1.001 2.0) 0.01) T)
         ((equal "a" "A") nil) ((eq "abc" "abc") T) ((equal '(1 2) '(1 2)) T) ((eq '(1) '(1)) nil)
         ((atan 1 0) 1.5707963267948966) ((atan -1) -0.78539816339744828) ((cvunit 1 "foot" "inch") 12.0)))

;; What is nil, a list or an atom.
(holds '(((if nil 1) nil) ((if T 1) 1) ((if nil 1 2) 2) ((cond) nil) ((cond (nil 1) (2)) 2) ((and) T)
         ((or) nil) ((and 1 2) T) ((or nil 2) T) ((not 1) nil) ((null nil) T) ((atom nil) T) ((listp nil) T)
         ((listp 'a) nil) ((atom '(1)) nil) ((progn) nil) ((car nil) nil) ((cdr nil) nil) ((cadr '(1)) nil)
         ((nth 5 '(1 2)) nil) ((nth 1 '(1 2)) 2) ((last '(1 2 3)) 3) ((length nil) 0) ((append) nil)
         ((append '(1) nil '(2)) (1 2)) ((cons 1 2) (1 . 2)) ((cons 1 '(2)) (1 2)) ((list) nil)
         ((reverse '(1 2)) (2 1)) ((member 2 '(1 2 3)) (2 3)) ((assoc 2 '((1 . a) (2 . b))) (2 . b))
         ((assoc 9 '((1 . a))) nil) ((subst 9 1 '(1 2 1)) (9 2 9)) ((vl-position 3 '(1 2 3)) 2)
         ((vl-remove 1 '(1 2 1)) (2)) ((vl-list* 1 2 '(3)) (1 2 3)) ((vl-list-length '(1 . 2)) nil)
         ((vl-list-length '(1 2)) 2) ((vl-sort '(3 1 2 1) '<) (1 2 3)) ((vl-sort '("b" "a") '<) ("a" "b"))
         ((vl-sort '(3.5 1.0 3.5) '>) (3.5 3.5 1.0)) ((vl-sort-i '(3 1 2) '<) (1 2 0))
         ((acad_strlsort '("b" "a" "C")) ("a" "b" "C")) ((mapcar '+ '(1 2 3) '(10 20)) (11 22))
         ((mapcar '(lambda (x) (* x x)) '(1 2 3)) (1 4 9)) ((apply '+ '(1 2 3)) 6) ((apply 'max '(1 5 2)) 5)
         ((vl-some 'minusp '(1 -1)) T) ((vl-every 'minusp '(-1 -2)) T) ((vl-member-if 'minusp '(1 -1 2)) (-1 2))
         ((vl-remove-if-not 'numberp '(1 a 2)) (1 2)) ((foreach x '(1 2) (1+ x)) 3) ((foreach x nil 1) nil)
         ((repeat 3 7) 7) ((repeat 0 7) nil) ((progn (setq i 0) (while (< i 3) (setq i (1+ i)))) 3)
         ((setq) nil) ((setq a1 1 a2 2) 2) ((set 'a3 5) 5) ((eval '(+ 1 2)) 3) ((type nil) nil) ((type 1) INT)
         ((type 'a) SYM) ((type "") STR) ((type '(1)) LIST) ((type car) SUBR) ((type holds) USUBR)
         ((boundp 'no-such-name) nil) ((vl-symbol-name 'abc) "ABC") ((eq 'abc 'ABC) T) (((lambda (x) (1+ x)) 1) 2)))

;; Texts count from 1; nil counts as no text to those that join.
(holds '(((strcat) "") ((strcat "a" "b") "ab") ((strlen) 0) ((strlen "ab" "c") 3) ((substr "abcdef" 3) "cdef")
         ((substr "abcdef" 3 2) "cd") ((substr "abc" 4) "") ((substr "abc" 1 99) "abc") ((strcase "aB1") "AB1")
         ((strcase "AB" T) "ab") ((ascii "A") 65) ((chr 65) "A") ((itoa -5) "-5") ((atoi "12abc") 12)
         ((atoi "x") 0) ((atof "1.5e2x") 150.0) ((atof "") 0.0) ((read "(1 2) 3") (1 2)) ((read "abc") ABC)
         ((read "") nil) ((strlen "\t\e\\\"") 4) ((ascii "\101") 65) ((strlen "\U+00D8") 1)
         ((vl-string-search "b" "abcb") 1) ((vl-string-search "b" "abcb" 2) 3) ((vl-string-search "x" "a") nil)
         ((vl-string-subst "X" "b" "abb") "aXb") ((vl-string-trim " " "  a ") "a") ((vl-string-left-trim "ab" "abc") "c")
         ((vl-string-right-trim "c" "abcc") "ab") ((vl-string-position 98 "abcb") 1)
         ((vl-string-position 98 "abcb" 0 T) 3) ((vl-string->list "ab") (97 98)) ((vl-list->string '(97 98)) "ab")
         ((vl-string-translate "ab" "xy" "aabbc") "xxyyc") ((vl-string-mismatch "abc" "abd") 2)
         ((vl-string-elt "abc" 1) 98) ((vl-princ-to-string "a\"b") "a\"b") ((vl-prin1-to-string "a\"b\n") "\"a\\\"b\\n\"")
         ((vl-princ-to-string 1234567.0) "1.23457e+06") ((vl-princ-to-string 0.1) "0.1") ((vl-princ-to-string 2.0) "2.0")
         ((vl-princ-to-string '(1 . (2 "x"))) "(1 2 x)") ((vl-princ-to-string 1e-10) "1.0e-10")
         ((vl-princ-to-string 123456.0) "123456.0") ((vl-prin1-to-string ''a) "(QUOTE A)")
         ((vl-filename-base "/a/b.c.lsp") "b.c") ((vl-filename-extension "/a/b.lsp") ".lsp")
         ((vl-filename-directory "/a/b.lsp") "/a") ((vl-filename-extension "/a/b") nil)))

(holds '(((wcmatch "Name" "N*") T) ((wcmatch "Name" "???,*e") T) ((wcmatch "Name" "~*m*") nil) ((wcmatch "A1" "@#") T)
         ((wcmatch "A-1" "@.#") T) ((wcmatch "b" "[a-c]") T) ((wcmatch "d" "[~a-c]") T) ((wcmatch "a*b" "a`*b") T)
         ((wcmatch "axb" "a`*b") nil) ((wcmatch "" "*") T) ((wcmatch "abc" "ab") nil) ((wcmatch "a,b" "a`,b") T)
         ((wcmatch "x" "") nil) ((wcmatch "]" "[]]") T) ((wcmatch "name" "NAME") nil)))

;; Units.
(setvar "LUNITS" 2) (setvar "LUPREC" 4) (setvar "DIMZIN" 0) (setvar "AUNITS" 0) (setvar "AUPREC" 0)
(holds '(((rtos 17.5 1 4) "1.7500E+01") ((rtos 17.5 2 2) "17.50") ((rtos 17.5 3 2) "1'-5.50\"") ((rtos 17.5 4 2) "1'-5 1/2\"")
         ((rtos 17.5 5 2) "17 1/2") ((rtos 17.5) "17.5000") ((rtos -0.25 5 3) "-1/4") ((rtos 12 4 2) "1'")
         ((rtos 1e9 2 0) "1000000000") ((rtos 2.5 2 0) "3") ((rtos 0.0 2 2) "0.00")
         ((angtos pi 0 2) "180.00") ((angtos 0.7854 1 4) "45d0'0\"") ((angtos pi 2 1) "200.0g") ((angtos pi 3 2) "3.14r")
         ((angtos 0.7854 4 0) "N 45d E") ((angtos 0 0 0) "0") ((distof "1'-6 1/2\"" 4) 18.5) ((distof "17.5" 2) 17.5)
         ((distof "x" 2) nil) ((angtof "180" 0) 3.1415926535897931) ((angtof "45d30'" 1) 0.79412481179) ))
(setvar "DIMZIN" 8)
(holds '(((rtos 17.5 2 4) "17.5") ((rtos 17.0 2 4) "17") ((rtos 0.5 2 4) "0.5")))
(setvar "DIMZIN" 12)
(holds '(((rtos 0.5 2 4) ".5")))
(setvar "DIMZIN" 0)
(holds '(((polar '(1 1) 0 2) (3.0 1.0)) ((polar '(1 1 5) 0 2) (3.0 1.0 5.0)) ((distance '(0 0) '(3 4)) 5.0) ((distance '(0 0 9) '(3 4)) 5.0)
         ((angle '(0 0) '(0 5)) 1.5707963267948966) ((inters '(0 0) '(2 2) '(0 2) '(2 0)) (1.0 1.0))
         ((inters '(0 0) '(1 0) '(5 5) '(5 1)) nil) ((inters '(0 0) '(1 0) '(5 5) '(5 1) nil) (5.0 0.0))))

;; Dynamic scope, locals and functions as values.
(defun inner () outer-local)
(defun outer (/ outer-local) (setq outer-local 7) (inner))
(defun twice (f x) (f (f x)))
(defun shadow (list) (apply 'strcat list))
(holds '(((outer) 7) (outer-local nil) ((twice '1+ 1) 3) ((twice (function (lambda (x) (* x 3))) 2) 18)
         ((shadow '("a" "b")) "ab") ((progn (defun two (a / b) (setq b a) (+ a b)) (two 4)) 8)
         ((type (car (defun-q-list-ref 'no-such))) nil)))
(defun-q listed (x) (1+ x))
(holds '(((listed 1) 2) ((car listed) (X)) ((progn (setq listed (list '(x) '(* x 10))) (listed 4)) 40)))

;; Comments inside; |; a dotted list; a quote in front of nothing but an atom.
(check "comments vanish" '(1 ;| two
  lines |; 2 ; rest
  3) '(1 2 3))

(fails '(((+ nil 1) "bad argument type: numberp: nil") ((car 5) "bad argument type: listp 5")
         ((no-such-function 1) "no function definition: NO-SUCH-FUNCTION") ((/ 1 0) "divide by zero")
         ((/ 1.0 0.0) "divide by zero") ((rem 5 0) "divide by zero") ((car) "too few arguments")
         ((car 1 2) "too many arguments") ((inner 1) "too many arguments") ((twice 1) "too few arguments")
         ((strcat "a" 1) "bad argument type: stringp 1") ((strcase nil) "bad argument type: stringp nil")
         ((substr "abc" 0) "bad argument value: positive 0")
         ((length 5) "bad argument type: listp 5") ((read "(1 2") "malformed list on input") ((read ")") "extra right paren on input")
         ((read "\"a") "malformed string on input") ((5 6) "bad function: 5") (("x") "bad function: \"x\"")
         ((itoa 1.5) "bad argument type: fixnump: 1.5") ((sqrt -1) "function undefined for argument: -1")
         ((chr "a") "bad argument type: fixnump: \"a\"") ((setq 1 2) "bad argument type: symbolp 1") ((entget 5) "bad argument type: lentityp 5")
         ((ssname 1 0) "bad argument type: lselsetp 1") ((getvar 5) "bad argument type: stringp 5")))

;; vl-catch-all-apply gives the value when nothing failed, and any error but quit as an object.
(setq caught (vl-catch-all-apply '/ '(1 0)))
(holds '(((vl-catch-all-error-p caught) T) ((vl-catch-all-error-p 5) nil) ((vl-catch-all-error-message caught) "divide by zero")
         ((vl-catch-all-apply '+ '(1 2)) 3) ((type caught) VL-CATCH-ALL-APPLY-ERROR)))

;; A text that grows in place, among other variables of the same setq.
(defun grow (/ text n)
  (setq text "" n 0)
  (while (< n 3) (setq text (strcat text (itoa n)) n (1+ n)))
  (list text n))
(check "setq of several, a growing text first" (grow) '("012" 3))

(check-finish)
