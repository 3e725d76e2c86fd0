(benchmark b :logic QF_AUFBV[32] :extrafuns ((v BitVec[8]) (m Array[4:8]))
:formula (and (= (concat v bv5[8]) (zero_extend[8] (extract[7:0] (concat v bit1))))
 (bvult (bvadd v bvbin0101) (bvneg v)) (= (select m bv3[4]) (rotate_left[2] (sign_extend[4] bvhexA)))
 (bvsge (repeat[1] v) (bvashr v (bvnot v)))))
