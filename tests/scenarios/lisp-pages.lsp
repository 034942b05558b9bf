;;; The page on Lisp has a line for every function that there is, and none for what is not there.

(load "lib/check")

;; Names behind "`(" in the lines of the list: a line may have several.
(defun names-in (line / at found end)
  (while (setq at (vl-string-search "`(" line))
    (setq line (substr line (+ at 3))
          end  (min (cond ((vl-string-search " " line)) (999)) (cond ((vl-string-search ")" line)) (999)))
          found (cons (strcase (substr line 1 end)) found)))
  found)

(setq file (open (findfile "../../docs/lisp.md") "r")  listed nil  in-list nil)
(while (setq line (read-line file))
  (if (= line "## All functions") (setq in-list T))
  (if (and in-list (wcmatch line "`- *")) (setq listed (append (names-in line) listed))))
(close file)

(setq own '("CHECK" "CHECK-ERROR" "CHECK-FINISH" "NAMES-IN")  missing nil)
(foreach name (atoms-family 1)
  (if (and (member (type (vl-symbol-value (read name))) '(SUBR USUBR EXRXSUBR))
           (not (wcmatch name "VQ_PLUMB-*,C:*,PLUMB-*,PIPE-*,PIPESUMCATEGORY-*"))
           (not (member name own))
           (not (member name listed)))
    (setq missing (cons name missing))))
(check "functions without a line" missing nil)
(check "lines without a function" (vl-remove-if '(lambda (name) (boundp (read name))) listed) nil)
(check "that many lines" (> (length listed) 280) T)
(check-finish)
