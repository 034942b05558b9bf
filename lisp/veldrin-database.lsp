;;; The project database: what the module asks of Lisp, and helpers to read and write rows. DB is the path of a
;;; database; nil stands for the one that the running call works on.

;; The module calls this when it finds the database damaged. What was lost is printed. nil when it could not be
;; mended; the file is then as it was.
(defun compactDatabase (path options purpose)
  (if (= (strcase purpose) "REPAIR")
    (vd-repair path)))

;; "" is refused by whoever is asked to open it.
(defun plumb-db-path (db)
  (cond (db)
        ((vd-project-database))
        ("")))

;; Rows as lists of (column . value): yes/no as -1 and 0, null as nil.
(defun plumb-db-select (db sql)
  (vd-select (plumb-db-path db) sql))

;; The first row, nil without one.
(defun plumb-db-row (db sql)
  (car (plumb-db-select db sql)))

;; The first column of the first row.
(defun plumb-db-value (db sql)
  (cdar (plumb-db-row db sql)))

;; The first column of all rows.
(defun plumb-db-values (db sql)
  (mapcar 'cdar (plumb-db-select db sql)))

;; The number of rows changed.
(defun plumb-db-execute (db sql)
  (vd-execute (plumb-db-path db) sql))

;; A value as SQL writes it. An empty text is stored as one blank, T and nil as yes and null.
(defun plumb-db-literal (value)
  (cond ((null value) "null")
        ((= value T) "-1")
        ((= (type value) 'STR)
         (if (= value "") "' '" (strcat "'" (plumb-db-doubled value) "'")))
        ((= (type value) 'REAL) (plumb-db-real value))
        ((itoa value))))

;; Sixteen digits say a number exactly enough to read the same one back.
(defun plumb-db-real (value / old text)
  (setq old (getvar "DIMZIN"))
  (setvar "DIMZIN" 8)
  (setq text (rtos value 1 16))
  (setvar "DIMZIN" old)
  text)

(defun plumb-db-doubled (text / at from out)
  (setq from 0 out "")
  (while (setq at (vl-string-search "'" text from))
    (setq out  (strcat out (substr text (1+ from) (- (1+ at) from)) "'")
          from (1+ at)))
  (strcat out (substr text (1+ from))))

(defun plumb-db-join (texts separator)
  (if texts
    (apply 'strcat (cons (car texts)
                         (mapcar '(lambda (text) (strcat separator text)) (cdr texts))))
    ""))

;; Adds a row of (column . value) pairs; columns that are left out take their defaults. The new row's key.
(defun plumb-db-insert (db table row)
  (plumb-db-value
    db
    (strcat "insert into " table " (" (plumb-db-join (mapcar 'car row) ", ") ") values ("
            (plumb-db-join (mapcar '(lambda (pair) (plumb-db-literal (cdr pair))) row) ", ")
            ") returning " (plumb-db-key table))))

;; Changes the row of this key; the number of rows changed.
(defun plumb-db-update (db table key row)
  (plumb-db-execute
    db
    (strcat "update " table " set "
            (plumb-db-join
              (mapcar '(lambda (pair) (strcat (car pair) " = " (plumb-db-literal (cdr pair)))) row)
              ", ")
            " where " (plumb-db-key table) " = " (itoa key))))

;; tblPipe -> ixPipe
(defun plumb-db-key (table)
  (strcat "ix" (substr table 4)))

;; Settings of the project.
(defun plumb-db-global (db key / row)
  (setq row (plumb-db-row db (strcat "select bNumeric, sText, dNumber from tblGlobal where sKey = "
                                     (plumb-db-literal key))))
  (cdr (assoc (if (= (cdr (assoc "bNumeric" row)) -1) "dNumber" "sText") row)))
