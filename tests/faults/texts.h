#ifndef BRUM_TESTS_FAULTS_TEXTS_H
#define BRUM_TESTS_FAULTS_TEXTS_H

namespace brum::testing {

// Texts with one of each thing that a reader keeps, small enough that no table of the manager
// grows.

inline constexpr const char* script_text = R"(; a comment
(set-info :status unsat)
(set-info :source |a text that is longer than a string object holds by itself|)
(set-logic QF_AUFLIA)
(declare-sort Element 0)
(define-sort Row (X) (Array Int X))
(declare-fun |a function with a long quoted name| (Element Int) Bool)
(declare-const c Element)
(declare-const m (Row Int))
(define-fun twice-and-more ((x Int) (y Int)) Int (+ x (* 2 y)))
(push 1)
(assert (! (|a function with a long quoted name| c (twice-and-more 1 (- 2))) :named an-assertion-with-a-long-name))
(assert (let ((row (store m 0 (* 7 (select m 1))))) (< (select row 0) (abs (select row 2)) 123456789012345678901234567890)))
(check-sat-assuming (an-assertion-with-a-long-name))
(pop 1)
(assert (xor (distinct 1 2 3) (= c c) (=> true false)))
(check-sat)
(exit)
)";

inline constexpr const char* bit_vector_text = R"((set-logic QF_BV)
(declare-const a_constant_with_a_long_name (_ BitVec 8))
(assert (bvsge (concat #xA (bvnand #b0101 ((_ extract 3 0) a_constant_with_a_long_name))) ((_ rotate_left 3) a_constant_with_a_long_name)))
(assert (! (= (bvsmod a_constant_with_a_long_name (_ bv200 8)) a_constant_with_a_long_name) :an-annotation (with some value)))
)";

inline constexpr const char* benchmark_text = R"((benchmark a_benchmark_with_a_long_name
:source { a text that is longer than a string object holds by itself }
:status unknown
:logic QF_AUFLIA
:extrasorts (Element_sort_with_a_long_name)
:extrafuns ((c Element_sort_with_a_long_name) (a_function_with_a_long_name Element_sort_with_a_long_name Int) (m Array))
:extrapreds ((p Int Int))
:assumption (p (select m 0) (a_function_with_a_long_name c))
:formula (let (?row (store m 3 (~ 4))) (flet ($f (p (select ?row 1) 123456789012345678901234567890))
  (implies $f (if_then_else (< (select ?row 0) 1) $f (distinct 1 2 (select m 5))))))
)
)";

}  // namespace brum::testing

#endif  // BRUM_TESTS_FAULTS_TEXTS_H
