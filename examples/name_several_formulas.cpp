// Names several formulas in one script, so that whoever reads it can refer to each by its label.

#include <exception>
#include <iostream>
#include <vector>

#include "brum/brum.h"

int main() {
  try {
    brum::TermManager mgr;
    const brum::DataType* node = mgr.make_uninterpreted_type("Node");
    const brum::Term* root = mgr.make_term(mgr.declare("root", node));
    const brum::Symbol* next = mgr.declare("next", mgr.make_function_type({node}, node));

    // root, next(root), next(next(root)), ... are all different from the root.
    std::vector<const brum::Term*> lemmas;
    const brum::Term* reached = root;
    for (int steps = 0; steps < 3; ++steps) {
      reached = mgr.make_term(next, {reached});
      lemmas.push_back(mgr.make_not(mgr.make_equal(reached, root)));
    }

    // Labels of our own: some solvers refuse `.def_7` as the name of a command's definition.
    brum::WithLabelPrefix<brum::SmtLib2TermPrinter> printer("lemma_", &mgr, "QF_UF", "sat", true,
                                                            nullptr);
    printer.print_terms(std::cout, lemmas);
    std::cout << "(check-sat)\n";
    for (const brum::Term* lemma : lemmas) {
      std::string label;
      printer.get_define_label(lemma, label);
      std::cout << "; " << label << '\n';
    }
  } catch (const std::exception& problem) {
    std::cerr << problem.what() << '\n';
    return 1;
  }
  return 0;
}
