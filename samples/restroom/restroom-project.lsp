;;; The project: its folder and database, the drawing in it, floors and the area that the drawing shows.

(setq restroom-folder  "restroom"
      restroom-drawing "restroom.vqd" ; as the tables name the drawing: the file in the project's folder
      restroom-point   1              ; number of the drawing's alignment point
      restroom-system  1)             ; layer system: new work

;; Rows of the standards. Nobody changes them while this runs, so each question is asked once.
(defun restroom-standards (sql / known)
  (if (not (setq known (assoc sql restroom-answers)))
    (setq known (cons sql (plumb-db-select restroom-db sql))
          restroom-answers (cons known restroom-answers)))
  (cdr known))

;; A column of the row in which another column has a value.
(defun restroom-standard (table column value wanted)
  (cdaar (restroom-standards
           (strcat "select " wanted " from " table " where " column " = " (plumb-db-literal value)))))

;; A drawing of its own becomes current and is saved in the folder, over that of an earlier run; nil with a message
;; while somebody else has that open.
(defun restroom-new-drawing (/ path)
  (setq path (strcat restroom-folder "/" restroom-drawing))
  (foreach open-path (vd-documents)
    (if (wcmatch open-path (strcat "*/" path)) (vd-close open-path)))
  (if (ssget "X") (vd-new))
  (vl-mkdir restroom-folder)
  (vd-save-as path))

;; The database of an earlier run goes, with what stands beside it.
(defun restroom-new-database ()
  (vq_plumb-disconnect)
  (foreach file (vl-directory-files restroom-folder "Restroom vq_plumb.vq*" 1)
    (vl-file-delete (strcat restroom-folder "/" file)))
  (setq restroom-answers nil
        restroom-db (vd-new-project restroom-folder "Restroom")))

;; Drawings with this mark open the project when they are opened.
(defun restroom-mark (/ record)
  (regapp "VELDRIN")
  (setq record (cdr (assoc 330 (entget (tblobjname "BLOCK" "*Model_Space")))))
  (entmod (append (entget record) '((-3 ("VELDRIN" (1000 . "VQ_PLUMB") (1000 . "YES")))))))

;; Makes drawing and project. nil with a message when there is none.
(defun restroom-project ()
  (if (and (restroom-new-drawing) (restroom-new-database))
    (restroom-mark)))

(setq restroom-area-min '(-60.0 -48.0)
      restroom-area-max '(444.0 264.0)
      restroom-area-types '("CW" "HW" "SAN" "V"))

;; Two floors, and the area of the lower one that the drawing shows.
(defun restroom-area (/ roof floor area)
  (setq roof  (plumb-db-insert restroom-db "tblFloor"
                '(("sName" . "Roof") ("dElevation" . 120.0)))
        floor (plumb-db-insert restroom-db "tblFloor"
                (list '("sName" . "Level 1") (cons "ixFloorAbove" roof) '("dElevation" . 0.0)
                      '("dCeilingHeight" . 96.0) '("dFloorToFloorHeight" . 120.0)))
        area  (plumb-db-insert restroom-db "tblAlignmentPointArea"
                (list (cons "ixFloor" floor) '("sName" . "restroom 1")
                      (cons "sDrawing" restroom-drawing) (cons "iAlignmentPointNumber" restroom-point)
                      (cons "dXMin" (car restroom-area-min)) (cons "dXMax" (car restroom-area-max))
                      (cons "dYMin" (cadr restroom-area-min)) (cons "dYMax" (cadr restroom-area-max))
                      '("dX" . 0.0) '("dY" . 0.0) '("dAngle" . 0.0))))
  (foreach kind restroom-area-types
    (plumb-db-insert restroom-db "tblPipeAreaMap"
      (list (cons "ixAlignmentPointArea" area)
            (cons "ixPipeType" (restroom-standard "tblPipeType" "sShortName" kind "ixPipeType")))))
  ;; The alignment point is the corner of the building.
  (setvar "CLAYER" (restroom-layer "ALIGNMENT POINT"))
  (command "CIRCLE" '(0 0) 3)
  (command "LINE" '(-6 0) '(6 0) "")
  (command "LINE" '(0 -6) '(0 6) ""))
