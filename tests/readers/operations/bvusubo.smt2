; bvusubo is what it is defined to be: the two sides never differ.
(set-logic QF_BV)
(set-info :status unsat)
(declare-const a (_ BitVec 4))
(declare-const b (_ BitVec 4))
(assert (distinct (bvusubo a b)
    (= #b1 ((_ extract 4 4) (bvsub (concat #b0 a) (concat #b0 b))))))
(check-sat)
