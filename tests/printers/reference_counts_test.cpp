#include "brum/printers/reference_counts.h"

#include <gtest/gtest.h>

#include "tests/support/formulas.h"

namespace brum {
namespace {

TEST(ReferenceCounts, PlacesAreArgumentPositionsBelowTheTerm) {
  TermManager mgr;
  const Term* p = testing::make_bool(mgr, "p");
  const Term* not_p = mgr.make_not(p);
  const Term* twice = mgr.make_and(not_p, not_p);
  const Term* formula = mgr.make_or(twice, p);
  mgr.make_iff(twice, formula);  // not below the formula
  ReferenceCounts counts;
  counts.add_term(formula);
  EXPECT_EQ(counts.num_terms(), 4U);
  EXPECT_EQ(counts.num_shared(), 2U);
  EXPECT_TRUE(counts.is_shared(p));
  EXPECT_TRUE(counts.is_shared(not_p));
  EXPECT_FALSE(counts.is_shared(twice));
  EXPECT_FALSE(counts.is_shared(formula));
}

TEST(ReferenceCounts, HighestIdIsThatOfTheYoungestTerm) {
  TermManager mgr;
  const Term* p = testing::make_bool(mgr, "p");
  const Term* not_p = mgr.make_not(p);
  const Term* uncounted = mgr.make_not(not_p);
  ReferenceCounts counts;
  EXPECT_EQ(counts.highest_id(), 0U);
  counts.add_reference(not_p);
  EXPECT_EQ(counts.highest_id(), not_p->id);
  counts.add_term(p);
  EXPECT_EQ(counts.highest_id(), not_p->id);
  counts.add_term(uncounted);
  EXPECT_EQ(counts.highest_id(), uncounted->id);
}

TEST(ReferenceCounts, TermsAddUp) {
  TermManager mgr;
  const Term* p = testing::make_bool(mgr, "p");
  const Term* q = testing::make_bool(mgr, "q");
  const Term* both = mgr.make_and(p, q);
  const Term* first = mgr.make_not(both);
  const Term* second = mgr.make_or(both, q);
  ReferenceCounts counts;
  counts.add_term(first);
  EXPECT_FALSE(counts.is_shared(both));
  counts.add_term(first);  // nothing new below it
  EXPECT_FALSE(counts.is_shared(both));
  counts.add_term(second);
  EXPECT_TRUE(counts.is_shared(both));
  EXPECT_FALSE(counts.is_shared(p));  // its one place is in `both`, which was entered once
  EXPECT_EQ(counts.num_terms(), 5U);
}

TEST(ReferenceCounts, AReferenceFromOutsideIsAPlace) {
  TermManager mgr;
  const Term* p = testing::make_bool(mgr, "p");
  const Term* not_p = mgr.make_not(p);
  const Term* formula = mgr.make_not(not_p);
  ReferenceCounts counts;
  counts.add_reference(not_p);
  EXPECT_FALSE(counts.is_shared(not_p));
  EXPECT_EQ(counts.num_shared(), 0U);
  counts.add_reference(formula);
  EXPECT_EQ(counts.num_shared(), 1U);
  EXPECT_TRUE(counts.is_shared(not_p));
  EXPECT_FALSE(counts.is_shared(formula));
  counts.add_reference(formula);
  EXPECT_TRUE(counts.is_shared(formula));
  counts.add_reference(formula);  // a count that is full stays
  counts.add_reference(formula);
  EXPECT_TRUE(counts.is_shared(formula));
  EXPECT_EQ(counts.num_shared(), 2U);
}

TEST(ReferenceCounts, HandledTermsAreNotEntered) {
  TermManager mgr;
  const Term* p = testing::make_bool(mgr, "p");
  const Term* not_p = mgr.make_not(p);
  const Term* formula = mgr.make_and(mgr.make_or(not_p, not_p), p);
  DefinitionMap handled;
  handled[not_p] = "x";
  ReferenceCounts counts;
  counts.add_term(formula, &handled);
  EXPECT_EQ(counts.num_terms(), 3U);  // all but not_p
  EXPECT_FALSE(counts.is_shared(p));
  EXPECT_FALSE(counts.is_shared(not_p));
}

}  // namespace
}  // namespace brum
