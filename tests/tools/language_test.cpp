#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

#include "tests/tools/command.h"

// In which language an input is read.

namespace brum::testing {

namespace {

const std::string v1_text =
    "(benchmark b\n:logic QF_LIA\n:status sat\n:extrafuns ((x Int))\n:formula (< x 3)\n)\n";

const std::string v2_text =
    "(set-logic QF_LIA)\n"
    "(set-info :status sat)\n"
    "(set-info :source |printed by Brumlin|)\n"
    "(declare-fun x () Int)\n"
    "(assert\n"
    "(not (<= 3 x))\n"
    ")\n"
    "(check-sat)\n";

}  // namespace

TEST(Language, IsFoundByTheFirstToken) {
  std::string long_beginning(100000, ' ');
  long_beginning.append(";").append(100000, 'x').append("\n");
  const std::vector<std::string> beginnings = {"", " \t\r\n", "; a comment\n",
                                               "; (set-logic QF_LIA)\n\n;\n  ", long_beginning};
  for (const std::string& beginning : beginnings) {
    EXPECT_EQ(brumlin({}, beginning + v1_text).out, v2_text) << beginning.substr(0, 30);
    EXPECT_EQ(brumlin({}, beginning + v2_text).out, v2_text) << beginning.substr(0, 30);
  }
  EXPECT_EQ(brumlin({}, "( ; c\n benchmark b :formula true)").status, 0);
}

TEST(Language, IsFoundInFilesToo) {
  const TemporaryFolder folder;
  EXPECT_EQ(brumlin({folder.write("in.smt", v1_text)}).out, v2_text);
  EXPECT_EQ(brumlin({folder.write("in.smt2", v2_text)}).out, v2_text);
}

TEST(Language, OtherFirstWordsAreVersion2) {
  const std::vector<std::pair<std::string, std::string>> rows = {
      {"(benchmarks)", "<stdin>:1:2: error: found the symbol benchmarks, expected a command\n"},
      {"(bench)", "<stdin>:1:2: error: found the symbol bench, expected a command\n"},
      {"benchmark", "<stdin>:1:1: error: found the symbol benchmark, expected '(' and a command\n"},
      {"((benchmark", "<stdin>:1:2: error: found '(', expected a command\n"},
  };
  for (const auto& [text, message] : rows) {
    const Outcome outcome = brumlin({}, text);
    EXPECT_EQ(outcome.status, 2) << text;
    EXPECT_EQ(outcome.err, message) << text;
  }
  EXPECT_EQ(brumlin({}, "").status, 0);
}

TEST(Language, FromOverrulesTheFirstToken) {
  EXPECT_EQ(brumlin({"--from", "v1"}, v1_text).out, v2_text);
  EXPECT_EQ(brumlin({"--from", "v2"}, v2_text).out, v2_text);
  const Outcome as_v2 = brumlin({"--from", "v2"}, v1_text);
  EXPECT_EQ(as_v2.status, 2);
  EXPECT_EQ(as_v2.err, "<stdin>:1:2: error: found the symbol benchmark, expected a command\n");
  const Outcome as_v1 = brumlin({"--from", "v1"}, v2_text);
  EXPECT_EQ(as_v1.status, 2);
  EXPECT_EQ(as_v1.err, "<stdin>:1:2: error: found the symbol set-logic, expected benchmark\n");
}

TEST(Language, BothVersionsReadWhatIsWritten) {
  const std::string v1 = brumlin({"--to", "v1"}, v2_text).out;
  EXPECT_EQ(v1,
            "(benchmark unnamed\n"
            ":status sat\n"
            ":logic QF_LIA\n"
            ":source { printed by Brumlin }\n"
            ":extrafuns ((x Int))\n"
            "\n"
            ":formula\n"
            "\n"
            "(not (<= 3 x))\n"
            "\n"
            ")\n");
  EXPECT_EQ(brumlin({"--to", "v1"}, v1).out, v1);
  EXPECT_EQ(brumlin({}, v1).out, v2_text);
}

}  // namespace brum::testing
