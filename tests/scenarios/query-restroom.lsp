;;; A pipe of the restroom is queried, gets another size, and the drawing follows; then its way back.

(load "lib/check")
(load (findfile "../../samples/restroom/restroom.lsp"))

(setq db (vd-project-database))
(defun entity-of (pipe) (ssname (ssget "X" (list '(0 . "VQPLUMBPIPE") (cons 90 pipe))) 0))

;; The widest pipe with a label that is sized automatically.
(setq pipe  (car (vl-remove-if '(lambda (pipe) (= (cdr (assoc 1 (entget (entity-of pipe)))) ""))
                               (plumb-db-values db "select p.ixPipe from tblPipe p where p.bSizeLocked = 0 and p.bDeleted = 0
                                                    and p.ixPipeType = 1 and exists (select 1 from tblPipeSum s where
                                                    s.ixPipe = p.ixPipe) order by p.dSize desc, p.ixPipe")))
      ename (entity-of pipe))
(defun row () (plumb-db-row db (strcat "select * from tblPipe where ixPipe = " (itoa pipe))))
(defun texts () (mapcar 'last (vl-remove-if-not '(lambda (item) (= (car item) "text")) (vd-graphics ename))))
(defun flows () (plumb-db-select db (strcat "select ixPipeSumCategory, bFixed, dValue from tblPipeSum where ixPipe = " (itoa pipe)
                                            " order by ixPipeSum")))
(setq row-before (row)  texts-before (texts)  record-before (vd-record ename)  flows-before (flows))

;; Cancel changes nothing at all.
(ui-next '(lambda (window) (ui-set 2007 "4\"") (ui-edit 1052 2 "dValue" "7") (ui-key "Escape")))
(command "PIPE-QUERY" ename)
(check "row" (row) row-before)
(check "entity" (vd-record ename) record-before)
(check "flows" (flows) flows-before)

;; Another size, locked.
(ui-next '(lambda (window) (ui-set 2007 "4\"") (ui-click 1023)))
(command "PIPE-QUERY" ename)
(check "the row has it" (plumb-db-value db (strcat "select z.sLabel from tblPipe p, tblPipeSize z where z.ixPipeSize = p.ixPipeSize"
                                                   " and p.ixPipe = " (itoa pipe))) "4\"")
(check "and is locked" (cdr (assoc "bSizeLocked" (row))) -1)
(check "the bore" (> (cdr (assoc "dSize" (row))) (cdr (assoc "dSize" row-before))) T)
(check "the label says so" (wcmatch (car (texts)) "*4\"*") T)

;; Sized automatically again: what it was.
(ui-next '(lambda (window) (ui-set 2007 (car (ui-items 2007))) (ui-click 1023)))
(command "PIPE-QUERY" ename)
(check "row as before" (row) row-before)
(check "label as before" (texts) texts-before)

;; More flow, entered at the pipe, asks for more.
(ui-next '(lambda (window) (ui-edit 1052 2 "dValue" "400") (ui-click 1023)))
(command "PIPE-QUERY" ename)
(check "larger" (> (cdr (assoc "dSize" (row))) (cdr (assoc "dSize" row-before))) T)
(check "drawn" (/= (car (texts)) (car texts-before)) T)
(command "U")
(check "undo takes the drawing back" (texts) texts-before)

(check-finish)
