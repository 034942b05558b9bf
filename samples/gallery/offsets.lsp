;;; A pipe beside the line between its ends, and short of them. The thin line is from end to end.

(load "lib/sheet")
(gallery-frame -14 -16 174 34)
(gallery-line '(0 20) '(70 20))
(gallery-pipe "P-COLD" '(0 20 0) '(70 20 0) '(("OFFSETDISTANCE" 6.0)))
(gallery-note 35 10 "offset to the left")
(gallery-line '(90 20) '(160 20))
(gallery-pipe "P-COLD" '(90 20 0) '(160 20 0) '(("TAILOFFSET" 12.0) ("HEADOFFSET" 20.0)))
(gallery-note 125 10 "short of its ends")
(gallery-pipe "P-HOT" '(0 -2 0) '(70 -2 0) nil)
(gallery-pipe "P-HOT" '(90 -2 0) '(90 -2 40) '(("VERTICALRADIUS" 3.0)))
(gallery-pipe "P-HOT" '(90 -2 0) '(160 -2 0) '(("TAILOFFSET" 3.0)))
(gallery-note 80 -11 "a run, and one that leaves a riser")
