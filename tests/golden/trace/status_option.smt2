; options: --status unknown
(set-logic QF_UF)
(declare-fun p () Bool)
(set-info :status sat)
(check-sat)
(assert (and p (not p)))
(set-info :status unsat)
(check-sat)
