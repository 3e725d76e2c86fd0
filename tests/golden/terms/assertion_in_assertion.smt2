; The same term is asserted twice, and is a part of another assertion.
(set-logic QF_LIA)
(declare-fun x () Int)
(declare-fun p () Bool)
(assert (<= x 0))
(assert (or (<= x 0) p))
(assert (<= x 0))
