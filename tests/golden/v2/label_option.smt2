; options: --label d_
(set-logic QF_LIA)
(declare-fun d_3 () Int)
(declare-fun .def_3 () Int)
(assert (<= (+ d_3 .def_3) (+ (+ d_3 .def_3) 1)))
(check-sat)
