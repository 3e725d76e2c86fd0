; bvsaddo is what it is defined to be: the two sides never differ.
(set-logic QF_BV)
(set-info :status unsat)
(declare-const a (_ BitVec 4))
(declare-const b (_ BitVec 4))
(assert (distinct (bvsaddo a b)
    (and (= ((_ extract 3 3) a) ((_ extract 3 3) b))
       (distinct ((_ extract 3 3) a) ((_ extract 3 3) (bvadd a b))))))
(check-sat)
