// Writes an API trace of an incremental run: each assertion is printed as it is made, and refers to
// the definitions that earlier ones left behind.

#include <exception>
#include <iostream>
#include <string>

#include "brum/brum.h"

int main() {
  try {
    brum::TermManager mgr;
    const brum::DataType* word = mgr.make_bv_type(16);
    const brum::Symbol* seed = mgr.declare("seed", word);

    // Header and declarations are the caller's. The definitions of a trace are remembered for good,
    // so they must outlive a pop.
    brum::SmtLib2TermPrinter printer(&mgr, "QF_BV", "", true, nullptr);
    std::cout << "(set-option :global-declarations true)\n";
    printer.print_start(std::cout);
    printer.print_symbol_declaration(std::cout, seed);

    const brum::Term* state = mgr.make_term(seed);
    for (int step = 1; step <= 3; ++step) {
      const brum::Term* shifted = mgr.make_bvshl(state, mgr.make_bv_number(7, 16));
      state = mgr.make_bvxor(mgr.make_bvadd(state, shifted), state);
      const brum::Term* small = mgr.make_bvult(state, mgr.make_bv_number(256, 16));
      std::cout << "(push 1)\n";
      printer.apitracer_print_term(std::cout, small, ":named small_" + std::to_string(step));
      std::cout << "(check-sat)\n(pop 1)\n";
      printer.apitracer_print_term(std::cout, mgr.make_not(small), "");
    }
    std::cout << "(check-sat)\n";
  } catch (const std::exception& problem) {
    std::cerr << problem.what() << '\n';
    return 1;
  }
  return 0;
}
