#include "brum/readers/definitions.h"

#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

#include "tests/readers/reading.h"

namespace brum::testing {

namespace {

const std::string declarations =
    "(declare-const i Int)(declare-const j Int)(declare-const x Real)(declare-const p Bool)";

}  // namespace

TEST(Definitions, ReplaceParametersByArguments) {
  const std::vector<std::pair<std::string, std::string>> rows{
      {"(define-fun f () Int (+ i 1))(assert (= f 2))", "(= (+ i 1) 2)"},
      {"(define-const f Int (+ i 1))(assert (= f 2))", "(= (+ i 1) 2)"},
      {"(define-fun f ((a Int) (b Int)) Bool (<= (+ a 1) b))(assert (f (* i j) i))",
       "(<= (+ (* i j) 1) i)"},
      {"(define-fun f ((a Int) (b Int)) Bool (<= b a))(assert (f i j))", "(<= j i)"},
      {"(define-fun f ((a Int)) Int a)(assert (= (f i) j))", "(= i j)"},
      {"(define-fun f ((a Int)) Int 7)(assert (= (f i) j))", "(= 7 j)"},
      {"(define-fun f ((i Int)) Int (+ i j))(assert (= (f 3) i))", "(= (+ 3 j) i)"},
      {"(define-fun f ((a Bool) (a Int)) Int a)(assert (= (f p 3) i))", "(= 3 i)"},
      {"(define-fun f ((a Int)) Int (let ((b (+ a 1))) (* b j)))(assert (= (f 3) i))",
       "(= (* (+ 3 1) j) i)"},
      {"(define-fun f ((a Bool) (b Bool)) Bool (=> a b))(assert (f p (f true p)))",
       "(or (not p) (or (not true) p))"},
      {"(define-fun f ((a Int)) Int (+ a 1))(define-fun g ((b Int)) Int (f (f b)))"
       "(assert (= (g i) j))",
       "(= (+ (+ i 1) 1) j)"},
      {"(define-fun f ((a Int) (b Int)) Int (+ a b))(define-fun g ((b Int) (a Int)) Int (f a b))"
       "(assert (= (g i j) 0))",
       "(= (+ j i) 0)"},
  };
  for (const auto& [text, expected] : rows) {
    EXPECT_EQ(assertion_text(declarations + text), expected) << text;
  }
}

TEST(Definitions, TakeIntegersForReals) {
  const std::vector<std::pair<std::string, std::string>> rows{
      {"(define-fun f ((a Real)) Real a)(assert (= (f i) j))", "(= (to_real i) (to_real j))"},
      {"(define-fun f ((a Real)) Real a)(assert (= (f 1.0) x))", "(= (to_real 1) x)"},
      {"(define-fun f ((a Real) (b Real)) Bool (<= a b))(assert (f i j))",
       "(<= (to_real i) (to_real j))"},
      {"(define-fun f ((a Real)) Real (ite p a x))(assert (= (f i) x))",
       "(= (ite p (to_real i) x) x)"},
      {"(define-fun f () Real i)(assert (= f j))", "(= (to_real i) (to_real j))"},
  };
  for (const auto& [text, expected] : rows) {
    EXPECT_EQ(assertion_text(declarations + text), expected) << text;
  }
}

TEST(Definitions, DivisionLooksAtTheArguments) {
  const std::vector<std::pair<std::string, std::string>> rows{
      {"(define-fun f ((a Int) (b Int)) Int (div a b))(assert (= (f i 3) j))",
       "(= (to_int (* (/ 1 3) (to_real i))) j)"},
      {"(define-fun f ((a Int) (b Int)) Int (div a b))(define-fun g ((b Int)) Int (f b (- 3)))"
       "(assert (= (g i) j))",
       "(= (* (- 1) (to_int (* (/ 1 3) (to_real i)))) j)"},
      {"(define-fun f ((a Int) (b Int)) Int (mod a b))(assert (= (f i 1) j))", "(= 0 j)"},
      {"(define-fun f ((a Int) (b Int)) Int (mod a b))(assert (= (f i 0) j))",
       "(= (brum.remainder_at_zero.1 i) j)"},
      {"(define-fun f ((a Real)) Real (/ x a))(assert (= (f 2) x))", "(= (* (/ 1 2) x) x)"},
      {"(define-fun f ((a Real)) Real (/ a 2))(assert (= (f x) x))", "(= (* (/ 1 2) x) x)"},
      {"(define-fun f ((a Real) (b Real)) Real (/ a b))(assert (= (f 3 2) x))", "(= (/ 3 2) x)"},
  };
  for (const auto& [text, expected] : rows) {
    EXPECT_EQ(assertion_text(declarations + text), expected) << text;
  }
}

TEST(Definitions, EachApplicationGetsItsOwnQuotient) {
  TermManager mgr;
  Script script;
  read_into(script, mgr,
            declarations +
                "(define-fun f ((a Int) (b Int)) Int (div a b))"
                "(assert (= (f i j) (+ (f j i) (f i j))))(assert (= (f i j) 1))");
  std::vector<std::string> operations;
  for (const IntroducedSymbol& symbol : script.introduced) {
    operations.push_back(symbol.symbol->name);
  }
  EXPECT_EQ(operations, (std::vector<std::string>{"brum.quotient_at_zero.1", "brum.quotient.2",
                                                  "brum.quotient.3"}));
  ASSERT_EQ(script.commands.size(), 2U);
  EXPECT_EQ(script.commands[0].term->symbol, mgr.get_and_symbol());
  EXPECT_EQ(text_of(mgr, script.commands[1].term), "(= brum.quotient.2 1)")
      << "its condition is in force";
}

TEST(Definitions, AQuotientWithoutParametersIsDeferredToo) {
  TermManager mgr;
  Script script;
  read_into(script, mgr,
            declarations + "(define-fun f ((a Int)) Int (+ a (div i j)))(assert (= (f 1) (f 2)))");
  ASSERT_EQ(script.commands.size(), 1U);
  const Term* whole = script.commands[0].term;
  ASSERT_EQ(whole->symbol, mgr.get_and_symbol());
  EXPECT_EQ(text_of(mgr, whole->children[0]), "(= (+ 1 brum.quotient.2) (+ 2 brum.quotient.2))");
}

TEST(Definitions, LargeDistinctOfParameters) {
  std::string parameters;
  std::string names;
  std::string arguments;
  for (int i = 0; i < 200; ++i) {
    parameters += "(a" + std::to_string(i) + " Int)";
    names += " a" + std::to_string(i);
    arguments += " " + std::to_string(i);
  }
  TermManager mgr;
  Script script;
  read_into(script, mgr,
            "(set-logic QF_LIA)(define-fun f (" + parameters + ") Bool (distinct" + names +
                "))(assert (f" + arguments + "))(assert (not (f" + arguments + ")))");
  EXPECT_EQ(script.introduced.size(), 4U) << "one application of both, remembered";
  EXPECT_EQ(script.output_logic(), "QF_UFLIA");
}

TEST(Definitions, ATowerCostsAStepForEachOfItsFloors) {
  // Each uses the one below twice; written out the last one holds 2^64 sums.
  std::string text = "(declare-const i Int)(define-fun f0 ((a Int)) Int (+ a 1))";
  for (int floor = 1; floor <= 64; ++floor) {
    const std::string below = "(f" + std::to_string(floor - 1) + " a)";
    text +=
        "(define-fun f" + std::to_string(floor) + " ((a Int)) Int (+ " + below + " " + below + "))";
  }
  TermManager mgr;
  const auto assertions = assertions_of(mgr, text + "(assert (= (f64 i) 0))");
  ASSERT_EQ(assertions.size(), 1U);
  EXPECT_LT(mgr.num_terms(), 200U);
  const Term* term = assertions[0]->children[0];
  for (int floor = 0; floor < 64; ++floor) {
    ASSERT_EQ(term->symbol, mgr.get_int_plus_symbol());
    EXPECT_EQ(term->children[0], term->children[1]);
    term = term->children[0];
  }
  EXPECT_EQ(text_of(mgr, term), "(+ i 1)");
}

TEST(Definitions, ManyApplicationsOverOneLargeTermAreLinear) {
  // Were the closed part of the body walked at each application, this would take minutes.
  constexpr int size = 20000;
  std::string text = "(declare-const i Int)(define-fun t0 () Int i)";
  for (int k = 1; k <= size; ++k) {
    text += "(define-fun t" + std::to_string(k) + " () Int (+ t" + std::to_string(k - 1) + " " +
            std::to_string(k) + "))";
  }
  text += "(define-fun f ((a Int)) Bool (<= a t" + std::to_string(size) + "))";
  for (int k = 0; k < size; ++k) {
    text += "(define-fun g" + std::to_string(k) + " ((a Int)) Bool (f (+ a " + std::to_string(k) +
            ")))(assert (g" + std::to_string(k) + " i))";
  }
  TermManager mgr;
  EXPECT_EQ(assertions_of(mgr, text).size(), static_cast<std::size_t>(size));
}

TEST(Definitions, RefuseWrongUses) {
  const std::vector<std::pair<std::string, std::string>> rows{
      {"(define-fun f ((a Int)) Bool (<= a 0))\n(assert (f i j))",
       "input:2:9: error: found 2 arguments of f, expected 1"},
      {"(define-fun f ((a Int)) Bool (<= a 0))\n(assert (f x))",
       "input:2:9: error: found Real as argument 1 of f, expected Int"},
      {"(define-fun f ((a Int)) Bool (<= a 0))\n(assert f)",
       "input:2:9: error: found f without arguments, expected a term"},
      {"(define-fun f () Bool p)\n(assert (f))",
       "input:2:10: error: found f, which takes no arguments, expected a function"},
      {"\n(define-fun f ((a Int)) Bool (+ a 0))",
       "input:2:30: error: found a term of sort Int, expected Bool"},
      {"\n(define-fun f ((a Int)) Bool (f a))",
       "input:2:31: error: found the symbol f, expected a declared symbol"},
      {"\n(define-fun f ((a Bool)) Bool (! a :named n))",
       "input:2:43: error: found :named in a definition with parameters, expected no name"},
      {"\n(define-fun f (a Int) Bool true)",
       "input:2:16: error: found the symbol a, expected '(' and a parameter, or ')'"},
  };
  for (const auto& [text, message] : rows) {
    EXPECT_EQ(error_of(declarations + text), message) << text;
  }
}

}  // namespace brum::testing
