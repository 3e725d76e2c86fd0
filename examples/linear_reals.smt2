; Mixing three liquids: the total volume and the weighted strength are used again and again, so a
; writer that does not share them writes them out each time.
(set-logic QF_LRA)
(set-info :status sat)
(declare-const water Real)
(declare-const juice Real)
(declare-const syrup Real)
(define-fun volume () Real (+ water juice syrup))
(define-fun sugar () Real (+ (* 0.1 juice) (* 0.65 syrup)))
(assert (and (>= water 0.0) (>= juice 0.0) (>= syrup 0.0)))
(assert (<= 1.0 volume 1.5))
(assert (and (<= (* 0.08 volume) sugar) (<= sugar (* 0.12 volume))))
(assert (let ((fruit (+ juice (* 0.5 syrup)))) (or (> fruit (* (/ 1 3) volume)) (= fruit sugar))))
(check-sat)
