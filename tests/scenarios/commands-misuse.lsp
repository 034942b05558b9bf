;;; Wrong answers to a command cost a complaint; the host goes on.

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

(defun try (f args) (vl-catch-all-apply f args) (command))

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
