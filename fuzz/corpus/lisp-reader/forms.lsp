(defun c:test (a / b "no") ; comment
  (setq b '(1 . 2) c 1.5e-3 d "a\"\\\n\t\101\U+00D8" e -7 f 2147483648)
  ;| block |; (list a 'b (function (lambda (x) x)) #x .5 1. + - ... |x|))
