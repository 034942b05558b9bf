;;; What pipes carry, and the sizes that carry it.
;;;
;;; tblPipeSum has two values for a flow category on a pipe. The calculated one is all that the pipe carries, what is
;;; entered at the pipe itself included; the fixed one is what is entered. So they are not added: the larger one counts,
;;; the fixed one where it was entered since the last calculation or where nothing is calculated.
;;;
;;; The base category of a pipe type is the one of lowest iOrder, and the unit of its sizing tables. A flow in another
;;; category converts to it by a multiplier or by its lookup table.

;; Ends of pipes that are nearer to each other than this, along each axis, are connected; as SQL writes it.
(setq plumb-flow-tolerance "0.001")

;; The values that count on a pipe, in the order of the categories. Without a type, those of the pipe's own.
(defun plumb-flow-sums (db pipe pipe-type)
  (plumb-db-select db
    (strcat "select c.ixPipeSumCategory as ixPipeSumCategory, c.iConversionType as iConversionType,"
            " c.dMultiplier as dMultiplier, c.sLabelPrefix as sLabelPrefix, c.sLabelSuffix as sLabelSuffix,"
            " max(s.dValue) as dValue,"
            " (select b.ixPipeSumCategory from tblPipeSumCategory b where b.ixPipeType = c.ixPipeType"
            " order by b.iOrder, b.ixPipeSumCategory limit 1) as ixBase"
            " from tblPipeSum s, tblPipeSumCategory c where c.ixPipeSumCategory = s.ixPipeSumCategory and s.ixPipe = "
            (itoa pipe) " and c.ixPipeType = "
            (if pipe-type
              (itoa pipe-type)
              (strcat "(select ixPipeType from tblPipe where ixPipe = " (itoa pipe) ")"))
            " group by c.ixPipeSumCategory order by c.iOrder, c.ixPipeSumCategory")))

(defun plumb-flow-by-lookup (sum)
  (and (= (plumb-of sum "iConversionType") 2)
       (/= (plumb-of sum "ixPipeSumCategory") (plumb-of sum "ixBase"))))

