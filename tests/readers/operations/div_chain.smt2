(set-logic QF_LIA)
(declare-const i Int)
(assert (= 2 (div i 2 5)))
(check-sat)
