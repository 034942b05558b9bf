;;; Walls, doors and toilet partitions.

;; A polyline through the points; closed when the last argument is not nil.
(defun restroom-outline (layer points closed)
  (setvar "CLAYER" layer)
  (command "PLINE")
  (foreach point points (command point))
  (command (if closed "C" "")))

(defun restroom-line (layer p1 p2)
  (setvar "CLAYER" layer)
  (command "LINE" p1 p2 ""))

;; A door leaf that stands open from the hinge to the tip, with its swing to the strike.
(defun restroom-door (hinge tip strike / from to)
  (restroom-line "A-DOOR" hinge tip)
  (setq from (angle hinge tip) to (angle hinge strike))
  (if (minusp (sin (- to from)))
    (command "ARC" "C" hinge strike tip)
    (command "ARC" "C" hinge tip strike)))

;; One toilet partition an inch thick, from the wall outwards.
(defun restroom-partition (x wall front)
  (restroom-outline "A-PART"
    (list (list (- x 0.5) wall) (list (- x 0.5) front) (list (+ x 0.5) front) (list (+ x 0.5) wall)) nil))

;; The front of a stall between two partitions: a post at either side and a door that opens inwards.
(defun restroom-stall-front (x1 x2 front inward / left right)
  (setq left (+ x1 6) right (- x2 6))
  (restroom-line "A-PART" (list x1 front) (list left front))
  (restroom-line "A-PART" (list right front) (list x2 front))
  (restroom-door (list left front) (list left (+ front (* inward (- right left)))) (list right front)))

(defun restroom-building ()
  ;; All walls are one outline, in and out of the door openings, and the chase inside it.
  (restroom-outline "A-WALL"
    '((240 0) (0 0) (0 236) (240 236) (240 230) (6 230) (6 136) (288 136) (288 230) (276 230) (276 236)
      (384 236) (384 194) (378 194) (378 230) (294 230) (294 136) (378 136) (378 158) (384 158)
      (384 104) (294 104) (294 0) (276 0) (276 6) (288 6) (288 104) (6 104) (6 6) (240 6))
    T)
  (restroom-outline "A-WALL" '((6 108) (378 108) (378 132) (6 132)) T)
  (restroom-door '(240 230) '(240 194) '(276 230))
  (restroom-door '(240 6) '(240 42) '(276 6))
  (restroom-door '(384 158) '(420 158) '(384 194))
  ;; Women: three stalls; men: one stall and two urinals between screens.
  (foreach x '(42 78 114) (restroom-partition x 136 196))
  (restroom-stall-front 6 41.5 196 -1)
  (restroom-stall-front 42.5 77.5 196 -1)
  (restroom-stall-front 78.5 113.5 196 -1)
  (restroom-partition 42 104 44)
  (restroom-stall-front 6 41.5 44 1)
  (foreach x '(55 85 115) (restroom-partition x 104 82))
  ;; Lavatory counters
  (restroom-outline "A-PART" '((148 136) (148 158) (228 158) (228 136)) nil)
  (restroom-outline "A-PART" '((148 104) (148 82) (228 82) (228 104)) nil))
