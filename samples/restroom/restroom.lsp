;;; A small public restroom: 4 flushometer closets, 2 urinals, 4 lavatories, a service sink and a
;;; drinking fountain, back to back on one pipe chase. Lengths are inches, elevations count from the floor.
;;;
;;; The drawing and its project come to lie in the folder "restroom" of the working directory. Each run makes
;;; both afresh.

(foreach part '("project" "layers" "building" "fixtures" "network" "piping" "sizing" "drawn" "sheet")
  (load (strcat "restroom-" part)))

(if (not (restroom-project)) (exit 1))
(setq cmdecho-before (getvar "CMDECHO"))
(setvar "CMDECHO" 0)
(restroom-layers)
(restroom-area)
(restroom-building)
(restroom-fixtures)
(restroom-piping)
(restroom-sizing)
(restroom-draw-network)
(restroom-sheet)
(setvar "CLAYER" "0")
(setvar "CELTYPE" "BYLAYER")
(setvar "CMDECHO" cmdecho-before)
(vd-save)
(princ (strcat "\nRestroom drawn: " (itoa (sslength (ssget "X"))) " entities, "
               (itoa (sslength (ssget "X" '((0 . "VQPLUMBPIPE"))))) " of them pipes.\n"
               "The project is " restroom-db ".\n"))
(princ)
