// Prints a formula with attributes around some of its terms: a name to ask for its value later, and
// hints for whoever reads the script.

#include <exception>
#include <iostream>

#include "brum/brum.h"

int main() {
  try {
    brum::TermManager mgr;
    const brum::Term* x = mgr.make_term(mgr.declare("x", mgr.get_int_type()));
    const brum::Term* y = mgr.make_term(mgr.declare("y", mgr.get_int_type()));
    const brum::Term* gap = mgr.make_plus(x, mgr.make_times(mgr.make_number(-2), y));
    const brum::Term* bounded = mgr.make_leq(gap, mgr.make_number(10));

    brum::AnnotationMap attributes;
    attributes[gap] = {{"named", "gap"}};
    attributes[bounded] = {{"named", "bounded"}, {"origin", "|line 12|"}};
    mgr.declare("gap", mgr.get_int_type());  // no label may take the name
    mgr.declare("bounded", mgr.get_bool_type());

    brum::SmtLib2TermPrinter printer(&mgr, "QF_LIA", "sat", false, &attributes);
    printer.print_formula(std::cout, bounded);
    std::cout << "(check-sat)\n";
  } catch (const std::exception& problem) {
    std::cerr << problem.what() << '\n';
    return 1;
  }
  return 0;
}
