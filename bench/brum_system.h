#ifndef BRUM_BENCH_BRUM_SYSTEM_H
#define BRUM_BENCH_BRUM_SYSTEM_H

#include <cstddef>
#include <cstdint>
#include <fstream>
#include <stdexcept>
#include <string>

#include "brum/readers/script.h"
#include "brum/readers/smtlib2_reader.h"
#include "brum/terms/term_manager.h"

namespace brum::bench {

/// Builds terms in this library's store.
class BrumSystem {
 public:
  using Term = const brum::Term*;

  static constexpr const char* name = "brumlin";

  Term int_variable(const std::string& text) {
    return manager.make_term(manager.declare(text, manager.get_int_type()));
  }
  Term bv_variable(const std::string& text) {
    return manager.make_term(manager.declare(text, manager.make_bv_type(32)));
  }
  Term bv_number(std::size_t value) {
    return manager.make_bv_number(static_cast<std::int64_t>(value), 32);
  }

  Term plus(Term a, Term b) { return manager.make_plus(a, b); }
  Term leq(Term a, Term b) { return manager.make_leq(a, b); }
  Term conjunction(Term a, Term b) { return manager.make_and(a, b); }
  Term equal(Term a, Term b) { return manager.make_equal(a, b); }
  Term bv_add(Term a, Term b) { return manager.make_bvadd(a, b); }
  Term bv_mul(Term a, Term b) { return manager.make_bvmul(a, b); }
  Term bv_xor(Term a, Term b) { return manager.make_bvxor(a, b); }
  Term concat(Term a, Term b) { return manager.make_concat(a, b); }
  Term extract(unsigned high, unsigned low, Term a) { return manager.make_extract(high, low, a); }

  /// Reads a script of SMT-LIB 2 and gives the conjunction of its assertions. Throws what the
  /// reader throws, and std::runtime_error when nothing is asserted.
  Term read(const std::string& path) {
    std::ifstream in(path, std::ios_base::binary);
    Script script;
    SmtLib2Reader(manager).read(in, script);
    Term all = nullptr;
    for (Term assertion : script.at_end().assertions) {
      all = all == nullptr ? assertion : manager.make_and(all, assertion);
    }
    if (all == nullptr) {
      throw std::runtime_error("nothing is asserted in " + path);
    }
    return all;
  }

  TermManager manager;
};

}  // namespace brum::bench

#endif  // BRUM_BENCH_BRUM_SYSTEM_H
