;;; Cold water, hot water and sanitary piping. The mains run in the chase, one above the other on the
;;; sheet; a pipe that passes below another is broken where they cross.

(setq restroom-cold-y 127.0
      restroom-hot-y  120.0
      restroom-sanitary-y 113.0
      restroom-supply-z 102.0   ; supply mains hang above the ceiling
      restroom-outlet-z 24.0    ; and drop to the fixtures
      restroom-north-end 134.0  ; where branches leave the chase
      restroom-south-end 106.0
      restroom-eighth-turn 0.7853981625
      restroom-quarter-turn 1.570796325
      restroom-pipe-count 0)

;; A pipe on a layer, with any keys of vq_plumb-setPipeInfo. Gives its entity name.
(defun restroom-pipe (layer p1 p2 keys / pipe)
  (setvar "CLAYER" layer)
  (setq restroom-pipe-count (1+ restroom-pipe-count)
        pipe (vq_plumb-insertPipe restroom-pipe-count p1 p2))
  (apply 'vq_plumb-setPipeInfo (cons pipe keys))
  pipe)

(defun restroom-label (text spacing)
  (list (list "TEXTHEIGHT" 4.0) (list "TEXTSTYLE" "Standard") (list "TEXTLAYER" "P-TEXT")
        (list "TEXTDISTANCE" spacing) (list "TEXT" text)))

;; A turn at the head of a run: the run stops short by the radius and an arc leads into the next one.
;; The side is 1 to the left and -1 to the right.
(defun restroom-turn (radius side)
  (list (list "HEADOFFSET" radius) (list "ARCRADIUS" radius)
        (list "ARCLIST" restroom-quarter-turn radius side)))

;; A pipe that goes down at a point, with a gap towards the pipe that comes in from the angle.
(defun restroom-drop (layer x y from-angle radius)
  (restroom-pipe layer (list x y restroom-supply-z) (list x y restroom-outlet-z)
    (list (list "VERTICALTYPE" "DOWN") (list "VERTICALRADIUS" radius) (list "VERTICALANGLELIST" from-angle))))

;; A supply branch from a main to the fixture wall; breaks are distances from the main.
(defun restroom-supply-branch (layer x main-y end-y breaks / pipe back)
  (setq back (if (> end-y main-y) (* 1.5 pi) (* 0.5 pi))
        pipe (restroom-pipe layer (list x main-y restroom-supply-z) (list x end-y restroom-supply-z)
               '(("HEADOFFSET" 1.2) ("TICKWIDTH" 2.4) ("TICKOFFSETHEAD" 2.0))))
  (if breaks (vq_plumb-setPipeBreaks pipe 2.5 (cons "crossing" breaks)))
  (restroom-drop layer x end-y back 1.2))

;; A main along X from fitting to fitting, a pipe each: runs are (from to label), where they cross what passes
;; above them are breaks. `elevation` gives Z at an x; `first` and `last` are keys of the outer pipes.
(defun restroom-main (layer y elevation runs crossings width first last / pipe from to keys breaks)
  (foreach run runs
    (setq from (float (car run)) to (float (cadr run))
          keys (append (if (equal run (car runs)) first)
                       (if (equal run (car (reverse runs))) last)
                       (if (caddr run) (restroom-label (caddr run) 0.0)))
          pipe (restroom-pipe layer (list from y (apply elevation (list from))) (list to y (apply elevation (list to)))
                 keys)
          breaks nil)
    (foreach x crossings
      (if (< (min from to) x (max from to)) (setq breaks (cons (abs (- x from)) breaks))))
    (if breaks (vq_plumb-setPipeBreaks pipe width (cons "crossing" breaks)))))

(defun restroom-supply-elevation (x) restroom-supply-z)

(defun restroom-cold-water (/ z)
  (setq z restroom-supply-z)
  (restroom-pipe "P-COLD" (list 360 158 0.0) (list 360 158 z)
    '(("VERTICALTYPE" "UP") ("VERTICALRADIUS" 2.5)))
  (restroom-pipe "P-COLD" (list 360 158 z) (list 360 restroom-cold-y z)
    (cons '("TAILOFFSET" 2.5) (restroom-turn 6.0 -1)))
  (restroom-main "P-COLD" restroom-cold-y 'restroom-supply-elevation
    '((360 300 nil) (300 215 "2\" CW") (215 164 nil) (164 123 "1-1/2\" CW") (123 19 nil))
    nil 0.0 '(("TAILOFFSET" 6.0)) nil)
  (restroom-pipe "P-COLD" (list 360 158 z) (list 360 206 z)
    (cons '("TAILOFFSET" 2.5) (restroom-label "3/4\" CW" 60.0)))
  (foreach x '(19 55 91 166 202 302)
    (restroom-supply-branch "P-COLD" x restroom-cold-y restroom-north-end nil))
  (foreach x '(19 70 100 170 206 326)
    (restroom-supply-branch "P-COLD" x restroom-cold-y restroom-south-end nil)))

(defun restroom-hot-water (/ z pipe)
  (setq z restroom-supply-z)
  (restroom-pipe "P-HOT" (list 354 216 z) (list 340 216 z) (restroom-turn 5.0 1))
  (setq pipe (restroom-pipe "P-HOT" (list 340 216 z) (list 340 restroom-hot-y z)
               (append '(("TAILOFFSET" 5.0)) (restroom-turn 5.0 -1) (restroom-label "3/4\" HW" 60.0))))
  (vq_plumb-setPipeBreaks pipe 4.0 (list "cold main" (- 216.0 restroom-cold-y)))
  (restroom-main "P-HOT" restroom-hot-y 'restroom-supply-elevation
    '((340 300 nil) (300 215 "3/4\" HW") (215 166 nil))
    '(170 206 326) 4.0 '(("TAILOFFSET" 5.0)) nil)
  (foreach x '(174 210 310)
    (restroom-supply-branch "P-HOT" x restroom-hot-y restroom-north-end
      (list (- restroom-cold-y restroom-hot-y))))
  (foreach x '(166 202)
    (restroom-supply-branch "P-HOT" x restroom-hot-y restroom-south-end nil)))

;; An arrow along a run, so far back from its end, with hangers at distances from its start.
(defun restroom-arrow (layer p1 p2 back hangers / arrow)
  (setvar "CLAYER" layer)
  (setq arrow (vq_plumb-insertPipeArrow p1 p2 0.0 (float back) nil))
  (vq_plumb-setPipeArrowInfo arrow '("ARROWLENGTH" 7.0) (cons "HANGERDIST" hangers)))

;; A drain that falls from (x, y) to a 45-degree fitting on the sanitary main, with further keys for its label;
;; breaks count from the top.
(defun restroom-drain (x y leg breaks keys / foot side pipe)
  (setq side (if (> y restroom-sanitary-y) 1 -1)
        foot (+ restroom-sanitary-y (* side leg))
        pipe (restroom-pipe "P-SANR" (list x y -6.0) (list x foot -11.0)
               (append keys
                       (list (list "ELBOW45" T)
                             (list "ELBOWLIST" (* leg (sqrt 2.0)) (* side restroom-eighth-turn))))))
  (if breaks (vq_plumb-setPipeBreaks pipe 3.0 (cons "mains" breaks))))

;; A floor drain has its trap right below it, and a branch of its own to the main.
(defun restroom-floor-drain-branch (x y breaks / riser)
  (setq riser (- x 30))
  (restroom-pipe "P-SANR" (list riser y -6.0) (list x y -6.0) '(("PTRAP" T) ("PTRAPWIDTH" 11.0)))
  (restroom-drain riser y 6.0 breaks (restroom-label "2\" SAN" 0.0)))

;; The main falls an eighth of an inch a foot. Each pipe is drawn flat, with a drop to its lower end.
(defun restroom-sanitary-elevation (x) (- -12.0 (* (/ (- x 30.0) 12.0) 0.125)))

(defun restroom-sanitary ()
  (restroom-main "P-SANR" restroom-sanitary-y 'restroom-sanitary-elevation
    '((30 126 nil) (126 150 "4\" SAN") (150 225 nil) (225 310 "4\" SAN") (310 372 nil))
    '(70 100 166 170 202 206 326) 5.0 nil (restroom-turn 8.0 -1))
  (restroom-pipe "P-SANR" (list 372 restroom-sanitary-y (restroom-sanitary-elevation 372.0)) (list 372 -36 -17.125)
    (cons '("TAILOFFSET" 8.0) (restroom-label "4\" SAN" 90.0)))
  (restroom-arrow "P-SANR" '(310 113 0) '(364 113 0) 12 nil)
  (restroom-arrow "P-SANR" '(372 105 0) '(372 -36 0) 14 nil)
  (foreach x '(24 60 96) (restroom-drain x 148 6.0 (list (- 148.0 restroom-cold-y)) nil))
  (foreach x '(182 218)
    (restroom-drain x 134 6.0 (list (- 134.0 restroom-cold-y) (- 134.0 restroom-hot-y)) nil))
  (restroom-drain 306 148 6.0 (list (- 148.0 restroom-cold-y) (- 148.0 restroom-hot-y)) nil)
  (restroom-drain 24 92 6.0 nil nil)
  (foreach x '(73 103 178 214 330) (restroom-drain x restroom-south-end 4.0 nil nil))
  (restroom-floor-drain-branch 150 186 (list (- 186.0 restroom-cold-y)))
  (restroom-floor-drain-branch 150 54 nil))

;; The vent rises through the roof beside the main, on an offset of its own.
(defun restroom-vent (/ scale)
  (setq scale (getvar "CELTSCALE"))
  (setvar "CELTSCALE" 0.25)
  (restroom-pipe "P-VENT" (list 152 restroom-sanitary-y -12.0) (list 152 restroom-hot-y -12.0)
    '(("OFFSETDISTANCE" -2.0) ("HEADOFFSET" 2.0)))
  (restroom-pipe "P-VENT" (list 154 restroom-hot-y -12.0) (list 154 restroom-hot-y 120.0)
    '(("VERTICALTYPE" "UP") ("VERTICALRADIUS" 2.0)))
  (setvar "CELTSCALE" scale))

;; Flow and hangers of the supply mains.
(defun restroom-supply-arrows (/ cold hot)
  (setq cold restroom-cold-y  hot restroom-hot-y)
  (restroom-arrow "P-COLD" (list 300 cold 0) (list 215 cold 0) 14 '(8.0 79.0))
  (restroom-arrow "P-COLD" (list 123 cold 0) (list 19 cold 0) 52 '(10.0 59.0 97.0))
  (restroom-arrow "P-COLD" '(360 158 0) '(360 206 0) 0 '(6.0))
  (restroom-arrow "P-HOT" (list 300 hot 0) (list 215 hot 0) 14 '(8.0 79.0))
  (restroom-arrow "P-HOT" (list 340 211 0) (list 340 hot 0) 26 '(6.0 80.0)))

(defun restroom-piping ()
  (restroom-sanitary)
  (restroom-vent)
  (restroom-hot-water)
  (restroom-cold-water)
  (restroom-supply-arrows))
