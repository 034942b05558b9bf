;;; A small public restroom: 4 flushometer closets, 2 urinals, 4 lavatories, a service sink and a
;;; drinking fountain, back to back on one pipe chase. Lengths are inches, elevations count from the floor.

(foreach part '("layers" "building" "fixtures" "piping" "sheet")
  (load (strcat "restroom-" part)))

(setq cmdecho-before (getvar "CMDECHO"))
(setvar "CMDECHO" 0)
(restroom-layers)
(restroom-building)
(restroom-fixtures)
(restroom-piping)
(restroom-sheet)
(setvar "CLAYER" "0")
(setvar "CMDECHO" cmdecho-before)
(princ (strcat "\nRestroom drawn: " (itoa (sslength (ssget "X"))) " entities, "
               (itoa (sslength (ssget "X" '((0 . "VQPLUMBPIPE"))))) " of them pipes.\n"))
(princ)
