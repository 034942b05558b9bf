;;; Where something crosses a trap. The trap of these pipes has its legs at x 88 and 100; the foot of its
;;; curve is 12 below.

(load "lib/check")

(defun trap (y / e)
  (setq e (vq_plumb-insertPipe 1 (list 0 y 7) (list 100 y 3)))
  (vq_plumb-setPipeInfo e '("PTRAP" T) '("PTRAPWIDTH" 12.0))
  e)
(defun rounded (pairs)
  (mapcar '(lambda (p) (cons (car p) (atof (rtos (cdr p) 2 6)))) pairs))

(setq e (trap 0) len 18.853550)

(check "both legs, each from its own start"
       (rounded (vq_plumb-intersectPtrapLine 0.0 e '(80 -3 50) '(110 -3 0)))
       '(("entity" . 8.0) ("line1" . 3.0) ("entity" . 20.0) ("line2" . 3.0)))
(check "past it" (vq_plumb-intersectPtrapLine 0.0 e '(70 -20) '(110 -20)) nil)
(setq pairs (rounded (vq_plumb-intersectPtrapLine 0.0 e '(94 -11) '(94 -13))))
(check "the foot of the curve, halfway along"
       pairs (list '("entity" . 1.0012) (cons "polyline" (atof (rtos (/ len 2) 2 6)))))

(check "an extension reaches a leg, above its top"
       (rounded (vq_plumb-intersectPtrapLine 1.0 e '(80 0.5) '(87 0.5)))
       '(("entity" . 8.0) ("line1" . -0.5)))
(check "without it there is nothing" (vq_plumb-intersectPtrapLine e '(80 0.5) '(87 0.5)) nil)
(check "close behind the start of line 1 the curve is told as well"
       (rounded (vq_plumb-intersectPtrapLine 1.0 e '(80 -0.5) '(90 -0.5)))
       '(("entity" . 8.0) ("line1" . 0.5) ("polyline" . -0.5)))
(check "close behind the foot of line 2 too"
       (rounded (vq_plumb-intersectPtrapLine 1.0 e '(95 -5.5) '(105 -5.5)))
       (list '("entity" . 5.0) '("line2" . 0.5) (cons "polyline" (+ len 0.5))))

;; An arc of radius 10 about (88 -13), from (98 -13) up past (88 -3): it crosses line 1 after a quarter turn,
;; and the curve before that.
(setq pairs (rounded (vq_plumb-intersectPtrapArc 0.0 e '(98 -13 9) (* 0.5 pi) 1 10.0 (* 0.6 pi))))
(check "an arc: elements" (mapcar 'car pairs) '("entity" "line1" "entity" "polyline"))
(check "an arc: its length to line 1" (list (nth 0 pairs) (nth 1 pairs)) '(("entity" . 15.707963) ("line1" . 3.0)))
(check "an arc the other way round begins at its far point"
       (rounded (vq_plumb-intersectPtrapArc 0.0 e '(88 -3) 0.0 -1 10.0 (* 0.25 pi)))
       '(("entity" . 7.853982) ("line1" . 3.0)))
(check "its lead lines: before its point, and on from its end"
       (rounded (vq_plumb-intersectPtrapArc 4.0 e '(90 -3) 0.0 1 1.0 pi))
       '(("entity" . -2.0) ("line1" . 3.0) ("polyline" . -3.0)
         ("entity" . 5.141593) ("line1" . 1.0) ("polyline" . -1.0)))
(check "an arc that lacks its sweep" (vq_plumb-intersectPtrapArc 0.0 e '(88 -3) 0.0 1 10.0) nil)

;; A second trap, 6 higher and 6 to the right: the foot of its curve meets the end of this one's curve.
(setq other (vq_plumb-insertPipe 2 '(0 6 0) '(106 6 0)))
(vq_plumb-setPipeInfo other '("PTRAP" T) '("PTRAPWIDTH" 12.0))
(check "another trap, as places on this one" (rounded (vq_plumb-intersectPtrapPtrap 0.0 e other))
       '(("polyline" . 18.852351)))
(setq pairs (vq_plumb-intersectPtrapPtrap 0.0 other e))
(check "and the other way round, halfway along" (equal (cdar pairs) (/ 18.853550187 2) 1e-5) T)
(vq_plumb-setPipeInfo other '("PTRAP" nil))
(check "with itself there is no answer" (vq_plumb-intersectPtrapPtrap 0.0 e e) nil)
(check "a pipe without a trap" (vq_plumb-intersectPtrapLine 0.0 other '(80 3) '(130 3)) nil)
(check "no pipe" (vq_plumb-intersectPtrapLine 0.0 nil '(80 3) '(130 3)) nil)
(check "nothing at all" (vq_plumb-intersectPtrapLine) nil)

;; What the host itself asks: to it a pipe is a line.
(setq level (vq_plumb-insertPipe 3 '(0 0 0) '(100 0 0))
      post (entmakex '((0 . "LINE") (10 50.0 -10.0 0.0) (11 50.0 10.0 0.0)))
      short (entmakex '((0 . "LINE") (10 60.0 5.0 0.0) (11 60.0 10.0 0.0))))
(defun crossings (a b mode)
  (vlax-invoke (vlax-ename->vla-object a) 'IntersectWith (vlax-ename->vla-object b) mode))
(check "the host's intersection" (crossings level post 0) '(50.0 0.0 0.0))
(check "extending neither" (crossings level short 0) nil)
(check "extending the pipe does not help" (crossings level short 1) nil)
(check "extending the other does" (crossings level short 2) '(60.0 0.0 0.0))
(check "asked from the other's side" (crossings short level 1) '(60.0 0.0 0.0))
(check-finish)
