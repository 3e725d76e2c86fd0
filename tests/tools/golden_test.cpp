#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>
#include <vector>

#include "tests/tools/command.h"
#include "tests/tools/declarations.h"
#include "tests/tools/solvers.h"

// Each tests/golden/FORM/CASE.smt2 is written in the form FORM and compared with CASE.expect, whose
// text was written by hand. Comments at the top of the input say what else belongs to the case:
//
//     ; options: --label d_       more options for the command
//     ; warning: the name ...     what it says on standard error, a comment for each line
//
// What a failing case gave is left in golden/FORM/CASE.got beside the command.

namespace brum::testing {

namespace {

namespace fs = std::filesystem;

struct Case {
  std::string name;
  std::vector<std::string> options;
  std::string warnings;
};

Case read_case(const fs::path& input) {
  Case result{.name = input.stem().string(), .options = {}, .warnings = {}};
  const std::string options = "; options: ";
  const std::string warning = "; warning: ";
  for (const std::string& line : lines_of(read_file(input))) {
    if (line.starts_with(options)) {
      std::istringstream words(line.substr(options.size()));
      for (std::string word; words >> word;) {
        result.options.push_back(word);
      }
    } else if (line.starts_with(warning)) {
      result.warnings += result.name + ".smt2: warning: " + line.substr(warning.size());
    } else if (!line.starts_with(";")) {
      break;
    }
  }
  return result;
}

void keep_what_was_got(const std::string& form, const std::string& name, const std::string& text) {
  const fs::path folder = fs::path(BRUM_COMMAND).parent_path() / "golden" / form;
  fs::create_directories(folder);
  const fs::path file = folder / (name + ".got");
  std::ofstream(file, std::ios::binary) << text;
  ADD_FAILURE() << "what was got: " << file.string();
}

void check_case(const std::string& form, const fs::path& input) {
  const Case wanted = read_case(input);
  SCOPED_TRACE(form + '/' + wanted.name);
  const fs::path expect = fs::path(input).replace_extension(".expect");
  ASSERT_TRUE(fs::exists(expect)) << expect;

  std::vector<std::string> words{"--to", form};
  words.insert(words.end(), wanted.options.begin(), wanted.options.end());
  words.push_back(input.filename().string());
  const Outcome got = brumlin(Start{.words = words, .folder = input.parent_path().string()});
  EXPECT_EQ(got.status, 0);
  EXPECT_EQ(got.err, wanted.warnings);
  const std::string text = with_sorted_declarations(got.out);
  const std::string expected = with_sorted_declarations(read_file(expect));
  EXPECT_EQ(text, expected);
  if (text != expected) {
    keep_what_was_got(form, wanted.name, got.out);
  }
}

fs::path folder_of(const std::string& form) {
  return fs::path(BRUM_SOURCE_DIR) / "tests" / "golden" / form;
}

void check_form(const std::string& form) {
  const fs::path folder = folder_of(form);
  std::vector<fs::path> inputs;
  std::size_t expectations = 0;
  for (const auto& entry : fs::directory_iterator(folder)) {
    if (entry.path().extension() == ".smt2") {
      inputs.push_back(entry.path());
    } else {
      EXPECT_EQ(entry.path().extension(), ".expect") << entry.path();
      ++expectations;
    }
  }
  EXPECT_EQ(expectations, inputs.size()) << "an expectation without an input";
  constexpr std::size_t fewest_cases = 6;
  EXPECT_GE(inputs.size(), fewest_cases);
  std::sort(inputs.begin(), inputs.end());
  for (const fs::path& input : inputs) {
    check_case(form, input);
  }
}

/// Whether a solver takes a case in the form of the input itself: user names that begin with a full
/// stop are against the standard, and z3 4.8 does not know `divisible`.
bool takes_input(const Solver& solver, const std::string& name) {
  if (name == "label_clash") {
    return solver.takes_dotted_labels;
  }
  return name != "congruence" || solver.program != "z3";
}

/// Writes an input in a form, with labels that every solver takes.
std::string convert(const std::string& form, const fs::path& input) {
  std::vector<std::string> words{"--to", form, "--label", "d_", input.string()};
  const std::vector<std::string> options = read_case(input).options;
  if (std::find(options.begin(), options.end(), "--label") == options.end()) {
    words.insert(words.begin(), options.begin(), options.end());
  }
  return brumlin(words).out;
}

}  // namespace

TEST(Golden, Version1) {
  check_form("v1");
}
TEST(Golden, Version2) {
  check_form("v2");
}
TEST(Golden, DefineFun) {
  check_form("define-fun");
}
TEST(Golden, Terms) {
  check_form("terms");
}
TEST(Golden, Trace) {
  check_form("trace");
}

TEST(Golden, EveryVersion2OutputIsAcceptedBySolvers) {
  const std::vector<Solver> solvers = installed_solvers();
  if (solvers.empty()) {
    GTEST_SKIP() << "neither z3 nor cvc5 is installed";
  }
  for (const std::string form : {"v2", "define-fun", "terms", "trace"}) {
    for (const auto& entry : fs::directory_iterator(folder_of(form))) {
      if (entry.path().extension() != ".smt2") {
        continue;
      }
      const std::string text = convert(form, entry.path());
      ASSERT_NE(text, "") << entry.path();
      for (const Solver& solver : solvers) {
        if (!takes_input(solver, entry.path().stem().string())) {
          continue;
        }
        for (const std::string& line : answers(solver, text)) {
          EXPECT_TRUE(line == "sat" || line == "unsat" || line == "unknown")
              << solver.program << ", " << entry.path() << ": " << line;
        }
      }
    }
  }
}

}  // namespace brum::testing
