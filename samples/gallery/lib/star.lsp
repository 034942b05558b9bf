;;; Pipes in every direction with labels, in a user coordinate system turned by that many degrees.

(load "sheet")

(defun gallery-star (degrees / c a)
  (gallery-frame -46 -46 46 52)
  (command "UCS" "W")
  (command "UCS" "Z" degrees)
  (setvar "CLAYER" "X-NOTE")
  (command "LINE" '(0 0) '(44 0) "")
  (command "LINE" '(0 0) '(0 12) "")
  (setq c '(0.0 0.0 0.0))
  (foreach turn '(0 45 90 135 180 225 270 315)
    (setq a (* pi (/ turn 180.0)))
    (gallery-pipe (if (< turn 180) "P-COLD" "P-HOT") (polar c a 6.0) (polar c a 36.0)
      (gallery-label (if (< turn 180) "CW" "HW") 4.5 0.0)))
  (gallery-note 0 48 (strcat "axes turned by " (itoa degrees) "%%d")))
