;;; Pipes as a script makes, reads and changes them.

(load "lib/check")

(defun groups (e codes) (mapcar '(lambda (c) (cdr (assoc c (entget e)))) codes))

(setq e (vq_plumb-insertPipe 12 '(0 0 10) '(100 0 4)))
(check "an entity of its own class" (groups e '(0 8 90)) '("VQPLUMBPIPE" "0" 12))
(check "a slope is drawn flat with a drop at its head"
       (mapcar '(lambda (p) (cdr (cdddr p))) (vd-graphics e))
       '(((0.0 0.0 10.0) (100.0 0.0 10.0)) ((100.0 0.0 10.0) (100.0 0.0 4.0))))
(vq_plumb-setPipeInfo e '("ISOMETRIC" T))
(check "an isometric pipe has no drop" (length (vd-graphics e)) 1)

(check "too few arguments are told"
       (vl-catch-all-error-message (vl-catch-all-apply 'vq_plumb-insertPipe '(1)))
       "ADS request error")
(check "on the command line"
       (vd-capture '(lambda () (vl-catch-all-apply 'vq_plumb-insertPipe '(1))))
       "\nWrong type of arguments passed.\n")

;; The host's commands move it in plan.
(command "MOVE" e "" '(0 0 0) '(1 1 1))
(check "a move keeps elevations" (groups e '(10 11)) '((1.0 1.0 10.0) (101.0 1.0 4.0)))
(command "ROTATE" e "" '(1 1 0) 90)
(check "a turn too" (vd-extents e) '((1.0 1.0 4.0) (1.0 101.0 10.0)))
(check "a parameter of 0 moves the end" (progn (vd-extend e 0.0) (distance (cdr (assoc 10 (entget e))) (cdr (assoc 11 (entget e))))) 6.0)
(setq before (length (vd-graphics e)))
(check "it does not explode by the host's command"
       (progn (command "EXPLODE" e "") (cdr (assoc 0 (entget e))))
       "VQPLUMBPIPE")

;; A copy keeps its row of the project's table.
(command "COPY" e "" '(0 0 0) '(50 0 0))
(check "a copy keeps its id" (groups (entlast) '(0 90)) '("VQPLUMBPIPE" 12))

(check-finish)
