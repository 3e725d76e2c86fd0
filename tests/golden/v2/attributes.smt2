; warning: attributes of terms are left out: the form has no place for them
(set-logic QF_UF)
(declare-fun p () Bool)
(declare-fun q () Bool)
(assert (! (or (! (and p q) :named both) (not both)) :named whole))
(check-sat)
