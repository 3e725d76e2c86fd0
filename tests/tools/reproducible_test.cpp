#include <gtest/gtest.h>

#include <set>
#include <string>
#include <vector>

#include "tests/tools/command.h"

#ifdef __linux__
#include <sys/personality.h>
#endif

// The command writes the same bytes in every run, although the system places a process at other
// addresses each time, and the order of declarations is that of addresses.

namespace brum::testing {

namespace {

constexpr int runs = 50;

/// Whether processes that are started here get other addresses each time: where the stack of a
/// process lies, ten times.
bool are_addresses_random() {
#ifdef __linux__
  std::set<std::string> places;
  constexpr int tries = 10;
  for (int i = 0; i < tries; ++i) {
    places.insert(run(Start{.words = {"grep", "-F", "[stack]", "/proc/self/maps"}}).out);
  }
  const bool is_turned_off =
      (static_cast<unsigned>(::personality(0xffffffff)) & ADDR_NO_RANDOMIZE) != 0;
  return !is_turned_off && places.size() > 1;
#else
  return false;
#endif
}

/// A script with enough sorts and symbols that hardly two orders of them agree by chance.
std::string many_declarations() {
  std::string text = "(set-logic QF_UFBV)\n";
  std::string sum = "(= #b0 #b0)";
  for (int i = 0; i < 40; ++i) {
    const std::string n = std::to_string(i);
    const std::string width = std::to_string(i + 2);
    text += "(declare-sort S" + n + " 0)\n(declare-fun f" + n + " (S" + n + ") (_ BitVec " + width +
            "))\n(declare-const c" + n + " S" + n + ")\n";
    sum = "(or " + sum + " (= (f" + n + " c" + n + ") (bvnot (f" + n + " c" + n + "))))";
  }
  return text + "(assert " + sum + ")\n(check-sat)\n";
}

void expect_one_text(const std::vector<std::string>& options) {
  const TemporaryFolder folder;
  const std::string input = folder.write("in.smt2", many_declarations());
  std::vector<std::string> words = options;
  words.push_back(input);
  std::set<std::string> texts;
  for (int i = 0; i < runs; ++i) {
    const Outcome outcome = brumlin(words);
    ASSERT_EQ(outcome.status, 0) << outcome.err;
    ASSERT_NE(outcome.out, "");
    texts.insert(outcome.out);
  }
  EXPECT_EQ(texts.size(), 1U);
}

}  // namespace

class Reproducible : public ::testing::TestWithParam<const char*> {
 protected:
  void SetUp() override {
    if (!are_addresses_random()) {
      GTEST_SKIP() << "this system does not randomise the addresses of processes";
    }
  }
};

TEST_P(Reproducible, FiftyRunsWriteTheSameBytes) {
  expect_one_text({"--to", GetParam()});
}

INSTANTIATE_TEST_SUITE_P(Forms, Reproducible,
                         ::testing::Values("v1", "v2", "define-fun", "terms", "trace", "dot"),
                         [](const auto& form) {
                           const std::string name = form.param;
                           return name == "define-fun" ? std::string("define_fun") : name;
                         });

}  // namespace brum::testing
