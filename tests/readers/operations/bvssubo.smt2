; bvssubo is what it is defined to be: the two sides never differ.
(set-logic QF_BV)
(set-info :status unsat)
(declare-const a (_ BitVec 4))
(declare-const b (_ BitVec 4))
(assert (distinct (bvssubo a b)
    (and (distinct ((_ extract 3 3) a) ((_ extract 3 3) b))
       (distinct ((_ extract 3 3) a) ((_ extract 3 3) (bvsub a b))))))
(check-sat)
