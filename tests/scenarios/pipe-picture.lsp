;;; What pipes draw, as the host's own commands and functions see it.

(load "lib/check")
(setvar "CMDECHO" 0)

(command "LAYER" "M" "P-HIDN" "" "LAYER" "M" "P-COLD" "")
(setq e (vq_plumb-insertPipe 1 '(0 0 0) '(100 0 0)))

(defun picture (e) (vd-graphics e))
(defun ends (e) (mapcar 'cddddr (vl-remove-if-not '(lambda (p) (= (car p) "polyline")) (picture e))))

(check "it takes the current layer" (cadr (car (picture e))) "P-COLD")
(check "colour and linetype unresolved" (list (caddr (car (picture e))) (cadddr (car (picture e)))) '("ByLayer" 256))

(vq_plumb-setPipeInfo e '("HIDDENLAYER" "P-HIDN"))
(check "each piece has a twin before it" (mapcar 'cadr (picture e)) '("P-HIDN" "P-COLD"))
(check "far above" (caar (ends e)) '(0.0 0.0 100000.0))

(vq_plumb-setPipeBreaks e 3.0 '("run" 50.0))
(check "a gap shows in twins too" (length (picture e)) 4)
(vq_plumb-setPipeInfo e '("TICKWIDTH" 4.0) '("TICKOFFSETHEAD" 2.0) '("ARCRADIUS" 6.0) '("ARCLIST" 1.5 0.0 -1)
                        '("ELBOWLIST" 5.0 0.7853981625))

;; What is exploded looks the same, piece by piece.
(setq shown (mapcar '(lambda (p) (cons (car p) (cddddr p))) (picture e))
      pieces (mapcar 'cdr (vq_plumb-explodePipe e)))
(defun start-of (piece / p)
  (setq p (car (vd-graphics piece)))
  (cons (car p) (if (= (car p) "arc") (list (nth 4 p) (nth 5 p)) (cddddr p))))
(check "the pieces are what was drawn"
       (mapcar 'start-of pieces)
       (mapcar '(lambda (p) (if (= (car p) "arc") (list (car p) (cadr p) (caddr p)) p)) shown))
(check "on their layers" (mapcar '(lambda (x) (cdr (assoc 8 (entget x)))) pieces) (mapcar 'cadr (picture e)))
(check "the pipe stays" (cdr (assoc 0 (entget e))) "VQPLUMBPIPE")

;; To the host's curves a pipe is its line.
(setq f (vq_plumb-insertPipe 2 '(0 0 0) '(3 0 4)))
(check "length in space" (vlax-curve-getEndParam f) 5.0)
(check "point at a distance" (vlax-curve-getPointAtDist f 2.5) '(1.5 0.0 2.0))
(setq g (vq_plumb-insertPipe 3 '(0 0 0) '(9 0 0)))
(command "LINE" '(2 -5 0) '(2 5 0) "")
(defun crossing (a b) (vlax-invoke (vlax-ename->vla-object a) 'IntersectWith (vlax-ename->vla-object b) 0))
(check "a crossing, and the other way round"
       (list (crossing g (entlast)) (crossing (entlast) g))
       '((2.0 0.0 0.0) (2.0 0.0 0.0)))

;; Grips are at elevation 0, in plan.
(setq h (vq_plumb-insertPipe 4 '(0 0 7) '(10 0 9)))
(check "grips" (vd-grips h) '((5.0 0.0 0.0) (0.0 0.0 0.0) (10.0 0.0 0.0)))
(vd-move-grips h '(0 1) '(1.0 2.0 3.0))
(check "each end moves once" (list (cdr (assoc 10 (entget h))) (cdr (assoc 11 (entget h)))) '((1.0 2.0 7.0) (11.0 2.0 9.0)))
(check "snaps are the true ends" (vd-osnap h "mid" '(0 0 0) '(0 0 0)) '((6.0 2.0 8.0)))

(check-finish)
