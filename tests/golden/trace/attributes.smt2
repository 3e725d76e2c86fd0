; (and (or a b) c) is asserted and a part of the second assertion, without being defined: a store
; that uses a term in one argument position only gives it no label.
; warning: attribute :named part is left out: its term is not written exactly once
(set-logic QF_UF)
(declare-fun a () Bool)
(declare-fun b () Bool)
(declare-fun c () Bool)
(declare-fun d () Bool)
(assert (and (! (or a b) :named part) c))
(assert (or (and (or a b) c) d))
(assert (or (! (and c d) :named both) (! (not c) :named neg :level 2)))
(assert (=> both a))
