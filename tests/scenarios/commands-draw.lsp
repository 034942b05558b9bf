;;; LINE, CIRCLE, ARC, PLINE: what they draw from the answers that a script gives.

(load "lib/check")
(setvar "CMDECHO" 0)

(defun dxf (code e) (cdr (assoc code (entget e))))
(defun last-dxf (codes) (mapcar '(lambda (c) (dxf c (entlast))) codes))
(defun count-of (filter / set) (if (setq set (ssget "X" filter)) (sslength set) 0))
(defun vertices (e) (cddddr (car (vd-graphics e))))

;; Points in all notations.
(command "LINE" '(0 0) "10,0" "@0,5" "@10<90" "")
(check "three lines" (count-of '((0 . "LINE"))) 3)
(check "relative and polar points" (last-dxf '(10 11)) '((10.0 5.0 0.0) (10.0 15.0 0.0)))
(check "the last point is kept" (getvar "LASTPOINT") '(10.0 15.0 0.0))
(command "_.LINE" "1,2,3" "*4,5,6" "" "" "")
(check "prefixes, and surplus empty answers" (last-dxf '(10 11)) '((1.0 2.0 3.0) (4.0 5.0 6.0)))
(command "l" '(0 0) '(4 0) '(4 3) "c")
(check "close" (last-dxf '(10 11)) '((4.0 3.0 0.0) (0.0 0.0 0.0)))
(setq before (count-of '((0 . "LINE"))))
(command "LINE" '(0 0) '(9 0) '(9 9) "U" '(9 5) "")
(check "undo takes the last piece" (- (count-of '((0 . "LINE"))) before) 2)
(check "and goes on from there" (last-dxf '(10 11)) '((9.0 0.0 0.0) (9.0 5.0 0.0)))

;; In pieces: the command waits, and other work goes on.
(command "LINE" '(20 0))
(check "a waiting command is active" (list (getvar "CMDNAMES") (= (logand 1 (getvar "CMDACTIVE")) 1)) '("LINE" T))
(setq before (count-of '((0 . "LINE"))))
(command '(21 0))
(command '(22 0) "")
(check "answers in several calls" (- (count-of '((0 . "LINE"))) before) 2)
(check "then nothing is active" (getvar "CMDACTIVE") 0)
(command "LINE" '(30 0) '(31 0))
(command)
(check "cancelling keeps what was drawn" (last-dxf '(10 11)) '((30.0 0.0 0.0) (31.0 0.0 0.0)))
(check "one call, two commands"
       (progn (command "LINE" '(40 0) '(41 0) "" "CIRCLE" '(5 5) 2) (last-dxf '(0 10 40)))
       '("CIRCLE" (5.0 5.0 0.0) 2.0))

(command "CIRCLE" '(1 1) "D" 5)
(check "diameter" (last-dxf '(40)) '(2.5))
(command "CIRCLE" "3P" '(1 0) '(0 1) '(-1 0))
(check "circle through three points" (last-dxf '(10 40)) '((0.0 0.0 0.0) 1.0))
(command "CIRCLE" "2P" '(0 0) '(4 0))
(check "circle over a diameter" (last-dxf '(10 40)) '((2.0 0.0 0.0) 2.0))
(command "CIRCLE" '(7 7) '(7 10))
(check "a radius by a point" (last-dxf '(40)) '(3.0))

(setq half (list (cos (/ pi 4)) (sin (/ pi 4))))
(command "ARC" '(1 0) half '(0 1))
(check "arc through three points" (last-dxf '(10 40 50 51)) (list '(0.0 0.0 0.0) 1.0 0.0 (/ pi 2)))
(command "ARC" '(0 1) half '(1 0))
(check "the other way round it is the same arc" (last-dxf '(50 51)) (list 0.0 (/ pi 2)))
(command "ARC" "C" '(0 0) '(2 0) '(0 5))
(check "arc about a centre" (last-dxf '(40 50 51)) (list 2.0 0.0 (/ pi 2)))
(command "ARC" "C" '(0 0) '(2 0) "A" 180)
(check "arc by its angle" (last-dxf '(50 51)) (list 0.0 pi))
(command "ARC" '(0 0) "E" '(2 0) "R" 1)
(check "arc by ends and radius" (last-dxf '(10 40)) '((1.0 0.0 0.0) 1.0))

(command "PLINE" '(0 0) '(10 0) "W" 1 1 '(10 10) "C")
(check "closed polyline" (list (dxf 0 (entlast)) (logand 1 (dxf 70 (entlast)))) '("LWPOLYLINE" 1))
(check "widths from the second piece on"
       (mapcar 'cdr (vl-remove-if-not '(lambda (g) (= (car g) 40)) (entget (entlast)))) '(0.0 1.0 1.0))
(check "length of its outline" (vlax-curve-getDistAtParam (entlast) (vlax-curve-getEndParam (entlast)))
       (+ 20.0 (sqrt 200.0)))
(command "PLINE" '(0 0) '(10 0) "A" '(10 4) "L" '(0 4) "")
(check "a tangent half circle in the middle"
       (vlax-curve-getDistAtParam (entlast) (vlax-curve-getEndParam (entlast)))
       (+ 20.0 (* 2.0 pi)))
(command "PLINE" '(0 0) '(0 0) "U" "A" "S" '(1 1) '(2 0) "")
(check "an arc by a second point"
       (vlax-curve-getDistAtParam (entlast) (vlax-curve-getEndParam (entlast))) pi)

;; What is wrong costs a message and nothing else.
(setq before (count-of nil))
(check "unknown command" (vd-capture '(lambda () (command "FROBNICATE" '(0 0) ""))) "Unknown command \"FROBNICATE\".\n")
(check "a bad point is asked for again"
       (progn (command "LINE" "nonsense" '(50 0) '(51 0) "") (last-dxf '(10)))
       '((50.0 0.0 0.0)))
(check "points on a line are no circle"
       (vd-capture '(lambda () (command "CIRCLE" "3P" '(0 0) '(1 0) '(2 0))))
       "Circle does not exist.\n")
(check-error "a function is no answer" '(command "LINE" car) "bad argument type*")
(command)
(check "c: functions are commands"
       (progn
         (defun c:mark (/ p) (setq p (getpoint "\nWhere: ")) (command "CIRCLE" p 9) (princ))
         (command "MARK" '(3 4) "LINE" '(60 0) '(61 0) "")
         (list (count-of '((0 . "CIRCLE") (40 . 9.0))) (last-dxf '(10))))
       '(1 ((60.0 0.0 0.0))))

(check-finish)
