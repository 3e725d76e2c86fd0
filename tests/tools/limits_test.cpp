// The command where the system grants it little: file sizes, memory, inputs that cannot be read.

#include <gtest/gtest.h>

#include <stdexcept>
#include <string>
#include <vector>

#include "tests/support/build_kind.h"
#include "tests/tools/command.h"

namespace brum::testing {
namespace {

/// Runs the command in a shell that has set a limit first.
Outcome run_limited(const std::string& limit, const std::vector<std::string>& arguments) {
  Start start;
  start.words = {"sh", "-c", limit + R"( && exec "$@")", "sh", BRUM_COMMAND};
  start.words.insert(start.words.end(), arguments.begin(), arguments.end());
  return run(start);
}

/// Whether the command comes to its main() at all.
bool starts(const std::string& limit) {
  try {
    return run_limited(limit, {"--version"}).status == 0;
  } catch (const std::runtime_error&) {
    return false;
  }
}

bool is_one_line(const std::string& text) {
  return !text.empty() && text.find('\n') + 1 == text.size();
}

TEST(Limits, AFileThatMayNotGrowKeepsTheOldOne) {
  TemporaryFolder folder;
  std::string text;
  for (int i = 0; i < 3000; ++i) {
    const std::string name = "x" + std::to_string(i);
    text += "(declare-const " + name + " Bool)(assert " + name + ")";
  }
  const std::string input = folder.write("in.smt2", text);
  const std::string output = folder.write("out.smt2", "old");
  const Outcome outcome = run_limited("ulimit -f 1", {input, "-o", output});
  EXPECT_EQ(outcome.status, 3);
  EXPECT_TRUE(is_one_line(outcome.err)) << outcome.err;
  EXPECT_NE(outcome.err.find("File too large"), std::string::npos) << outcome.err;
  EXPECT_EQ(read_file(output), "old");
  EXPECT_EQ(folder.names(), (std::vector<std::string>{"in.smt2", "out.smt2"}));
}

// From too little memory to begin with up to enough, whoever it is that gets none: the reader, the
// printer or a number.
TEST(Limits, WithoutMemoryTheCommandEndsInOrder) {
  if (under_sanitizer) {
    GTEST_SKIP() << "a sanitizer takes more address space than any limit of this test";
  }
  TemporaryFolder folder;
  const std::string input =
      folder.write("in.smt2", "(assert (= 1 " + std::string(1'000'000, '7') + "))");
  const std::string output = folder.write("out.smt2", "old");
  bool started = false;
  std::size_t refused = 0;
  int status = 3;
  for (int kilobytes = 12'000; status != 0 && kilobytes < 200'000; kilobytes += 2000) {
    const std::string limit = "ulimit -v " + std::to_string(kilobytes);
    started = started || starts(limit);
    if (!started)
      continue;
    const Outcome outcome = run_limited(limit, {input, "-o", output});
    status = outcome.status;
    if (status == 0)
      continue;
    ++refused;
    EXPECT_EQ(status, 3) << kilobytes << ": " << outcome.err;
    EXPECT_EQ(outcome.err, "brumlin: error: out of memory\n") << kilobytes;
    EXPECT_EQ(read_file(output), "old");
    EXPECT_EQ(folder.names(), (std::vector<std::string>{"in.smt2", "out.smt2"})) << kilobytes;
  }
  EXPECT_EQ(status, 0);
  EXPECT_GT(refused, 2U);
}

TEST(Limits, AnInputThatCannotBeReadToItsEndIsAnInputError) {
  TemporaryFolder folder;
  const std::string output = folder.write("out.smt2", "old");
  // The memory of the process itself can be opened, but not read at its beginning.
  for (const char* language : {"v1", "v2"}) {
    const Outcome outcome = brumlin({"--from", language, "/proc/self/mem", "-o", output});
    EXPECT_EQ(outcome.status, 3);
    EXPECT_EQ(outcome.err, "brumlin: error: cannot read /proc/self/mem\n");
    EXPECT_EQ(read_file(output), "old");
    EXPECT_EQ(folder.names(), std::vector<std::string>{"out.smt2"});
  }
}

}  // namespace
}  // namespace brum::testing
