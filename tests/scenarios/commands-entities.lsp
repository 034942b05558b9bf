;;; Entity data, selection filters, curves, records and what else scripts ask of drawings.

(load "lib/check")
(setvar "CMDECHO" 0)

(defun dxf (code e) (cdr (assoc code (entget e))))
(defun line (a b) (command "LINE" a b "") (entlast))

;; entget, entmod
(setq e (line '(0 0) '(10 0)))
(check "what is at its default is left out"
       (mapcar '(lambda (c) (assoc c (entget e))) '(6 62 48 60 370)) '(nil nil nil nil nil))
(check "type, layer and markers" (list (dxf 0 e) (dxf 8 e) (assoc 100 (entget e)))
       '("LINE" "0" (100 . "AcDbEntity")))
(setq data (entget e))
(check "entmod gives its list" (equal (setq data (subst '(11 3.0 4.0 5.0) (assoc 11 data) data)) (entmod data)) T)
(check "and changes in place" (dxf 11 e) '(3.0 4.0 5.0))
(entmod (append (entget e) '((62 . 1))))
(check "a group that was not there" (dxf 62 e) 1)
(entmod (append (vl-remove (assoc 8 (entget e)) (entget e)) '((8 . "NEWLAYER"))))
(check "a layer that was not there" (list (dxf 8 e) (null (tblsearch "LAYER" "NEWLAYER"))) '("NEWLAYER" nil))
(check "a linetype that is not there is refused" (entmod (append (entget e) '((6 . "NOWHERE")))) nil)
(check-error "a list without a name" '(entmod '((0 . "LINE"))) "bad argument type*")
(check-error "a group that cannot be" '(entmod (list (cons -1 e) '(10 . "here"))) "bad DXF group*")

;; entmake
(check "entmake gives the list" (cdr (assoc 0 (entmake '((0 . "CIRCLE") (10 1 2 3) (40 . 5))))) "CIRCLE")
(check "whole numbers are reals where reals belong" (list (dxf 10 (entlast)) (dxf 40 (entlast))) '((1.0 2.0 3.0) 5.0))
(setq made (entmakex '((0 . "LINE") (8 . "MADE") (62 . 3) (10 0 0 0) (11 0 9 0))))
(check "entmakex gives the name" (list (dxf 8 made) (dxf 11 made)) '("MADE" (0.0 9.0 0.0)))
(check "what there is no class for" (entmake '((0 . "NONSUCH") (10 0 0 0))) nil)
(entmake '((0 . "LAYER") (100 . "AcDbSymbolTableRecord") (100 . "AcDbLayerTableRecord") (2 . "BYLIST") (70 . 0) (62 . 4)))
(check "table records too" (cdr (assoc 62 (tblsearch "LAYER" "BYLIST"))) 4)
(entmake '((0 . "POLYLINE") (66 . 1) (70 . 1)))
(foreach p '((0 0 0) (4 0 0) (4 3 0)) (entmake (list '(0 . "VERTEX") (cons 10 p))))
(entmake '((0 . "SEQEND")))
(check "a polyline from its vertices" (vlax-curve-getDistAtParam (entlast) (vlax-curve-getEndParam (entlast))) 12.0)

;; Names
(check "entdel erases and brings back"
       (progn (entdel e) (list (entget e) (equal (entdel e) e) (dxf 0 e))) '(nil T "LINE"))
(check "handent" (equal (handent (dxf 5 e)) e) T)
(check "no such handle" (list (handent "FFFFFF") (handent "")) '(nil nil))
(check "entnext walks in order"
       (progn (setq n 0 x nil) (while (setq x (if x (entnext x) (entnext))) (setq n (1+ n))) n)
       (sslength (ssget "X")))
(foreach form '((entget 5) (entget nil) (entdel "x") (ssname 1 2) (sslength nil) (ssadd 5) (tblsearch "NOTABLE" "x")
                (tblnext) (ssget "Q") (ssget "X" '(5)) (ssget "X" '((-4 . "<OR") (0 . "LINE")))
                (ssget "X" '((-4 . "~") (40 . 1.0))) (getvar 7) (setvar "NOSUCH" 1) (trans '(0 0 0) 9 0)
                (vd-transform (entlast) '((1 2))) (vd-osnap (entlast) "blah" '(0 0 0) '(0 0 0))
                (vd-record 'x) (vlax-invoke 1 2) (initget "a" 3 4) (command-s "LINE" '(0 0)))
  (check-error (vl-prin1-to-string form) form "*"))
(check "unknown variable" (getvar "NOSUCH") nil)

;; Extended data
(check "regapp" (list (regapp "CHECKS") (regapp "checks")) '("CHECKS" nil))
(entmod (append (entget e) '((-3 ("CHECKS" (1000 . "text") (1070 . 7) (1010 1.0 2.0 3.0) (1040 . 2.5))))))
(check "is asked for by application"
       (list (assoc -3 (entget e)) (assoc -3 (entget e '("CHECKS"))))
       '(nil (-3 ("CHECKS" (1000 . "text") (1070 . 7) (1010 1.0 2.0 3.0) (1040 . 2.5)))))

;; Filters
(command "ERASE" "ALL" "" "CIRCLE" '(0 0) 1 "CIRCLE" '(10 0) 2 "CIRCLE" '(20 0) 3 "LINE" '(0 0) '(30 0) "")
(entmod (append (entget (entlast)) '((62 . 5) (-3 ("CHECKS" (1000 . "x"))))))
(foreach case
  '((((0 . "CIRCLE")) 3) (((0 . "CIR*,LINE")) 4) (((0 . "circle") (40 . 2.0)) 1) (((8 . "0")) 4) (((8 . "~0")) nil)
    (((62 . 5)) 1) (((62 . 256)) 3) (((410 . "Model")) 4) (((67 . 1)) nil) (((-3 ("CHECKS"))) 1)
    (((-4 . ">=") (40 . 2.0)) 2) (((-4 . "<>") (40 . 2.0)) 2)
    (((-4 . "<OR") (0 . "LINE") (-4 . "<AND") (0 . "CIRCLE") (-4 . "<") (40 . 2) (-4 . "AND>") (-4 . "OR>")) 2)
    (((-4 . "<NOT") (0 . "LINE") (-4 . "NOT>")) 3)
    (((-4 . "<XOR") (0 . "LINE") (62 . 5) (-4 . "XOR>")) nil)
    (((0 . "CIRCLE") (-4 . ">,*,*") (10 5.0 0.0 0.0)) 2))
  (check (vl-prin1-to-string (car case))
         ((lambda (s) (if s (sslength s))) (ssget "X" (car case))) (cadr case)))
(check "by window" (sslength (ssget "W" '(-3 -3) '(13 3))) 2)
(check "crossing, and a filter" (sslength (ssget "_C" '(-2 -2) '(13 3) '((0 . "LINE")))) 1)
(check "fence" (sslength (ssget "F" '((10 -5) (10 5)))) 2)
(check "previous and last" (list (sslength (ssget "P")) (equal (ssname (ssget "L") 0) (entlast))) '(2 T))
(setq s (ssadd) a (entlast))
(ssadd a s) (ssadd a s)
(check "sets hold each once" (list (sslength s) (equal (ssmemb a s) a) (ssname s 1) (ssname s -1)) '(1 T nil nil))
(ssdel a s)
(check "and let go" (list (sslength s) (ssdel a s) (type s)) '(0 nil PICKSET))

;; Curves
(setq e (line '(0 0 0) '(10 0 10)))
(check "a line's parameter is the distance"
       (list (vlax-curve-getEndParam e) (vlax-curve-getPointAtDist e (sqrt 50.0)) (vlax-curve-getDistAtPoint e '(5 0 5)))
       (list (sqrt 200.0) '(5.0 0.0 5.0) (sqrt 50.0)))
(check "closest point" (vlax-curve-getClosestPointTo (vlax-ename->vla-object e) '(0 5 10)) '(5.0 0.0 5.0))
(check "extended" (vlax-curve-getClosestPointTo e '(20 0 20) T) '(20.0 0.0 20.0))
(setq x (line '(5 -5 5) '(5 5 5)))
(check "intersection, flat" (vlax-invoke (vlax-ename->vla-object e) 'IntersectWith (vlax-ename->vla-object x) 0) '(5.0 0.0 5.0))
(check "objects know their entity" (equal (vlax-vla-object->ename (vlax-ename->vla-object x)) x) T)
(check-error "no curve" '(vlax-curve-getEndParam 5) "bad argument type*")

;; Pictures and records
(setq e (line '(0 0) '(10 0)))
(check "a line's picture" (vd-graphics e) '(("polyline" "0" "ByLayer" 256 (0.0 0.0 0.0) (10.0 0.0 0.0))))
(command "CIRCLE" '(1 2) 3)
(check "a circle's" (vd-graphics (entlast)) '(("circle" "0" "ByLayer" 256 (1.0 2.0 0.0) 3.0)))
(command "ARC" "C" '(0 0) '(2 0) '(0 2))
(check "an arc's" (vd-graphics (entlast))
       (list (list "arc" "0" "ByLayer" 256 '(0.0 0.0 0.0) 2.0 0.0 (/ pi 2) 1.0 '(2.0 0.0 0.0))))
(check "extents" (vd-extents e) '((0.0 0.0 0.0) (10.0 0.0 0.0)))
(setq copy (vd-from-record "AcDbLine" (vd-record e)))
(check "a record makes the same again" (list (equal copy e) (vd-graphics copy)) (list nil (vd-graphics e)))
(check "a record that ends too early gives its status" (type (vd-from-record "AcDbLine" nil)) 'INT)
(check-error "no such class" '(vd-from-record "Nothing" nil) "*no entity class*")
(check "transform" (list (vd-transform e '((1 0 0 5) (0 1 0 0) (0 0 1 0) (0 0 0 1))) (dxf 10 e)) '(T (5.0 0.0 0.0)))
(check "snap" (vd-osnap e "mid" '(6 0 0) '(0 0 0)) '((10.0 0.0 0.0)))
(check "wider texts take more room" (< (car (vd-text-size "Standard" 1.0 "ii")) (car (vd-text-size "Standard" 1.0 "iiii"))) T)

;; Documents and windows
(setq here (car (vd-documents)))
(check "a new drawing is in front" (list (vd-new) (cadr (vd-documents))) (list T here))
(check "back" (list (vd-activate here) (car (vd-documents))) (list T here))
(setq other (cadr (vd-documents)))
(vd-activate other)
(setq gone (line '(0 0) '(1 1)))
(vd-activate here)
(check "closing" (list (vd-close other) (vd-documents)) (list T (list here)))
(check-error "names of a closed drawing are wrong arguments" '(entget gone) "bad argument type: lentityp*")
(check "no such drawing" (vd-capture '(lambda () (vd-activate "nowhere.vqd")))
       "No open drawing is called \"nowhere.vqd\".\n")
(ui-log)
(ui-next '(lambda (w) (setq seen w) "OK"))
(alert "Mind the step")
(check "a message meets the queued function" (list (cdr (assoc "kind" seen)) (cdr (assoc "text" seen)))
       '("message" "Mind the step"))
(check "and is logged" (mapcar '(lambda (entry) (list (car entry) (caddr entry) (cadddr entry))) (ui-log))
       '(("message" "Mind the step" "OK")))
(ui-next '(lambda (w) (setq told (vl-catch-all-apply 'vd-new nil)) nil))
(alert "Busy")
(check "no drawing comes while a window is open" (list told (length (vd-documents))) '(nil 1))

;; Dictionaries
(setq x (entmakex '((0 . "XRECORD") (100 . "AcDbXrecord") (1 . "kept") (70 . 3))))
(check "dictadd" (type (dictadd (namedobjdict) "CHECKS" x)) 'ENAME)
(check "dictsearch" (cdr (assoc 1 (dictsearch (namedobjdict) "CHECKS"))) "kept")
(dictremove (namedobjdict) "CHECKS")
(check "removed" (dictsearch (namedobjdict) "CHECKS") nil)

(check-finish)
