; warning: attribute :named twice is left out: its term is not written exactly once
; warning: attribute :list (1 2) is left out: solvers want a plain value
; warning: attribute :flag is left out: solvers want a value
; warning: attribute :named other is left out: its term has a name already
; warning: attribute :pattern (p) is left out: solvers take it in quantifiers only
(set-logic QF_UF)
(declare-fun p () Bool)
(declare-fun q () Bool)
(declare-fun r () Bool)
(assert (or (! (and (! p :named twice) q) :named both) (not both)))
(assert (or (! r :level 3 :tag |a b| :list (1 2) :text "say ""so""" :flag)
            (! (not p) :named |not p| :named other :pattern (p))))
(check-sat)
