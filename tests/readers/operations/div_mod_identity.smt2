(set-logic QF_LIA)
(declare-const i Int)
(assert (distinct i (+ (* 7 (div i 7)) (mod i 7))))
(check-sat)
