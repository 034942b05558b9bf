;;; A pipe's record: what is filed, how it comes back, and what older records become.

(load "lib/check")

(setq e (vq_plumb-insertPipe 12 '(0 0 10) '(100 0 10) 4.5))
(vq_plumb-setPipeInfo e '("ELBOWLIST" 5.0 0.5) '("TEXT" "CW") '("TEXTHEIGHT" 3.0) '("TICKOFFSETHEAD" 1.0)
                        '("TICKOFFSETTAIL" 2.0) '("PTRAPWIDTH" 12.0))
(vq_plumb-setPipeBreaks e 3.5 '("run" 20.0 40.0))

(defun types (items) (mapcar 'car items))
(defun tail (items n) (repeat n (setq items (cdr items))))

(setq items (vd-record e))
(check "version and ends" (list (nth 0 items) (nth 1 items) (nth 2 items) (nth 3 items))
       '(("Int32" . 13) ("Point3d" 0.0 0.0 10.0) ("Point3d" 100.0 0.0 10.0) ("Int32" . 12)))
(check "length with one elbow, two breaks and no references" (length items) 53)
(check "the label's text is one item" (length (vl-remove-if-not '(lambda (i) (= (car i) "Object")) items)) 1)

(setq copy (vd-from-record "PlumbPipe" items))
(check "it comes back as it was" (vd-record copy) items)
(check "and looks the same" (mapcar 'cddddr (vd-graphics copy)) (mapcar 'cddddr (vd-graphics e)))

(defun with-version (n) (cons (cons "Int32" n) (cdr items)))
(check "a newer record is not read" (vd-from-record "PlumbPipe" (with-version 14)) 301)
(check "an unknown one leaves a fresh pipe"
       (cdr (assoc 11 (entget (vd-from-record "PlumbPipe" (list (cons "Int32" 5))))))
       '(0.0 0.0 0.0))
(check "a record that is cut off is a failing status"
       (type (vd-from-record "PlumbPipe" (list (car items) (cadr items))))
       'INT)

;; Version 12 has one offset for both ticks: the second of two items in a row goes.
(setq at 0)
(while (not (and (equal (nth at items) '("Double" . 1.0)) (equal (nth (1+ at) items) '("Double" . 2.0))))
  (setq at (1+ at)))
(setq old nil  i -1)
(foreach item (with-version 12)
  (if (/= (setq i (1+ i)) (1+ at)) (setq old (cons item old))))
(setq older (vd-from-record "PlumbPipe" (reverse old)))
(check "both ticks take it" (list (nth at (vd-record older)) (nth (1+ at) (vd-record older)))
       '(("Double" . 1.0) ("Double" . 1.0)))

(check-finish)
