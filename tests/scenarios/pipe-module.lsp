;;; The module comes and goes in one run; its pipes wait as proxies.

(load "lib/check")

(setq e (vq_plumb-insertPipe 5 '(0 0 0) '(30 0 0)))
(vq_plumb-setPipeInfo e '("ELBOWLIST" 4.0 0.7853981625))
(setq picture (vd-graphics e))

(repeat 2
  (check "it unloads" (not (null (arxunload "vq_plumb"))) T)
  (check "its functions are gone" (type vq_plumb-insertPipe) nil)
  (check "its pipes are proxies" (cdr (assoc 0 (entget e))) "ACAD_PROXY_ENTITY")
  (check "that keep their picture" (length (vd-graphics e)) 2)
  (check "it loads again" (not (null (arxload "vq_plumb"))) T)
  (check "and the pipes are alive" (list (cdr (assoc 0 (entget e))) (vd-graphics e)) (list "VQPLUMBPIPE" picture)))

(check "elbow length" (vq_plumb-getPipeElbowLength e) 4.0)
(check-finish)
