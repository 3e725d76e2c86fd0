; A number that leaves 2, 3 and 2 over when shared among 3, 5 and 7: congruences, and one sum in all
; of them.
(set-logic QF_LIA)
(set-info :status sat)
(declare-const first Int)
(declare-const second Int)
(assert (and (<= 0 first) (< first 60) (<= 0 second) (< second 60)))
(assert
  (let ((total (+ first (* 2 second))))
    (and ((_ divisible 3) (- total 2)) ((_ divisible 5) (- total 3)) ((_ divisible 7) (- total 2)))))
(assert (distinct first second (+ first (* 2 second))))
(check-sat)