;; The points of all lookup tables that these sums need, by one query: lists of category, fixtures, flow and the bore
;; of the least size.
(defun plumb-flow-points (db sums / categories)
  (setq categories (mapcar '(lambda (sum) (itoa (plumb-of sum "ixPipeSumCategory")))
                           (vl-remove-if-not 'plumb-flow-by-lookup sums)))
  (if categories
    (mapcar
      '(lambda (point)
         (mapcar '(lambda (column) (plumb-of point column)) '("ixPipeSumCategory" "iFixtures" "dFlow" "dLeast")))
      (plumb-db-select db
        (strcat "select l.ixPipeSumCategory as ixPipeSumCategory, l.iFixtures as iFixtures, l.dFlow as dFlow,"
                " (select m.dInteriorDiameter from tblPipeSize m where m.ixPipeSize = l.ixPipeSizeMin) as dLeast"
                " from tblPipeFlowLookup l where l.ixPipeSumCategory in (" (plumb-db-join categories ", ")
                ") order by l.iFixtures, l.ixPipeFlowLookup")))))

;; The flow of a number of fixtures, on straight lines from point to point. The first line comes from (0, 0) unless
;; the table has a point there. Beyond the last point each fixture adds the flow of the row of -1 fixtures, 1 without such a row.
(defun plumb-flow-lookup (points fixtures / slope from x y flow)
  (setq fixtures (max 0.0 fixtures)
        slope    1.0
        from     '(0.0 0.0))
  (foreach point points
    (setq x (float (cadr point))
          y (float (caddr point)))
    (cond ((minusp x) (setq slope y))
          (T (if (and (null flow) (<= fixtures x))
               (setq flow (if (= x (car from))
                            y
                            (+ (cadr from) (/ (* (- fixtures (car from)) (- y (cadr from))) (- x (car from)))))))
             (setq from (list x y)))))
  (cond (flow)
        ((+ (cadr from) (* slope (- fixtures (car from)))))))

;; The bore that the lookup table asks for: a point's least size counts from its number of fixtures up to the next.
(defun plumb-flow-least (points fixtures / least)
  (foreach point points
    (if (<= 0 (cadr point) fixtures) (setq least (cadddr point))))
  (if least least 0.0))

;; What a pipe carries in its base category, and the least bore for that. Two queries at most.
(defun plumb-flow-measure (db pipe pipe-type / sums points of-category value flow least)
  (setq sums   (plumb-flow-sums db pipe pipe-type)
        points (plumb-flow-points db sums)
        flow   0.0
        least  0.0)
  (foreach sum sums
    (setq value (plumb-real-of sum "dValue"))
    (cond ((= (plumb-of sum "ixPipeSumCategory") (plumb-of sum "ixBase")) (setq flow (+ flow value)))
          ((plumb-flow-by-lookup sum)
           (setq of-category (vl-remove-if-not '(lambda (point) (= (car point) (plumb-of sum "ixPipeSumCategory")))
                                               points)
                 flow        (+ flow (plumb-flow-lookup of-category value))
                 least       (max least (plumb-flow-least of-category value))))
          ((setq flow (+ flow (* value (plumb-real-of sum "dMultiplier")))))))
  (list flow least))

;; SQL for: both pipes lie in the same area of the same drawing, so that their coordinates can be compared. It is what
;; an index knows, and keeps a search from going through all pipes of the project.
(defun plumb-flow-same-place (a b)
  (strcat a ".sDrawing = " b ".sDrawing and " a ".iAlignmentPointNumber = " b ".iAlignmentPointNumber"))

;; SQL for: end I of the pipe A is end J of the pipe B.
(defun plumb-flow-touch (a i b j)
  (strcat "("
          (plumb-db-join
            (mapcar '(lambda (axis)
                       (strcat "abs(" a axis i " - " b axis j ") < " plumb-flow-tolerance))
                    '(".dX" ".dY" ".dZ"))
            " and ")
          " and " (plumb-flow-same-place a b) ")"))

;; The pipe of a type that flows into this one: its riser, else one that ends where this begins, the widest of them.
;; The plus keeps the engine from going through all pipes of the type.
(defun plumb-flow-previous (db pipe pipe-type)
  (plumb-db-row db
    (strcat "select o.ixPipe as ixPipe, o.ixPipeSizingTable as ixPipeSizingTable from tblPipe o, tblPipe p"
            " where p.ixPipe = " (itoa pipe) " and o.ixPipe <> p.ixPipe and o.bDeleted = 0 and +o.ixPipeType = "
            (itoa pipe-type) " and (o.ixPipe = p.ixPipeRiserPrevious or " (plumb-flow-touch "o" "2" "p" "1")
            ") order by coalesce(o.ixPipe = p.ixPipeRiserPrevious, 0) desc, o.dSize desc, o.ixPipe limit 1")))

;; The sizing table of a pipe: its own, else the one of the pipes before it, else the first active one of the type;
;; nil when the type has none.
(defun plumb-flow-table (db row / pipe table seen)
  (setq pipe row)
  (while (and pipe (null table) (not (member (plumb-of pipe "ixPipe") seen)))
    (setq table (plumb-of pipe "ixPipeSizingTable"))
    (if (= table 0) (setq table nil))
    (setq seen (cons (plumb-of pipe "ixPipe") seen))
    (if (null table)
      (setq pipe (plumb-flow-previous db (plumb-of pipe "ixPipe") (plumb-of row "ixPipeType")))))
  (cond (table)
        ((plumb-db-value db
           (strcat "select ixPipeSizingTable from tblPipeSizingTable where bActive = -1 and ixPipeType = "
                   (plumb-id-of row "ixPipeType") " order by iSortOrder, ixPipeSizingTable limit 1")))))

;; A riser: its ends differ in elevation alone.
(defun plumb-pipe-vertical (row / p1 p2)
  (setq p1 (plumb-pipe-end row "1")
        p2 (plumb-pipe-end row "2"))
  (and (equal (car p1) (car p2) 1e-6)
       (equal (cadr p1) (cadr p2) 1e-6)
       (not (equal (caddr p1) (caddr p2) 1e-6))))

;; The enabled sizes of a sizing table from the smallest on, each with the flow that it carries.
(defun plumb-flow-sizes (db table vertical)
  (plumb-db-select db
    (strcat "select s.ixPipeSize as ixPipeSize, s.sLabel as sLabel, s.dInteriorDiameter as dInteriorDiameter, "
            (if vertical "case when t.bHorizontalOnly <> 0 then v.dFlow else v.dFlowVertical end" "v.dFlow")
            " as dLimit from tblPipeSizingValue v, tblPipeSizingTable t, tblPipeSize s"
            " where t.ixPipeSizingTable = v.ixPipeSizingTable and s.ixPipeSize = v.ixPipeSize and v.bEnable <> 0"
            " and v.ixPipeSizingTable = " (itoa table) " order by s.dInteriorDiameter, s.ixPipeSize")))

;; The size for a row of tblPipe, as it is or as it is about to be stored: the smallest of its sizing table that
;; carries the flow and is as large as the row and the lookup table ask for. The largest, with a message, when none is;
;; the row's own for a pipe that carries nothing or has no table.
(defun plumb-flow-size (db row / measure table sizes least size)
  (setq measure (plumb-flow-measure db (plumb-of row "ixPipe") (plumb-of row "ixPipeType")))
  (if (> (car measure) 0.0)
    (setq table (plumb-flow-table db row)
          sizes (if table (plumb-flow-sizes db table (plumb-pipe-vertical row)))
          least (max (cadr measure) (plumb-real-of row "dSizeMinimum"))
          size  (car (vl-member-if '(lambda (size) (plumb-flow-carries size (car measure) least)) sizes))))
  (cond (size (plumb-of size "ixPipeSize"))
        ((<= (car measure) 0.0) (plumb-of row "ixPipeSize"))
        (sizes
         (princ (strcat "\nNo size of the sizing table is large enough for a flow of "
                        (plumb-decimal-text (car measure) 5) ". The pipe takes the largest, "
                        (plumb-of (last sizes) "sLabel") "."))
         (plumb-of (last sizes) "ixPipeSize"))
        (T (princ "\nThere is no sizing table with sizes for this pipe. It keeps its size.")
           (plumb-of row "ixPipeSize"))))

;; A sum of parts may be off in the last digits.
(defun plumb-flow-carries (size flow least)
  (and (<= flow (+ (plumb-real-of size "dLimit") 1e-6))
       (<= least (+ (plumb-real-of size "dInteriorDiameter") 1e-6))))
