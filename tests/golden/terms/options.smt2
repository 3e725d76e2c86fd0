; options: --label d_ --status sat --logic QF_AUFLIA
(set-logic QF_ALIA)
(set-info :status unsat)
(declare-fun m () (Array Int Int))
(assert (= (select (store m 1 (- 2)) 1) (select m 3)))
(check-sat)
