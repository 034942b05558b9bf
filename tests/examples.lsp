;;; Runs the Lisp that a page shows: veldrin run examples.lsp PAGE. Each block between ```lisp and ``` is loaded
;;; piece by piece, a piece ending where a comment states its value:
;;;
;;;     (+ 1 2)        ; => 3
;;;     (car 5)        ; => error: bad argument type: listp 5
;;;
;;; The variables here have a star in front, since the examples see and set those of their callers.

(load "scenarios/lib/check")

(setq *page (car (vd-args))  *piece "example-piece.lsp")

;; What a piece gives: its last value as prin1 writes it, or its error.
(defun value-of-piece (*lines / *file *value)
  (setq *file (open *piece "w"))
  (foreach *line *lines (write-line *line *file))
  (close *file)
  (setq *value (vl-catch-all-apply 'load (list *piece)))
  (if (vl-catch-all-error-p *value)
    (strcat "error: " (vl-catch-all-error-message *value))
    (vl-prin1-to-string *value)))

;; The value that a line states, nil for none.
(defun stated (*line / *at)
  (if (setq *at (vl-string-search "; => " *line)) (substr *line (+ *at 6))))

(defun run-piece (*lines *wanted *name / *value)
  (setq *value (value-of-piece (reverse *lines)))
  (cond (*wanted (check *name *value *wanted))
        ((= (substr *value 1 6) "error:") (check *name *value "no error"))))

(defun run-page (*source / *line *inside *lines *number *blocks *wanted)
  (setq *number 0  *blocks 0)
  (while (setq *line (read-line *source))
    (setq *number (1+ *number))
    (cond ((= *line "```lisp") (setq *inside T  *lines nil  *blocks (1+ *blocks)))
          ((and *inside (= *line "```"))
           (setq *inside nil)
           (run-piece *lines nil (strcat *page ":" (itoa *number))))
          (*inside
           (setq *lines (cons *line *lines))
           (if (setq *wanted (stated *line))
             (progn (run-piece *lines *wanted (strcat *page ":" (itoa *number)))
                    (setq *lines nil))))))
  *blocks)

(setq *source (open *page "r"))
(setq *blocks (run-page *source))
(close *source)
(check "the page shows something" (> *blocks 0) T)
(check-finish)
