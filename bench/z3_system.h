#ifndef BRUM_BENCH_Z3_SYSTEM_H
#define BRUM_BENCH_Z3_SYSTEM_H

#include <z3.h>

#include <array>
#include <cstddef>
#include <string>
#include <string_view>

namespace brum::bench {

/// Builds terms in z3 through its C interface. The context keeps every term until it is deleted,
/// which is the cheapest of the ways that the interface offers.
class Z3System {
 public:
  using Term = Z3_ast;

  static constexpr const char* name = "z3";

  Z3System() {
    Z3_config config = Z3_mk_config();
    context = Z3_mk_context(config);
    Z3_del_config(config);
    int_sort_ = Z3_mk_int_sort(context);
    bv_sort_ = Z3_mk_bv_sort(context, 32);
  }
  Z3System(const Z3System&) = delete;
  Z3System& operator=(const Z3System&) = delete;
  ~Z3System() { Z3_del_context(context); }

  Term int_variable(const std::string& text) { return variable(text, int_sort_); }
  Term bv_variable(const std::string& text) { return variable(text, bv_sort_); }
  Term bv_number(std::size_t value) { return Z3_mk_unsigned_int64(context, value, bv_sort_); }

  Term plus(Term a, Term b) {
    const std::array<Z3_ast, 2> arguments{a, b};
    return Z3_mk_add(context, 2, arguments.data());
  }
  Term leq(Term a, Term b) { return Z3_mk_le(context, a, b); }
  Term conjunction(Term a, Term b) {
    const std::array<Z3_ast, 2> arguments{a, b};
    return Z3_mk_and(context, 2, arguments.data());
  }
  Term equal(Term a, Term b) { return Z3_mk_eq(context, a, b); }
  Term bv_add(Term a, Term b) { return Z3_mk_bvadd(context, a, b); }
  Term bv_mul(Term a, Term b) { return Z3_mk_bvmul(context, a, b); }
  Term bv_xor(Term a, Term b) { return Z3_mk_bvxor(context, a, b); }
  Term concat(Term a, Term b) { return Z3_mk_concat(context, a, b); }
  Term extract(unsigned high, unsigned low, Term a) { return Z3_mk_extract(context, high, low, a); }

  /// The text lives until the next call.
  std::string_view print(Term formula, const char* logic) {
    return Z3_benchmark_to_smtlib_string(context, "shape", logic, "unknown", "", 0, nullptr,
                                         formula);
  }

  Z3_context context;

 private:
  Term variable(const std::string& text, Z3_sort sort) {
    return Z3_mk_const(context, Z3_mk_string_symbol(context, text.c_str()), sort);
  }

  Z3_sort int_sort_;
  Z3_sort bv_sort_;
};

}  // namespace brum::bench

#endif  // BRUM_BENCH_Z3_SYSTEM_H
