(set-logic QF_UF)
(check-sat)
