; The names are written otherwise in version 1.2; labels keep clear of them all the same.
(set-logic QF_LIA)
(declare-fun ?def_3 () Int)
(declare-fun ?def_3_ () Int)
(declare-fun $def_8 () Bool)
(assert (<= (+ ?def_3 ?def_3_) (+ (+ ?def_3 ?def_3_) 1)))
(assert (and (not $def_8) (or (not $def_8) $def_8)))
(check-sat)
