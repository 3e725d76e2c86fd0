#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

#include "tests/tools/command.h"

// What the command shows to a person and not to a file: the line of an error, colours, and how far
// the work is. The terminal is one that `script` makes.

namespace brum::testing {

namespace {

using ::testing::AllOf;
using ::testing::EndsWith;
using ::testing::HasSubstr;
using ::testing::Not;

/// Runs a line of the shell on a terminal of 40 columns, with $BRUMLIN for the command. Gives what
/// the terminal shows.
std::string shown(const TemporaryFolder& folder, const std::string& variables,
                  const std::string& line) {
  const std::string command = "stty cols 40; unset NO_COLOR TERM; export BRUMLIN='" BRUM_COMMAND
                              "' " +
                              variables + "; cd '" + folder.path().string() + "'; " + line;
  std::string text = run(Start{.words = {"script", "-qec", command, "/dev/null"}}).out;
  for (std::size_t place = 0; (place = text.find("\r\n", place)) != std::string::npos;) {
    text.erase(place, 1);
  }
  return text;
}

class Terminal : public ::testing::Test {
 protected:
  void SetUp() override {
    if (!is_installed("script")) {
      GTEST_SKIP() << "there is no program `script` to make a terminal";
    }
    if (run(Start{.words = {"script", "-qec", "true", "/dev/null"}}).status != 0) {
      GTEST_SKIP() << "the system has no terminal to give (is /dev/pts there?)";
    }
  }

