;;; Arrows and the hangers that they carry.

(load "lib/check")
(setvar "CMDECHO" 0)

(defun picture (e) (mapcar '(lambda (p) (cons (car p) (cddddr p))) (vd-graphics e)))
(defun line-of (p q) (list "polyline" p q))
(defun arrow (p q tail head reverse) (vq_plumb-insertPipeArrow p q tail head reverse))
(setq wing 0.39269908125)

(setq e (arrow '(0 0 0) '(100 0 0) 0.0 3 nil))
(check "class" (cdr (assoc 0 (entget e))) "VQPLUMBPIPEARROW")
(check "wings go back from the head, first the right-hand one"
       (picture e)
       (list (line-of '(97.0 0.0 0.0) (list (- 97 (* 12 (cos wing))) (* 12 (sin wing)) 0.0))
             (line-of '(97.0 0.0 0.0) (list (- 97 (* 12 (cos wing))) (- (* 12 (sin wing))) 0.0))))
(vq_plumb-setPipeArrowInfo e '("REVERSEARROWS" T) '("TAILOFFSET" 2.0) '("ARROWLENGTH" 4.0) '("NOSUCHKEY" 1) '("ixPipe" 7))
(check "against the run, from the tail"
       (picture e)
       (list (line-of '(2.0 0.0 0.0) (list (+ 2 (* 4 (cos wing))) (- (* 4 (sin wing))) 0.0))
             (line-of '(2.0 0.0 0.0) (list (+ 2 (* 4 (cos wing))) (* 4 (sin wing)) 0.0))))
(check "its row" (cdr (assoc 90 (entget e))) 7)

;; The wings are as long as is stored, or half a run that is shorter.
(defun wing-length (run / p)
  (setq p (car (picture (arrow '(0 0 0) (list run 0 0) 0.0 0.0 nil))))
  (distance (cadr p) (caddr p)))
(check "half of a short run" (wing-length 10.0) 5.0)
(check "a run as long as the wings" (wing-length 12.0) 12.0)
(check "two ends above each other: a line and no more"
       (progn (setq post (arrow '(1 2 3) '(1 2 9) 0.0 0.0 nil))
              (vq_plumb-setPipeArrowInfo post '("HANGERDIST" 0.0))
              (picture post))
       (list (line-of '(1.0 2.0 3.0) '(1.0 2.0 9.0))))

;; Hangers: a mark across the run, a cross for a negative distance, none past the end.
(setq h (arrow '(0 0 0) '(100 0 10) 0.0 0.0 nil))
(vq_plumb-setPipeArrowInfo h '("HANGERDIST" 50 "x" -20.0 100.0 0 99.9))
(check "all are kept, signs too" (vq_plumb-pipe-getHangerList h)
       '(("d" . 50.0) ("d" . -20.0) ("d" . 100.0) ("d" . 0.0) ("d" . 99.9)))
(setq marks (cddr (picture h)))
(check "as many lines" (length marks) 5)
(check "a mark on the slope" (car marks) (line-of '(50.0 3.0 5.0) '(50.0 -3.0 5.0)))
(check "a narrow cross" (list (cadr marks) (caddr marks))
       (list (line-of '(20.3 3.0 2.0) '(19.7 -3.0 2.0)) (line-of '(19.7 3.0 2.0) '(20.3 -3.0 2.0))))
(check "a mark at the start" (nth 3 marks) (line-of '(0.0 3.0 0.0) '(0.0 -3.0 0.0)))
(check "snaps" (vd-osnap h "end" '(0 0) '(0 0)) '((50.0 0.0 5.0) (20.0 0.0 2.0) (0.0 0.0 0.0) (99.9 0.0 9.99)))
(check "in two modes" (equal (vd-osnap h "mid" '(0 0) '(0 0)) (vd-osnap h "end" '(0 0) '(0 0))) T)
(check "and no other" (vd-osnap h "near" '(0 0) '(0 0)) 3)
(vq_plumb-setPipeArrowInfo h '("P2" (30.0 0.0 3.0)))
(check "a shorter run shows fewer" (length (picture h)) 5)
(vq_plumb-setPipeArrowInfo h '("P2" (100.0 0.0 10.0)))
(check "and gets them back" (length (picture h)) 7)
(vq_plumb-setPipeArrowInfo h '("HANGERDIST"))
(check "an empty list" (vq_plumb-pipe-getHangerList h) nil)

;; Record and groups.
(setq items (vd-record e))
(check "the record" items
       '(("Int32" . 3) ("Point3d" 0.0 0.0 0.0) ("Point3d" 100.0 0.0 0.0) ("Double" . 4.0) ("Double" . 2.0)
         ("Double" . 3.0) ("Int32" . 7) ("Int32" . 0) ("Bool" . T)))
(check "comes back" (vd-record (vd-from-record "PlumbPipeArrow" items)) items)
(setq old (vd-from-record "PlumbPipeArrow" '(("Int32" . 1) ("Point3d" 0.0 0.0 0.0) ("Point3d" 9.0 0.0 1.0) ("Int32" . 5))))
(check "version 1" (cdr (vd-record old))
       '(("Point3d" 0.0 0.0 0.0) ("Point3d" 9.0 0.0 1.0) ("Double" . 12.0) ("Double" . 0.0) ("Double" . 0.0)
         ("Int32" . 5) ("Int32" . 0) ("Bool")))
(check "version 2 has no direction"
       (last (vd-record (vd-from-record "PlumbPipeArrow" (cons '(  "Int32" . 2) (reverse (cdr (reverse (cdr items))))))))
       '("Bool"))
(check "a newer one is not read" (vd-from-record "PlumbPipeArrow" '(("Int32" . 4))) 301)
(check "one that is cut off" (type (vd-from-record "PlumbPipeArrow" '(("Int32" . 3)))) 'INT)
(setq many nil)
(repeat 150 (setq many (cons 1.0 many)))
(vq_plumb-setPipeArrowInfo h (cons "HANGERDIST" many))
(check "the record takes a hundred hangers" (length (vd-record h)) 109)

(setq data (entget e))
(entmod (subst '(10 1.0 2.0 3.0) (assoc 10 data) (subst '(41 . 9.0) (assoc 41 data) data)))
(check "entmod moves the ends and nothing else"
       (mapcar '(lambda (code) (cdr (assoc code (entget e)))) '(10 11 41 42 90))
       '((1.0 2.0 3.0) (100.0 0.0 0.0) 2.0 3.0 7))
(command "MOVE" e "" '(0 0 0) '(1 1 1))
(check "a move keeps nothing back" (vd-extents e) '((2.0 1.0 1.0) (101.0 3.0 4.0)))
(command "EXPLODE" e "")
(check "it does not explode" (cdr (assoc 0 (entget e))) "VQPLUMBPIPEARROW")

;; Wrong arguments.
(defun said-of (f args) (vl-catch-all-error-message (vl-catch-all-apply f args)))
(check "an insertion that lacks its flag" (said-of 'vq_plumb-insertPipeArrow '((0 0) (1 1) 0.0 0.0)) "ADS request error")
(check "no name" (said-of 'vq_plumb-setPipeArrowInfo '(5)) "ADS request error")
(check "a pipe is no arrow" (vq_plumb-pipe-getHangerList (vq_plumb-insertPipe 1 '(0 0 0) '(1 0 0))) nil)
(setq endless (* 1e308 10))
(vq_plumb-setPipeArrowInfo e (list "ARROWLENGTH" (- endless endless)) (list "HANGERDIST" (- endless endless) endless))
(check "sizes that are no numbers show nothing" (picture e) nil)
(vq_plumb-setPipeArrowInfo e '("ARROWLENGTH" -4.0) '("HANGERDIST" 10.0))
(check "a negative length turns the arrow round" (length (picture e)) 3)

;; Without the module they are what they last looked like.
(vq_plumb-setPipeArrowInfo e '("ARROWLENGTH" 4.0))
(setq looks (picture e))
(arxunload "vq_plumb")
(check "a proxy shows it" (list (picture e) (cdr (assoc 0 (entget e)))) (list looks "ACAD_PROXY_ENTITY"))
(arxload "vq_plumb")
(check "and it comes back" (cdr (assoc 0 (entget e))) "VQPLUMBPIPEARROW")

(check-finish)
