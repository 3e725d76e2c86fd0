; bvuaddo is what it is defined to be: the two sides never differ.
(set-logic QF_BV)
(set-info :status unsat)
(declare-const a (_ BitVec 4))
(declare-const b (_ BitVec 4))
(assert (distinct (bvuaddo a b)
    (bvult (bvadd a b) a)))
(check-sat)
