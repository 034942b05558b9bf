;;; Work that waits until a drawing comes to the front with nothing else going on in it. The module calls
;;; c:vq_plumb-doToDo at that moment; (vq_plumb-setDoDocumentActivated nil) holds it off.

;; Expressions, oldest first.
(setq plumb-toDo-list nil)

;; Puts an expression at the end of what is to be done.
(defun plumb-toDo-add (expression)
  (setq plumb-toDo-list (append plumb-toDo-list (list expression)))
  expression)

;; Takes each expression off the list before it is evaluated, so that one that fails is not tried for ever. Its
;; message is printed and the others get their turn.
(defun c:vq_plumb-doToDo (/ expression result)
  (while plumb-toDo-list
    (setq expression      (car plumb-toDo-list)
          plumb-toDo-list (cdr plumb-toDo-list)
          result          (vl-catch-all-apply 'eval (list expression)))
    (if (vl-catch-all-error-p result)
      (princ (strcat "\nTo-do: " (vl-catch-all-error-message result)))))
  (princ))
