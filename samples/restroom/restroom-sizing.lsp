;;; What the pipes carry, and their sizes. The fixtures count as the standards say; a pipe that has no size by hand
;;; takes the smallest of its sizing table that carries the flow.

;; Cold, hot and drainage fixture units by type of fixture, least supply and least drain. The total of water units
;; is that of the type's row. The category is that of cold water.
(setq restroom-demand-table
  '(("Water closet, public, flushometer"  "WSFU, flushometers" 10.0 0.0  4.0 "1\""   "3\"")
    ("Urinal, public, 3/4 in flushometer" "WSFU, flushometers" 5.0  0.0  4.0 "3/4\"" "2\"")
    ("Lavatory, public"                   "WSFU, flush tanks"  1.5  1.5  1.0 "3/8\"" "1-1/4\"")
    ("Service sink"                       "WSFU, flush tanks"  2.25 2.25 2.0 "1/2\"" "1-1/2\"")
    ("Drinking fountain"                  "WSFU, flush tanks"  0.25 0.0  0.5 "3/8\"" "1-1/4\"")
    ("Floor drain"                        nil                  0.0  0.0  2.0 nil     "2\"")))

(defun restroom-demand (fixture)
  (cdr (assoc (cadr (assoc fixture restroom-fixture-list)) restroom-demand-table)))

;; Adds to the amount of a name in a list of pairs.
(defun restroom-add (name amount sums / old)
  (cond ((zerop amount) sums)
        ((setq old (assoc name sums)) (subst (cons name (+ (cdr old) amount)) old sums))
        ((cons (cons name amount) sums))))

