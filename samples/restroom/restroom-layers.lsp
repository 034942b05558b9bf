;;; Layers. Plumbing has those of the project's standards, by key; the building has its own: name, colour,
;;; lineweight in hundredths of a millimetre.

(setq restroom-layer-table
  '(("A-WALL" 8 50)
    ("A-DOOR" 8 18)
    ("A-PART" 8 25)))

(defun restroom-layer (key) (vq_plumb-getLayer key restroom-system))

(defun restroom-layers ()
  (foreach row restroom-layer-table
    (command "LAYER" "M" (car row)
             "C" (itoa (cadr row)) (car row)
             "LW" (rtos (/ (caddr row) 100.0) 2 2) (car row)
             ""))
  (setvar "LTSCALE" 12.0))

;; Makes a linetype current, and loads it where it is missing.
(defun restroom-linetype (name)
  (if (not (tblsearch "LTYPE" name))
    (vd-capture '(lambda () (command "LINETYPE" "L" name "" ""))))
  (setvar "CELTYPE" name))

;; The linetype of the standards for a pipe of its length.
(defun restroom-pipe-linetype (pipe)
  (cdaar (restroom-standards
           (strcat "select sLinetype from tblPipeLinetype where ixPipeType = " (itoa (restroom-pipe-type pipe))
                   " and ixLayerSystem = " (itoa restroom-system) " and dMinimumLength <= "
                   (plumb-db-literal (distance (restroom-of pipe "p1") (restroom-of pipe "p2")))
                   " order by dMinimumLength desc"))))
