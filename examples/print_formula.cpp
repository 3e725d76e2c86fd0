// Builds a formula through the API and prints it in both versions of SMT-LIB.

#include <exception>
#include <iostream>

#include "brum/brum.h"

namespace {

const brum::Term* strip_without_diagonal(brum::TermManager& mgr) {
  const brum::Term* x = mgr.make_term(mgr.declare("x", mgr.get_real_type()));
  const brum::Term* y = mgr.make_term(mgr.declare("y", mgr.get_real_type()));
  const brum::Term* sum = mgr.make_plus(x, y);  // used twice: it is bound to a name once
  const brum::Term* inside =
      mgr.make_and(mgr.make_leq(mgr.make_number(0), sum), mgr.make_leq(sum, mgr.make_number(1)));
  return mgr.make_and(inside, mgr.make_not(mgr.make_equal(x, y)));
}

}  // namespace

int main() {
  try {
    brum::TermManager mgr;
    const brum::Term* formula = strip_without_diagonal(mgr);
    for (const bool v1_format : {true, false}) {
      brum::SmtLibTermPrinter printer(v1_format, &mgr, "QF_LRA", "sat");
      printer.print_formula(std::cout, formula);
    }
  } catch (const std::exception& problem) {
    std::cerr << problem.what() << '\n';
    return 1;
  }
  return 0;
}
