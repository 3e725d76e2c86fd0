#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <initializer_list>
#include <sstream>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "brum/printers/check_names.h"
#include "brum/readers/smtlib1_reader.h"
#include "brum/readers/smtlib2_operators.h"
#include "tests/readers/reading.h"

// Names of operators that a script gives a meaning of its own, as its logic lacks their theory.

namespace brum::testing {

namespace {

using Words = std::vector<std::string_view>;

const Words core = {"true", "false", "not", "and", "or", "xor", "=>", "=", "distinct", "ite"};
const Words of_arrays = {"select", "store"};
const Words of_numbers = {"+", "*", "-", "<=", "<", ">=", ">"};
const Words of_integers = {"div", "mod", "abs", "divisible"};
const Words of_both = {"to_real", "to_int", "is_int"};
// Without those that came after version 2.6, which are free everywhere.
const Words of_bit_vectors = {
    "concat", "bvnot",   "bvneg",       "bvand",        "bvor",        "bvxor",       "bvadd",
    "bvmul",  "bvnand",  "bvnor",       "bvxnor",       "bvcomp",      "bvsub",       "bvudiv",
    "bvurem", "bvsdiv",  "bvsrem",      "bvsmod",       "bvshl",       "bvlshr",      "bvashr",
    "bvult",  "bvule",   "bvugt",       "bvuge",        "bvslt",       "bvsle",       "bvsgt",
    "bvsge",  "extract", "rotate_left", "rotate_right", "zero_extend", "sign_extend", "repeat"};

Words joined(std::initializer_list<Words> parts) {
  Words all;
  for (const Words& part : parts)
    all.insert(all.end(), part.begin(), part.end());
  return all;
}

/// The names of operators that a script of this logic may not declare.
Words taken_names(const std::string& logic) {
  Words taken;
  for (const Operator& op : smtlib2_operators()) {
    const std::string declaration = "(declare-const " + std::string(op.name) + " Bool)";
    const std::string header = logic.empty() ? "" : "(set-logic " + logic + ")";
    const std::string message = error_of(header + '\n' + declaration);
    if (message == "no error")
      continue;
    EXPECT_EQ(message, "input:2:1: error: found " + std::string(op.name) +
                           ", which is an operator of a theory, expected a new name");
    taken.push_back(op.name);
  }
  return taken;
}

std::vector<std::string> assertion_texts(const std::string& text) {
  TermManager mgr;
  Script script;
  read_into(script, mgr, text);
  std::vector<std::string> texts;
  for (const Command& command : script.commands) {
    if (command.kind == Command::Kind::assertion)
      texts.push_back(text_of(mgr, command.term));
  }
  return texts;
}

using Texts = std::vector<std::string>;

const std::string uf = "(set-logic QF_UF)(declare-sort U 0)(declare-const u U)";

}  // namespace

TEST(OperatorNames, AreTakenWhereTheLogicHasTheirTheory) {
  const Words everything =
      joined({core, of_arrays, of_numbers, {"/"}, of_integers, of_both, of_bit_vectors});
  const std::vector<std::pair<std::string, Words>> rows = {
      {"QF_UF", core},
      {"UF", core},
      {"QF_AX", joined({core, of_arrays})},
      {"QF_BV", joined({core, of_bit_vectors})},
      {"QF_FP", joined({core, of_bit_vectors})},
      {"QF_ABV", joined({core, of_arrays, of_bit_vectors})},
      {"QF_IDL", joined({core, of_numbers, of_integers})},
      {"QF_LIA", joined({core, of_numbers, of_integers})},
      {"QF_UFLRA", joined({core, of_numbers, {"/"}})},
      {"QF_NIRA", joined({core, of_numbers, {"/"}, of_integers, of_both})},
      {"AUFBVNIRA", everything},
      {"ALL", everything},
      {"MY_LOGIC", everything},
      {"", everything},
  };
  for (const auto& [logic, taken] : rows)
    EXPECT_THAT(taken_names(logic), ::testing::UnorderedElementsAreArray(taken)) << logic;
}

TEST(OperatorNames, StandForWhatIsDeclared) {
  EXPECT_EQ(assertion_text(uf + "(declare-fun select (U) U)(assert (= u (select (select u))))"),
            "(= u (select (select u)))");
  EXPECT_EQ(assertion_text(uf + "(declare-fun - (U) U)(assert (= u (- u)))"), "(= u (- u))");
  EXPECT_EQ(assertion_text(uf + "(declare-const extract U)(assert (= u extract))"),
            "(= u extract)");
  EXPECT_EQ(assertion_text(uf + "(declare-fun mod () U)(assert (= mod (as mod U)))"),
            "(= mod mod)");
  EXPECT_EQ(assertion_text("(set-logic QF_BV)(declare-const bvuaddo Bool)(assert bvuaddo)"),
            "bvuaddo");
  EXPECT_EQ(error_of(uf + "(declare-fun select (U) U)\n(assert (select u u))"),
            "input:2:9: error: found 2 arguments of select, expected 1");
  EXPECT_EQ(error_of(uf + "(declare-fun select (U) U)\n(assert (= u select))"),
            "input:2:14: error: found select without arguments, expected a term");
  EXPECT_EQ(error_of(uf + "(declare-const select U)\n(assert (select u u))"),
            "input:2:10: error: found select, which takes no arguments, expected a function");
  EXPECT_EQ(error_of(uf + "(declare-const select U)\n(declare-const select U)"),
            "input:2:1: error: found select, which is declared already, expected a new name");
}

TEST(OperatorNames, StandForWhatIsDefined) {
  EXPECT_EQ(assertion_text("(set-logic QF_UF)(declare-const p Bool)"
                           "(define-fun + ((a Bool) (b Bool)) Bool (and a b))(assert (+ p p))"),
            "(and p p)");
  EXPECT_EQ(assertion_text("(set-logic QF_LIA)(define-fun / ((a Int) (b Int)) Int (+ a b))"
                           "(assert (= (/ 6 3) 2))"),
            "(= (+ 6 3) 2)");
  EXPECT_EQ(assertion_text("(set-logic QF_LRA)(define-const div Real 2.5)(assert (<= div 3))"),
            "(<= (/ 5 2) 3)");
  EXPECT_EQ(assertion_text("(set-logic QF_BV)"
                           "(define-fun bvnego ((a (_ BitVec 2))) Bool (= a #b10))"
                           "(assert (bvnego #b01))"),
            "(= (_ bv1 2) (_ bv2 2))");
}

TEST(OperatorNames, StandForNamedTerms) {
  EXPECT_EQ(assertion_texts("(set-logic QF_UF)(declare-const p Bool)"
                            "(assert (! (not p) :named select))(assert (or select p))"
                            "(assert (and (! p :named abs) abs))"),
            (Texts{"(not p)", "(or (not p) p)", "(and p p)"}));
  EXPECT_EQ(error_of("(set-logic QF_AX)\n(assert (! true :named select))"),
            "input:2:24: error: found select, which is an operator of a theory, expected a new "
            "name");
}

// What is written may need the operator, or may be of another logic.
TEST(OperatorNames, AreToldWithASuffixWhereTheyNameATerm) {
  TermManager mgr;
  Script script;
  read_into(script, mgr,
            "(set-logic QF_UF)(declare-const p Bool)(declare-const select.2 Bool)"
            "(assert (! (or p (! (not p) :named |+|)) :named select))"
            "(assert (! (and p p) :named plain))(declare-const +.2 Bool)(assert +.2)");
  ASSERT_EQ(script.commands.size(), 3U);
  EXPECT_EQ(script.commands[0].name, "select.3");
  EXPECT_EQ(script.commands[1].name, "plain");
  const Term* negation = script.commands[0].term->children[1];
  ASSERT_NE(script.annotations.find(negation), script.annotations.end());
  using Attributes = std::vector<std::pair<std::string, std::string>>;
  EXPECT_EQ(script.annotations[negation], (Attributes{{"named", "+.2"}}));
  EXPECT_EQ(text_of(mgr, script.commands[2].term), "+.2.2");
}

TEST(OperatorNames, AreTheOperatorsAgainBehindTheScope) {
  const std::string arrays =
      "(set-logic QF_UF)(declare-const a (Array Bool Bool))(declare-const p Bool)";
  const Texts expected = {"(not p)", "(select a p)"};
  EXPECT_EQ(assertion_texts(arrays + "(push 1)(declare-fun select (Bool) Bool)(pop 1)"
                                     "(assert (not p))(assert (select a p))"),
            expected);
  EXPECT_EQ(assertion_texts(arrays + "(push 1)(define-fun select ((x Bool)) Bool (not x))"
                                     "(assert (select p))(pop 1)(assert (select a p))"),
            expected);
  EXPECT_EQ(assertion_texts(arrays + "(push 1)(assert (! (not p) :named select))(pop 1)"
                                     "(assert (select a p))"),
            expected);
  EXPECT_EQ(assertion_texts("(set-option :global-declarations true)" + arrays +
                            "(push 1)(define-fun select ((x Bool)) Bool (not x))(pop 1)"
                            "(assert (select p))(reset)(set-logic QF_AX)"
                            "(declare-const a (Array Bool Bool))(declare-const p Bool)"
                            "(assert (select a p))"),
            expected);
  EXPECT_EQ(error_of("(set-logic QF_UF)(declare-const select Bool)(reset)\n"
                     "(declare-const select Bool)"),
            "input:2:1: error: found select, which is an operator of a theory, expected a new "
            "name");
}

TEST(OperatorNames, AreTheOperatorsWhereNothingElseIsDeclared) {
  EXPECT_EQ(assertion_texts("(set-logic QF_UF)(declare-const i Int)"
                            "(declare-const b (_ BitVec 2))(declare-const a (Array Int Int))"
                            "(assert (= (select a (+ i 1)) (- 3)))(assert (bvult b (bvadd b b)))"
                            "(assert (bvusubo b b))(push 1)(declare-const extract Bool)"
                            "(assert (= ((_ extract 0 0) b) #b1))"),
            (Texts{"(= (select a (+ i 1)) (- 3))", "(bvult b (bvadd b b))", "(bvult b b)",
                   "(= ((_ extract 0 0) b) (_ bv1 1))"}));
}

// A document would read otherwise under a logic that has the theory.
TEST(OperatorNames, AreNotWritableAsDeclaredSymbols) {
  TermManager mgr;
  for (const Operator& op : smtlib2_operators()) {
    const Symbol* symbol = mgr.declare(std::string(op.name), mgr.get_bool_type());
    EXPECT_EQ(check_names({symbol}, false).size(), 1U) << op.name;
  }
}

TEST(OperatorNames, AreFreeInBenchmarksOfOtherLogics) {
  const std::vector<std::pair<std::string, std::string>> rows = {
      {"QF_UF", "+"},      {"QF_UF", "~"},       {"QF_UF", "select"}, {"QF_UF", "bvlt"},
      {"QF_LIA", "div"},   {"QF_LIA", "/"},      {"QF_LIA", "store"}, {"QF_LRA", "bvadd"},
      {"QF_BV", "bvnego"}, {"QF_BV", "bvuaddo"}, {"QF_AX", "concat"}, {"QF_NIRA", "is_int"},
  };
  for (const auto& [logic, name] : rows) {
    std::istringstream in("(benchmark b :logic " + logic + " :extrapreds ((" + name +
                          ")) :formula (not " + name + "))");
    TermManager mgr;
    Script script;
    SmtLib1Reader(mgr).read(in, script);
    const Term* predicate = mgr.make_term(mgr.declare(name, mgr.get_bool_type()));
    EXPECT_EQ(script.at_end().assertions.front(), mgr.make_not(predicate)) << name;
  }
}

}  // namespace brum::testing
