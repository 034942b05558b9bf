;;; Fitting ticks stand square to the pipe, a little way in from its ends.

(load "lib/sheet")
(gallery-frame -14 -16 174 38)
(setq ticks '(("TICKWIDTH" 8.0) ("TICKOFFSETHEAD" 5.0) ("TICKOFFSETTAIL" 5.0)))
(gallery-pipe "P-COLD" '(0 22 0) '(70 22 0) ticks)
(gallery-note 35 10 "at both ends")
(setq pipe (gallery-pipe "P-COLD" '(90 22 0) '(160 22 0) (append (gallery-label "3/4\" CW" 5.0 0.0) ticks)))
(gallery-note 125 10 "the label is centred between them")
(setq pipe (gallery-pipe "P-HOT" '(0 -2 0) '(70 -2 0) ticks))
(vq_plumb-setPipeBreaks pipe 6.0 '("crossing" 6.0 40.0))
(gallery-note 35 -11 "a tick under a break is left out")
(gallery-pipe "P-HOT" '(100 -6 0) '(150 4 0) ticks)
(gallery-note 125 -11 "at any angle")
