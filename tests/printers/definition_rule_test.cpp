#include "brum/printers/definition_rule.h"

#include <gtest/gtest.h>

#include <string>

#include "tests/printers/open_printers.h"
#include "tests/support/formulas.h"

namespace brum {
namespace {

using testing::make_bool;
using testing::make_int;
using testing::make_negations;
using testing::v1_text;
using testing::v2_text;

/// `count` negations written out around `inner`.
std::string negations(std::size_t count, const std::string& inner) {
  std::string text;
  for (std::size_t i = 0; i < count; ++i) {
    text += "(not ";
  }
  return text + inner + std::string(count, ')');
}

TEST(Definitions, SharedCompoundTermsAreDefined) {
  TermManager mgr;
  const Term* p = make_bool(mgr, "p");
  const Term* q = make_bool(mgr, "q");
  const Term* either = mgr.make_or(p, q);                            // 3
  const Term* formula = mgr.make_and(mgr.make_not(either), either);  // 4, 5
  EXPECT_EQ(v2_text(mgr, formula), "(let ((.def_3 (or p q))) (and (not .def_3) .def_3))");
  EXPECT_EQ(v1_text(mgr, formula), "(flet ($def_3 (or p q)) (and (not $def_3) $def_3))");
}

TEST(Definitions, TwoArgumentPositionsOfOneTermAreTwoPlaces) {
  TermManager mgr;
  const Term* p = make_bool(mgr, "p");
  const Term* q = make_bool(mgr, "q");
  const Term* either = mgr.make_or(p, q);
  EXPECT_EQ(v2_text(mgr, mgr.make_and(either, either)),
            "(let ((.def_3 (or p q))) (and .def_3 .def_3))");
}

TEST(Definitions, UnsharedTermsAreInline) {
  TermManager mgr;
  const Term* p = make_bool(mgr, "p");
  const Term* q = make_bool(mgr, "q");
  const Term* formula = mgr.make_iff(mgr.make_and(mgr.make_or(p, q), mgr.make_not(p)),
                                     mgr.make_and(mgr.make_or(q, p), mgr.make_not(q)));
  EXPECT_EQ(v2_text(mgr, formula), "(= (and (or p q) (not p)) (and (or q p) (not q)))");
}

TEST(Definitions, ConstantsAndNumeralsAreNeverDefined) {
  TermManager mgr;
  const Term* x = make_int(mgr, "x");
  const Term* three = mgr.make_number(-3);
  EXPECT_EQ(v2_text(mgr, mgr.make_leq(mgr.make_plus(x, three), mgr.make_plus(three, x))),
            "(<= (+ x (- 3)) (+ (- 3) x))");
  const Term* yes = mgr.make_true();
  EXPECT_EQ(v2_text(mgr, mgr.make_and(yes, yes)), "(and true true)");
}

TEST(Definitions, AConstantIsNotSharedHoweverOftenItIsUsed) {
  TermManager mgr;
  const Term* x = make_int(mgr, "x");
  const Term* sum = mgr.make_plus(x, x);
  const DefinitionRule rule = DefinitionRule::for_trace();
  EXPECT_FALSE(rule.is_shared(x));
  EXPECT_FALSE(rule.is_shared(sum));
  mgr.make_leq(sum, sum);
  EXPECT_TRUE(rule.is_shared(sum));
}

TEST(Definitions, OtherTermsOfTheStoreDoNotShow) {
  TermManager mgr;
  const Term* p = make_bool(mgr, "p");
  const Term* q = make_bool(mgr, "q");
  const Term* either = mgr.make_or(p, q);
  const Term* formula = mgr.make_not(either);
  const std::string before = v2_text(mgr, formula);
  EXPECT_EQ(before, "(not (or p q))");
  mgr.make_and(either, mgr.make_iff(either, formula));
  mgr.make_and(formula, formula);
  EXPECT_EQ(v2_text(mgr, formula), before);
  EXPECT_EQ(v2_text(mgr, either), "(or p q)");
}

TEST(Definitions, SharingBelowADefinitionCountsOnce) {
  // The inner term is referred to only by the outer one, which is shared: it stays inline there.
  TermManager mgr;
  const Term* p = make_bool(mgr, "p");
  const Term* inner = mgr.make_not(p);                                // 2
  const Term* outer = mgr.make_or(inner, p);                          // 3
  const Term* formula = mgr.make_and(outer, mgr.make_and(p, outer));  // 4, 5
  EXPECT_EQ(v2_text(mgr, formula), "(let ((.def_3 (or (not p) p))) (and .def_3 (and p .def_3)))");
}

TEST(Definitions, ChildrenAreDefinedBeforeParents) {
  TermManager mgr;
  EXPECT_EQ(v2_text(mgr, testing::make_ladder(mgr, 3)),
            "(let ((.def_2 (+ x x))) (let ((.def_3 (+ .def_2 .def_2))) (+ .def_3 .def_3)))");
  EXPECT_EQ(v1_text(mgr, testing::make_ladder(mgr, 3)),
            "(let (?def_2 (+ x x)) (let (?def_3 (+ ?def_2 ?def_2)) (+ ?def_3 ?def_3)))");
}

TEST(Definitions, AnUnsharedNestOfSixtyFourLevelsStaysInline) {
  TermManager mgr;
  const Term* p = make_bool(mgr, "p");
  for (const std::size_t depth : {1U, 2U, 63U, 64U}) {
    EXPECT_EQ(v2_text(mgr, make_negations(mgr, p, depth)), negations(depth, "p")) << depth;
    EXPECT_EQ(v1_text(mgr, make_negations(mgr, p, depth)), negations(depth, "p")) << depth;
    const Term* below = mgr.make_and(p, make_negations(mgr, p, depth - 1));
    EXPECT_EQ(v2_text(mgr, below), "(and p " + negations(depth - 1, "p") + ")") << depth;
  }
}

TEST(Definitions, DeeperNestsAreCutEverySixtyFiveLevels) {
  TermManager mgr;
  const Term* p = make_bool(mgr, "p");
  // The term with id n + 1 has n negations. The formula itself is never cut off.
  EXPECT_EQ(v2_text(mgr, make_negations(mgr, p, 65)), negations(65, "p"));
  EXPECT_EQ(v2_text(mgr, make_negations(mgr, p, 66)),
            "(let ((.def_66 " + negations(65, "p") + ")) (not .def_66))");
  EXPECT_EQ(v2_text(mgr, make_negations(mgr, p, 200)),
            "(let ((.def_66 " + negations(65, "p") + ")) (let ((.def_131 " +
                negations(65, ".def_66") + ")) (let ((.def_196 " + negations(65, ".def_131") +
                ")) " + negations(5, ".def_196") + ")))");
  EXPECT_EQ(v1_text(mgr, make_negations(mgr, p, 66)),
            "(flet ($def_66 " + negations(65, "p") + ") (not $def_66))");
}

TEST(Definitions, EachBranchIsCutForItself) {
  TermManager mgr;
  const Term* p = make_bool(mgr, "p");
  const Term* q = make_bool(mgr, "q");
  const Term* deep = make_negations(mgr, p, 65);     // 3 to 67
  const Term* shallow = make_negations(mgr, q, 64);  // 68 to 131
  EXPECT_EQ(
      v2_text(mgr, mgr.make_and(deep, shallow)),
      "(let ((.def_67 " + negations(65, "p") + ")) (and .def_67 " + negations(64, "q") + "))");
}

TEST(Definitions, ASharedTermStartsANewNest) {
  TermManager mgr;
  const Term* p = make_bool(mgr, "p");
  const Term* shared = mgr.make_not(p);                 // 2
  const Term* above = make_negations(mgr, shared, 64);  // up to 66
  EXPECT_EQ(v2_text(mgr, mgr.make_and(above, shared)),
            "(let ((.def_2 (not p))) (and " + negations(64, ".def_2") + " .def_2))");
}

}  // namespace
}  // namespace brum
