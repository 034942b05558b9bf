;;; Labels stand in the line, again and again at their spacing, and read upright.

(load "lib/sheet")
(gallery-frame -14 -26 224 56)
(gallery-pipe "P-COLD" '(0 44 0) '(90 44 0) (gallery-label "1-1/2\" CW" 5.0 0.0))
(gallery-pipe "P-COLD" '(0 26 0) '(210 26 0) (gallery-label "CW" 5.0 50.0))
(setq pipe (gallery-pipe "P-HOT" '(0 10 0) '(210 10 0) (gallery-label "HW" 5.0 60.0)))
(vq_plumb-setPipeBreaks pipe 6.0 '("crossing" 120.0))
(gallery-pipe "P-COLD" '(120 44 0) '(210 44 0) (gallery-label "1{\\H0.7x;\\S1/2;}\" CW" 5.0 0.0))
(foreach turn '(0 60 120 180 240 300)
  (setq a (* pi (/ turn 180.0))  c (list (+ 18.0 (* turn 0.58)) -9.0 0.0))
  (gallery-pipe "P-SANR" (polar c a -13.0) (polar c a 13.0) (gallery-label "SAN" 4.0 0.0)))
