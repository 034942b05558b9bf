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

(setq restroom-fixture-table
  '((restroom-closet       (24 60 96)  136  1)
    (restroom-closet       (24)        104 -1)
    (restroom-urinal       (70 100)    104 -1)
    (restroom-lavatory     (170 206)   136  1)
    (restroom-lavatory     (170 206)   104 -1)
    (restroom-service-sink (306)       136  1)
    (restroom-fountain     (330)       104 -1)
    (restroom-floor-drain  (150)       186  1)
    (restroom-floor-drain  (150)        54 -1)))

(defun restroom-fixtures (/ fix-x fix-wall fix-out)
  (setvar "CLAYER" "P-FIXT")
  (foreach row restroom-fixture-table
    (setq fix-wall (caddr row) fix-out (cadddr row))
    (foreach fix-x (cadr row) (eval (list (car row)))))
  ;; The water heater stands in the janitor's closet.
  (command "CIRCLE" '(364 216) 10)
  (command "CIRCLE" '(364 216) 8.5))
