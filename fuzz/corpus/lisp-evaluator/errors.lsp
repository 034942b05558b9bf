(defun *error* (m) (princ m) (f 1)) (defun f (x) (1+ (f x))) (vl-catch-all-apply 'f '(1)) (car 5)
