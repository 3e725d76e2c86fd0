#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "tests/tools/command.h"
#include "tests/tools/solvers.h"

// What solvers say to the scripts that the command writes. A solver that is not installed is not
// asked; without any the tests report themselves as skipped.

namespace brum::testing {

namespace {

struct Script {
  const char* name;
  const char* text;
  std::vector<std::string> answers;
};

// Every one leaves assertion levels behind which a definition goes on being used.
const std::vector<Script>& incremental_scripts() {
  static const std::vector<Script> scripts = {
      {"a definition made inside a level is used behind it",
       R"((set-logic QF_BV)
(declare-fun a () (_ BitVec 8))
(declare-fun b () (_ BitVec 8))
(push 1)
(assert (bvult (bvadd a b) #x10))
(assert (bvult #x0f (bvadd a b)))
(check-sat)
(pop 1)
(assert (= (bvadd a b) #x42))
(check-sat)
(push 2)
(assert (distinct (bvmul (bvadd a b) (bvadd a b)) #x04))
(check-sat)
(pop 1)
(check-sat)
(pop 1)
(assert (= (bvmul (bvadd a b) (bvadd a b)) #x04))
(check-sat)
)",
       {"unsat", "sat", "unsat", "sat", "sat"}},
      {"a sort and symbols declared inside a level",
       R"((set-logic QF_UF)
(push 1)
(declare-sort S 0)
(declare-fun a () S)
(declare-fun f (S) S)
(assert (= (f (f a)) a))
(push 1)
(assert (distinct (f (f (f (f a)))) a))
(check-sat)
(pop 1)
(assert (distinct (f a) a))
(check-sat)
(pop 1)
(declare-sort S 0)
(declare-fun a () S)
(declare-fun b () S)
(assert (= a b))
(check-sat)
)",
       {"unsat", "sat", "sat"}},
      {"assumptions hold for one answer",
       R"((set-logic QF_LIA)
(declare-fun x () Int)
(declare-fun p () Bool)
(assert (=> p (<= 3 (* 2 x))))
(assert (=> (not p) (<= (* 2 x) 1)))
(check-sat-assuming (p (<= x 1)))
(check-sat-assuming (p))
(check-sat-assuming ((not p) (<= 1 x)))
(check-sat)
)",
       {"unsat", "sat", "unsat", "sat"}},
      {"resets at any level",
       R"((set-logic QF_LRA)
(declare-fun x () Real)
(assert (< (* 2.0 x) 1.0))
(push 3)
(assert (> (* 2.0 x) 1.0))
(check-sat)
(reset-assertions)
(declare-fun y () Real)
(assert (> (* 2.0 y) 1.0))
(check-sat)
(reset)
(set-logic QF_LRA)
(declare-fun x () Real)
(push 1)
(assert (and (< (* 2.0 x) 1.0) (= x 0.5)))
(check-sat)
(pop 1)
(check-sat)
)",
       {"unsat", "sat", "unsat", "sat"}},
      {"another status at each query",
       R"((set-logic QF_UF)
(declare-fun p () Bool)
(set-info :status sat)
(check-sat)
(push 1)
(assert (and p (not p)))
(set-info :status unsat)
(check-sat)
(pop 1)
(set-info :status sat)
(check-sat)
)",
       {"sat", "unsat", "sat"}},
      {"names and attributes, inside and outside levels",
       R"((set-logic QF_UFLIA)
(declare-fun f (Int) Int)
(declare-fun x () Int)
(declare-fun p () Bool)
(push 1)
(assert (! (<= (! (f (! x :named the_x)) :named image) 3) :named |at most|))
(assert (or (! (and p (<= 4 image)) :named both :level 7) (! p :named |p twice|)))
(check-sat)
(assert (and (or p both) (not p)))
(check-sat)
(pop 1)
(assert (! (<= (f x) 3) :named |at most|))
(assert (! (<= 4 (f x)) :named other))
(check-sat)
)",
       {"sat", "unsat", "unsat"}},
      {"a named term inside an assertion that is also part of another one",
       R"((set-logic QF_UF)
(declare-fun a () Bool)
(declare-fun b () Bool)
(declare-fun c () Bool)
(declare-fun d () Bool)
(assert (and (! (or a b) :named part) c))
(push 1)
(assert (or (and (or a b) c) d))
(assert (not part))
(check-sat)
(pop 1)
(check-sat)
)",
       {"unsat", "sat"}},
  };
  return scripts;
}

std::string convert(const std::vector<std::string>& arguments, const std::string& text) {
  const Outcome outcome = brumlin(arguments, text);
  EXPECT_EQ(outcome.status, 0) << outcome.err;
  return outcome.out;
}

}  // namespace

TEST(TraceAnswers, AreThoseOfTheInput) {
  const std::vector<Solver> solvers = installed_solvers();
  if (solvers.empty()) {
    GTEST_SKIP() << "neither z3 nor cvc5 is installed";
  }
  for (const Solver& solver : solvers) {
    for (const Script& script : incremental_scripts()) {
      SCOPED_TRACE(solver.program + ": " + script.name);
      // The answers written here are right: the solver finds them for the input.
      EXPECT_EQ(answers(solver, script.text), script.answers);
      const std::string trace = convert({"-t", "trace", "--label", "d_"}, script.text);
      EXPECT_EQ(answers(solver, trace), script.answers) << trace;
      if (solver.takes_dotted_labels) {
        const std::string dotted = convert({"-t", "trace"}, script.text);
        EXPECT_EQ(answers(solver, dotted), script.answers) << dotted;
      }
    }
  }
}

TEST(DocumentAnswers, AreThoseOfEachQuery) {
  const std::vector<Solver> solvers = installed_solvers();
  if (solvers.empty()) {
    GTEST_SKIP() << "neither z3 nor cvc5 is installed";
  }
  for (const Solver& solver : solvers) {
    for (const Script& script : incremental_scripts()) {
      for (std::size_t i = 0; i < script.answers.size(); ++i) {
        for (const char* form : {"v2", "define-fun"}) {
          const std::string query = std::to_string(i + 1);
          SCOPED_TRACE(solver.program + ": " + script.name + ", " + form + ", query " + query);
          const std::string document =
              convert({"-t", form, "--label", "d_", "--query", query}, script.text);
          EXPECT_EQ(answers(solver, document), std::vector<std::string>{script.answers[i]})
              << document;
        }
      }
      SCOPED_TRACE(solver.program + ": " + script.name + ", terms");
      const std::string terms = convert({"-t", "terms", "--label", "d_"}, script.text);
      EXPECT_EQ(answers(solver, terms), std::vector<std::string>{"sat"}) << terms;
    }
  }
}

}  // namespace brum::testing
