; A name given by :named keeps labels away as a declared one does, also where it is left out.
; warning: attribute :named .def_8 is left out: its term is not written exactly once
(set-logic QF_LIA)
(declare-fun .def_3 () Int)
(declare-fun x () Int)
(declare-fun y () Int)
(assert (<= (+ x y) (+ (! x :named .def_8) (+ x y))))
(assert (<= .def_3 (+ (+ x y) 1 (+ (+ x y) 1))))
(check-sat)
