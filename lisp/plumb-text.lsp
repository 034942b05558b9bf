;;; Texts that people read: numbers, lengths in feet and inches, labels of pipes.
;;;
;;; A label is the format of its pipe type and layer system, with values in place of the variables:
;;;   $SIZE           the label of the size
;;;   $FLOW           what the pipe carries, each category with its prefix and suffix
;;;   $TOTALFLOW      all of that in the base category
;;;   $SECTIONLENGTH  the length of the pipe
;;;   $TOTALLENGTH    the length from the source to the farthest fixture behind the pipe
;;;   $MAXZ           the elevation of the highest of these fixtures
;;; ROW is a row of tblPipe, as plumb-db-row gives it.

(defun plumb-of (row column)
  (cdr (assoc column row)))

(defun plumb-real-of (row column / value)
  (if (setq value (plumb-of row column)) (float value) 0.0))

;; An id as SQL writes it, 0 for none.
(defun plumb-id-of (row column / id)
  (itoa (if (setq id (plumb-of row column)) id 0)))

;; A number without trailing zeros, whatever the drawing's DIMZIN is. What vanishes at that precision, and is not 0,
;; keeps its zeros: 0.0000.
(defun plumb-decimal-text (value places / text)
  (setq text (rtos (abs (float value)) 2 places))
  (if (vl-string-search "." text)
    (setq text (vl-string-right-trim "." (vl-string-right-trim "0" text))))
  (cond ((zerop value) "0")
        ((zerop (atof text)) (strcat "0." (substr "0000000000" 1 places)))
        (T (strcat (if (minusp value) "-" "") (if (= (substr text 1 1) ".") "0" "") text))))

;; Inches as the dialogs show them: 66.25 is 5-6.25, -18 is -1-6.
(defun plumb-feet-text (inches / size feet)
  (setq size (abs (float inches))
        feet (fix (/ (fix size) 12)))
  (strcat (if (minusp inches) "-" "") (rtos feet 2 0) "-" (plumb-decimal-text (- size (* 12.0 feet)) 4)))

;; What such a text means, in inches.
(defun plumb-feet-inches (text / size dash)
  (setq size   (vl-string-left-trim "-" text)
        dash   (vl-string-search "-" size))
  (* (if (= size text) 1.0 -1.0)
     (+ (* 12.0 (atof (substr size 1 dash))) (atof (substr size (+ dash 2))))))

;; With every OLD replaced.
(defun plumb-text-replace (new old text / from at)
  (setq from 0)
  (while (setq at (vl-string-search old text from))
    (setq text (strcat (substr text 1 at) new (substr text (+ at (strlen old) 1)))
          from (+ at (strlen new))))
  text)

;; An empty text is stored as one blank.
(defun plumb-stored-text (text)
  (if (or (null text) (= text " ")) "" text))

(setq plumb-label-variables
  '(("$SIZE"          . plumb-label-size)
    ("$FLOW"          . plumb-label-flow)
    ("$TOTALFLOW"     . plumb-label-total-flow)
    ("$SECTIONLENGTH" . plumb-label-section-length)
    ("$TOTALLENGTH"   . plumb-label-total-length)
    ("$MAXZ"          . plumb-label-highest)))

(defun plumb-label-size (db row)
  (plumb-stored-text
    (plumb-db-value db (strcat "select sLabel from tblPipeSize where ixPipeSize = " (plumb-id-of row "ixPipeSize")))))

;; 54.5 GPM
(defun plumb-label-amount (value category)
  (strcat (plumb-stored-text (plumb-of category "sLabelPrefix")) (plumb-decimal-text value 2)
          (plumb-stored-text (plumb-of category "sLabelSuffix"))))

(defun plumb-label-flow (db row)
  (plumb-db-join
    (mapcar '(lambda (sum) (plumb-label-amount (plumb-of sum "dValue") sum))
            (vl-remove-if '(lambda (sum) (zerop (plumb-of sum "dValue")))
                          (plumb-flow-sums db (plumb-of row "ixPipe") (plumb-of row "ixPipeType"))))
    ", "))

(defun plumb-label-total-flow (db row)
  (plumb-label-amount
    (car (plumb-flow-measure db (plumb-of row "ixPipe") (plumb-of row "ixPipeType")))
    (plumb-db-row db (strcat "select sLabelPrefix, sLabelSuffix from tblPipeSumCategory where ixPipeType = "
                             (plumb-id-of row "ixPipeType") " order by iOrder, ixPipeSumCategory limit 1"))))

(defun plumb-label-section-length (db row)
  (plumb-feet-text (plumb-pipe-length row)))

(defun plumb-label-total-length (db row)
  (plumb-feet-text (+ (plumb-real-of row "dDistanceFromSource") (plumb-real-of row "dDistanceToFarthestFixture"))))

(defun plumb-label-highest (db row)
  (plumb-feet-text (plumb-real-of row "dMaxFixtureZ")))

(defun plumb-pipe-end (row number)
  (mapcar '(lambda (axis) (plumb-real-of row (strcat axis number))) '("dX" "dY" "dZ")))

(defun plumb-pipe-length (row)
  (distance (plumb-pipe-end row "1") (plumb-pipe-end row "2")))

;; The format of a pipe, "" without one. In isometric views a blank one means that of the plan.
(defun plumb-label-format (db row isometric / formats)
  (setq formats (plumb-db-row db
                  (strcat "select sLabelFormat, sLabelFormatIsometric from tblPipeLabel where ixPipeType = "
                          (plumb-id-of row "ixPipeType") " and ixLayerSystem = "
                          (plumb-id-of row "ixLayerSystem"))))
  (if (and isometric (/= (plumb-stored-text (plumb-of formats "sLabelFormatIsometric")) ""))
    (plumb-of formats "sLabelFormatIsometric")
    (plumb-stored-text (plumb-of formats "sLabelFormat"))))

;; Values are only looked up for variables that the format has.
(defun plumb-label-text (db row isometric / text)
  (setq text (plumb-label-format db row isometric))
  (foreach variable plumb-label-variables
    (if (vl-string-search (car variable) text)
      (setq text (plumb-text-replace (apply (cdr variable) (list db row)) (car variable) text))))
  text)

;; Whether a text looks like one made by a format, whatever the values were.
(defun plumb-label-fits (text format)
  (foreach sign '("`" "#" "@" "." "*" "?" "~" "[" "]" "-" ",")
    (setq format (plumb-text-replace (strcat "`" sign) sign format)))
  (foreach variable plumb-label-variables
    (setq format (plumb-text-replace "*" (car variable) format)))
  (wcmatch text format))
