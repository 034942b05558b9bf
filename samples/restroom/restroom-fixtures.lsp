;;; Fixture symbols. Each stands on a wall at (x, wall) and reaches out by +Y or -Y (out is 1 or -1);
;;; local coordinates are u along the wall and v away from it.

(defun restroom-at (u v) (list (+ fix-x u) (+ fix-wall (* fix-out v))))

(defun restroom-circle (u v radius) (command "CIRCLE" (restroom-at u v) radius))

(defun restroom-segment (u1 v1 u2 v2) (command "LINE" (restroom-at u1 v1) (restroom-at u2 v2) ""))

;; A half circle around (u, v) that bulges away from the wall.
(defun restroom-cap (u v radius)
  (if (> fix-out 0)
    (command "ARC" "C" (restroom-at u v) (restroom-at (+ u radius) v) (restroom-at (- u radius) v))
    (command "ARC" "C" (restroom-at u v) (restroom-at (- u radius) v) (restroom-at (+ u radius) v))))

;; A bowl: straight sides from v1 to v2 and a round front.
(defun restroom-bowl (half v1 v2)
  (restroom-segment (- half) v1 half v1)
  (restroom-segment (- half) v1 (- half) v2)
  (restroom-segment half v1 half v2)
  (restroom-cap 0 v2 half))

(defun restroom-box (u1 v1 u2 v2)
  (restroom-segment u1 v1 u2 v1)
  (restroom-segment u2 v1 u2 v2)
  (restroom-segment u2 v2 u1 v2)
  (restroom-segment u1 v2 u1 v1))

(defun restroom-closet ()
  (restroom-circle 0 1.75 1.5)
  (restroom-bowl 7.0 4.5 17.0)
  (restroom-bowl 4.5 8.0 16.5))

(defun restroom-urinal ()
  (restroom-circle 0 1.0 0.8)
  (restroom-bowl 7.0 2.0 7.5)
  (restroom-bowl 4.0 4.5 7.5)
  (restroom-circle 0 7.0 1.0))

(defun restroom-lavatory ()
  (restroom-circle 0 3.5 1.0)
  (restroom-segment -3 3.5 3 3.5)
  (restroom-bowl 8.0 5.5 11.0)
  (restroom-circle 0 10.0 1.0))

(defun restroom-service-sink ()
  (restroom-box -12 0 12 24)
  (restroom-box -10 2 10 22)
  (restroom-circle 0 12 2.0))

(defun restroom-fountain ()
  (restroom-box -7 0 7 13)
  (restroom-circle 0 7 4.5)
  (restroom-circle -3.5 2.0 0.8))

(defun restroom-floor-drain ()
  (restroom-circle 0 0 4.0)
  (restroom-box -2.8 -2.8 2.8 2.8))

;; Symbol, type in the standards, places along the wall, wall, side.
(setq restroom-fixture-table
  '((restroom-closet       "Water closet, public, flushometer"    (24 60 96) 136  1)
    (restroom-closet       "Water closet, public, flushometer"    (24)       104 -1)
    (restroom-urinal       "Urinal, public, 3/4 in flushometer"   (70 100)   104 -1)
    (restroom-lavatory     "Lavatory, public"                     (170 206)  136  1)
    (restroom-lavatory     "Lavatory, public"                     (170 206)  104 -1)
    (restroom-service-sink "Service sink"                         (306)      136  1)
    (restroom-fountain     "Drinking fountain"                    (330)      104 -1)
    (restroom-floor-drain  "Floor drain"                          (150)      186  1)
    (restroom-floor-drain  "Floor drain"                          (150)       54 -1)))

;; A row for a fixture or valve; a pipe type by its short name. On the south side of the chase a symbol is turned
;; round, and mirrored so that its left stays left. Gives the row's key.
(defun restroom-valve (name kind x y z side)
  (plumb-db-insert restroom-db "tblValveL"
    (list (cons "ixValveS" (restroom-standard "tblValveS" "sName" name "ixValveS"))
          (cons "ixLayerSystem" restroom-system)
          (cons "ixPipeType" (restroom-standard "tblPipeType" "sShortName" kind "ixPipeType"))
          (cons "dX" (float x)) (cons "dY" (float y)) (cons "dZ" (float z))
          (cons "bMirrored" (if (< side 0) T 0)) (cons "dRotation" (if (< side 0) pi 0.0))
          (cons "sDrawing" restroom-drawing) (cons "iAlignmentPointNumber" restroom-point))))

;; What is placed: lists of key, type, x, side.
(setq restroom-fixture-list nil)

;; The key of the fixture nearest to x on a side of the chase.
(defun restroom-fixture-near (x side / nearest)
  (foreach fixture restroom-fixture-list
    (if (and (= (cadddr fixture) side)
             (or (null nearest) (< (abs (- x (caddr fixture))) (abs (- x (caddr nearest))))))
      (setq nearest fixture)))
  (car nearest))

(defun restroom-fixtures (/ fix-x fix-wall fix-out name)
  (setvar "CLAYER" (restroom-layer "FIXTURE"))
  (setq restroom-fixture-list nil)
  (foreach row restroom-fixture-table
    (setq name (cadr row) fix-wall (cadddr row) fix-out (nth 4 row))
    (foreach fix-x (caddr row)
      (eval (list (car row)))
      (setq restroom-fixture-list
             (cons (list (restroom-valve name (if (= name "Floor drain") "SAN" "CW") fix-x fix-wall 0 fix-out)
                         name fix-x fix-out)
                   restroom-fixture-list))))
  ;; The water heater stands in the janitor's closet.
  (setvar "CLAYER" (restroom-layer "EQUIPMENT"))
  (command "CIRCLE" '(364 216) 10)
  (command "CIRCLE" '(364 216) 8.5)
  (setq restroom-heater (restroom-valve "Water heater" "CW" 364 216 0 1)))
