#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

#include "tests/tools/command.h"

// Which of an input's queries a document of one formula is about.

namespace brum::testing {

namespace {

using ::testing::EndsWith;
using ::testing::HasSubstr;

const std::string three_queries = R"((set-logic QF_UF)
(declare-fun p () Bool)
(declare-fun q () Bool)
(assert p)
(set-info :status sat)
(check-sat)
(push 1)
(assert (not p))
(set-info :status unsat)
(check-sat)
(pop 1)
(set-info :status sat)
(check-sat-assuming (q))
)";

std::string assertion_of(const std::string& text) {
  const std::string start = "(assert\n";
  const std::size_t place = text.find(start) + start.size();
  return text.substr(place, text.find("\n)", place) - place);
}

}  // namespace

TEST(Queries, TheFirstIsTakenAndTheOthersAreWarnedOf) {
  const TemporaryFolder folder;
  folder.write("in.smt2", three_queries);
  for (const char* form : {"v1", "v2", "define-fun"}) {
    const Outcome outcome =
        brumlin(Start{.words = {"-t", form, "in.smt2"}, .folder = folder.path().string()});
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(outcome.err,
              "in.smt2: warning: the input has 3 check-sat, only what is in force at the first is "
              "written (--query N takes another)\n");
    EXPECT_THAT(outcome.out, HasSubstr(":status sat"));
  }
}

TEST(Queries, TheScriptsOfAllAssertionsWarnOfNone) {
  EXPECT_EQ(brumlin({"-t", "terms"}, three_queries).err, "");
  EXPECT_EQ(brumlin({"-t", "trace"}, three_queries).err, "");
}

TEST(Queries, TheUserTakesOneByItsNumber) {
  const Outcome first = brumlin({"--query", "1"}, three_queries);
  EXPECT_EQ(first.err, "");
  EXPECT_EQ(assertion_of(first.out), "p");
  const Outcome second = brumlin({"--query", "2"}, three_queries);
  EXPECT_EQ(second.err, "");
  EXPECT_EQ(assertion_of(second.out), "(and p (not p))");
  EXPECT_THAT(second.out, HasSubstr("(set-info :status unsat)\n"));
  const Outcome third = brumlin({"--query", "3"}, three_queries);
  EXPECT_EQ(third.err, "");
  EXPECT_EQ(assertion_of(third.out), "(and p q)");
  EXPECT_THAT(third.out, HasSubstr("(set-info :status sat)\n"));
}

TEST(Queries, ANumberBeyondTheLastIsBadUsage) {
  const Outcome fourth = brumlin({"--query", "4"}, three_queries);
  EXPECT_EQ(fourth.status, 2);
  EXPECT_EQ(fourth.out, "");
  EXPECT_EQ(fourth.err, "<stdin>: error: the input has 3 check-sat, not 4\n");
  const Outcome none = brumlin({"--query", "1", "-t", "v1"}, "(assert true)");
  EXPECT_EQ(none.status, 2);
  EXPECT_EQ(none.err, "<stdin>: error: the input has 0 check-sat, not 1\n");
}

TEST(Queries, FormsOfAllAssertionsHaveNoNumber) {
  for (const char* form : {"terms", "trace"}) {
    const Outcome outcome = brumlin({"--query", "1", "-t", form}, three_queries);
    EXPECT_EQ(outcome.status, 2);
    EXPECT_EQ(outcome.err,
              "brumlin: error: --query: this form writes every assertion of the input\n");
  }
}

TEST(Queries, WithoutOneTheEndOfTheInputCounts) {
  const std::string input =
      "(declare-fun p () Bool)(push 1)(assert (not p))(pop 1)(push 1)(assert p)"
      "(set-info :status sat)";
  const Outcome outcome = brumlin({}, input);
  EXPECT_EQ(outcome.status, 0);
  EXPECT_EQ(outcome.err, "");
  EXPECT_THAT(outcome.out, HasSubstr("(set-info :status sat)\n"));
  EXPECT_THAT(outcome.out, EndsWith("(assert\np\n)\n"));
}

}  // namespace brum::testing
