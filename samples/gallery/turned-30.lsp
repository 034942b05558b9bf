;;; Labels lie along their pipes and read upright in a user coordinate system turned by 30 degrees.

(load "lib/star")
(gallery-star 30)
