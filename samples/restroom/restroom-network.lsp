;;; The pipes as a network. They are described first, as lists of pairs, so that what they carry and their sizes are
;;; known when they are drawn:
;;;   "number"    as they come
;;;   "type"      short name of the pipe type
;;;   "p1" "p2"   the points of the pipe
;;;   "near"      the end that hangs on the pipe nearer to the source, or to the sewer
;;;   "far"       the end that others hang on
;;;   "keys"      lists for vq_plumb-setPipeInfo
;;;   "breaks"    width, text, distances: arguments of vq_plumb-setPipeBreaks
;;;   "columns"   columns of its row that the network does not tell
;;;   "sums"      (category fixed value) for its rows of sums
;;;   "source"    T where the network of a type begins
;;;   "table"     name of the sizing table
;;;   "size"      a size by hand
;;;   "label"     distance between labels; "text" is the label
;;;   "scale"     scale of the linetype
;;;   "arrow"     distance of an arrow from the end, and the distances of hangers from the start

(defun restroom-of (pipe name) (cdr (assoc name pipe)))

;; Adds pairs to a pipe, in front of what it has of these names.
(defun restroom-amend (pipe pairs / new)
  (setq new (append pairs pipe)
        restroom-network (subst new pipe restroom-network))
  new)

;; The direction of flow tells which end is the near one.
(defun restroom-pipe (kind p1 p2 keys pairs)
  (setq p1 (mapcar 'float p1)
        p2 (mapcar 'float p2)
        restroom-network
         (cons (append pairs
                       (list (cons "number" (length restroom-network)) (cons "type" kind)
                             (cons "p1" p1) (cons "p2" p2) (cons "keys" keys))
                       (if (= (restroom-standard "tblPipeType" "sShortName" kind "bReversed") -1)
                         (list (cons "near" p2) (cons "far" p1))
                         (list (cons "near" p1) (cons "far" p2))))
               restroom-network)))

(defun restroom-vertical (pipe)
  (equal (restroom-flat (restroom-of pipe "p1")) (restroom-flat (restroom-of pipe "p2")) 1e-6))

(defun restroom-flat (point) (list (car point) (cadr point) 0.0))

(defun restroom-pipe-type (pipe)
  (restroom-standard "tblPipeType" "sShortName" (restroom-of pipe "type") "ixPipeType"))

;; The fixture or valve at an end of a pipe.
(defun restroom-pipe-valve (pipe / columns)
  (setq columns (restroom-of pipe "columns"))
  (cond ((cdr (assoc "ixValveLNext" columns)))
        ((cdr (assoc "ixValveLPrevious" columns)))))

;; The pipes that hang on the far end of a pipe.
(defun restroom-branches (pipe / kind far)
  (setq kind (restroom-of pipe "type")
        far  (restroom-of pipe "far"))
  (vl-remove-if-not
    '(lambda (other)
       (and (= (restroom-of other "type") kind)
            (equal (restroom-of other "near") far 1e-6)))
    restroom-network))

;; The pipe of a type where its network begins.
(defun restroom-source (kind)
  (car (vl-remove-if-not
         '(lambda (pipe) (and (= (restroom-of pipe "type") kind) (restroom-of pipe "source")))
         restroom-network)))

;; The pipe that leads to a fixture or valve.
(defun restroom-pipe-to (valve)
  (car (vl-remove-if-not
         '(lambda (pipe) (= (cdr (assoc "ixValveLNext" (restroom-of pipe "columns"))) valve))
         restroom-network)))

;; The level pipe of a type that runs through a point of the plan.
(defun restroom-pipe-through (kind point)
  (car (vl-remove-if-not
         '(lambda (pipe / p1 p2)
            (setq p1 (restroom-flat (restroom-of pipe "p1"))
                  p2 (restroom-flat (restroom-of pipe "p2")))
            (and (= (restroom-of pipe "type") kind)
                 (not (restroom-vertical pipe))
                 (equal (+ (distance p1 point) (distance point p2)) (distance p1 p2) 1e-6)))
         restroom-network)))
