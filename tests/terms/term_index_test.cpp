#include "brum/terms/term_index.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <vector>

#include "brum/terms/term_manager.h"
#include "brum/terms/term_walk.h"
#include "tests/support/build_kind.h"
#include "tests/support/formulas.h"
#include "tests/support/small_stack.h"

namespace brum {
namespace {

TEST(TermSet, TakesEachTermOnce) {
  TermManager mgr;
  const Term* near = mgr.make_number(0);
  for (int i = 1; i < 10'000; ++i) {
    mgr.make_number(i);
  }
  const Term* far = mgr.make_number(10'000);
  TermSet terms;
  EXPECT_TRUE(terms.insert(far));
  EXPECT_TRUE(terms.insert(near));
  EXPECT_FALSE(terms.insert(far));
  EXPECT_FALSE(terms.insert(near));
}

TEST(TermIndex, ValuesStartAtZeroAndStay) {
  TermManager mgr;
  std::vector<const Term*> terms;
  for (int i = 0; i < 10'000; ++i) {
    terms.push_back(mgr.make_number(i));
  }
  TermIndex<std::uint32_t> index;
  for (const std::size_t i : {9'999U, 0U, 4'094U, 4'095U, 4'096U, 8'191U}) {
    EXPECT_EQ(index.get(terms[i]), 0U);
    EXPECT_EQ(index[terms[i]], 0U);
    index[terms[i]] = static_cast<std::uint32_t>(i) + 1;
  }
  for (const std::size_t i : {0U, 4'094U, 4'095U, 4'096U, 8'191U, 9'999U}) {
    EXPECT_EQ(index.get(terms[i]), i + 1);
    EXPECT_EQ(index[terms[i]], i + 1);
  }
  EXPECT_EQ(index.get(terms[1]), 0U);
  EXPECT_EQ(index.get(terms[5'000]), 0U);
}

TEST(TermWalk, VisitsArgumentsFromLeftToRightBeforeTheTerm) {
  TermManager mgr;
  const Term* p = testing::make_bool(mgr, "p");
  const Term* q = testing::make_bool(mgr, "q");
  const Term* not_p = mgr.make_not(p);
  const Term* both = mgr.make_and(not_p, q);
  const Term* root = mgr.make_or(both, not_p);
  std::vector<const Term*> entered;
  std::vector<const Term*> left;
  TermWalk walk;
  walk.run(
      root,
      [&](const Term* term) {
        entered.push_back(term);
        return term != not_p || std::count(entered.begin(), entered.end(), not_p) == 1;
      },
      [&](const Term* term) { left.push_back(term); });
  EXPECT_EQ(entered, (std::vector<const Term*>{root, both, not_p, p, q, not_p}));
  EXPECT_EQ(left, (std::vector<const Term*>{p, not_p, q, both, root}));
}

TEST(TermWalk, IsReadyAgainAfterAnException) {
  TermManager mgr;
  const Term* formula = testing::make_negations(mgr, testing::make_bool(mgr, "p"), 10);
  TermWalk walk;
  const auto throw_at_p = [](const Term* term) {
    if (term->id == 1) {
      throw 1;
    }
    return true;
  };
  EXPECT_THROW(walk.run(formula, throw_at_p, [](const Term*) {}), int);
  int left = 0;
  walk.run(
      formula, [](const Term*) { return true; }, [&](const Term*) { ++left; });
  EXPECT_EQ(left, 11);
}

TEST(TermWalk, NeedsNoStack) {
  const std::size_t size = testing::large_size(1'000'000);
  testing::run_on_small_stack([&] {
    TermManager mgr;
    const Term* formula = testing::make_negations(mgr, testing::make_bool(mgr, "p"), size);
    std::size_t left = 0;
    TermWalk().run(
        formula, [](const Term*) { return true; }, [&](const Term*) { ++left; });
    EXPECT_EQ(left, size + 1);
  });
}

}  // namespace
}  // namespace brum
