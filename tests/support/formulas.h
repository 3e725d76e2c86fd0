#ifndef BRUM_TESTS_SUPPORT_FORMULAS_H
#define BRUM_TESTS_SUPPORT_FORMULAS_H

#include <cstddef>
#include <string>

#include "brum/terms/term_manager.h"

namespace brum::testing {

// Small parts of formulas.

inline const Term* make_bool(TermManager& mgr, const std::string& name) {
  return mgr.make_term(mgr.declare(name, mgr.get_bool_type()));
}
inline const Term* make_int(TermManager& mgr, const std::string& name) {
  return mgr.make_term(mgr.declare(name, mgr.get_int_type()));
}
inline const Term* make_real(TermManager& mgr, const std::string& name) {
  return mgr.make_term(mgr.declare(name, mgr.get_real_type()));
}
inline const Term* make_bv(TermManager& mgr, const std::string& name, std::size_t width) {
  return mgr.make_term(mgr.declare(name, mgr.make_bv_type(width)));
}

// Large formulas. `size` is the number of compound terms.

/// not(not(... p)).
const Term* make_negations(TermManager& mgr, const Term* inner, std::size_t size);

/// (and (and (and p0 p1) p0) p1 ...): nested in the first argument.
const Term* make_left_chain(TermManager& mgr, std::size_t size);

/// (and p0 (and p1 (and p0 ...))): nested in the second argument.
const Term* make_right_chain(TermManager& mgr, std::size_t size);

/// t + t with t = u + u with u = ...: every level but the first refers to the one below twice.
const Term* make_ladder(TermManager& mgr, std::size_t size);

/// A balanced tree of additions over `size` + 1 distinct Int constants x0, x1, ...
const Term* make_balanced_tree(TermManager& mgr, std::size_t size);

/// A formula of additions over three Int constants, each of two arguments picked among those made
/// before, by a generator that gives the same picks on every machine. For a manager without terms.
const Term* make_random_dag(TermManager& mgr, std::size_t size, unsigned seed);

}  // namespace brum::testing

#endif
