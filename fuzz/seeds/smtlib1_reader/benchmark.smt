(benchmark all
  :source { some \{ text \} }
  :status unknown
  :logic QF_AUFLIA
  :extrasorts (S T)
  :extrafuns ((c S) (f S Int T) (n Int) (a Array))
  :extrapreds ((p) (q S T))
  :notes "a text"
  :assumption (flet ($x (p)) (and $x (or $x (not p))))
  :assumption (= (select (store a n 3) (~ n)) (f c n))
  :formula (let (?y (+ n (* 2 n))) (implies (xor p (iff p true)) (if_then_else (< ?y n) (>= n ?y) (distinct n 1 ?y))))
)