;; The flow of a category in the base unit of its pipe type: a product, or a place on its curve.
(defun restroom-converted (category value / from flow place)
  (if (= (restroom-standard "tblPipeSumCategory" "ixPipeSumCategory" category "iConversionType") 1)
    (setq flow (* value (restroom-standard "tblPipeSumCategory" "ixPipeSumCategory" category "dMultiplier")))
    (progn
      (setq from '(0 . 0.0))
      (foreach point (restroom-standards
                       (strcat "select iFixtures, dFlow from tblPipeFlowLookup where ixPipeSumCategory = "
                               (itoa category) " and iFixtures > 0 order by iFixtures"))
        (setq place (cons (cdr (assoc "iFixtures" point)) (cdr (assoc "dFlow" point))))
        (if (and (null flow) (<= value (car place)))
          (setq flow (+ (cdr from) (/ (* (- value (car from)) (- (cdr place) (cdr from)))
                                      (- (car place) (car from))))))
        (setq from place))))
  flow)

(defun restroom-size (kind label)
  (car (restroom-standards
         (strcat "select ixPipeSize, sLabel, dInteriorDiameter from tblPipeSize where ixPipeType = " (itoa kind)
                 " and sLabel = " (plumb-db-literal label)))))

;; The smallest size of a sizing table for a flow.
(defun restroom-size-for (table flow least vertical)
  (car (restroom-standards
         (strcat "select s.ixPipeSize as ixPipeSize, s.sLabel as sLabel, s.dInteriorDiameter as dInteriorDiameter"
                 " from tblPipeSizingValue v, tblPipeSize s where s.ixPipeSize = v.ixPipeSize and v.bEnable = -1"
                 " and v.ixPipeSizingTable = " (itoa table)
                 " and v." (if vertical "dFlowVertical" "dFlow") " >= " (plumb-db-literal flow)
                 " and s.dInteriorDiameter >= " (plumb-db-literal least) " order by s.dInteriorDiameter"))))

;; The row's key of a sizing table or a flow category of a pipe type, by its name.
(defun restroom-named (table kind name)
  (cdaar (restroom-standards
           (strcat "select " (plumb-db-key table) " from " table " where ixPipeType = " (itoa kind)
                   " and sName = " (plumb-db-literal name)))))

;; Amounts by category of a pipe that serves these (fixture . type). A fixture that has its cold and its hot water
;; through this pipe counts with its total, which is less than both.
(defun restroom-units (kind served / sums demand fixture cold hot)
  (foreach service served
    (setq fixture (car service)
          demand  (restroom-demand fixture)
          cold    (member (cons fixture "CW") served)
          hot     (member (cons fixture "HW") served)
          sums
           (cond
             ((= (cdr service) "SAN") (restroom-add "Drainage fixture units" (nth 3 demand) sums))
             ((= kind "HW") (restroom-add "WSFU" (caddr demand) sums))
             ((and cold hot (= (cdr service) "HW")) sums)
             ((and cold hot)
              (restroom-add (car demand)
                (restroom-standard "tblValveS" "sName" (cadr (assoc fixture restroom-fixture-list)) "dFU") sums))
             (hot (restroom-add (car demand) (caddr demand) sums))
             ((restroom-add (car demand) (cadr demand) sums)))))
  sums)

;; Rows of sums: category, fixed, value. What a fixture takes is entered at its own pipe; calculated is all that the
;; pipe carries, its own included.
(defun restroom-sums (pipe served fixed / kind)
  (setq kind (restroom-pipe-type pipe))
  (mapcar '(lambda (sum) (list (restroom-named "tblPipeSumCategory" kind (car sum)) fixed (cdr sum)))
          (restroom-units (restroom-of pipe "type") served)))

;; The bore of the least size for the fixture at the pipe, 0 without one.
(defun restroom-least (pipe fixture / label)
  (if (and fixture (setq label (nth (if (= (restroom-of pipe "type") "SAN") 5 4) (restroom-demand fixture))))
    (cdr (assoc "dInteriorDiameter" (restroom-size (restroom-pipe-type pipe) label)))
    0.0))

;; 2" CW, by the label format of the type.
(defun restroom-label (pipe size)
  (vl-string-subst size "$SIZE"
    (cdaar (restroom-standards
             (strcat "select sLabelFormat from tblPipeLabel where ixPipeType = " (itoa (restroom-pipe-type pipe))
                     " and ixLayerSystem = " (itoa restroom-system))))))

;; The size of a pipe: the one by hand, or that of its table.
(defun restroom-sized (pipe sums least / table flow size)
  (setq flow 0.0)
  (foreach sum sums (setq flow (+ flow (restroom-converted (car sum) (caddr sum)))))
  (if (restroom-of pipe "table")
    (setq table (restroom-named "tblPipeSizingTable" (restroom-pipe-type pipe) (restroom-of pipe "table"))))
  (setq size (if (restroom-of pipe "size")
               (restroom-size (restroom-pipe-type pipe) (restroom-of pipe "size"))
               (restroom-size-for table flow least (restroom-vertical pipe))))
  (list (cons "text" (restroom-label pipe (cdr (assoc "sLabel" size))))
        (list "columns"
              (assoc "ixPipeSize" size) (cons "dSize" (cdr (assoc "dInteriorDiameter" size)))
              (cons "bSizeLocked" (if (restroom-of pipe "size") T 0)) (cons "dSizeMinimum" least)
              (cons "ixPipeSizingTable" table))))

;; Sums and size of a pipe and of all behind it. Gives what they serve, how far it is from the near end of the pipe
;; to the last fixture, how high fixtures connect, and the least bore.
(defun restroom-measure (pipe from-source / fixture run served own far height least sums sized)
  (setq fixture (restroom-pipe-valve pipe)
        fixture (car (assoc fixture restroom-fixture-list))
        run     (distance (restroom-of pipe "near") (restroom-of pipe "far"))
        least   (restroom-least pipe fixture)
        far     0.0)
  (if fixture
    (setq own    (list (cons fixture (restroom-of pipe "type")))
          height (caddr (restroom-of pipe "far"))))
  (if (= (restroom-of pipe "type") "V") (setq own (restroom-of pipe "serves")))
  (setq served (cond (own) ((restroom-of pipe "serves"))))
  (foreach branch (restroom-branches pipe)
    (setq branch (restroom-measure branch (+ from-source run))
          served (append (car branch) served)
          far    (max far (cadr branch))
          least  (max least (cadddr branch))
          height (if (and height (caddr branch)) (max height (caddr branch)) (cond (height) ((caddr branch))))))
  (setq far   (+ run far)
        sums  (restroom-sums pipe served 0)
        sized (restroom-sized pipe sums least))
  (restroom-amend pipe
    (list (assoc "text" sized)
          (cons "sums" (append (restroom-sums pipe own T) sums))
          (cons "columns"
                (append (restroom-of pipe "columns") (restroom-of sized "columns")
                        (list (cons "dDistanceFromSource" from-source) (cons "dDistanceToFarthestFixture" far)
                              (cons "dMaxFixtureZ" (cond (height) (0.0))))))))
  (list served far height least))

;; What the water heater serves is the hot water, and what the vent relieves are the drains.
(defun restroom-sizing (/ hot drained)
  (setq hot     (car (restroom-measure (restroom-source "HW") 0.0))
        drained (car (restroom-measure (restroom-source "SAN") 0.0)))
  (restroom-amend (restroom-pipe-to restroom-heater) (list (cons "serves" hot)))
  (restroom-measure (restroom-source "CW") 0.0)
  (restroom-amend (car (restroom-branches (restroom-source "V"))) (list (cons "serves" drained)))
  (restroom-measure (restroom-source "V") 0.0))
