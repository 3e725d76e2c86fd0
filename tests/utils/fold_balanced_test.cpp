#include "brum/utils/fold_balanced.h"

#include <gtest/gtest.h>

#include <stdexcept>
#include <string>
#include <vector>

namespace brum {
namespace {

std::string joined(std::vector<std::string> items) {
  return fold_balanced(std::span(items), [](const std::string& left, const std::string& right) {
    return "(" + left + right + ")";
  });
}

TEST(FoldBalanced, JoinsNeighboursLevelByLevel) {
  EXPECT_EQ(joined({"a"}), "a");
  EXPECT_EQ(joined({"a", "b"}), "(ab)");
  EXPECT_EQ(joined({"a", "b", "c"}), "((ab)c)");
  EXPECT_EQ(joined({"a", "b", "c", "d"}), "((ab)(cd))");
  EXPECT_EQ(joined({"a", "b", "c", "d", "e"}), "(((ab)(cd))e)");
  EXPECT_EQ(joined({"a", "b", "c", "d", "e", "f"}), "(((ab)(cd))(ef))");
  EXPECT_EQ(joined({"a", "b", "c", "d", "e", "f", "g"}), "(((ab)(cd))((ef)g))");
}

TEST(FoldBalanced, ThrowsWhatTheJoinThrows) {
  std::vector<int> items = {1, 2};
  const auto refuse = [](int, int) -> int { throw std::runtime_error("no"); };
  EXPECT_THROW(fold_balanced(std::span(items), refuse), std::runtime_error);
}

}  // namespace
}  // namespace brum
