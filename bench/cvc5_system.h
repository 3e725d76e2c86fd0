#ifndef BRUM_BENCH_CVC5_SYSTEM_H
#define BRUM_BENCH_CVC5_SYSTEM_H

#include <cvc5/cvc5.h>

#include <cstddef>
#include <string>

namespace brum::bench {

/// Builds terms in cvc5 through its C++ interface.
class Cvc5System {
 public:
  using Term = cvc5::Term;

  static constexpr const char* name = "cvc5";

  Term int_variable(const std::string& text) { return solver.mkConst(int_sort_, text); }
  Term bv_variable(const std::string& text) { return solver.mkConst(bv_sort_, text); }
  Term bv_number(std::size_t value) { return solver.mkBitVector(32, value); }

  Term plus(const Term& a, const Term& b) { return solver.mkTerm(cvc5::ADD, {a, b}); }
  Term leq(const Term& a, const Term& b) { return solver.mkTerm(cvc5::LEQ, {a, b}); }
  Term conjunction(const Term& a, const Term& b) { return solver.mkTerm(cvc5::AND, {a, b}); }
  Term equal(const Term& a, const Term& b) { return solver.mkTerm(cvc5::EQUAL, {a, b}); }
  Term bv_add(const Term& a, const Term& b) { return solver.mkTerm(cvc5::BITVECTOR_ADD, {a, b}); }
  Term bv_mul(const Term& a, const Term& b) { return solver.mkTerm(cvc5::BITVECTOR_MULT, {a, b}); }
  Term bv_xor(const Term& a, const Term& b) { return solver.mkTerm(cvc5::BITVECTOR_XOR, {a, b}); }
  Term concat(const Term& a, const Term& b) {
    return solver.mkTerm(cvc5::BITVECTOR_CONCAT, {a, b});
  }
  Term extract(unsigned high, unsigned low, const Term& a) {
    return solver.mkTerm(solver.mkOp(cvc5::BITVECTOR_EXTRACT, {high, low}), {a});
  }

  /// The text of the term alone: the interface declares nothing.
  static std::string print(const Term& formula, const char* /*logic*/) {
    return formula.toString();
  }

  cvc5::Solver solver;

 private:
  cvc5::Sort int_sort_ = solver.getIntegerSort();
  cvc5::Sort bv_sort_ = solver.mkBitVectorSort(32);
};

}  // namespace brum::bench

#endif  // BRUM_BENCH_CVC5_SYSTEM_H
