;;; Layers of the sheet: name, colour, linetype, lineweight in hundredths of a millimetre.

(setq restroom-layer-table
  '(("A-WALL"      8   "Continuous" 50)
    ("A-DOOR"      8   "Continuous" 18)
    ("A-PART"      8   "Continuous" 25)
    ("P-FIXT"      7   "Continuous" 25)
    ("P-COLD"      5   "CENTER"     40)
    ("P-HOT"       1   "PHANTOM"    40)
    ("P-SANR"      94  "Continuous" 60)
    ("P-VENT"      94  "DASHED"     35)
    ("P-TEXT"      7   "Continuous" 20)
    ("X-SHEET"     7   "Continuous" 50)))

(defun restroom-layers ()
  (foreach row restroom-layer-table
    (command "LAYER" "M" (car row)
             "C" (itoa (cadr row)) (car row)
             "LT" (caddr row) (car row)
             "LW" (rtos (/ (cadddr row) 100.0) 2 2) (car row)
             ""))
  (setvar "LTSCALE" 12.0))
