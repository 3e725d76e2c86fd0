#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "tests/tools/command.h"

// Names and sorts that a form has no text for: refused with status 1, named, and nothing written.

namespace brum::testing {

namespace {

using ::testing::HasSubstr;

void expect_refused(const std::string& form, const std::string& input, const std::string& message) {
  SCOPED_TRACE(input);
  const TemporaryFolder folder;
  const std::string out = folder.write("out", "old");
  for (const std::vector<std::string>& arguments :
       {std::vector<std::string>{"-t", form}, {"-t", form, "-o", out}}) {
    const Outcome outcome = brumlin(arguments, input);
    EXPECT_EQ(outcome.status, 1) << form;
    EXPECT_EQ(outcome.err, "<stdin>: error: " + message + "\n") << form;
    EXPECT_EQ(outcome.out, "") << form;
  }
  EXPECT_EQ(read_file(out), "old");
  EXPECT_EQ(folder.names(), std::vector<std::string>{"out"});
}

/// A script that asserts a Bool constant of this name, which is given as a symbol.
std::string asserting(const std::string& symbol) {
  return "(declare-fun " + symbol + " () Bool)\n(assert " + symbol + ")\n(check-sat)\n";
}

const std::vector<std::string> version_2_forms = {"v2", "define-fun", "terms", "trace"};

}  // namespace

TEST(Names, ReservedWordsAreRefusedInVersion2) {
  for (const std::string& form : version_2_forms) {
    for (const std::string word : {"let", "assert", "_", "!", "as", "exit", "NUMERAL"}) {
      expect_refused(form, asserting("|" + word + "|"),
                     "symbol '" + word + "' is a reserved word of SMT-LIB 2.6");
    }
  }
}

TEST(Names, TheEmptyNameIsRefusedInVersion2) {
  for (const std::string& form : version_2_forms) {
    expect_refused(form, asserting("||"),
                   "symbol '' is empty, which SMT-LIB 2.6 text does not show");
  }
  const Outcome v1 = brumlin({"-t", "v1"}, asserting("||"));
  EXPECT_EQ(v1.status, 0);
  EXPECT_THAT(v1.out, HasSubstr(":extrapreds ((_))\n"));
}

TEST(Names, BarsAndBackslashesEndTheInput) {
  // No text of version 2 can say such a name, so none comes from a script.
  EXPECT_EQ(brumlin({}, asserting("|a\\b|")).status, 2);
}

TEST(Names, OfVersion2AreFreeInVersion1UnlessTheyAreWordsThere) {
  expect_refused("v1", asserting("flet"), "symbol 'flet' is a word of SMT-LIB 1.2");
  expect_refused("v1", asserting("|let|"), "symbol 'let' is a word of SMT-LIB 1.2");
  expect_refused("v1", asserting("implies"), "symbol 'implies' is a word of SMT-LIB 1.2");
  expect_refused("v1", asserting("benchmark"), "symbol 'benchmark' is a word of SMT-LIB 1.2");
  expect_refused("v1", asserting("bv12"), "symbol 'bv12' is a bit-vector numeral in SMT-LIB 1.2");
  for (const std::string name : {"flet", "implies", "benchmark", "bv12"}) {
    EXPECT_EQ(brumlin({"-t", "v2"}, asserting(name)).status, 0) << name;
  }
  EXPECT_EQ(brumlin({"-t", "v1"}, asserting("|assert|")).status, 0);
}

TEST(Names, ThatFallTogetherInVersion1AreRefused) {
  const std::string input =
      "(declare-fun |a | () Bool)(declare-fun a_h32_ () Bool)(assert (and |a | (not a_h32_)))";
  expect_refused("v1", input,
                 "symbol 'a ' is written like 'a_h32_'; symbol 'a_h32_' is written like 'a '");
  for (const std::string& form : version_2_forms) {
    EXPECT_EQ(brumlin({"-t", form}, input).status, 0) << form;
  }
}

TEST(Names, ThatTheDocumentDoesNotMentionDoNotMatter) {
  const std::string input = "(declare-fun |let| () Bool)(declare-fun p () Bool)(assert p)";
  for (const char* form : {"v1", "v2", "define-fun", "terms", "trace"}) {
    EXPECT_EQ(brumlin({"-t", form}, input).status, 0) << form;
  }
}

TEST(Names, OnlyTheFirstTenAreListed) {
  std::string input;
  const std::vector<std::string> words = {"let",  "assert", "par",   "exit",   "push",   "pop",
                                          "echo", "match",  "reset", "exists", "forall", "as"};
  for (const std::string& word : words) {
    input += asserting("|" + word + "|");
  }
  const Outcome outcome = brumlin({"-t", "trace"}, input);
  EXPECT_EQ(outcome.status, 1);
  EXPECT_THAT(outcome.err, HasSubstr("symbol 'let' is a reserved word of SMT-LIB 2.6; symbol "));
  EXPECT_THAT(outcome.err,
              HasSubstr("symbol 'exists' is a reserved word of SMT-LIB 2.6; and 2 more\n"));
}

TEST(Names, StrangeOnesStayOneSymbol) {
  // Bars keep what looks like commands inside the name.
  const std::string input = asserting("|x)(exit)(y|");
  for (const std::string& form : version_2_forms) {
    const Outcome outcome = brumlin({"-t", form}, input);
    EXPECT_EQ(outcome.status, 0) << form;
    EXPECT_THAT(outcome.out, HasSubstr("(declare-fun |x)(exit)(y| () Bool)\n")) << form;
  }
  EXPECT_THAT(brumlin({"-t", "v1"}, input).out,
              HasSubstr(":extrapreds ((x_h41__h40_exit_h41__h40_y))\n"));
}

TEST(Sorts, WithoutATextInVersion1AreRefused) {
  const std::pair<const char*, const char*> rows[] = {
      {"(declare-fun f (Bool) Int)(declare-fun p () Bool)(assert (<= (f p) 0))",
       "SMT-LIB v1 format doesn't have an explicit Bool type"},
      {"(declare-fun a () (Array Int Real))(assert (= (select a 0) 1.5))",
       "unsupported index type for Array: Int"},
      {"(declare-fun a () (Array (_ BitVec 4) Int))(assert (= (select a #x0) 1))",
       "unsupported element type for Array: (_ BitVec 4)"},
      {"(declare-sort S 0)(declare-fun s () S)(declare-fun a () (Array S S))"
       "(assert (= (select a s) s))",
       "unsupported index type for Array: S"},
      {"(declare-fun a () (Array Int Bool))(assert (select a 0))",
       "unsupported index type for Array: Int"},
  };
  for (const auto& [input, message] : rows) {
    expect_refused("v1", input, message);
    for (const std::string& form : version_2_forms) {
      EXPECT_EQ(brumlin({"-t", form}, input).status, 0) << form << ": " << input;
    }
  }
}

}  // namespace brum::testing
