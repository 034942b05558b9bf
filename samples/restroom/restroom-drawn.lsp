;;; Draws the pipes of the network and stores their rows.

(defun restroom-pipe-row (pipe / p1 p2)
  (setq p1 (restroom-of pipe "p1")
        p2 (restroom-of pipe "p2"))
  (append (restroom-of pipe "columns")
          (list (cons "ixLayerSystem" restroom-system) (cons "ixPipeType" (restroom-pipe-type pipe))
                (cons "dX1" (car p1)) (cons "dY1" (cadr p1)) (cons "dZ1" (caddr p1))
                (cons "dX2" (car p2)) (cons "dY2" (cadr p2)) (cons "dZ2" (caddr p2))
                (cons "sDrawing" restroom-drawing) (cons "iAlignmentPointNumber" restroom-point)
                '("sOffsetY" . "c") (cons "sOffsetZ" (if (= (restroom-of pipe "type") "SAN") "b" "c")))))

(defun restroom-pipe-label (pipe)
  (list (list "TEXT" (restroom-of pipe "text")) (list "TEXTDISTANCE" (restroom-of pipe "label"))
        '("TEXTHEIGHT" 4.0) '("TEXTSTYLE" "Standard") (list "TEXTLAYER" (restroom-layer "PIPE LABEL"))))

;; The entity has the number of the row. Gives the number.
(defun restroom-draw-pipe (pipe / row entity)
  (setvar "CLAYER" (restroom-layer (strcat "PIPE " (restroom-of pipe "type"))))
  (restroom-linetype (restroom-pipe-linetype pipe))
  (setvar "CELTSCALE" (cond ((restroom-of pipe "scale")) (1.0)))
  (setq row    (plumb-db-insert restroom-db "tblPipe" (restroom-pipe-row pipe))
        entity (vq_plumb-insertPipe row (restroom-of pipe "p1") (restroom-of pipe "p2")))
  (apply 'vq_plumb-setPipeInfo (cons entity (restroom-of pipe "keys")))
  (if (restroom-of pipe "label") (apply 'vq_plumb-setPipeInfo (cons entity (restroom-pipe-label pipe))))
  (if (restroom-of pipe "breaks")
    (vq_plumb-setPipeBreaks entity (car (restroom-of pipe "breaks")) (cdr (restroom-of pipe "breaks"))))
  row)

;; Arrow and hangers lie flat.
(defun restroom-draw-arrow (pipe row / arrow)
  (setvar "CLAYER" (restroom-layer "PIPE ARROW"))
  (setvar "CELTYPE" "BYLAYER")
  (setq arrow (vq_plumb-insertPipeArrow (restroom-flat (restroom-of pipe "p1")) (restroom-flat (restroom-of pipe "p2"))
                                        0.0 (car (restroom-of pipe "arrow")) nil))
  (vq_plumb-setPipeArrowInfo arrow (list "ixPipe" row) '("ARROWLENGTH" 7.0)
                             (cons "HANGERDIST" (cdr (restroom-of pipe "arrow")))))

;; All sums are stored at once: there are more of them than of all other rows.
(defun restroom-store-sums (sums)
  (plumb-db-execute restroom-db
    (strcat "insert into tblPipeSum (ixPipe, ixPipeSumCategory, bFixed, dValue) values "
            (plumb-db-join
              (mapcar '(lambda (sum) (strcat "(" (plumb-db-join (mapcar 'plumb-db-literal sum) ", ") ")")) sums)
              ", "))))

(defun restroom-draw-network (/ row sums arrows)
  (foreach pipe (reverse restroom-network)
    (setq row (restroom-draw-pipe pipe))
    (foreach sum (restroom-of pipe "sums") (setq sums (cons (cons row sum) sums)))
    (if (restroom-of pipe "arrow") (setq arrows (cons (cons row pipe) arrows))))
  (setvar "CELTSCALE" 1.0)
  (foreach item (reverse arrows) (restroom-draw-arrow (cdr item) (car item)))
  (restroom-store-sums (reverse sums)))
