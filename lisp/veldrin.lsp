;;; The Lisp layer of Veldrin Plumbing. It is loaded behind the module, and loads its files, one a subject.

(foreach part '("veldrin-library" "veldrin-todo" "veldrin-database" "plumb-text" "plumb-flow" "plumb-query")
  (load part))

(princ)
