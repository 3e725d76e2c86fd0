// Sorts that are declared with parameters.

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "tests/readers/reading.h"

namespace brum::testing {
namespace {

/// Gives the sorts of constants that are declared behind `declarations`, one for each text.
std::vector<const DataType*> sorts_of(TermManager& mgr, std::string text,
                                      const std::vector<std::string>& sorts) {
  for (std::size_t i = 0; i < sorts.size(); ++i) {
    text += "(declare-const c" + std::to_string(i) + " " + sorts[i] + ")";
  }
  Script script;
  read_into(script, mgr, text);
  std::vector<const DataType*> result;
  for (const auto& [name, symbol] : script.symbols) {
    result.push_back(symbol->type);
  }
  return result;
}

TEST(SortFamilies, EachListOfParametersHasASortOfItsOwn) {
  TermManager mgr;
  const auto sorts = sorts_of(mgr, "(declare-sort A 0)(declare-sort Pair 2)(declare-sort Box 1)",
                              {"(Pair A Int)", "(Pair Int A)", "(Pair A A)", "(Box A)",
                               "(Box (Box A))", "(Pair A Int)", "(Box (Box A))", "A"});
  ASSERT_EQ(sorts.size(), 8U);
  EXPECT_EQ(sorts[5], sorts[0]);
  EXPECT_EQ(sorts[6], sorts[4]);
  for (std::size_t i = 0; i < 5; ++i) {
    EXPECT_EQ(sorts[i]->kind(), DataType::Kind::uninterpreted);
    EXPECT_NE(sorts[i], sorts[7]);
    for (std::size_t j = 0; j < i; ++j) {
      EXPECT_NE(sorts[i], sorts[j]);
    }
  }
}

TEST(SortFamilies, NoSortOfTheInputIsTheSameByItsName) {
  TermManager mgr;
  const auto sorts =
      sorts_of(mgr, "(declare-sort Box 1)(declare-sort |(Box Int)| 0)(declare-sort |Box Int| 0)",
               {"(Box Int)", "|(Box Int)|", "|Box Int|"});
  ASSERT_EQ(sorts.size(), 3U);
  EXPECT_NE(sorts[0], sorts[1]);
  EXPECT_NE(sorts[0], sorts[2]);
}

TEST(SortFamilies, DefinedSortsMayBeMadeOfThem) {
  TermManager mgr;
  const auto sorts =
      sorts_of(mgr,
               "(declare-sort Pair 2)(declare-sort Box 1)"
               "(define-sort Twice (X) (Pair X X))(define-sort Boxed () (Box Int))"
               "(define-sort Deep (X Y) (Pair (Array X (Box Y)) (Twice (Box X))))",
               {"(Twice Int)", "(Pair Int Int)", "Boxed", "(Box Int)", "(Deep Bool Int)",
                "(Pair (Array Bool (Box Int)) (Pair (Box Bool) (Box Bool)))",
                "(Twice (Twice Bool))", "(Pair (Pair Bool Bool) (Pair Bool Bool))"});
  ASSERT_EQ(sorts.size(), 8U);
  EXPECT_EQ(sorts[0], sorts[1]);
  EXPECT_EQ(sorts[2], sorts[3]);
  EXPECT_EQ(sorts[4], sorts[5]);
  EXPECT_EQ(sorts[6], sorts[7]);
}

TEST(SortFamilies, ATowerOfDefinedSortsStaysSmall) {
  std::string text = "(declare-sort P 2)(define-sort S0 (A) (P A A))";
  for (int i = 1; i <= 64; ++i) {
    const std::string below = "(S" + std::to_string(i - 1) + " A)";
    text += "(define-sort S" + std::to_string(i) + " (A) (P " + below + " " + below + "))";
  }
  TermManager mgr;
  const auto sorts = sorts_of(mgr, text, {"(S64 Int)", "(S64 Int)", "(S64 Bool)"});
  ASSERT_EQ(sorts.size(), 3U);
  EXPECT_EQ(sorts[0], sorts[1]);
  EXPECT_NE(sorts[0], sorts[2]);
  EXPECT_LT(sorts[0]->to_str().size(), 1000U);
}

TEST(SortFamilies, AreWrittenAsUninterpretedSorts) {
  TermManager mgr;
  Script script;
  read_into(script, mgr,
            "(declare-sort A 0)(declare-sort Box 1)(declare-fun f (A) (Box A))(declare-const a A)"
            "(declare-const b (Box A))(assert (= (f a) b))");
  std::ostringstream out;
  SmtLibTermPrinter(false, &mgr, "QF_UF", "").print_formula(out, script.at_end().assertions.at(0));
  Script again;
  TermManager mgr_again;
  read_into(again, mgr_again, out.str());
  EXPECT_EQ(again.sorts.size(), 2U);
  EXPECT_EQ(again.symbols.size(), 3U);
  EXPECT_EQ(again.at_end().assertions.size(), 1U);
}

TEST(SortFamilies, GoWithTheirLevel) {
  EXPECT_EQ(error_of("(push 1)(declare-sort Box 1)(declare-const a (Box Int))(pop 1)\n"
                     "(declare-const b (Box Int))"),
            "input:2:19: error: found the sort Box, expected a declared sort");
  EXPECT_EQ(error_of("(push 1)(declare-sort Box 1)(pop 1)(declare-sort Box 2)"
                     "(declare-const b (Box Int Bool))"),
            "no error");
}

TEST(SortFamilies, WantTheirParameters) {
  const std::string declaration = "(declare-sort Pair 2)\n";
  EXPECT_EQ(error_of(declaration + "(declare-const a Pair)"),
            "input:2:18: error: found Pair alone, expected it with its parameters");
  EXPECT_EQ(error_of(declaration + "(declare-const a (Pair Int))"),
            "input:2:18: error: found 1 sort as parameters, expected 2");
  EXPECT_EQ(error_of(declaration + "(declare-const a (Pair))"),
            "input:2:18: error: found 0 sorts as parameters, expected 2");
  EXPECT_EQ(error_of(declaration + "(declare-const a (Pair Int Int Int))"),
            "input:2:18: error: found 3 sorts as parameters, expected 2");
  EXPECT_EQ(
      error_of(declaration + "(declare-sort Pair 1)"),
      "input:2:1: error: found the sort Pair, which is declared already, expected a new name");
  EXPECT_EQ(error_of("(declare-sort Pair 65)"),
            "input:1:20: error: found the numeral 65, expected at most 64 parameters");
  EXPECT_EQ(error_of("(declare-sort Pair 64)"), "no error");
  EXPECT_EQ(error_of("(declare-sort Pair 99999999999999999999)"),
            "input:1:20: error: found the numeral 99999999999999999999, expected at most 64 "
            "parameters");
}

// A manager may be given one text after another.
TEST(SortFamilies, AreTheSameInEveryTextExactlyIfTheyAreSpeltTheSame) {
  TermManager mgr;
  const std::string letters(120, 'l');
  const auto sort = [&](const std::string& declarations, const std::string& text) {
    return sorts_of(mgr, "(declare-sort Box 1)(declare-sort U 2)" + declarations, {text}).at(0);
  };
  const std::string a = "A" + letters;
  const std::string b = "B" + letters;
  const DataType* box_a = sort("(declare-sort " + a + " 0)", "(Box " + a + ")");
  EXPECT_NE(sort("(declare-sort " + b + " 0)", "(Box " + b + ")"), box_a);
  const DataType* box_int = sort("", "(Box Int)");
  EXPECT_EQ(sorts_of(mgr, "(declare-sort Box 1)", {"(Box Bool)", "(Box Int)"}).at(1), box_int);
  EXPECT_EQ(sorts_of(mgr, "(declare-sort Box 1)(declare-sort " + a + " 0)", {"(Box " + a + ")"})[0],
            box_a);
  EXPECT_NE(sort("", "(U Int Bool)"),
            sorts_of(mgr, "(declare-sort |U Int| 1)", {"(|U Int| Bool)"}).at(0));
}

}  // namespace
}  // namespace brum::testing
