(set-logic QF_ABV)
(declare-fun a () (Array (_ BitVec 4) (_ BitVec 2)))
(declare-fun i () (_ BitVec 4))
(assert
  (let ((s (store a i #b11)))
    (and (= (select s (bvadd i #x1)) #b00)
         (= (select s i) #b11))))
(check-sat)
