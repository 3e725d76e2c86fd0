#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <regex>
#include <set>
#include <string>
#include <vector>

#include "tests/tools/command.h"
#include "tests/tools/declarations.h"

// The options of the command are those of its manual page and of the completions of bash and zsh.

namespace brum::testing {

namespace {

namespace fs = std::filesystem;
using ::testing::ElementsAre;
using ::testing::UnorderedElementsAre;

using Words = std::set<std::string>;

const fs::path root = BRUM_SOURCE_DIR;

/// The options that a text names by all their names. `text` has no backslashes.
Words options_in(const std::string& text) {
  Words options;
  const std::regex option("(^|[^-a-z0-9])(--?[a-z][a-z-]*)");
  for (std::sregex_iterator found(text.begin(), text.end(), option), end; found != end; ++found) {
    options.insert((*found)[2]);
  }
  return options;
}

/// The options that --help lists: they begin their lines.
Words options_of_help() {
  Words options;
  for (const std::string& line : lines_of(brumlin({"--help"}).out)) {
    if (line.starts_with("  -")) {
      const std::string names = line.substr(0, line.find(' ', 2));
      options.merge(options_in(names));
    }
  }
  return options;
}

/// What bash offers for the last of the words of a command line.
std::vector<std::string> completions(const std::vector<std::string>& words,
                                     const std::string& folder = "/") {
  std::string script =
      "source '" + (root / "completions" / "brumlin.bash").string() + "'; COMP_WORDS=(brumlin";
  for (const std::string& word : words) {
    script += " '" + word + "'";
  }
  script += "); COMP_CWORD=" + std::to_string(words.size()) +
            "; _brumlin 2>/dev/null; printf '%s\\n' \"${COMPREPLY[@]}\"";
  const Outcome outcome = run(Start{.words = {"bash", "--norc", "-c", script}, .folder = folder});
  std::vector<std::string> offered;
  for (const std::string& line : lines_of(outcome.out)) {
    if (line != "\n") {
      offered.push_back(line.substr(0, line.size() - 1));
    }
  }
  return offered;
}

class Completion : public ::testing::Test {
 protected:
  void SetUp() override {
    if (!is_installed("bash")) {
      GTEST_SKIP() << "bash is not installed";
    }
  }
};

}  // namespace

TEST(Options, TheManualPageNamesThemAll) {
  std::string text = read_file(root / "docs" / "brumlin.1");
  text.erase(std::remove(text.begin(), text.end(), '\\'), text.end());
  text = text.substr(text.find("\n.SH OPTIONS"));
  text = text.substr(0, text.find("\n.SH SEVERAL INPUTS"));
  EXPECT_EQ(options_in(text), options_of_help());
}

TEST(Options, TheCompletionOfZshNamesThemAll) {
  const std::string text = read_file(root / "completions" / "_brumlin");
  Words options;
  for (const std::string& line : lines_of(text)) {
    if (line.starts_with("  '")) {
      options.merge(options_in(line.substr(0, line.find('['))));
    }
  }
  EXPECT_EQ(options, options_of_help());
}

TEST(Options, TheCompletionOfZshIsAScript) {
  if (!is_installed("zsh")) {
    GTEST_SKIP() << "zsh is not installed";
  }
  const Outcome outcome =
      run(Start{.words = {"zsh", "-n", (root / "completions" / "_brumlin").string()}});
  EXPECT_EQ(outcome.status, 0) << outcome.err;
}

TEST_F(Completion, OffersAllOptions) {
  const std::vector<std::string> offered = completions({"-"});
  Words options(offered.begin(), offered.end());
  EXPECT_EQ(options.erase("--stats=json"), 1U);
  EXPECT_EQ(options, options_of_help());
}

TEST_F(Completion, OffersTheOptionsThatBeginSo) {
  EXPECT_THAT(completions({"--out"}), UnorderedElementsAre("--output", "--output-folder"));
  EXPECT_THAT(completions({"in.smt2", "--l"}), UnorderedElementsAre("--logic", "--label"));
}

TEST_F(Completion, OffersTheWordsOfAnOption) {
  EXPECT_THAT(completions({"--to", ""}),
              ElementsAre("v1", "v2", "define-fun", "terms", "trace", "dot"));
  EXPECT_THAT(completions({"-t", "t"}), ElementsAre("terms", "trace"));
  EXPECT_THAT(completions({"--to", "=", "d"}), ElementsAre("define-fun", "dot"));
  EXPECT_THAT(completions({"--to", "="}), ::testing::Contains("v1"));
  EXPECT_THAT(completions({"--from", ""}), ElementsAre("v1", "v2"));
  EXPECT_THAT(completions({"--status", "u"}), ElementsAre("unsat", "unknown"));
  EXPECT_THAT(completions({"--stats", "=", ""}), ElementsAre("text", "json"));
  EXPECT_THAT(completions({"--query", ""}), ElementsAre());
}

TEST_F(Completion, OffersFilesAndFolders) {
  const TemporaryFolder folder;
  folder.write("in.smt2", "");
  fs::create_directory(folder.path() / "inputs");
  const std::string path = folder.path().string();
  EXPECT_THAT(completions({"in"}, path), UnorderedElementsAre("in.smt2", "inputs"));
  EXPECT_THAT(completions({"--stats", "in"}, path), UnorderedElementsAre("in.smt2", "inputs"));
  EXPECT_THAT(completions({"-o", "in."}, path), ElementsAre("in.smt2"));
  EXPECT_THAT(completions({"--output-folder", "in"}, path), ElementsAre("inputs"));
}

}  // namespace brum::testing
