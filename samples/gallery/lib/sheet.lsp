;;; What the pictures share: layers, pipes in a row of keys, and small notes. Units are inches.

(setvar "CMDECHO" 0)
(foreach row '(("P-COLD" "5" "Continuous" "0.5") ("P-HOT" "1" "Continuous" "0.5") ("P-SANR" "94" "Continuous" "0.7")
               ("P-TEXT" "7" "Continuous" "0.25") ("X-NOTE" "8" "Continuous" "0.18") ("X-SHEET" "254" "Continuous" "0.18"))
  (command "LAYER" "M" (car row) "C" (cadr row) (car row) "LT" (caddr row) (car row) "LW" (cadddr row) (car row) ""))

;; A pipe on a layer between two points, with any keys of vq_plumb-setPipeInfo. Gives its name.
(defun gallery-pipe (layer p1 p2 keys / pipe)
  (setvar "CLAYER" layer)
  (setq pipe (vq_plumb-insertPipe 0 p1 p2))
  (apply 'vq_plumb-setPipeInfo (cons pipe keys))
  pipe)

;; Keys for a label in the line.
(defun gallery-label (text height spacing)
  (list (list "TEXT" text) (list "TEXTHEIGHT" height) (list "TEXTSTYLE" "Standard") (list "TEXTLAYER" "P-TEXT")
        (list "TEXTDISTANCE" spacing)))

;; A note, centred at x, y.
(defun gallery-note (x y text)
  (entmake (list '(0 . "MTEXT") '(100 . "AcDbEntity") '(8 . "X-NOTE") '(100 . "AcDbMText") (list 10 x y 0.0)
                 '(40 . 3.0) '(41 . 0.0) '(71 . 5) (cons 1 text) '(7 . "Standard"))))

(defun gallery-line (p1 p2)
  (setvar "CLAYER" "X-NOTE")
  (command "LINE" p1 p2 ""))

;; A frame around the picture, from corner to corner.
(defun gallery-frame (x1 y1 x2 y2)
  (setvar "CLAYER" "X-SHEET")
  (command "PLINE" (list x1 y1) (list x2 y1) (list x2 y2) (list x1 y2) "C"))
