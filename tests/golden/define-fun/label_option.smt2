; options: --label d_
(set-logic QF_LIA)
(declare-fun d_3 () Int)
(declare-fun y () Int)
(assert (<= (+ d_3 y) (+ (+ d_3 y) 1)))
(check-sat)
