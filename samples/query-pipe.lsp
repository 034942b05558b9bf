;;; Queries a pipe of the restroom: `veldrin run --show samples/query-pipe.lsp` shows the dialog on the display. The
;;; restroom has to be drawn before, by samples/restroom/restroom.lsp in the same working directory.

(setq query-drawing "restroom/restroom.vqd")

(defun query-entity (pipe)
  (ssname (ssget "X" (list '(0 . "VQPLUMBPIPE") (cons 90 pipe))) 0))

;; The first cold water pipe that carries the whole room.
(defun query-main ()
  (plumb-db-value nil
    (strcat "select p.ixPipe from tblPipe p, tblPipeSum s where s.ixPipe = p.ixPipe and s.bFixed = 0 and p.ixPipeType ="
            " (select ixPipeType from tblPipeType order by iSortOrder limit 1) order by s.dValue desc, p.ixPipe")))

(if (not (findfile query-drawing))
  (progn (princ "Draw the restroom first: veldrin run samples/restroom/restroom.lsp\n") (exit 1)))
(vd-open query-drawing)
(if (plumb-pipe-query (query-entity (query-main)))
  (progn (vd-save) (princ "\nChanged and saved.\n"))
  (princ "\nNothing was changed.\n"))
(princ)
