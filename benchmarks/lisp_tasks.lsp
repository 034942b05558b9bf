;;; The tasks of bench_lisp.py in Lisp. Prints NAME MILLISECONDS, the best of the runs, for each.

(setvar "CMDECHO" 0)
(setq runs 3)

(defun fib (n) (if (< n 2) n (+ (fib (- n 1)) (fib (- n 2)))))

(defun count-up (n / i)
  (setq i 0)
  (while (< i n) (setq i (1+ i)))
  i)

(defun build-and-reverse (n / i numbers)
  (setq i 0)
  (repeat n (setq numbers (cons i numbers)  i (1+ i)))
  (repeat 10 (setq numbers (reverse numbers)))
  (length numbers))

;; The same pseudo-random numbers as the twin has.
(defun random-numbers (n / seed numbers)
  (setq seed 12345)
  (repeat n
    (setq seed    (rem (+ (* seed 1103) 12345) 1000003)
          numbers (cons (/ seed 7.0) numbers)))
  numbers)

(defun build-text (n / text)
  (setq text "")
  (repeat n (setq text (strcat text "pipe ")))
  (strlen text))

(defun pairs-upto (n / pairs)
  (repeat n (setq pairs (cons (cons n (itoa n)) pairs)  n (1- n)))
  pairs)

(defun look-up-all (pairs rounds / total)
  (setq total 0)
  (repeat rounds
    (foreach pair pairs (setq total (+ total (strlen (cdr (assoc (car pair) pairs)))))))
  total)

(defun make-lines (n / names)
  (repeat n
    (setq names (cons (entmakex (list '(0 . "LINE") '(8 . "0") (list 10 0.0 (float n) 0.0) (list 11 10.0 (float n) 0.0)))
                      names)))
  names)

(defun lengthen (names / data)
  (foreach name names
    (setq data (entget name))
    (entmod (subst (list 11 20.0 (caddr (assoc 11 data)) 0.0) (assoc 11 data) data)))
  (length names))

(defun measure (name task / best start spent)
  (repeat runs
    (setq start (getvar "MILLISECS"))
    (task)
    (setq spent (- (getvar "MILLISECS") start))
    (if (or (not best) (< spent best)) (setq best spent)))
  (princ (strcat name " " (itoa best) "\n")))

(princ "\n")
(measure "fib" '(lambda () (fib 27)))
(measure "loop" '(lambda () (count-up 10000000)))
(measure "lists" '(lambda () (build-and-reverse 500000)))
(setq numbers (random-numbers 100000))
(measure "sort" '(lambda () (repeat 5 (vl-sort numbers '<))))
(measure "texts" '(lambda () (build-text 1000000)))
(setq pairs (pairs-upto 1000))
(measure "assoc" '(lambda () (look-up-all pairs 20)))
(setq names (make-lines 10000))
(measure "entities" '(lambda () (lengthen names)))
(princ)
