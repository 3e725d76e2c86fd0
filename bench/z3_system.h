#ifndef BRUM_BENCH_Z3_SYSTEM_H
#define BRUM_BENCH_Z3_SYSTEM_H

#include <z3.h>

#include <array>
#include <cstddef>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

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
    // By default an error ends the program.
    Z3_set_error_handler(context, [](Z3_context, Z3_error_code) {});
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

  /// Reads a script of SMT-LIB 2 and gives the conjunction of its assertions, which lives as long
  /// as this object. Throws std::runtime_error.
  Z3_ast read(const std::string& path) {
    const Z3_ast_vector assertions =
        Z3_parse_smtlib2_file(context, path.c_str(), 0, nullptr, nullptr, 0, nullptr, nullptr);
    if (Z3_get_error_code(context) != Z3_OK || Z3_ast_vector_size(context, assertions) == 0) {
      throw std::runtime_error(std::string("z3 does not read ") + path);
    }
    Z3_ast_vector_inc_ref(context, assertions);
    std::vector<Z3_ast> all;
    for (unsigned i = 0; i < Z3_ast_vector_size(context, assertions); ++i) {
      all.push_back(Z3_ast_vector_get(context, assertions, i));
    }
    return all.size() == 1 ? all[0]
                           : Z3_mk_and(context, static_cast<unsigned>(all.size()), all.data());
  }

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
