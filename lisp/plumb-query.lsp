;;; The command PIPE-QUERY, and what its dialog asks of Lisp. The dialog may be open on a standards database, so its
;;; questions go to the database of the running call.
;;;
;;; What the dialog answers goes to the row of the pipe first and then to its entity. Undo takes back what was drawn;
;;; the row keeps what was stored.

;; ---- What the dialog asks

;; The number that the dialog hands on to pipe-usableTypes-withPipe-arx: 0 for all types of the database, -1 when it
;; has none, which leaves the list empty.
(defun pipe-query-getNumber ()
  (if (plumb-db-row nil "select ixPipeType from tblPipeType limit 1") 0 -1))

;; The types that the pipe may become, as ("startlist" id...) and (name...). One of the numbers is nil: ALL gives every
;; type, SIZED those that have sizes. The pipe's own type is always there. The text in front keeps a list of two or
;; three ids from being taken for a point.
(defun pipe-usableTypes-withPipe-arx (pipe all sized / rows)
  (setq rows (plumb-db-select nil
               (strcat "select t.ixPipeType as ixPipeType, coalesce(t.sName, ' ') as sName from tblPipeType t"
                       (if sized
                         (strcat " where t.ixPipeType in (select ixPipeType from tblPipeSize)"
                                 " or t.ixPipeType = (select ixPipeType from tblPipe where ixPipe = " (itoa pipe) ")")
                         "")
                       " order by t.iSortOrder, t.ixPipeType")))
  (list (cons "startlist" (mapcar '(lambda (row) (plumb-of row "ixPipeType")) rows))
        (mapcar '(lambda (row) (plumb-of row "sName")) rows)))

;; The texts for the distance to the farthest fixture and for the height of the highest. The distance is counted from
;; the pipe on, so the one to the source is no part of it.
(defun plumb-pipeSum-StaticValues (to-farthest from-source highest)
  (list (plumb-feet-text to-farthest) (plumb-feet-text highest)))

;; What the pipe carries in all categories, in the base one.
(defun pipeSumCategory-convertFlow (pipe)
  (car (plumb-flow-measure nil pipe nil)))

;; Which elevations the dialog leaves alone: 1 the start, 2 the end, 3 both. An end that meets the end of another pipe
;; cannot move by itself without tearing the run apart; nor can the start of a pipe that hangs on a riser.
(defun pipe-query-elevationTileCheck (pipe / row)
  (setq row (plumb-db-row nil
              (strcat "select max(case when " (plumb-flow-touch "o" "1" "p" "1") " or "
                      (plumb-flow-touch "o" "2" "p" "1") " then 1 else 0 end) as iStart, max(case when "
                      (plumb-flow-touch "o" "1" "p" "2") " or " (plumb-flow-touch "o" "2" "p" "2")
                      " then 2 else 0 end) as iEnd, (select count(*) from tblPipe r, tblPipe q where q.ixPipe = "
                      (itoa pipe) " and r.ixPipe = q.ixPipeRiserPrevious and r.bDeleted = 0) as iRiser"
                      " from tblPipe o, tblPipe p where p.ixPipe = " (itoa pipe) " and "
                      (plumb-flow-same-place "o" "p") " and o.ixPipe <> p.ixPipe and o.bDeleted = 0")))
  (logior (cond ((plumb-of row "iStart")) (0))
          (cond ((plumb-of row "iEnd")) (0))
          (min 1 (plumb-of row "iRiser"))))

;; The flow categories of the database that the dialog is open on. A path makes a dialog treat its database as
;; standards, which no pipe uses, so the project of the drawing is named by leaving it out.
(defun plumb-customization-project-editPipeSumCategory (/ db)
  (setq db (vd-project-database))
  (if (plumb-query-of-drawing db)
    (vq_plumb-pipeSumCategory)
    (vq_plumb-pipeSumCategory db)))

;; Whether a database lies in the folder of the current drawing.
(defun plumb-query-of-drawing (db)
  (and db
       (= (vl-string-right-trim "/" (vl-filename-directory db))
          (vl-string-right-trim "/" (getvar "DWGPREFIX")))))

;; ---- The command

(defun c:pipe-query (/ entity)
  (if (setq entity (plumb-query-pick))
    (plumb-pipe-query entity))
  (princ))

;; Asks until a pipe is picked; nil when the user gives up.
(defun plumb-query-pick (/ pick entity done)
  (while (not (or entity done))
    (setvar "ERRNO" 0)
    (setq pick (entsel "\nSelect pipe: "))
    (cond ((null pick) (setq done (/= (getvar "ERRNO") 7)))
          ((setq entity (plumb-query-picked (car pick))))
          ((princ "\nThat is no pipe."))))
  entity)

;; The pipe itself, or the one that a picked arrow or hanger belongs to; nil for anything else.
(defun plumb-query-picked (entity / pipes)
  (cond ((plumb-query-pipe entity) entity)
        ((and (= (cdr (assoc 0 (entget entity))) "VQPLUMBPIPEARROW")
              (setq pipes (ssget "_X" (list '(0 . "VQPLUMBPIPE") (assoc 90 (entget entity))))))
         (ssname pipes 0))))

;; The id of a pipe's row; nil for what is no pipe.
(defun plumb-query-pipe (entity / data)
  (setq data (entget entity))
  (if (= (cdr (assoc 0 data)) "VQPLUMBPIPE")
    (cdr (assoc 90 data))))

;; Asks the user about the pipe and does what the answer says. T when something was changed.
(defun plumb-pipe-query (entity / pipe result)
  (setq pipe (plumb-query-pipe entity))
  (cond ((plumb-query-obstacle entity pipe) nil)
        ((setq result (vq_plumb-pipeSum pipe nil))
         (plumb-pipe-query-apply entity pipe result))))

;; T, with a message, when a pipe cannot be queried.
(defun plumb-query-obstacle (entity pipe / why)
  (setq why (cond ((null pipe) "That is no pipe.")
                  ((null (vd-project-database)) "This drawing has no project database.")
                  ((null (plumb-query-row pipe)) "The project database has no row for this pipe.")
                  ((plumb-query-locked entity) "The pipe is on a locked layer.")))
  (if why (princ (strcat "\n" why)))
  (not (null why)))

(defun plumb-query-row (pipe)
  (plumb-db-row nil (strcat "select * from tblPipe where bDeleted = 0 and ixPipe = " (itoa pipe))))

(defun plumb-query-locked (entity)
  (= 4 (logand 4 (cdr (assoc 70 (tblsearch "LAYER" (cdr (assoc 8 (entget entity)))))))))

;; Stores what the dialog gave, pairs of a column of tblPipe and a value, and draws the pipe accordingly. The row comes
;; first: when it is refused the drawing stays as it is. T when both are done.
(defun plumb-pipe-query-apply (entity pipe result / row changes)
  (if (not (plumb-query-obstacle entity pipe))
    (progn
      (setq row     (plumb-query-row pipe)
            changes (plumb-query-changes row result))
      (if (plumb-query-store pipe changes)
        (plumb-query-in-one-step 'plumb-query-draw (list entity row (append changes row)))))))

;; ---- The row

(setq plumb-query-columns
  '("dZ1" "dZ2" "ixPipeSize" "ixLayerSystem" "ixPipeType" "ixPipeSizingTable" "bPTrap" "bTransparent"
    "dExteriorLining" "sOffsetZ" "sOffsetY" "iHangerType" "bSizeLocked" "dHangerZ" "dHangerSize" "dHangerDepth"
    "dHangerStartOffset" "dHangerSpacing" "dHangerEndOffset" "dHangerLeftExtension" "dHangerRightExtension"))

;; A number as the dialog shows it: elevations in feet and inches, others with these decimals.
(defun plumb-query-shown (column value)
  (cond ((member column '("dZ1" "dZ2" "dHangerZ")) (plumb-feet-inches (plumb-feet-text value)))
        ((atof (plumb-decimal-text value (if (= column "dExteriorLining") 2 5))))))

;; A number that comes back as the dialog has rounded it was not touched.
(defun plumb-query-same (row pair / old)
  (setq old (plumb-of row (car pair)))
  (and (numberp old)
       (= (type (cdr pair)) 'REAL)
       (equal (cdr pair) (plumb-query-shown (car pair) old) 1e-9)))

;; The columns of the row that change, with the size that follows from them.
(defun plumb-query-changes (row result / changes)
  (setq changes (vl-remove-if-not
                  '(lambda (pair)
                     (and (member (car pair) plumb-query-columns) (not (plumb-query-same row pair))))
                  result))
  (if (equal (assoc "ixPipeSizingTable" changes) '("ixPipeSizingTable" . 0))
    (setq changes (subst '("ixPipeSizingTable") (assoc "ixPipeSizingTable" changes) changes)))
  (append (plumb-query-size (append changes row))
          (vl-remove-if '(lambda (pair) (= (car pair) "ixPipeSize")) changes)))

;; The columns of the size. A row without a size keeps the bore that it has.
(defun plumb-query-size (row / size bore)
  (setq size (cons "ixPipeSize"
                   (if (plumb-query-yes row "bSizeLocked") (plumb-of row "ixPipeSize") (plumb-flow-size nil row)))
        bore (plumb-db-row nil (strcat "select dInteriorDiameter as dSize from tblPipeSize where ixPipeSize = "
                                       (plumb-id-of (list size) "ixPipeSize"))))
  (cons size bore))

(defun plumb-query-yes (row column)
  (not (member (plumb-of row column) '(nil 0))))

;; T when the row was changed, else nil with a message.
(defun plumb-query-store (pipe changes / count)
  (setq count (vl-catch-all-apply 'plumb-db-update (list nil "tblPipe" pipe changes)))
  (cond ((vl-catch-all-error-p count)
         (princ (strcat "\nThe pipe could not be stored: " (vl-catch-all-error-message count)
                        ". The drawing stays as it is."))
         nil)
        ((= count 0) (princ "\nThe project database has no row for this pipe.") nil)
        (T)))

;; ---- The drawing

;; Whatever the function draws is one step of undo. T when it came to its end.
(defun plumb-query-in-one-step (drawing arguments / own result)
  (setq own (zerop (logand 8 (getvar "UNDOCTL"))))
  (if own (plumb-query-quietly '("_.UNDO" "_BEgin")))
  (setq result (vl-catch-all-apply drawing arguments))
  (if own (plumb-query-quietly '("_.UNDO" "_End")))
  (if (vl-catch-all-error-p result)
    (progn (princ (strcat "\nThe pipe is stored, but not all of it could be drawn: "
                          (vl-catch-all-error-message result) "."))
           nil)
    T))

(defun plumb-query-quietly (words)
  (vd-capture '(lambda () (apply 'command words))))

;; Draws a pipe that was like the row OLD as the row NEW is.
(defun plumb-query-draw (entity old new)
  (apply 'vq_plumb-setPipeInfo
         (append (list entity (list "dZ1" (plumb-real-of new "dZ1")) (list "dZ2" (plumb-real-of new "dZ2")))
                 (plumb-query-trap-keys entity new)
                 (plumb-query-riser-keys old new)
                 (plumb-query-label-keys entity old new)
                 (plumb-query-hidden-keys entity new)))
  (plumb-query-look entity (plumb-query-layer-key new) new (plumb-query-linetype new))
  (plumb-query-arrows new))

(defun plumb-query-layer (key row)
  (vq_plumb-getLayer key (plumb-of row "ixLayerSystem")))

;; The key of a pipe's layer is that of its type.
(defun plumb-query-layer-key (row)
  (strcat "PIPE "
          (cond ((plumb-db-value nil (strcat "select sShortName from tblPipeType where ixPipeType = "
                                             (plumb-id-of row "ixPipeType"))))
                (""))))

;; Layer and linetype; what the standards do not give stays.
(defun plumb-query-look (entity key row linetype / layer)
  (setq layer (plumb-query-layer key row))
  (entmod (append (list (cons -1 entity))
                  (if layer (list (cons 8 layer)))
                  (if linetype (list (cons 6 linetype))))))

;; The linetype of the standards for a pipe of its length, loaded where the drawing lacks it.
(defun plumb-query-linetype (row / name)
  (setq name (plumb-db-value nil
               (strcat "select sLinetype from tblPipeLinetype where ixPipeType = " (plumb-id-of row "ixPipeType")
                       " and ixLayerSystem = " (plumb-id-of row "ixLayerSystem") " and dMinimumLength <= "
                       (plumb-db-literal (plumb-pipe-length row)) " order by dMinimumLength desc limit 1")))
  (if (and name (not (tblsearch "LTYPE" name)))
    (plumb-query-quietly (list "_.LINETYPE" "_Load" name "" "")))
  (if (and name (tblsearch "LTYPE" name)) name))

;; A trap that has never been drawn needs a width.
(defun plumb-query-trap-keys (entity row / trap)
  (setq trap (plumb-query-yes row "bPTrap"))
  (cons (list "PTRAP" trap)
        (if (and trap (<= (cdr (assoc 46 (entget entity))) 0.0))
          (list (list "PTRAPWIDTH" (plumb-query-trap-width))))))

;; As wide as another trap of the drawing, else as the options say, at the scale of the drawing.
(defun plumb-query-trap-width (/ traps scale width)
  (setq traps (ssget "_X" '((0 . "VQPLUMBPIPE") (295 . 1) (-4 . ">") (46 . 0.0)))
        scale (getvar "DIMSCALE")
        width (plumb-db-global nil "PTRAP-WIDTH"))
  (if traps
    (cdr (assoc 46 (entget (ssname traps 0))))
    (* (if (numberp width) width 0.25) (if (> scale 0.0) scale 1.0))))

;; The way that a riser is drawn turns round with its elevations.
(defun plumb-query-riser-keys (old new / rise)
  (setq rise (- (plumb-real-of new "dZ2") (plumb-real-of new "dZ1")))
  (if (and (plumb-pipe-vertical new)
           (minusp (* rise (- (plumb-real-of old "dZ2") (plumb-real-of old "dZ1")))))
    (list (list "VERTICALTYPE" (if (minusp rise) "DOWN" "UP")))))

;; A pipe that shows a label shows the new one, unless its text was written by hand.
(defun plumb-query-label-keys (entity old new / data isometric text)
  (setq data      (entget entity)
        isometric (= (cdr (assoc 294 data)) 1)
        text      (cdr (assoc 1 data)))
  (if (/= text "")
    (append (if (plumb-label-fits text (plumb-label-format nil old isometric))
              (list (list "TEXT" (plumb-label-text nil new isometric))))
            (plumb-query-layer-keys "TEXTLAYER" "PIPE LABEL" new))))

;; The layer of what lies under other pipes is the last item of the record of a pipe that has one.
(defun plumb-query-hidden-keys (entity row)
  (if (= (car (last (vd-record entity))) "HardPointer")
    (plumb-query-layer-keys "HIDDENLAYER" "PIPE HIDDEN" row)))

(defun plumb-query-layer-keys (name key row / layer)
  (if (setq layer (plumb-query-layer key row))
    (list (list name layer))))

;; Arrows of the pipe, which show its hangers.
(defun plumb-query-arrows (row / arrows i arrow)
  (setq arrows (ssget "_X" (list '(0 . "VQPLUMBPIPEARROW") (cons 90 (plumb-of row "ixPipe"))))
        i      0)
  (repeat (if arrows (sslength arrows) 0)
    (setq arrow (ssname arrows i)
          i     (1+ i))
    (vq_plumb-setPipeArrowInfo arrow (cons "HANGERDIST" (plumb-query-hangers row)))
    (plumb-query-look arrow "PIPE ARROW" row nil)))

;; Distances of the hangers from the start of the pipe.
(defun plumb-query-hangers (row / at spacing end distances)
  (setq at      (plumb-real-of row "dHangerStartOffset")
        spacing (plumb-real-of row "dHangerSpacing")
        end     (- (plumb-pipe-plan-length row) (plumb-real-of row "dHangerEndOffset")))
  (if (and (plumb-query-yes row "iHangerType") (> spacing 0.0))
    (while (<= at (+ end 1e-6))
      (setq distances (cons at distances)
            at        (+ at spacing))))
  (reverse distances))

(defun plumb-pipe-plan-length (row)
  (distance (list (plumb-real-of row "dX1") (plumb-real-of row "dY1"))
            (list (plumb-real-of row "dX2") (plumb-real-of row "dY2"))))
