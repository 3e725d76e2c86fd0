#ifndef BRUM_TESTS_TOOLS_SOLVERS_H
#define BRUM_TESTS_TOOLS_SOLVERS_H

#include <string>
#include <vector>

namespace brum::testing {

/// A program that answers scripts of SMT-LIB 2, incremental ones too.
struct Solver {
  std::string program;
  std::vector<std::string> options;
  bool takes_dotted_labels;  // names such as .def_3 in define-fun
};

/// The solvers that are installed here.
std::vector<Solver> installed_solvers();

/// What the solver says to a script, line by line, warnings aside; errors are lines too.
std::vector<std::string> answers(const Solver& solver, const std::string& script);

}  // namespace brum::testing

#endif
