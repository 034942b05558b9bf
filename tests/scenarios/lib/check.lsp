;;; Checks for scenario scripts. A script loads this, checks, and ends with (check-finish).

(setq check:count 0  check:failed 0)

;; Reals may differ by a millionth; everything else must be equal.
(defun check (name got wanted)
  (setq check:count (1+ check:count))
  (if (not (equal got wanted 1e-6))
    (progn
      (setq check:failed (1+ check:failed))
      (princ (strcat "\nFAILED: " name "\n  got    " (vl-prin1-to-string got)
                     "\n  wanted " (vl-prin1-to-string wanted) "\n")))))

;; The form, quoted, must end in an error; its message has to match the pattern.
(defun check-error (name form pattern / result)
  (setq result (vl-catch-all-apply 'eval (list form)))
  (check name
         (if (vl-catch-all-error-p result)
           (if (wcmatch (vl-catch-all-error-message result) pattern) "error" (vl-catch-all-error-message result))
           result)
         "error"))

(defun check-finish ()
  (princ (strcat "\n" (itoa check:count) " checks, " (itoa check:failed) " failed\n"))
  (if (> check:failed 0) (exit 1))
  (princ))
