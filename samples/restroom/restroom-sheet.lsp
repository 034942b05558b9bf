;;; Border and title of the sheet, and the room names.

(defun restroom-note (x y height text)
  (entmake (list '(0 . "MTEXT") '(100 . "AcDbEntity") '(8 . "P-TEXT") '(100 . "AcDbMText")
                 (list 10 x y 0.0) (cons 40 height) '(41 . 0.0) '(71 . 5) (cons 1 text) '(7 . "Standard"))))

(defun restroom-sheet ()
  (restroom-outline "X-SHEET" '((-60 -84) (444 -84) (444 264) (-60 264)) T)
  (restroom-outline "X-SHEET" '((-60 -48) (444 -48)) nil)
  (restroom-note 192 -60 9.0 "PUBLIC RESTROOM - PLUMBING PLAN")
  (restroom-note 192 -74 5.0 "CW cold water   HW hot water   SAN sanitary, 1/8 in per ft   FD floor drain   dimensions in inches")
  (restroom-note 190 206 7.0 "WOMEN")
  (restroom-note 190 32 7.0 "MEN")
  (restroom-note 317 180 5.0 "JANITOR")
  (restroom-note 364 216 4.0 "WH")
  (restroom-note 162 186 4.0 "FD")
  (restroom-note 162 54 4.0 "FD"))
