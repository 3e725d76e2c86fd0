(benchmark r :logic QF_LRA :status sat :extrafuns ((x Real) (y Real))
:formula (and (<= (- x) (/ 1 3) 2.50) (> (ite (= x y) x (+ x y 1)) (* (~ 2) y))))
