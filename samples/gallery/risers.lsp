;;; A pipe whose ends are one point on the sheet is a riser: a circle, open towards what leads into it when it
;;; goes down.

(load "lib/sheet")
(gallery-frame -20 -28 180 26)
(defun riser (x keys) (gallery-pipe "P-COLD" (list x 0 0) (list x 0 96) (cons '("VERTICALRADIUS" 8.0) keys)))
(riser 0 nil)
(gallery-note 0 -20 "up")
(riser 40 '(("VERTICALTYPE" "DOWN")))
(gallery-note 40 -20 "down")
(riser 80 '(("VERTICALTYPE" "DOWN") ("VERTICALANGLELIST" 0.0)))
(gallery-pipe "P-COLD" '(88 0 0) '(104 0 0) nil)
(gallery-note 80 -20 "one pipe leads in")
(riser 140 '(("VERTICALTYPE" "DOWN") ("VERTICALANGLELIST" 0.0 1.570796325 3.14159265)))
(foreach ends '(((148 0 0) (164 0 0)) ((140 8 0) (140 22 0)) ((132 0 0) (116 0 0)))
  (gallery-pipe "P-COLD" (car ends) (cadr ends) nil))
(gallery-note 140 -20 "three pipes")
