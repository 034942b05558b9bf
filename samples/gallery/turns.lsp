;;; How a pipe leads into its neighbours: straight stubs at any angle, and arcs to either side.

(load "lib/sheet")
(gallery-frame -10 -22 190 34)
(gallery-pipe "P-SANR" '(0 0 0) '(60 0 0)
  '(("ELBOWLIST" 14.0 0.7853981625 14.0 -0.7853981625)))
(gallery-note 30 -14 "45-degree elbows")
(gallery-pipe "P-SANR" '(0 24 0) '(60 24 0) '(("ELBOWLIST" 12.0 -1.570796325)))
(gallery-pipe "P-COLD" '(80 0 0) '(130 0 0) '(("HEADOFFSET" 12.0) ("ARCRADIUS" 12.0) ("ARCLIST" 1.570796325 12.0 1)))
(gallery-pipe "P-COLD" '(130 0 0) '(130 28 0) '(("TAILOFFSET" 12.0)))
(gallery-pipe "P-HOT" '(80 28 0) '(112 28 0) '(("HEADOFFSET" 12.0) ("ARCRADIUS" 12.0) ("ARCLIST" 1.570796325 12.0 -1)))
(gallery-pipe "P-HOT" '(112 28 0) '(112 8 0) '(("TAILOFFSET" 12.0)))
(gallery-pipe "P-SANR" '(145 12 0) '(180 12 0) '(("ARCRADIUS" 18.0) ("ARCLIST" 0.7853981625 18.0 1 0.7853981625 18.0 -1)))
(gallery-note 125 -14 "arcs to the left and to the right")
