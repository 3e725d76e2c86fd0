#include "brum/readers/partial_operators.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "tests/readers/reading.h"

namespace brum::testing {

namespace {

/// The parts of a conjunction that is nested in its first argument, outermost last.
std::vector<const Term*> conjuncts(const TermManager& mgr, const Term* term, std::size_t count) {
  std::vector<const Term*> parts;
  for (; parts.size() + 1 < count && term->symbol == mgr.get_and_symbol();
       term = term->children[0]) {
    parts.insert(parts.begin(), term->children[1]);
  }
  parts.insert(parts.begin(), term);
  return parts;
}

const Term* constant(TermManager& mgr, const std::string& name) {
  return mgr.make_term(mgr.get_signature()->get_symbol(name));
}

}  // namespace

TEST(PartialOperators, AQuotientOfRealsIsAConstantWithACondition) {
  TermManager mgr;
  Script script;
  read_into(script, mgr,
            "(set-logic QF_NRA)(declare-const x Real)(declare-const y Real)"
            "(assert (= (/ x y) 1))");
  ASSERT_EQ(script.introduced.size(), 2U);
  const IntroducedSymbol& at_zero = script.introduced[0];
  EXPECT_STREQ(at_zero.symbol->name, "brum.real_quotient_at_zero.1");
  EXPECT_EQ(at_zero.symbol->type->to_str(), "(-> Real Real)");
  EXPECT_EQ(at_zero.operation, "/");
  EXPECT_TRUE(at_zero.arguments.empty());
  const IntroducedSymbol& quotient = script.introduced[1];
  EXPECT_STREQ(quotient.symbol->name, "brum.quotient.2");
  EXPECT_EQ(quotient.operation, "/");
  EXPECT_EQ(quotient.arguments, (std::vector<const Term*>{constant(mgr, "x"), constant(mgr, "y")}));

  const Term* x = constant(mgr, "x");
  const Term* y = constant(mgr, "y");
  const Term* q = mgr.make_term(quotient.symbol);
  const Term* zero = mgr.make_equal(y, mgr.make_number(QNumber(0), mgr.get_real_type()));
  const Term* value = mgr.make_equal(q, mgr.make_number(QNumber(1), mgr.get_real_type()));
  const Term* condition = mgr.make_and(
      mgr.make_or(mgr.make_not(zero), mgr.make_equal(q, mgr.make_term(at_zero.symbol, {x}))),
      mgr.make_or(zero, mgr.make_equal(mgr.make_times(y, q), x)));
  ASSERT_EQ(script.commands.size(), 1U);
  EXPECT_EQ(script.commands[0].term, mgr.make_and(value, condition));
  EXPECT_EQ(script.output_logic(), "QF_UFNRA");
}

TEST(PartialOperators, QuotientAndRemainderOfIntegersShareAConstant) {
  TermManager mgr;
  Script script;
  read_into(script, mgr,
            "(set-logic QF_NIA)(declare-const i Int)(declare-const j Int)"
            "(assert (= (div i j) (mod i j)))");
  ASSERT_EQ(script.introduced.size(), 3U);
  EXPECT_EQ(script.introduced[0].operation, "div");
  EXPECT_EQ(script.introduced[1].operation, "div");
  EXPECT_EQ(script.introduced[2].operation, "mod");
  const Term* i = constant(mgr, "i");
  const Term* j = constant(mgr, "j");
  const Term* q = mgr.make_term(script.introduced[1].symbol);
  const Term* zero = mgr.make_number(QNumber(0));
  const Term* minus_one = mgr.make_number(QNumber(-1));
  const Term* j_is_zero = mgr.make_equal(j, zero);
  const Term* product = mgr.make_times(j, q);
  const Term* remainder = mgr.make_ite(j_is_zero, mgr.make_term(script.introduced[2].symbol, {i}),
                                       mgr.make_plus(i, mgr.make_times(minus_one, product)));
  const Term* size = mgr.make_ite(mgr.make_leq(zero, j), j, mgr.make_times(minus_one, j));
  const Term* in_range = mgr.make_and(mgr.make_leq(product, i),
                                      mgr.make_not(mgr.make_leq(mgr.make_plus(product, size), i)));
  const Term* condition =
      mgr.make_and(mgr.make_or(mgr.make_not(j_is_zero),
                               mgr.make_equal(q, mgr.make_term(script.introduced[0].symbol, {i}))),
                   mgr.make_or(j_is_zero, in_range));
  ASSERT_EQ(script.commands.size(), 1U);
  EXPECT_EQ(script.commands[0].term, mgr.make_and(mgr.make_equal(q, remainder), condition));
  EXPECT_EQ(script.output_logic(), "QF_UFNIA");
}

TEST(PartialOperators, DivisionByTheNumeralZeroIsAFunction) {
  EXPECT_EQ(assertion_text("(declare-const x Real)(assert (= (/ x 0) x))"),
            "(= (brum.real_quotient_at_zero.1 x) x)");
  EXPECT_EQ(assertion_text("(declare-const i Int)(assert (= (div i 0) (mod i (- 0))))"),
            "(= (brum.quotient_at_zero.1 i) (brum.remainder_at_zero.2 i))");
  EXPECT_EQ(assertion_text("(declare-const i Int)(assert (= (/ 1 0.0) (/ i 0)))"),
            "(= (brum.real_quotient_at_zero.1 (to_real 1)) "
            "(brum.real_quotient_at_zero.1 (to_real i)))");
}

TEST(PartialOperators, NamesKeepClearOfTheUsers) {
  EXPECT_EQ(assertion_text("(declare-const brum.quotient_at_zero.1 Int)"
                           "(assert (= (div brum.quotient_at_zero.1 0) 1))"),
            "(= (brum.quotient_at_zero.2 brum.quotient_at_zero.1) 1)");
  EXPECT_EQ(assertion_text("(declare-const i Int)(define-fun d () Int (div i 0))"
                           "(declare-fun brum.quotient_at_zero.1 (Int) Int)"
                           "(assert (= d (brum.quotient_at_zero.1 i)))"),
            "(= (brum.quotient_at_zero.1 i) (brum.quotient_at_zero.1.2 i))");
}

TEST(PartialOperators, ADefinitionBringsTheConditionsOfAllItsQuotients) {
  TermManager mgr;
  Script script;
  read_into(script, mgr,
            "(declare-const x Real)(declare-const y Real)(declare-const p Bool)"
            "(define-fun both () Bool (<= (/ x y) (/ y x)))"
            "(push 1)(assert both)(pop 1)(assert p)(assert both)");
  std::vector<std::size_t> parts;
  for (const Command& command : script.commands) {
    if (command.kind == Command::Kind::assertion) {
      parts.push_back(conjuncts(mgr, command.term, 3).size());
    }
  }
  EXPECT_EQ(parts, (std::vector<std::size_t>{3, 1, 3}));
}

TEST(PartialOperators, AConditionIsAssertedOnceWhileItIsInForce) {
  TermManager mgr;
  Script script;
  read_into(script, mgr,
            "(set-logic QF_NRA)(declare-const x Real)(declare-const y Real)"
            "(define-fun q () Real (/ x y))"
            "(define-fun bound () Bool (<= q 3))"
            "(assert (= x 1))"
            "(push 1)(assert bound)(assert (! bound :named b))(assert b)(pop 1)"
            "(push 1)(assert (<= q 4))(pop 1)"
            "(check-sat-assuming (bound))"
            "(assert bound)(push 1)(assert (<= (/ x y) 5))(pop 1)(check-sat-assuming (bound))");
  std::vector<std::size_t> parts;
  std::vector<std::size_t> conditions;
  for (const Command& command : script.commands) {
    if (command.kind == Command::Kind::assertion) {
      parts.push_back(conjuncts(mgr, command.term, 2).size());
    } else if (command.kind == Command::Kind::check_sat_assuming) {
      conditions.push_back(command.question->conditions.size());
    }
  }
  EXPECT_EQ(parts, (std::vector<std::size_t>{1, 2, 1, 1, 2, 2, 1}));
  EXPECT_EQ(conditions, (std::vector<std::size_t>{1, 0}));
  const Query query = script.query(1);
  EXPECT_EQ(query.assumptions.size(), 2U) << "the literal and the condition";
}

TEST(PartialOperators, LargeDistinctIsLinear) {
  constexpr std::size_t count = 5000;
  std::string text = "(set-logic QF_UF)(declare-sort U 0)";
  std::string names;
  for (std::size_t i = 0; i < count; ++i) {
    const std::string name = "c" + std::to_string(i);
    text += "(declare-const " + name + " U)";
    names += " " + name;
  }
  TermManager mgr;
  Script script;
  read_into(script, mgr, text + "(assert (distinct" + names + "))");
  EXPECT_LT(mgr.num_terms(), 20 * count);
  EXPECT_EQ(script.output_logic(), "QF_UFLIA");
  ASSERT_EQ(script.introduced.size(), 4U);
  EXPECT_EQ(script.introduced[0].symbol->type->to_str(), "(-> U Int)");
  EXPECT_EQ(script.introduced[0].operation, "distinct");
}

TEST(PartialOperators, DistinctIsPairsUpToABound) {
  std::string text;
  std::string names;
  for (std::size_t i = 0; i < PartialOperators::largest_distinct_by_pairs; ++i) {
    text += "(declare-const i" + std::to_string(i) + " Int)";
    names += " i" + std::to_string(i);
  }
  TermManager mgr;
  Script script;
  read_into(script, mgr, text + "(assert (distinct" + names + "))");
  EXPECT_TRUE(script.introduced.empty());
  // 128 constants; 128 * 127 / 2 equalities, as many negations, and one conjunction less.
  EXPECT_EQ(mgr.num_terms(), 128U + 3U * 8128U - 1U);

  Script beyond;
  read_into(beyond, mgr, text + "(declare-const more Int)(assert (distinct more" + names + "))");
  EXPECT_EQ(beyond.introduced.size(), 4U);
}

TEST(PartialOperators, LargeDistinctNumbersItsTermsInASortOfTheLogic) {
  const std::vector<std::pair<std::string, std::string>> rows{
      {"QF_LRA", "(-> Real Real)"},
      {"QF_LIA", "(-> Int Int)"},
      {"QF_BV", "(-> (_ BitVec 9) (_ BitVec 8))"},
  };
  const std::vector<std::string> sorts{"Real", "Int", "(_ BitVec 9)"};
  for (std::size_t row = 0; row < rows.size(); ++row) {
    std::string text = "(set-logic " + rows[row].first + ")";
    std::string names;
    for (int i = 0; i < 200; ++i) {
      text += "(declare-const i" + std::to_string(i) + " " + sorts[row] + ")";
      names += " i" + std::to_string(i);
    }
    TermManager mgr;
    Script script;
    read_into(script, mgr, text + "(assert (distinct" + names + "))");
    ASSERT_EQ(script.introduced.size(), 4U);
    EXPECT_EQ(script.introduced[0].symbol->type->to_str(), rows[row].second);
  }
}

TEST(PartialOperators, ManyDistinctBooleansAreImpossible) {
  std::string names;
  for (int i = 0; i < 129; ++i) {
    names += " p";
  }
  EXPECT_EQ(assertion_text("(declare-const p Bool)(assert (distinct" + names + "))"), "false");
}

}  // namespace brum::testing
