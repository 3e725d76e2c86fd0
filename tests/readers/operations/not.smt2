(set-logic QF_UF)
(declare-const p Bool)
(assert (not (not (not p))))
(check-sat)
