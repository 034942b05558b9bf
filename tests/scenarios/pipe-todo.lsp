;;; The layer's list of things to do, which the module works off when a drawing comes to the front.

(load "lib/check")

(setq done nil)
(plumb-toDo-add '(setq done (cons 1 done)))
(plumb-toDo-add '(no-such-function))
(plumb-toDo-add '(setq done (cons 2 done)))
(setq said (vd-capture '(lambda () (vd-new))))
(check "all are done in order, past one that fails" done '(2 1))
(check "which is told" (not (null (vl-string-search "To-do: " said))) T)
(check "nothing is left" plumb-toDo-list nil)

(vq_plumb-setDoDocumentActivated nil)
(plumb-toDo-add '(setq done 3))
(vd-new)
(check "held off" done '(2 1))
(vq_plumb-setDoDocumentActivated T)
(vd-new)
(check "until it is let go" done 3)

(check-finish)
