#include "tests/tools/solvers.h"

#include <sstream>

#include "tests/tools/command.h"

namespace brum::testing {

std::vector<Solver> installed_solvers() {
  std::vector<Solver> solvers;
  if (is_installed("z3")) {
    solvers.push_back({"z3", {"-smt2"}, true});
  }
  if (is_installed("cvc5")) {
    solvers.push_back({"cvc5", {"--lang=smt2", "--incremental"}, false});
  }
  return solvers;
}

std::vector<std::string> answers(const Solver& solver, const std::string& script) {
  const TemporaryFolder folder;
  Start start{.words = {solver.program}};
  start.words.insert(start.words.end(), solver.options.begin(), solver.options.end());
  start.words.push_back(folder.write("script.smt2", script));
  const Outcome outcome = run(start);
  std::vector<std::string> lines;
  std::istringstream text(outcome.out);
  for (std::string line; std::getline(text, line);) {
    // Warnings of z3 about attributes and logics that it does not know.
    if (!line.starts_with("WARNING:") && !line.starts_with("; ignoring")) {
      lines.push_back(line);
    }
  }
  return lines;
}

}  // namespace brum::testing
