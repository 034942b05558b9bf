;;; Wrong arguments cost an error message, and wrong answers a complaint; the host goes on.

(load "lib/check")
(setvar "CMDECHO" 0)

(command "LINE" '(0 0) '(10 0) "")
(setq e (entlast)  here (car (vd-documents)))
(vd-new)
(command "LINE" '(0 0) '(1 1) "")
(setq gone (entlast))
(vd-close (car (vd-documents)))
(vd-activate here)
(setq erased (progn (command "CIRCLE" '(0 0) 1) (entlast)))
(entdel erased)
(setq set (ssadd e))

(setq junk (list nil 0 -1 2147483647 1e300 "" "X" "no such thing" '(1 2) '(1 2 3) '(1 . 2) '((0 . "LINE")) '((nil))
                 '(("a" . "b")) (list e) e gone erased set 'car (vlax-ename->vla-object e)))

(setq functions
  '(entget entmod entmake entmakex entupd entdel entnext handent ssget ssadd ssdel sslength ssname ssmemb ssnamex
    sssetfirst tblsearch tblnext tblobjname regapp dictsearch dictadd dictremove trans getvar setvar redraw osnap
    getpoint getcorner getdist getangle getorient getreal getint getstring getkword entsel nentsel initget
    vlax-curve-getStartParam vlax-curve-getPointAtParam vlax-curve-getParamAtPoint vlax-curve-getDistAtParam
    vlax-curve-getClosestPointTo vlax-curve-getClosestPointToProjection vlax-ename->vla-object
    vlax-vla-object->ename vlax-invoke arxload arxunload vd-graphics vd-extents vd-extend vd-transform vd-grips
    vd-move-grips vd-stretch-points vd-move-stretch-points vd-osnap vd-record vd-from-record vd-text-size vd-capture
    vd-open vd-activate vd-close command vl-cmdf command-s))

;; Every function with every value alone, in pairs with an entity, and with all values at once.
(setq calls 0)
(defun try (f args) (vl-catch-all-apply f args) (command) (setq calls (1+ calls)))
(setq said
  (vd-capture
    '(lambda ()
       (foreach f functions
         (try f nil)
         (foreach value junk
           (if (not (and (= f 'vd-close) (= (type value) 'STR)))
             (progn
               (try f (list value))
               (try f (list e value))
               (try f (list value e))
               (try f (list "W" value value))
               (try f (list e value value value)))))
         (try f junk)))))
(check "all of them came back" calls (+ (* (length functions) 2) (* 5 (- (* (length functions) (length junk)) 3))))
(check "the drawing is still there" (list (null (vd-documents)) (null (entlast))) '(nil nil))

;; Every command with every value as each of its answers.
(setq said
  (vd-capture
    '(lambda ()
       (foreach name '("LINE" "CIRCLE" "ARC" "PLINE" "ERASE" "MOVE" "COPY" "ROTATE" "SCALE" "MIRROR" "EXPLODE" "LIST"
                       "LAYER" "STYLE" "LINETYPE" "UCS" "ZOOM" "REGEN" "SETVAR" "LTSCALE" "PLOT")
         (foreach value junk
           (try 'command (list name value))
           (try 'command (list name value value value))
           (try 'command (list name e "" value value value))
           (try 'command (list name '(1 2) value '(3 4) value "")))))))
(command "UCS" "W")
(check "nothing waits" (getvar "CMDACTIVE") 0)
(check "and the next command works"
       (progn (command "LINE" '(5 5) '(6 6) "") (cdr (assoc 10 (entget (entlast))))) '(5.0 5.0 0.0))

(check-finish)
