; options: --logic QF_UFLIA --status unknown
(set-logic QF_LIA)
(set-info :status sat)
(declare-fun p () Bool)
(assert p)
(check-sat)
