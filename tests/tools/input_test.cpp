#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <string>
#include <vector>

#include "tests/tools/command.h"
#include "tests/tools/declarations.h"

// Inputs that cannot be read, or not as SMT-LIB: statuses, messages, and no output.

namespace brum::testing {

namespace {

using ::testing::EndsWith;
using ::testing::StartsWith;

void expect_input_error(const Outcome& outcome, int status, const std::string& message) {
  EXPECT_EQ(outcome.status, status) << message;
  EXPECT_EQ(outcome.err, message + "\n");
  EXPECT_EQ(outcome.out, "");
}

}  // namespace

TEST(Input, AMissingFileIsAnInputError) {
  const TemporaryFolder folder;
  const std::string path = folder.file("none.smt2");
  expect_input_error(brumlin({path}), 3,
                     "brumlin: error: cannot read " + path + ": No such file or directory");
}

TEST(Input, AFolderIsAnInputError) {
  const TemporaryFolder folder;
  const std::string path = folder.path().string();
  expect_input_error(brumlin({path}), 3,
                     "brumlin: error: cannot read " + path + ": it is a folder");
  expect_input_error(brumlin(Start{.words = {"-"}, .input_path = path}), 3,
                     "brumlin: error: cannot read <stdin>: it is a folder");
}

TEST(Input, AFileWithoutPermissionIsAnInputError) {
  const TemporaryFolder folder;
  const std::string path = folder.write("in.smt2", "(check-sat)");
  ASSERT_EQ(::chmod(folder.path().c_str(), 0755), 0);
  ASSERT_EQ(::chmod(path.c_str(), 0), 0);
  Outcome outcome;
  try {
    outcome = brumlin(Start{.words = {path}, .without_privileges = true});
  } catch (const std::exception& problem) {
    GTEST_SKIP() << "the command does not start for another user: " << problem.what();
  }
  expect_input_error(outcome, 3, "brumlin: error: cannot read " + path + ": Permission denied");
}

TEST(Input, ClosedStandardInputIsAnInputError) {
  const Outcome outcome = brumlin(Start{.words = {}, .without_input = true});
  EXPECT_EQ(outcome.status, 3);
  EXPECT_THAT(outcome.err, StartsWith("brumlin: error: cannot read <stdin>"));
  EXPECT_EQ(outcome.out, "");
}

TEST(Input, ErrorsOfTheTextSayWhere) {
  struct Row {
    const char* text;
    const char* message;
  };
  const Row rows[] = {
      {"(assert p)", "1:9: error: found the symbol p, expected a declared symbol"},
      {"(declare-fun p () Bool)\n\n  (assert (and p 1))",
       "3:11: error: found Int as argument 2 of and, expected Bool"},
      {"(assert true", "1:13: error: found the end of the input, expected ')'"},
      {"; UTF-8 counts bytes: é\n(assert |é|)",
       "2:9: error: found the symbol |é|, expected a declared symbol"},
      {"(set-logic QF_UF)\r\n(check)\r\n",
       "2:2: error: found the symbol check, expected a command"},
  };
  const TemporaryFolder folder;
  for (const Row& row : rows) {
    SCOPED_TRACE(row.text);
    const std::string path = folder.write("in.smt2", row.text);
    expect_input_error(brumlin({path}), 2, path + ":" + row.message);
    expect_input_error(brumlin({}, row.text), 2, std::string("<stdin>:") + row.message);
  }
}

TEST(Input, AnErrorIsOneLineWhateverTheTextHolds) {
  expect_input_error(
      brumlin({}, "(assert |a\nb\r\tc|)"), 2,
      R"(<stdin>:1:9: error: found the symbol |a\nb\r\tc|, expected a declared symbol)");
  // Control characters of ASCII and of Unicode, and bytes that are not UTF-8.
  expect_input_error(
      brumlin({}, "(assert |\x1b[2J\x7f\xc2\x9b\xff\xc3\xa9\xe2\x82|)"), 2,
      "<stdin>:1:9: error: found the symbol |\\x1b[2J\\x7f\\xc2\\x9b\\xff\xc3\xa9\\xe2\\x82|, "
      "expected a declared symbol");
  const TemporaryFolder folder;
  folder.write("a\n\x1b.smt2", "(check-sat)(check-sat)(assert p)");
  const auto in_folder = [&](const std::vector<std::string>& words) {
    return brumlin(Start{.words = words, .folder = folder.path().string()});
  };
  expect_input_error(in_folder({"a\n\x1b.smt2"}), 2,
                     R"(a\n\x1b.smt2:1:31: error: found the symbol p, expected a declared symbol)");
  expect_input_error(in_folder({"b\nc"}), 3,
                     R"(brumlin: error: cannot read b\nc: No such file or directory)");
  expect_input_error(in_folder({"--to", "b\nc"}), 2,
                     R"(brumlin: error: --to: 'b\nc' is none of v1|v2|define-fun|terms|trace|dot)");
  folder.write("a\n\x1b.smt2", "(check-sat)(check-sat)");
  EXPECT_EQ(lines_of(in_folder({"a\n\x1b.smt2"}).err).size(), 1U);
  const Outcome batch = in_folder({"--stats", "--output-folder", "out", "a\n\x1b.smt2"});
  EXPECT_THAT(batch.err, ::testing::HasSubstr("input: a\\n\\x1b.smt2\n"));
}

TEST(Input, LongMessagesLackTheirMiddle) {
  // The first 700 and the last 300 bytes stay, or a little less and more: characters stay whole.
  const std::string begin = "found the symbol |";           // 18 bytes
  const std::string end = "|, expected a declared symbol";  // 29 bytes
  const std::string place = "<stdin>:1:9: error: ";
  const std::string accent = "\xc3\xa9";
  const auto accents = [&](std::size_t count) {
    std::string text;
    for (std::size_t i = 0; i < count; ++i) {
      text += accent;
    }
    return text;
  };
  expect_input_error(brumlin({}, "(assert |" + std::string(5'000'000, 'a') + "|)"), 2,
                     place + begin + std::string(682, 'a') + "..." + std::string(271, 'a') + end);
  expect_input_error(brumlin({}, "(assert |" + accents(1000) + "|)"), 2,
                     place + begin + accents(341) + "..." + accents(136) + end);
  expect_input_error(brumlin({}, "(assert |a" + accents(1000) + "b|)"), 2,
                     place + begin + "a" + accents(340) + "..." + accents(135) + "b" + end);
  // The longest that is shown whole has 1000 bytes.
  const std::string whole(1000 - begin.size() - end.size(), 'a');
  expect_input_error(brumlin({}, "(assert |" + whole + "|)"), 2, place + begin + whole + end);
}

TEST(Input, WhatCannotBeHeldIsNamed) {
  const std::pair<const char*, const char*> rows[] = {
      {"(assert (forall ((x Int)) (<= x x)))", "quantifiers"},
      {"(declare-datatypes ((T 0)) (((a))))", "datatypes"},
      {"(declare-fun x () String)", "strings"},
      {"(declare-fun x () (_ FloatingPoint 8 24))", "floating point"},
      {"(define-fun-rec f ((x Int)) Int x)", "recursive definitions"},
  };
  for (const auto& [text, construct] : rows) {
    const Outcome outcome = brumlin({}, text);
    EXPECT_EQ(outcome.status, 2) << text;
    EXPECT_EQ(outcome.out, "") << text;
    EXPECT_THAT(outcome.err, StartsWith("<stdin>:1:")) << text;
    EXPECT_THAT(outcome.err, ::testing::HasSubstr(construct)) << text;
    EXPECT_THAT(outcome.err, EndsWith("\n"));
  }
}

TEST(Input, TheOutputIsNotTouchedByBadInput) {
  const TemporaryFolder folder;
  const std::string out = folder.write("out", "old");
  EXPECT_EQ(brumlin({"-o", out}, "(assert").status, 2);
  EXPECT_EQ(read_file(out), "old");
  EXPECT_EQ(folder.names(), std::vector<std::string>{"out"});
}

TEST(Input, EndsAtExit) {
  const Outcome outcome = brumlin({}, "(exit)(assert");
  EXPECT_EQ(outcome.status, 0);
  EXPECT_EQ(outcome.out, "(set-info :source |printed by Brumlin|)\n(assert\ntrue\n)\n");
}

TEST(Input, AStrangeLogicStaysOneSymbol) {
  const std::string input = "(set-logic |QF_UF) (exit|)\n(assert true)";
  const Outcome v2 = brumlin({}, input);
  EXPECT_EQ(v2.status, 0);
  EXPECT_THAT(v2.out, StartsWith("(set-logic |QF_UF) (exit|)\n"));
  expect_input_error(brumlin({"-t", "v1"}, input), 1,
                     "<stdin>: error: the logic 'QF_UF) (exit' is no identifier of SMT-LIB 1.2");
}

TEST(Input, AStrangeStatusIsLeftOut) {
  for (const std::string status : {"(a b)", "|sat or so|", "\"sat\"", "solved"}) {
    for (const char* form : {"v1", "v2", "define-fun", "trace"}) {
      const Outcome outcome =
          brumlin({"-t", form}, "(set-info :status " + status + ")(assert true)");
      EXPECT_EQ(outcome.status, 0);
      EXPECT_EQ(outcome.err, "<stdin>: warning: the status " + status +
                                 " is left out: it is not sat, unsat or unknown\n");
      EXPECT_THAT(outcome.out, ::testing::Not(::testing::HasSubstr(":status")));
    }
  }
  EXPECT_THAT(brumlin({}, "(set-info :status |sat|)").out, StartsWith("(set-info :status sat)\n"));
}

}  // namespace brum::testing
