; options: --logic QF_UFLIRA --status unknown
(set-logic QF_LIA)
(set-info :status sat)
(declare-fun p () Bool)
(assert p)
(check-sat)
