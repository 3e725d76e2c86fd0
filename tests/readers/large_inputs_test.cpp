#include <gtest/gtest.h>

#include <string>

#include "tests/readers/reading.h"
#include "tests/support/build_kind.h"
#include "tests/support/small_stack.h"

namespace brum::testing {

namespace {

std::string repeated(const std::string& part, std::size_t count) {
  std::string text;
  text.reserve(part.size() * count);
  for (std::size_t i = 0; i < count; ++i) {
    text += part;
  }
  return text;
}

}  // namespace

TEST(LargeInputs, FiveMillionBracketsAreAnError) {
  run_on_small_stack([] {
    const std::string brackets(5000000, '(');
    EXPECT_EQ(error_of(brackets), "input:1:2: error: found '(', expected a command");
    EXPECT_EQ(error_of("(assert " + brackets), "input:1:11: error: found '(', expected _ or as");
    EXPECT_EQ(error_of("(set-info :x " + brackets),
              "input:1:5000014: error: found the end of the input, expected ')'");
    EXPECT_EQ(error_of("(declare-const x " + brackets),
              "input:1:19: error: found '(', expected the name of a sort or _");
  });
}

TEST(LargeInputs, DeepTermsAreReadOnASmallStack) {
  run_on_small_stack([] {
    const std::size_t depth = large_size(1000000);
    TermManager mgr;
    const auto assertions =
        assertions_of(mgr, "(declare-const p Bool)(assert " + repeated("(not ", depth) + "p" +
                               std::string(depth, ')') + ")");
    ASSERT_EQ(assertions.size(), 1U);
    EXPECT_EQ(mgr.num_terms(), depth + 1);
    EXPECT_EQ(error_of("(declare-const p Bool)(assert " + repeated("(not ", depth)),
              "input:1:" + std::to_string(31 + 5 * depth) +
                  ": error: found the end of the input, expected a term or ')'");
  });
}

TEST(LargeInputs, DeepLetsAreReadOnASmallStack) {
  run_on_small_stack([] {
    const std::size_t depth = large_size(300000);
    // Nested in the bodies: each variable covers the one before.
    TermManager mgr;
    const auto assertions = assertions_of(mgr, "(declare-const x Int)(assert (= 0 " +
                                                   repeated("(let ((x (+ x x))) ", depth) + "x" +
                                                   std::string(depth, ')') + "))");
    ASSERT_EQ(assertions.size(), 1U);
    EXPECT_EQ(mgr.num_terms(), depth + 3);
    // Nested in the values.
    TermManager other;
    const auto others =
        assertions_of(other, "(declare-const p Bool)(assert " + repeated("(let ((q ", depth) + "p" +
                                 repeated(")) (not q))", depth) + ")");
    ASSERT_EQ(others.size(), 1U);
    EXPECT_EQ(other.num_terms(), depth + 1);
  });
}

TEST(LargeInputs, DeepSortsAndAttributesAreReadOnASmallStack) {
  run_on_small_stack([] {
    const std::size_t depth = large_size(200000);
    TermManager mgr;
    Script script;
    read_into(script, mgr,
              "(declare-const x " + repeated("(Array Int ", depth) + "Int" +
                  std::string(depth, ')') + ")(assert " + repeated("(! ", depth) + "true" +
                  repeated(" :a (b))", depth) + ")");
    ASSERT_EQ(script.commands.size(), 1U);
    EXPECT_EQ(script.annotations[script.commands[0].term].size(), depth);
  });
}

TEST(LargeInputs, WideTermsBecomeBalancedTrees) {
  constexpr std::size_t width = 100000;
  std::string text = "(assert (and";
  std::string declarations;
  for (std::size_t i = 0; i < width; ++i) {
    declarations += "(declare-const p" + std::to_string(i) + " Bool)";
    text += " p" + std::to_string(i);
  }
  TermManager mgr;
  const auto assertions = assertions_of(mgr, declarations + text + "))");
  ASSERT_EQ(assertions.size(), 1U);
  EXPECT_EQ(mgr.num_terms(), 2 * width - 1);
  std::size_t depth = 0;
  for (const Term* term = assertions[0]; term->symbol == mgr.get_and_symbol();
       term = term->children[0]) {
    ++depth;
  }
  EXPECT_EQ(depth, 17U) << "2^16 < 100000 <= 2^17";
}

TEST(LargeInputs, ALongSymbolNeedsNoMoreThanItsLength) {
  const std::string name(3000000, 'n');
  TermManager mgr;
  EXPECT_EQ(assertions_of(mgr, "(declare-const " + name + " Bool)(assert |" + name + "|)").size(),
            1U);
}

TEST(LargeInputs, BigNumbersKeepAllTheirDigits) {
  const std::string digits = "9" + std::string(500, '0') + "7";
  EXPECT_EQ(assertion_text("(declare-const i Int)(assert (= i (- " + digits + ")))"),
            "(= i (- " + digits + "))");
  EXPECT_EQ(assertion_text("(declare-const x Real)(assert (= x 0." + std::string(30, '0') + "5))"),
            "(= x (/ 1 2" + std::string(30, '0') + "))");
}

}  // namespace brum::testing
