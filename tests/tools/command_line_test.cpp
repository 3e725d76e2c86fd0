#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <utility>
#include <vector>

#include "tests/tools/command.h"

// The options of the command, its exit statuses for bad usage and what it says then.

namespace brum::testing {

namespace {

using ::testing::HasSubstr;
using ::testing::MatchesRegex;
using ::testing::StartsWith;

const std::string one_query =
    "(set-logic QF_UF)\n(set-info :status sat)\n(declare-fun p () Bool)\n(assert p)\n(check-sat)\n";

const std::string one_query_as_v2 =
    "(set-logic QF_UF)\n(set-info :status sat)\n(set-info :source |printed by Brumlin|)\n"
    "(declare-fun p () Bool)\n(assert\np\n)\n(check-sat)\n";

void expect_usage_error(const std::vector<std::string>& arguments, const std::string& message) {
  const Outcome outcome = brumlin(arguments, one_query);
  EXPECT_EQ(outcome.status, 2) << message;
  EXPECT_EQ(outcome.err, "brumlin: error: " + message + "\n");
  EXPECT_EQ(outcome.out, "");
}

}  // namespace

TEST(CommandLine, WritesVersion2FromStandardInputToStandardOutput) {
  for (const std::vector<std::string>& arguments :
       {std::vector<std::string>{}, {"-"}, {"--to", "v2"}, {"-t", "v2", "-"}, {"--to=v2"}}) {
    const Outcome outcome = brumlin(arguments, one_query);
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(outcome.out, one_query_as_v2);
    EXPECT_EQ(outcome.err, "");
  }
}

TEST(CommandLine, WritesEachFormAskedFor) {
  const std::string header =
      "(set-logic QF_UF)\n(set-info :status sat)\n(set-info :source |printed by Brumlin|)\n"
      "(declare-fun p () Bool)\n";
  const std::vector<std::pair<std::string, std::string>> forms = {
      {"v1",
       "(benchmark unnamed\n:status sat\n:logic QF_UF\n:source { printed by Brumlin }\n"
       ":extrapreds ((p))\n\n:formula\n\np\n\n)\n"},
      {"v2", one_query_as_v2},
      {"define-fun", header + "(assert p)\n(check-sat)\n"},
      {"terms",
       "(set-logic QF_UF)\n(set-info :source |printed by Brumlin|)\n(declare-fun p () Bool)\n"
       "(define-fun .def_1 () Bool p)\n(assert true)\n(check-sat)\n"},
      {"trace", header + "(assert p)\n(check-sat)\n"},
  };
  for (const auto& [form, text] : forms) {
    for (const char* option : {"-t", "--to"}) {
      const Outcome outcome = brumlin({option, form}, one_query);
      EXPECT_EQ(outcome.status, 0) << form;
      EXPECT_EQ(outcome.out, text) << form;
      EXPECT_EQ(outcome.err, "") << form;
    }
  }
}

TEST(CommandLine, ReadsTheNamedFile) {
  const TemporaryFolder folder;
  const Outcome outcome = brumlin({folder.write("in.smt2", one_query)}, "(assert not read)");
  EXPECT_EQ(outcome.status, 0);
  EXPECT_EQ(outcome.out, one_query_as_v2);
}

TEST(CommandLine, TakesNamesThatBeginWithAHyphenBehindTwo) {
  const TemporaryFolder folder;
  folder.write("-in", one_query);
  const Outcome outcome = brumlin(Start{.words = {"--", "-in"}, .folder = folder.path().string()});
  EXPECT_EQ(outcome.status, 0);
  EXPECT_EQ(outcome.out, one_query_as_v2);
}

TEST(CommandLine, TakesTheNamesOfInputsAsTheyAre) {
  const TemporaryFolder folder;
  for (const std::string name : {"[in]", "[a,b]", "[]", "++", "a=b", "{}"}) {
    folder.write(name, one_query);
    const Outcome outcome =
        brumlin(Start{.words = {name}, .input = "(exit)", .folder = folder.path().string()});
    EXPECT_EQ(outcome.status, 0) << name;
    EXPECT_EQ(outcome.out, one_query_as_v2) << name;
    EXPECT_EQ(outcome.err, "") << name;
  }
  folder.write("--logic=", one_query);
  EXPECT_EQ(
      brumlin(Start{.words = {"--to", "v2", "--", "--logic="}, .folder = folder.path().string()})
          .out,
      one_query_as_v2);
  EXPECT_EQ(brumlin({""}).err, "brumlin: error: cannot read : No such file or directory\n");
}

TEST(CommandLine, TakesValuesBehindAnEqualsSign) {
  const TemporaryFolder folder;
  const std::string path = folder.file("a=b");
  for (const std::vector<std::string>& arguments :
       {std::vector<std::string>{"--to=v2", "--output=" + path},
        {"-t=v2", "-o=" + path},
        {"-tv2", "-o" + path},
        {"-t", "v2", "-o", path}}) {
    EXPECT_EQ(brumlin(arguments, one_query).status, 0);
    EXPECT_EQ(read_file(path), one_query_as_v2);
    std::filesystem::remove(path);
  }
  // A value is taken as it is, whatever it looks like.
  for (const std::string value : {"--logic=", "=", "-", "--", "[a,b]"}) {
    const Outcome outcome = brumlin(
        Start{.words = {"-o", value}, .input = one_query, .folder = folder.path().string()});
    EXPECT_EQ(outcome.status, 0) << value;
    EXPECT_EQ(read_file(folder.file(value)), one_query_as_v2) << value;
  }
}

TEST(CommandLine, AnEmptyValueBehindAnEqualsSignIsEmpty) {
  const TemporaryFolder folder;
  const std::string path = folder.write("in.smt2", one_query);
  const std::string without_header = one_query_as_v2.substr(one_query_as_v2.find("(set-info :so"));
  for (const std::vector<std::string>& arguments :
       {std::vector<std::string>{"--logic=", "--status=", path}, {path, "--status=", "--logic="}}) {
    const Outcome outcome = brumlin(arguments, "(exit)");
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(outcome.out, without_header);
    EXPECT_EQ(outcome.err, "");
  }
  const std::vector<std::pair<std::string, std::string>> rows = {
      {"--output", "the name is empty"},
      {"--introduced", "the name is empty"},
      {"--output-folder", "the name is empty"},
      {"--to", "'' is none of v1|v2|define-fun|terms|trace|dot"},
      {"--from", "'' is none of v1|v2"},
      {"--label", "'' is not a plain SMT-LIB 2 symbol"},
      {"--query", "'' is not a number from 1 on"},
      {"--nodes", "'' is not a number from 1 on"},
      {"--jobs", "'' is not a number from 1 on"},
  };
  for (const auto& [option, message] : rows) {
    expect_usage_error({option + "=", path}, option + ": " + message);
    expect_usage_error({path, option + "="}, option + ": " + message);
    expect_usage_error({option, "", path}, option + ": " + message);
  }
  expect_usage_error({"-o=", path}, "--output: the name is empty");
  expect_usage_error({"-t=", path}, "--to: '' is none of v1|v2|define-fun|terms|trace|dot");
  expect_usage_error({"-j=", path}, "--jobs: '' is not a number from 1 on");
  expect_usage_error({"--stats=", path}, "--stats: there is no word behind '='");
  expect_usage_error({"--nonsense=", path}, "The following argument was not expected: --nonsense=");
  EXPECT_EQ(read_file(path), one_query);
  EXPECT_EQ(folder.names(), std::vector<std::string>{"in.smt2"});
}

TEST(CommandLine, LogicAndStatusOverrideTheInputs) {
  const Outcome v2 = brumlin({"--logic", "QF_LIA", "--status", "unknown"}, one_query);
  EXPECT_EQ(v2.status, 0);
  EXPECT_THAT(v2.out, StartsWith("(set-logic QF_LIA)\n(set-info :status unknown)\n"
                                 "(set-info :source |printed by Brumlin|)\n"));
  const Outcome v1 = brumlin({"-t", "v1", "--logic", "QF_LIA", "--status", "unknown"}, one_query);
  EXPECT_EQ(v1.status, 0);
  EXPECT_THAT(v1.out, StartsWith("(benchmark unnamed\n:status unknown\n:logic QF_LIA\n"
                                 ":source { printed by Brumlin }\n"));
}

TEST(CommandLine, EmptyLogicAndStatusLeaveTheirLinesOut) {
  const Outcome v2 = brumlin({"--logic", "", "--status", ""}, one_query);
  EXPECT_EQ(v2.status, 0);
  EXPECT_THAT(v2.out, StartsWith("(set-info :source |printed by Brumlin|)\n(declare-fun "));
  const Outcome v1 = brumlin({"-t", "v1", "--logic", "", "--status", ""}, one_query);
  EXPECT_EQ(v1.status, 0);
  EXPECT_THAT(v1.out, StartsWith("(benchmark unnamed\n:source { printed by Brumlin }\n"));
}

TEST(CommandLine, LabelIsThePrefixOfLabelsInVersion2Forms) {
  const std::string shared =
      "(declare-fun p () Bool)(declare-fun q () Bool)\n(assert (= (and p q) (not (and p q))))";
  EXPECT_THAT(brumlin({"--label", "d_"}, shared).out,
              HasSubstr("(let ((d_3 (and p q)))\n(= d_3 (not d_3))\n"));
  EXPECT_THAT(brumlin({"--label", "d_", "-t", "define-fun"}, shared).out,
              HasSubstr("(define-fun d_3 () Bool (and p q))\n(assert (= d_3 (not d_3)))\n"));
  EXPECT_THAT(brumlin({"--label", "<~>", "-t", "trace"}, shared).out,
              HasSubstr("(define-fun <~>3 () Bool (and p q))\n"));
  EXPECT_THAT(brumlin({"--label", "t.", "-t", "terms"}, shared).out,
              HasSubstr("(define-fun t.5 () Bool (= t.3 (not t.3)))\n"));
}

TEST(CommandLine, LabelMustBeAPlainSymbol) {
  for (const std::string prefix :
       {"", "1", "9_", "a b", "|x|", "a|", "d:", "(", "x;", "é", "\"a\""}) {
    expect_usage_error({"--label", prefix},
                       "--label: '" + prefix + "' is not a plain SMT-LIB 2 symbol");
  }
}

TEST(CommandLine, ADrawingHasTheUsualLabels) {
  expect_usage_error({"--label", "d_", "-t", "dot"}, "--label: a drawing has the usual labels");
}

TEST(CommandLine, LabelHasNoPlaceInVersion1) {
  expect_usage_error({"--label", "d_", "-t", "v1"},
                     "--label: labels have fixed forms in version 1.2");
}

TEST(CommandLine, LogicMustBeAPlainSymbol) {
  expect_usage_error({"--logic", "QF_UF) (exit"},
                     "--logic: 'QF_UF) (exit' is not a plain SMT-LIB 2 symbol");
}

TEST(CommandLine, StatusMustBeOne) {
  for (const std::string word : {"weird", "|sat|", "SAT", "sat ", "sat) (exit"}) {
    expect_usage_error({"--status", word}, "--status: '" + word + "' is none of sat|unsat|unknown");
  }
  for (const std::string word : {"sat", "unsat", "unknown"}) {
    EXPECT_THAT(brumlin({"--status", word}, one_query).out,
                HasSubstr("(set-info :status " + word + ")\n"));
  }
}

TEST(CommandLine, RefusesBadUsage) {
  expect_usage_error({"--to", "v3"}, "--to: 'v3' is none of v1|v2|define-fun|terms|trace|dot");
  expect_usage_error({"--to", ""}, "--to: '' is none of v1|v2|define-fun|terms|trace|dot");
  expect_usage_error({"--from", "v3"}, "--from: 'v3' is none of v1|v2");
  expect_usage_error({"--nonsense"}, "The following argument was not expected: --nonsense");
  expect_usage_error({"one.smt2", "two.smt2"}, "INPUT: several inputs need --output-folder");
  for (const std::string number : {"0", "-1", "x", "1.5", "010", "0x1", "1e3", ""}) {
    for (const std::string option : {"--query", "--nodes", "--jobs"}) {
      expect_usage_error({option, number}, option + ": '" + number + "' is not a number from 1 on");
    }
  }
  for (const char* option : {"--to", "--output", "--output-folder", "--logic", "--status", "--from",
                             "--label", "--query", "--nodes", "--jobs", "--introduced"}) {
    const Outcome outcome = brumlin({option}, one_query);
    EXPECT_EQ(outcome.status, 2) << option;
    EXPECT_THAT(outcome.err, MatchesRegex("brumlin: error: --[a-z-]+: [^\n]+\n")) << option;
    EXPECT_EQ(outcome.out, "");
  }
}

TEST(CommandLine, TellsNumbersAsTheyAreGiven) {
  for (const std::string option : {"--query", "--nodes", "--jobs"}) {
    expect_usage_error({option, "99999999999999999999"},
                       option + ": '99999999999999999999' is too large");
  }
  // The largest number that can be held, and one more.
  EXPECT_EQ(brumlin({"--query", "18446744073709551615"}, one_query).err,
            "<stdin>: error: the input has 1 check-sat, not 18446744073709551615\n");
  expect_usage_error({"--query", "18446744073709551616"},
                     "--query: '18446744073709551616' is too large");
}

TEST(CommandLine, HelpAndVersionGoToStandardOutput) {
  const Outcome version = brumlin({"--version"});
  EXPECT_EQ(version.status, 0);
  EXPECT_THAT(version.out, MatchesRegex("brumlin [0-9]+\\.[0-9]+\\.[0-9]+\n"));
  EXPECT_EQ(version.err, "");
  const Outcome help = brumlin({"--help"});
  EXPECT_EQ(help.status, 0);
  EXPECT_EQ(help.err, "");
  for (const char* option : {"-t,--to", "-o,--output", "--logic", "--status", "--from", "--label",
                             "--query", "--stats", "-h,--help", "--version", "INPUT",
                             "--output-folder", "-j,--jobs", "--nodes", "--introduced"}) {
    EXPECT_THAT(help.out, HasSubstr(option));
  }
}

TEST(CommandLine, StatsTellsSizesTimesAndMemory) {
  const std::string input =
      "(declare-fun p () Bool)(declare-fun q () Bool)\n"
      "(assert (and p q))(assert (or (and p q) (not (and p q))))\n(check-sat)";
  struct Row {
    const char* form;
    const char* assertions;
    const char* terms;
    const char* definitions;
  };
  // The terms are p, q, (and p q), the negation and the disjunction, and the conjunction of both
  // assertions in the forms that have one.
  for (const Row& row :
       {Row{"v1", "2", "6", "1"}, Row{"v2", "2", "6", "1"}, Row{"define-fun", "2", "6", "1"},
        Row{"terms", "2", "5", "2"}, Row{"trace", "2", "5", "1"}}) {
    const Outcome outcome = brumlin({"--stats", "-t", row.form}, input);
    EXPECT_EQ(outcome.status, 0);
    EXPECT_THAT(outcome.err, MatchesRegex(std::string("assertions: ") + row.assertions +
                                          "\ndistinct terms: " + row.terms +
                                          "\ndefinitions: " + row.definitions +
                                          "\nbytes: " + std::to_string(outcome.out.size()) +
                                          "\nseconds reading: [0-9]+\\.[0-9]+\nseconds printing: "
                                          "[0-9]+\\.[0-9]+\npeak memory KiB: [1-9][0-9]*\n"))
        << row.form;
    EXPECT_EQ(outcome.out, brumlin({"-t", row.form}, input).out);
  }
}

TEST(CommandLine, StatsCountTheAssertionsOfTheInput) {
  const std::string repeated =
      "(declare-fun p () Bool)(assert p)(assert p)(assert (not p))(assert p)";
  for (const std::string form : {"v1", "v2", "define-fun", "terms", "trace", "dot"}) {
    EXPECT_THAT(brumlin({"--stats", "-t", form}, repeated).err,
                StartsWith("assertions: 4\ndistinct terms: "))
        << form;
  }
}

TEST(CommandLine, StatsAsTextIsWhatStatsMeans) {
  const Outcome outcome = brumlin({"--stats=text"}, one_query);
  EXPECT_EQ(outcome.status, 0);
  EXPECT_THAT(outcome.err, StartsWith("assertions: 1\ndistinct terms: 1\ndefinitions: 0\n"));
}

TEST(CommandLine, StatsAsJsonAreOneObjectOnALine) {
  const TemporaryFolder folder;
  folder.write("a\"b\\\xc3\xa9\xff\t.smt2", one_query);
  const Outcome named = brumlin(
      Start{.words = {"--stats=json", "-t", "trace", "-o", "out", "a\"b\\\xc3\xa9\xff\t.smt2"},
            .folder = folder.path().string()});
  EXPECT_EQ(named.status, 0);
  EXPECT_THAT(
      named.err,
      MatchesRegex("\\{\"input\": \"a\\\\\"b\\\\\\\\\xc3\xa9\xef\xbf\xbd\\\\u0009\\.smt2\", "
                   "\"output\": \"out\", \"form\": \"trace\", \"assertions\": 1, "
                   "\"distinct_terms\": 1, \"definitions\": 0, \"bytes\": [0-9]+, "
                   "\"seconds_reading\": [0-9]+\\.[0-9]+, \"seconds_printing\": [0-9]+\\.[0-9]+, "
                   "\"peak_memory_kib\": [1-9][0-9]*\\}\n"));
  const Outcome unnamed = brumlin({"--stats=json"}, one_query);
  EXPECT_EQ(unnamed.out, one_query_as_v2);
  EXPECT_THAT(unnamed.err, StartsWith("{\"input\": \"<stdin>\", \"output\": null, "
                                      "\"form\": \"v2\", \"assertions\": 1, "));
}

TEST(CommandLine, StatsTakeNoWordOfTheirOwn) {
  const TemporaryFolder folder;
  const Outcome outcome =
      brumlin({"--stats", folder.write("json", one_query)}, "(assert not read)");
  EXPECT_EQ(outcome.status, 0);
  EXPECT_EQ(outcome.out, one_query_as_v2);
  expect_usage_error({"--stats=xml"}, "--stats: 'xml' is none of text|json");
}

TEST(CommandLine, StatsCountTheBytesOfTheFile) {
  const TemporaryFolder folder;
  const Outcome outcome = brumlin({"--stats", "-o", folder.file("out")}, one_query);
  EXPECT_EQ(outcome.status, 0);
  EXPECT_EQ(outcome.out, "");
  EXPECT_THAT(outcome.err, HasSubstr("\nbytes: " + std::to_string(one_query_as_v2.size()) + "\n"));
}

}  // namespace brum::testing
