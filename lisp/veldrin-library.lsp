;;; Functions of the dialect that need nothing but Lisp.

;; Defines commands that load their file when they are first called. NAMES are texts: "C:COUNT".
(defun autoload (file names / name)
  (foreach name names
    (eval (list 'defun (read name) nil
                (list 'load file)
                (list (read name)))))
  nil)

;; The blackboard: values that all drawings share. One engine serves all drawings, so the variables that
;; belong to a drawing elsewhere (vl-doc-) live here in the same place.
(setq vl-blackboard nil)

(defun vl-bb-ref (name)
  (cdr (assoc name vl-blackboard)))

(defun vl-bb-set (name value / old)
  (setq old (assoc name vl-blackboard)
        vl-blackboard (if old
                        (subst (cons name value) old vl-blackboard)
                        (cons (cons name value) vl-blackboard)))
  value)

(defun vl-doc-ref (name) (eval name))
(defun vl-doc-set (name value) (set name value))
(defun vl-propagate (name) nil)

;; The result of a Lisp function defined elsewhere is at hand already.
(defun vl-acad-defun (name) name)
(defun vl-arx-import (name) name)

;; How *error* is called is no choice here: local variables are still bound, and it may run commands.
(defun *push-error-using-command* () t)
(defun *push-error-using-stack* () t)
(defun *pop-error-mode* () t)
