; bvsmulo is what it is defined to be: the two sides never differ.
(set-logic QF_BV)
(set-info :status unsat)
(declare-const a (_ BitVec 4))
(declare-const b (_ BitVec 4))
(assert (distinct (bvsmulo a b)
    (let ((p (bvmul ((_ sign_extend 4) a) ((_ sign_extend 4) b))))
       (or (bvslt p #b11111000) (bvsgt p #b00000111)))))
(check-sat)
