#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <vector>

#include "tests/tools/command.h"

// Several inputs at once: what is written where, what stops what, and what is refused.

namespace brum::testing {

namespace {

namespace fs = std::filesystem;
using ::testing::HasSubstr;

std::string script(const std::string& name) {
  return "(declare-fun " + name + " () Bool)\n(assert " + name + ")\n";
}

std::string as_v2(const std::string& name) {
  return "(set-info :source |printed by Brumlin|)\n(declare-fun " + name + " () Bool)\n(assert\n" +
         name + "\n)\n";
}

Outcome run_in(const TemporaryFolder& folder, const std::vector<std::string>& words) {
  return brumlin(Start{.words = words, .folder = folder.path().string()});
}

void expect_refused(const TemporaryFolder& folder, const std::vector<std::string>& words,
                    const std::string& message) {
  const Outcome outcome = run_in(folder, words);
  EXPECT_EQ(outcome.status, 2) << message;
  EXPECT_EQ(outcome.err, "brumlin: error: " + message + "\n");
  EXPECT_EQ(outcome.out, "");
  EXPECT_FALSE(fs::exists(folder.path() / "out")) << message;
}

}  // namespace

TEST(Batch, WritesAFileForEachInput) {
  for (const char* jobs : {"1", "2", "7"}) {
    const TemporaryFolder folder;
    folder.write("a.smt2", script("a"));
    folder.write("b.smt", script("b"));
    folder.write("c", script("c"));
    const Outcome outcome =
        run_in(folder, {"--output-folder", "out", "-j", jobs, "a.smt2", "b.smt", "c"});
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(outcome.out, "");
    EXPECT_EQ(outcome.err, "");
    EXPECT_EQ(read_file(folder.path() / "out" / "a.smt2"), as_v2("a"));
    EXPECT_EQ(read_file(folder.path() / "out" / "b.smt2"), as_v2("b"));
    EXPECT_EQ(read_file(folder.path() / "out" / "c.smt2"), as_v2("c"));
  }
}

TEST(Batch, TheExtensionIsThatOfTheForm) {
  const std::pair<const char*, const char*> rows[] = {
      {"v1", "a.smt"},     {"v2", "a.smt2"},    {"define-fun", "a.smt2"},
      {"terms", "a.smt2"}, {"trace", "a.smt2"}, {"dot", "a.dot"},
  };
  for (const auto& [form, name] : rows) {
    const TemporaryFolder folder;
    folder.write("a.smt2", script("a"));
    EXPECT_EQ(run_in(folder, {"-t", form, "--output-folder", "out", "a.smt2"}).status, 0);
    EXPECT_EQ(read_file(folder.path() / "out" / name), run_in(folder, {"-t", form, "a.smt2"}).out)
        << form;
  }
}

TEST(Batch, AFolderStandsForTheScriptsBelowIt) {
  const TemporaryFolder folder;
  fs::create_directories(folder.path() / "in" / "x" / "y");
  folder.write("in/a.smt2", script("a"));
  folder.write("in/x/a.smt2", script("xa"));
  folder.write("in/x/y/b.smt", script("b"));
  folder.write("in/notes.txt", "not a script");
  folder.write("other.smt2", script("other"));
  const Outcome outcome =
      run_in(folder, {"-j", "2", "--output-folder", "o/u/t", "in", "other.smt2"});
  EXPECT_EQ(outcome.status, 0);
  EXPECT_EQ(outcome.err, "");
  const fs::path out = folder.path() / "o" / "u" / "t";
  EXPECT_EQ(read_file(out / "a.smt2"), as_v2("a"));
  EXPECT_EQ(read_file(out / "x" / "a.smt2"), as_v2("xa"));
  EXPECT_EQ(read_file(out / "x" / "y" / "b.smt2"), as_v2("b"));
  EXPECT_EQ(read_file(out / "other.smt2"), as_v2("other"));
  EXPECT_FALSE(fs::exists(out / "notes.txt"));
}

TEST(Batch, TheOutputFolderIsNoInput) {
  const TemporaryFolder folder;
  folder.write("a.smt2", script("a"));
  for (int i = 0; i < 2; ++i) {
    EXPECT_EQ(run_in(folder, {"--output-folder", "out", "."}).status, 0);
    EXPECT_EQ(read_file(folder.path() / "out" / "a.smt2"), as_v2("a"));
    EXPECT_FALSE(fs::exists(folder.path() / "out" / "out"));
  }
}

TEST(Batch, AnInputThatGoesWrongStopsNoOther) {
  const TemporaryFolder folder;
  folder.write("a.smt2", script("a"));
  folder.write("bad.smt2", "(assert p)");
  folder.write("c.smt2", script("c"));
  const std::vector<std::string> inputs{"a.smt2", "bad.smt2", "none.smt2", "c.smt2"};
  for (const char* jobs : {"1", "4"}) {
    std::vector<std::string> words{"--output-folder", "out", "-j", jobs};
    words.insert(words.end(), inputs.begin(), inputs.end());
    const Outcome outcome = run_in(folder, words);
    EXPECT_EQ(outcome.status, 3);
    EXPECT_EQ(outcome.err,
              "bad.smt2:1:9: error: found the symbol p, expected a declared symbol\n"
              "brumlin: error: cannot read none.smt2: No such file or directory\n"
              "brumlin: error: 2 of 4 inputs were not written\n");
    EXPECT_EQ(read_file(folder.path() / "out" / "a.smt2"), as_v2("a"));
    EXPECT_EQ(read_file(folder.path() / "out" / "c.smt2"), as_v2("c"));
    EXPECT_FALSE(fs::exists(folder.path() / "out" / "bad.smt2"));
  }
}

TEST(Batch, TheStatusIsTheHighestOfAllInputs) {
  const TemporaryFolder folder;
  folder.write("good.smt2", script("a"));
  folder.write("mixed.smt2",
               "(declare-fun a () (Array Int Bool))(assert (select a 0))");  // not in version 1.2
  folder.write("bad.smt2", "(assert p)");
  const auto status = [&](const std::vector<std::string>& inputs) {
    std::vector<std::string> words{"-t", "v1", "--output-folder", "out"};
    words.insert(words.end(), inputs.begin(), inputs.end());
    return run_in(folder, words).status;
  };
  EXPECT_EQ(status({"good.smt2"}), 0);
  EXPECT_EQ(status({"mixed.smt2"}), 1);
  EXPECT_EQ(status({"mixed.smt2", "good.smt2"}), 1);
  EXPECT_EQ(status({"bad.smt2", "mixed.smt2"}), 2);
  EXPECT_EQ(status({"good.smt2", "none.smt2", "bad.smt2"}), 3);
}

TEST(Batch, MessagesComeInTheOrderOfTheInputs) {
  // The first input comes late: the process that reads it waits for its other end.
  const TemporaryFolder folder;
  folder.write("late.txt", "(assert late)");
  folder.write("early.smt2", "(assert early)");
  const Outcome outcome =
      run(Start{.words = {"sh", "-c",
                          "mkfifo late.smt2 && { (sleep 0.3; cat late.txt >late.smt2) & "
                          "\"$0\" --output-folder out -j 2 late.smt2 early.smt2; }",
                          BRUM_COMMAND},
                .folder = folder.path().string()});
  EXPECT_EQ(outcome.status, 2);
  EXPECT_EQ(outcome.err,
            "late.smt2:1:9: error: found the symbol late, expected a declared symbol\n"
            "early.smt2:1:9: error: found the symbol early, expected a declared symbol\n"
            "brumlin: error: 2 of 2 inputs were not written\n");
}

TEST(Batch, OneInputFailsWithoutASummary) {
  const TemporaryFolder folder;
  folder.write("bad.smt2", "(assert p)");
  const Outcome outcome = run_in(folder, {"--output-folder", "out", "bad.smt2"});
  EXPECT_EQ(outcome.status, 2);
  EXPECT_EQ(outcome.err, "bad.smt2:1:9: error: found the symbol p, expected a declared symbol\n");
}

TEST(Batch, AProcessThatDiesStopsNoOther) {
  const TemporaryFolder folder;
  folder.write("a.smt2", script("a"));
  // The process of the first input waits for text; whoever ends it means no other.
  const Outcome outcome = run(Start{
      .words = {"sh", "-c",
                "mkfifo slow.smt2 && { sleep 5 >slow.smt2 & holder=$!; "
                "\"$0\" --output-folder out -j 2 slow.smt2 a.smt2 & batch=$!; "
                "while ! test -e out/a.smt2; do sleep 0.05; done; "
                "kill -KILL $(cat /proc/$batch/task/$batch/children); kill $holder; wait $batch; }",
                BRUM_COMMAND},
      .folder = folder.path().string()});
  EXPECT_EQ(outcome.status, 3) << outcome.err;
  EXPECT_THAT(outcome.err, HasSubstr("slow.smt2: error: signal 9 ended the conversion\n"));
  EXPECT_EQ(read_file(folder.path() / "out" / "a.smt2"), as_v2("a"));
}

TEST(Batch, RefusesInputsThatDoNotGoTogether) {
  const TemporaryFolder folder;
  fs::create_directories(folder.path() / "x");
  fs::create_directories(folder.path() / "empty");
  folder.write("a.smt2", script("a"));
  folder.write("a.smt", script("a"));
  folder.write("x/a.smt2", script("a"));
  expect_refused(folder, {"--output-folder", "out", "a.smt2", "x/a.smt2"},
                 "a.smt2 and x/a.smt2 would both be written to out/a.smt2");
  expect_refused(folder, {"--output-folder", "out", "a.smt2", "a.smt"},
                 "a.smt2 and a.smt would both be written to out/a.smt2");
  expect_refused(folder, {"--output-folder", "out", "a.smt2", "./a.smt2"},
                 "a.smt2 and ./a.smt2 would both be written to out/a.smt2");
  expect_refused(folder, {"--output-folder", ".", "a.smt2"},
                 "writing ./a.smt2 would replace an input");
  expect_refused(folder, {"--output-folder", "x", "a.smt2", "x/a.smt2"},
                 "writing x/a.smt2 would replace an input");
  expect_refused(folder, {"--output-folder", "out", "empty"},
                 "no .smt2 or .smt file in the folder empty");
  EXPECT_EQ(read_file(folder.path() / "a.smt2"), script("a"));
}

TEST(Batch, RefusesOptionsOfOneInput) {
  const TemporaryFolder folder;
  folder.write("a.smt2", script("a"));
  expect_refused(folder, {"--output-folder", "out", "-o", "b.smt2", "a.smt2"},
                 "--output: the outputs go to the folder");
  expect_refused(folder, {"--output-folder", "out", "--introduced", "b.smt2", "a.smt2"},
                 "--introduced: one file cannot serve several inputs");
  for (const std::vector<std::string>& inputs :
       {std::vector<std::string>{}, {"-"}, {"a.smt2", "-"}}) {
    std::vector<std::string> words{"--output-folder", "out"};
    words.insert(words.end(), inputs.begin(), inputs.end());
    expect_refused(folder, words, "--output-folder: standard input has no name to write under");
  }
}

TEST(Batch, AFolderThatCannotBeMadeIsAnOutputError) {
  const TemporaryFolder folder;
  folder.write("a.smt2", script("a"));
  folder.write("out", "a file");
  const Outcome outcome = run_in(folder, {"--output-folder", "out", "a.smt2"});
  EXPECT_EQ(outcome.status, 3);
  EXPECT_EQ(outcome.err, "brumlin: error: cannot write out/a.smt2: Not a directory\n");
  EXPECT_EQ(read_file(folder.path() / "out"), "a file");
}

TEST(Batch, StatisticsNameTheirInput) {
  const TemporaryFolder folder;
  folder.write("a.smt2", script("a"));
  folder.write("b.smt2", script("b"));
  const Outcome text =
      run_in(folder, {"--stats", "--output-folder", "out", "-j", "2", "a.smt2", "b.smt2"});
  EXPECT_THAT(text.err, ::testing::StartsWith("input: a.smt2\nassertions: 1\n"));
  EXPECT_THAT(text.err, HasSubstr("\ninput: b.smt2\nassertions: 1\n"));
  const Outcome json =
      run_in(folder, {"--stats=json", "--output-folder", "out", "-j", "2", "a.smt2", "b.smt2"});
  EXPECT_THAT(json.err, ::testing::StartsWith("{\"input\": \"a.smt2\", \"output\": "
                                              "\"out/a.smt2\", \"form\": \"v2\", "));
  EXPECT_THAT(json.err, HasSubstr("}\n{\"input\": \"b.smt2\", \"output\": \"out/b.smt2\", "));
}

}  // namespace brum::testing
