; options: --label d_
(set-logic QF_LIA)
(declare-fun d_3 () Int)
(declare-fun d_3_ () Int)
(assert (<= (+ d_3 d_3_) (+ (+ d_3 d_3_) 1)))
(check-sat)