  TemporaryFolder folder;
};

}  // namespace

TEST_F(Terminal, ShowsTheLineOfAnError) {
  folder.write("in.smt2", "(declare-fun p () Bool)\n\t(assert (and p 1))\n(check-sat)\n");
  const std::string expected =
      "in.smt2:2:10: error: found Int as argument 2 of and, expected Bool\n"
      "  2 |  (assert (and p 1))\n"
      "    |          ^\n";
  EXPECT_EQ(shown(folder, "", "$BRUMLIN in.smt2"), expected);
  EXPECT_EQ(shown(folder, "TERM=dumb", "$BRUMLIN in.smt2"), expected);
  EXPECT_EQ(shown(folder, "TERM=xterm NO_COLOR=1", "$BRUMLIN in.smt2"), expected);
}

TEST_F(Terminal, ShowsTheLineOfAnErrorFromAPipe) {
  folder.write("in.smt2", "(assert p)");
  EXPECT_EQ(shown(folder, "", "cat in.smt2 | $BRUMLIN"),
            "<stdin>:1:9: error: found the symbol p, expected a declared symbol\n"
            "  1 | (assert p)\n"
            "    |         ^\n");
}

TEST_F(Terminal, ShowsTheEndOfTheInput) {
  folder.write("in.smt2", "(assert true");
  EXPECT_EQ(shown(folder, "", "$BRUMLIN in.smt2"),
            "in.smt2:1:13: error: found the end of the input, expected ')'\n"
            "  1 | (assert true\n"
            "    |             ^\n");
}

TEST_F(Terminal, ShowsNoLineInAFile) {
  folder.write("in.smt2", "(assert p)");
  EXPECT_EQ(shown(folder, "TERM=xterm", "$BRUMLIN in.smt2 2>errors; cat errors"),
            "in.smt2:1:9: error: found the symbol p, expected a declared symbol\n");
}

TEST_F(Terminal, ColoursUnlessTheUserWantsNone) {
  folder.write("in.smt2", "(assert p)");
  const std::string coloured =
      "\x1b[1min.smt2:1:9:\x1b[0m \x1b[1;31merror:\x1b[0m found the symbol p, expected a declared "
      "symbol\n"
      "  1 | (assert p)\n"
      "    |         \x1b[1;32m^\x1b[0m\n";
  EXPECT_EQ(shown(folder, "TERM=xterm", "$BRUMLIN in.smt2"), coloured);
  EXPECT_EQ(shown(folder, "TERM=xterm NO_COLOR=", "$BRUMLIN in.smt2"), coloured);
  EXPECT_THAT(shown(folder, "TERM=xterm NO_COLOR=1", "$BRUMLIN in.smt2"), Not(HasSubstr("\x1b")));
  EXPECT_THAT(shown(folder, "TERM=dumb", "$BRUMLIN in.smt2"), Not(HasSubstr("\x1b")));
  folder.write("two.smt2", "(check-sat)(check-sat)");
  EXPECT_THAT(shown(folder, "TERM=xterm", "$BRUMLIN -o out two.smt2"),
              HasSubstr("\x1b[1mtwo.smt2:\x1b[0m \x1b[1;35mwarning:\x1b[0m the input has 2"));
}

TEST_F(Terminal, CutsLongLinesAroundThePlace) {
  // Of 40 columns 6 are the margin and one stays free; 22 of the other 33 stand before the place,
  // more where the line ends.
  const std::string before(100, 'a');
  const std::string behind(100, 'b');
  folder.write("middle.smt2", "(set-info :a |" + before + "|)(assert p |" + behind + "|)");
  EXPECT_THAT(shown(folder, "", "$BRUMLIN middle.smt2"),
              EndsWith("\n  1 | ...aaaaaaaaa|)(assert p |bbbbb...\n"
                       "    |                       ^\n"));
  folder.write("begin.smt2", "(assert p |" + behind + "|)");
  EXPECT_THAT(shown(folder, "", "$BRUMLIN begin.smt2"),
              EndsWith("\n  1 | (assert p |bbbbbbbbbbbbbbbbbbb...\n"
                       "    |         ^\n"));
  folder.write("end.smt2", "(set-info :a |" + before + "|)(assert p)");
  EXPECT_THAT(shown(folder, "", "$BRUMLIN end.smt2"),
              EndsWith("\n  1 | ...aaaaaaaaaaaaaaaaaa|)(assert p)\n"
                       "    |                                ^\n"));
}

TEST_F(Terminal, ShowsTheLineBehindMuchText) {
  std::string lines;
  for (int i = 0; i < 300'000; ++i) {
    lines += "; a comment\n";
  }
  folder.write("lines.smt2", lines + "(assert p)");
  EXPECT_THAT(shown(folder, "", "$BRUMLIN lines.smt2"), EndsWith("\n  300001 | (assert p)\n"
                                                                 "         |         ^\n"));
  folder.write("line.smt2", "(set-info :a |" + std::string(5'000'000, 'a') + "|)(assert p)");
  EXPECT_THAT(shown(folder, "", "$BRUMLIN line.smt2"),
              EndsWith("\n  1 | ...aaaaaaaaaaaaaaaaaa|)(assert p)\n"
                       "    |                                ^\n"));
}

TEST_F(Terminal, ShowsBytesThatMoveNothing) {
  folder.write("in.smt2", "(set-info :a |\xc3\xa9\x1b[2J\xff\x7f|)(assert p)");
  EXPECT_THAT(shown(folder, "", "$BRUMLIN in.smt2"), Not(HasSubstr("\x1b")));
  folder.write("accent.smt2", "(set-info :a |\xc3\xa9|)(assert p)");
  EXPECT_THAT(shown(folder, "", "$BRUMLIN accent.smt2"),
              EndsWith("  1 | (set-info :a |\xc3\xa9|)(assert p)\n"
                       "    |                          ^\n"));
}

TEST_F(Terminal, TakesADocument) {
  folder.write("in.smt2", "(check-sat)");
  const std::string document =
      "(set-info :source |printed by Brumlin|)\n(assert\ntrue\n)\n(check-sat)\n";
  for (const std::string path : {"/dev/tty", "/dev/stdout", "/dev/stderr"}) {
    EXPECT_EQ(shown(folder, "", "$BRUMLIN in.smt2 -o " + path + "; echo $?"), document + "0\n");
  }
}

TEST_F(Terminal, SaysHowFarLongWorkIs) {
  folder.write("in.smt2", "(declare-fun p () Bool)(assert p)");
  const std::string slow = "(sleep 1.2; cat in.smt2) | $BRUMLIN -o out";
  EXPECT_EQ(shown(folder, "TERM=xterm", slow), "\rreading\x1b[K\r\x1b[K");
  EXPECT_EQ(shown(folder, "TERM=dumb", slow), "");
  EXPECT_EQ(shown(folder, "TERM=xterm", slow + " 2>errors; cat errors"), "");
  EXPECT_EQ(shown(folder, "TERM=xterm", "cat in.smt2 | $BRUMLIN -o out"), "");
}

TEST_F(Terminal, SaysHowFarABatchIs) {
  folder.write("in.smt2", "(declare-fun p () Bool)(assert p)");
  folder.write("bad.smt2", "(assert p)");
  const std::string text = shown(folder, "TERM=xterm NO_COLOR=1",
                                 "mkfifo slow.smt2; (sleep 1.3; cat in.smt2 >slow.smt2) & "
                                 "$BRUMLIN -j 2 --output-folder out in.smt2 bad.smt2 slow.smt2");
  EXPECT_THAT(text, AllOf(HasSubstr("bad.smt2:1:9: error: found the symbol p, "),
                          HasSubstr("\r[========     ]  66 %, 2 of 3, 1 failed\x1b[K"),
                          HasSubstr("\r\x1b[K"), HasSubstr("  1 | (assert p)\n    |         ^\n"),
                          EndsWith("brumlin: error: 1 of 3 inputs were not written\n")));
}

}  // namespace brum::testing
