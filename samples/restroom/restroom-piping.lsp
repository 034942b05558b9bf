;;; Cold water, hot water and sanitary piping. The mains run in the chase, one above the other on the
;;; sheet; a pipe that passes below another is broken where they cross.

(setq restroom-cold-y 127.0
      restroom-hot-y  120.0
      restroom-sanitary-y 113.0
      restroom-supply-z 102.0   ; supply mains hang above the ceiling
      restroom-outlet-z 24.0    ; and drop to the fixtures
      restroom-hanger-z 120.0   ; from the slab
      restroom-north-end 134.0  ; where branches leave the chase
      restroom-south-end 106.0
      restroom-eighth-turn 0.7853981625
      restroom-quarter-turn 1.570796325
      restroom-label-length 60.0) ; pieces of a main from this length on are labelled

;; How the pipes of a type are sized.
(setq restroom-cold-sizing  '("table" . "Velocity up to 8 ft/s")
      restroom-hot-sizing   '("table" . "Velocity up to 5 ft/s")
      restroom-drain-sizing '("table" . "Branches, stacks up to 3 intervals")
      restroom-building-drain-sizing '(("table" . "Building drain, 1/8 in per ft") ("size" . "4\"")))

;; A turn at the head of a run: the run stops short by the radius and an arc leads into the next one.
;; The side is 1 to the left and -1 to the right.
(defun restroom-turn (radius side)
  (list (list "HEADOFFSET" radius) (list "ARCRADIUS" radius)
        (list "ARCLIST" restroom-quarter-turn radius side)))

;; A pipe that goes down at a point to a fixture, with a gap towards the pipe that comes in from the angle.
(defun restroom-drop (kind x y from-angle radius fixture sizing)
  (restroom-pipe kind (list x y restroom-supply-z) (list x y restroom-outlet-z)
    (list (list "VERTICALTYPE" "DOWN") (list "VERTICALRADIUS" radius) (list "VERTICALANGLELIST" from-angle))
    (list (list "columns" (cons "ixValveLNext" fixture)) sizing)))

;; A supply branch from a main to the nearest fixture on the wall; breaks are distances from the main.
(defun restroom-supply-branch (kind x main-y end-y breaks sizing / side)
  (setq side (if (> end-y main-y) 1 -1))
  (restroom-pipe kind (list x main-y restroom-supply-z) (list x end-y restroom-supply-z)
    '(("HEADOFFSET" 1.2) ("TICKWIDTH" 2.4) ("TICKOFFSETHEAD" 2.0))
    (list sizing (restroom-breaks 2.5 breaks)))
  (restroom-drop kind x end-y (if (> side 0) (* 1.5 pi) (* 0.5 pi)) 1.2 (restroom-fixture-near x side) sizing))

(defun restroom-breaks (width distances)
  (if distances (cons "breaks" (cons width (cons "crossing" distances)))))

;; A main along X from branch to branch, a pipe each; where they cross what passes above them are breaks.
;; `elevation` gives Z at an x; `head` and `tail` are keys of the first and the last pipe.
(defun restroom-main (kind y elevation stations crossings width head tail pairs / from to breaks)
  (while (cdr stations)
    (setq from     (float (car stations))
          stations (cdr stations)
          to       (float (car stations))
          breaks   nil)
    (foreach x crossings
      (if (< (min from to) x (max from to)) (setq breaks (cons (abs (- x from)) breaks))))
    (restroom-pipe kind
      (list from y (apply elevation (list from))) (list to y (apply elevation (list to)))
      (append head (if (null (cdr stations)) tail))
      (append (if (>= (abs (- to from)) restroom-label-length) '(("label" . 0.0)))
              (list (restroom-breaks width breaks)) pairs))
    (setq head nil)))

(defun restroom-supply-elevation (x) restroom-supply-z)

(defun restroom-cold-water (/ z)
  (setq z restroom-supply-z)
  (restroom-pipe "CW" '(360 158 0) (list 360 158 z)
    '(("VERTICALTYPE" "UP") ("VERTICALRADIUS" 2.5)) (list '("source" . T) restroom-cold-sizing))
  (restroom-pipe "CW" (list 360 158 z) (list 360 restroom-cold-y z)
    (cons '("TAILOFFSET" 2.5) (restroom-turn 6.0 -1)) (list restroom-cold-sizing))
  (restroom-main "CW" restroom-cold-y 'restroom-supply-elevation
    '(360 326 302 206 202 170 166 100 91 70 55 19)
    nil 0.0 '(("TAILOFFSET" 6.0)) nil (list restroom-cold-sizing))
  (restroom-pipe "CW" (list 360 158 z) (list 360 206 z) '(("TAILOFFSET" 2.5))
    (list (list "columns" (cons "ixValveLNext" restroom-heater)) '("label" . 60.0) restroom-cold-sizing))
  (foreach x '(19 55 91 166 202 302)
    (restroom-supply-branch "CW" x restroom-cold-y restroom-north-end nil restroom-cold-sizing))
  (foreach x '(19 70 100 170 206 326)
    (restroom-supply-branch "CW" x restroom-cold-y restroom-south-end nil restroom-cold-sizing)))

(defun restroom-hot-water (/ z)
  (setq z restroom-supply-z)
  (restroom-pipe "HW" (list 354 216 z) (list 340 216 z) (restroom-turn 5.0 1)
    (list (list "columns" (cons "ixValveLPrevious" restroom-heater)) '("source" . T) restroom-hot-sizing))
  (restroom-pipe "HW" (list 340 216 z) (list 340 restroom-hot-y z)
    (cons '("TAILOFFSET" 5.0) (restroom-turn 5.0 -1))
    (list '("label" . 60.0) restroom-hot-sizing (restroom-breaks 4.0 (list (- 216.0 restroom-cold-y)))))
  (restroom-main "HW" restroom-hot-y 'restroom-supply-elevation
    '(340 310 210 202 174 166)
    '(170 206 326) 4.0 '(("TAILOFFSET" 5.0)) nil (list restroom-hot-sizing))
  (foreach x '(174 210 310)
    (restroom-supply-branch "HW" x restroom-hot-y restroom-north-end
      (list (- restroom-cold-y restroom-hot-y)) restroom-hot-sizing))
  (foreach x '(166 202)
    (restroom-supply-branch "HW" x restroom-hot-y restroom-south-end nil restroom-hot-sizing)))

;; A drain that falls from (x, y) to a 45-degree fitting on the sanitary main; breaks count from the top.
(defun restroom-drain (x y leg breaks pairs / side joint)
  (setq side  (if (> y restroom-sanitary-y) 1 -1)
        joint (float (+ x leg)))
  (restroom-pipe "SAN" (list x y -6.0) (list x (+ restroom-sanitary-y (* side leg)) -11.0)
    (list (list "ELBOW45" T)
          (list "ELBOWLIST" (* leg (sqrt 2.0)) (* side restroom-eighth-turn)))
    (append pairs
            (list (list "near" joint restroom-sanitary-y (restroom-sanitary-elevation joint))
                  restroom-drain-sizing (restroom-breaks 3.0 breaks)))))

;; The fixture of the wall, or the floor drain, nearest to a point.
(defun restroom-fixture-by (x y)
  (restroom-fixture-near x (if (> y restroom-sanitary-y) 1 -1)))

(defun restroom-fixture-drain (x y leg breaks)
  (restroom-drain x y leg breaks
    (list (list "columns" (cons "ixValveLPrevious" (restroom-fixture-by x y))))))

;; A floor drain has its trap right below it, and a branch of its own to the main.
(defun restroom-floor-drain-branch (x y breaks / riser)
  (setq riser (- x 30))
  (restroom-pipe "SAN" (list riser y -6.0) (list x y -6.0) '(("PTRAP" T) ("PTRAPWIDTH" 11.0))
    (list (list "columns" '("bPTrap" . T) (cons "ixValveLNext" (restroom-fixture-by x y)))
          (list "near" (float riser) (float y) -6.0) (list "far" (float x) (float y) -6.0)
          restroom-drain-sizing))
  (restroom-drain riser y 6.0 breaks '(("label" . 0.0))))

;; The main falls an eighth of an inch a foot. Each pipe is drawn flat, with a drop to its lower end.
(defun restroom-sanitary-elevation (x) (- -12.0 (* (/ (- x 30.0) 12.0) 0.125)))

(defun restroom-sanitary ()
  (restroom-main "SAN" restroom-sanitary-y 'restroom-sanitary-elevation
    '(30 66 77 102 107 126 182 188 218 224 312 334 372)
    '(70 100 166 170 202 206 326) 5.0 nil (restroom-turn 8.0 -1) restroom-building-drain-sizing)
  (restroom-pipe "SAN" (list 372 restroom-sanitary-y (restroom-sanitary-elevation 372.0)) '(372 -36 -17.125)
    '(("TAILOFFSET" 8.0)) (append '(("source" . T) ("label" . 90.0)) restroom-building-drain-sizing))
  (foreach x '(24 60 96) (restroom-fixture-drain x 148 6.0 (list (- 148.0 restroom-cold-y))))
  (foreach x '(182 218)
    (restroom-fixture-drain x 134 6.0 (list (- 134.0 restroom-cold-y) (- 134.0 restroom-hot-y))))
  (restroom-fixture-drain 306 148 6.0 (list (- 148.0 restroom-cold-y) (- 148.0 restroom-hot-y)))
  (restroom-fixture-drain 24 92 6.0 nil)
  (foreach x '(73 103 178 214 330) (restroom-fixture-drain x restroom-south-end 4.0 nil))
  (restroom-floor-drain-branch 150 186 (list (- 186.0 restroom-cold-y)))
  (restroom-floor-drain-branch 150 54 nil))

;; The vent rises through the roof beside the main, on an offset of its own.
(defun restroom-vent (/ roof)
  (setq roof (restroom-valve "Vent through roof" "V" 154 restroom-hot-y 120 1))
  (restroom-pipe "V" (list 152 restroom-sanitary-y -12.0) (list 152 restroom-hot-y -12.0)
    '(("OFFSETDISTANCE" -2.0) ("HEADOFFSET" 2.0))
    (list '("columns" ("dOffsetPlan" . -2.0)) (list "near" 154.0 restroom-hot-y -12.0)
          '("size" . "3\"") '("scale" . 0.5)))
  (restroom-pipe "V" (list 154 restroom-hot-y -12.0) (list 154 restroom-hot-y 120.0)
    '(("VERTICALTYPE" "UP") ("VERTICALRADIUS" 2.0))
    (list (list "columns" (cons "ixValveLNext" roof)) '("source" . T) '("size" . "3\"") '("scale" . 0.25))))

;; An arrow at a point of a pipe, and hangers along it: distance of the first from the start, spacing, and the
;; end that stays free.
(defun restroom-arrow (kind point hangers / pipe p2 run at distances)
  (setq pipe (restroom-pipe-through kind point)
        p2   (restroom-flat (restroom-of pipe "p2"))
        run  (distance (restroom-flat (restroom-of pipe "p1")) p2)
        at   (car hangers))
  (while (and at (<= at (- run (caddr hangers))))
    (setq distances (cons at distances)
          at        (+ at (cadr hangers))))
  (restroom-amend pipe
    (list (cons "arrow" (cons (distance point p2) (reverse distances)))
          (cons "columns" (append (if hangers (restroom-hangers hangers)) (restroom-of pipe "columns"))))))

(defun restroom-hangers (hangers)
  (list '("iHangerType" . 1) (cons "dHangerZ" restroom-hanger-z) '("dHangerSize" . 0.375) '("dHangerDepth" . 1.0)
        (cons "dHangerStartOffset" (car hangers)) (cons "dHangerSpacing" (cadr hangers))
        (cons "dHangerEndOffset" (caddr hangers))))

(defun restroom-arrows ()
  (restroom-arrow "CW" (list 229.0 restroom-cold-y 0.0) '(10.0 71.0 15.0))
  (restroom-arrow "CW" (list 104.0 restroom-cold-y 0.0) '(10.0 48.0 20.0))
  (restroom-arrow "CW" (list 28.0 restroom-cold-y 0.0) '(8.0 48.0 4.0))
  (restroom-arrow "CW" '(360.0 206.0 0.0) '(6.0 48.0 12.0))
  (restroom-arrow "HW" (list 229.0 restroom-hot-y 0.0) '(8.0 60.0 12.0))
  (restroom-arrow "HW" '(340.0 138.0 0.0) '(11.0 74.0 8.0))
  (restroom-arrow "SAN" (list 352.0 restroom-sanitary-y 0.0) nil)
  (restroom-arrow "SAN" '(372.0 -22.0 0.0) nil))

(defun restroom-piping ()
  (setq restroom-network nil)
  (restroom-sanitary)
  (restroom-vent)
  (restroom-hot-water)
  (restroom-cold-water)
  (restroom-arrows))
