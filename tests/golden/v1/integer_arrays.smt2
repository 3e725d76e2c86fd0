(set-logic QF_ALIA)
(set-info :status sat)
(declare-fun m () (Array Int Int))
(assert (= (select (store m 1 (- 2)) 1) (select m 3)))
