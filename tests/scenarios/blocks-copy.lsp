;;; Blocks and entities between drawings: WBLOCK, INSERT of files. Layers come along, names that are there win.

(load "lib/check.lsp")
(setvar "CMDECHO" 0)

(defun dxf (code e) (cdr (assoc code (entget e))))
(command "LAYER" "M" "WATER" "C" "5" "WATER" "S" "0" "")
(setq pipe (vq_plumb-insertPipe 7 '(10 20 96) '(110 20 96)))
(setq data (entget pipe))
(entmod (subst '(8 . "WATER") (assoc 8 data) data))
(command "TEXT" '(10 25) 2 0 "cold")
(command "WBLOCK" "part" "" '(10 20) pipe (entlast) "")
(check "what was written stays" (dxf 0 pipe) "VQPLUMBPIPE")

(vd-new)
(command "LAYER" "M" "WATER" "C" "1" "WATER" "S" "0" "")
(command "INSERT" "./part" '(5 5) 2 2 0)
(check "the file's name is the block's" (dxf 2 (entlast)) "part")
(check "placed and doubled" (cddddr (car (vd-graphics (entlast)))) '((5.0 5.0 192.0) (205.0 5.0 192.0)))
(check "the layer of this drawing counts" (cdr (assoc 62 (tblsearch "LAYER" "WATER"))) 1)
(setq inside (entnext (tblobjname "BLOCK" "part")))
(check "the pipe in the block" (list (dxf 0 inside) (dxf 8 inside) (dxf 10 inside)) '("VQPLUMBPIPE" "WATER" (0.0 0.0 96.0)))
(check "and behind it the text" (dxf 1 (entnext inside)) "cold")

;; name=file defines the block anew, the name alone does not look at the file.
(command "LINE" '(0 0) '(1 0) "")
(command "WBLOCK" "part" "" '(0 0) (entlast) "")
(command "INSERT" "part" '(0 0) 1 1 0)
(check "still the pipe" (length (vd-graphics (entlast))) 2)
(command "INSERT" "part=" '(0 0) 1 1 0)
(check "now the line" (mapcar 'car (vd-graphics (entlast))) '("polyline"))
(command "INSERT" "again=part" '(0 0) 1 1 0)
(check "under another name" (dxf 2 (entlast)) "again")

;; A block as a drawing of its own, base point at the origin; the whole drawing.
(command "LINE" '(3 4) '(13 4) "")
(command "BLOCK" "bar" '(3 4) (entlast) "")
(command "WBLOCK" "bar" "=")
(command "WBLOCK" "all" "*")
(vd-open "bar.vqd")
(check "its lines from the base on" (mapcar '(lambda (c) (dxf c (entlast))) '(10 11)) '((0.0 0.0 0.0) (10.0 0.0 0.0)))
(vd-close "bar.vqd")
(vd-open "all.vqd")
(check "the whole has its blocks" (not (not (tblsearch "BLOCK" "bar"))) t)
(vd-close "all.vqd")

;; From one drawing into another: by the clipboard, with what the copies refer to.
(command "LAYER" "M" "GAS" "C" "3" "GAS" "M" "RISERS" "C" "4" "RISERS" "S" "0" "")
(setq here (car (vd-documents))  pipe (vq_plumb-insertPipe 9 '(1 2 30) '(1 8 40)))
(entmod (subst '(8 . "GAS") (assoc 8 (entget pipe)) (entget pipe)))
(vq_plumb-setPipeInfo pipe '("HIDDENLAYER" "RISERS"))
(setq record (vd-record pipe))
(command "COPYBASE" '(1 2) pipe "")
(vd-new)
(command "LAYER" "M" "GAS" "C" "6" "GAS" "S" "0" "")
(command "PASTECLIP" '(101 52))
(check "pasted by the base point" (list (dxf 8 (entlast)) (dxf 10 (entlast)) (dxf 11 (entlast)))
       '("GAS" (101.0 52.0 30.0) (101.0 58.0 40.0)))
(check "the layer that was there counts, the other comes along"
       (mapcar '(lambda (n) (cdr (assoc 62 (tblsearch "LAYER" n)))) '("GAS" "RISERS")) '(6 4))
(command "U")
(check "taken back in one" (entlast) nil)
(command "PASTEORIG")
(defun named (record) (mapcar '(lambda (i) (if (= (car i) "HardPointer") (if (cdr i) (dxf 2 (cdr i))) i)) record))
(setq pasted (named (vd-record (entlast))))
(vd-activate here)
(check "the same record, by the names of what it points at" (equal pasted (named record)) t)

;; What fails says why, and changes nothing.
(setq before (entlast))
(check "no such file" (vd-capture '(lambda () (command "INSERT" "nowhere")))
       "Block \"nowhere\" not found, neither here nor as a file.\n")
(vd-save-as "open")
(check "an open drawing is not overwritten"
       (wcmatch (vd-capture '(lambda () (command "WBLOCK" "open"))) "*open.vqd is open.\n") t)
(check "nothing came" (equal before (entlast)) t)

(check-finish)
