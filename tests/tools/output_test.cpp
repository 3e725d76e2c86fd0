#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>
#include <string>
#include <vector>

#include "tests/tools/command.h"

// A document arrives whole or not at all: files, links, devices and pipes as output.

namespace brum::testing {

namespace {

namespace fs = std::filesystem;
using ::testing::StartsWith;

const std::string input = "(declare-fun p () Bool)(assert p)";
const std::string document =
    "(set-info :source |printed by Brumlin|)\n(declare-fun p () Bool)\n(assert\np\n)\n";

/// An input that version 1.2 has no text for, noticed when a part of the document is written.
const std::string not_in_version_1 =
    "(declare-fun f (Bool) Bool)(declare-fun p () Bool)(assert (and p (f p)))";

mode_t permissions_of(const std::string& path) {
  struct stat facts {};
  EXPECT_EQ(::stat(path.c_str(), &facts), 0);
  return facts.st_mode & 07777U;
}

void expect_written(const Outcome& outcome) {
  EXPECT_EQ(outcome.status, 0);
  EXPECT_EQ(outcome.out, "");
  EXPECT_EQ(outcome.err, "");
}

void expect_output_error(const Outcome& outcome, const std::string& message) {
  EXPECT_EQ(outcome.status, 3);
  EXPECT_EQ(outcome.out, "");
  EXPECT_EQ(outcome.err, "brumlin: error: cannot write " + message + "\n");
}

using Names = std::vector<std::string>;

}  // namespace

TEST(Output, GoesToANewFile) {
  const TemporaryFolder folder;
  expect_written(brumlin({"-o", folder.file("out")}, input));
  EXPECT_EQ(read_file(folder.file("out")), document);
  EXPECT_EQ(folder.names(), Names{"out"});
  const mode_t mask = ::umask(0);
  ::umask(mask);
  EXPECT_EQ(permissions_of(folder.file("out")), 0666U & ~mask);
}

TEST(Output, ReplacesAnOldFileAndKeepsItsPermissions) {
  const TemporaryFolder folder;
  const std::string path = folder.write("out", std::string(10000, 'x'));
  ASSERT_EQ(::chmod(path.c_str(), 0640), 0);
  expect_written(brumlin({"--output", path}, input));
  EXPECT_EQ(read_file(path), document);
  EXPECT_EQ(permissions_of(path), 0640U);
  EXPECT_EQ(folder.names(), Names{"out"});
}

TEST(Output, MayReplaceTheInput) {
  const TemporaryFolder folder;
  const std::string path = folder.write("both.smt2", input);
  expect_written(brumlin({path, "-o", path}));
  EXPECT_EQ(read_file(path), document);
}

TEST(Output, IsRelativeToTheCurrentFolder) {
  const TemporaryFolder folder;
  const Outcome outcome =
      brumlin(Start{.words = {"-o", "out"}, .input = input, .folder = folder.path().string()});
  expect_written(outcome);
  EXPECT_EQ(read_file(folder.file("out")), document);
}

TEST(Output, KeepsALinkAndWritesItsTarget) {
  const TemporaryFolder folder;
  fs::create_directory(folder.path() / "sub");
  folder.write("sub/target", "old");
  fs::create_symlink("sub/target", folder.path() / "middle");
  fs::create_symlink("middle", folder.path() / "link");
  expect_written(brumlin({"-o", folder.file("link")}, input));
  EXPECT_TRUE(fs::is_symlink(folder.path() / "link"));
  EXPECT_TRUE(fs::is_symlink(folder.path() / "middle"));
  EXPECT_FALSE(fs::is_symlink(folder.path() / "sub" / "target"));
  EXPECT_EQ(read_file(folder.file("sub/target")), document);
  EXPECT_EQ(folder.names(), (Names{"link", "middle", "sub"}));
}

TEST(Output, MakesTheTargetOfALinkThatHasNone) {
  const TemporaryFolder folder;
  fs::create_symlink("target", folder.path() / "link");
  expect_written(brumlin({"-o", folder.file("link")}, input));
  EXPECT_TRUE(fs::is_symlink(folder.path() / "link"));
  EXPECT_EQ(read_file(folder.file("target")), document);
  EXPECT_EQ(folder.names(), (Names{"link", "target"}));
}

TEST(Output, RefusesALoopOfLinks) {
  const TemporaryFolder folder;
  fs::create_symlink("b", folder.path() / "a");
  fs::create_symlink("a", folder.path() / "b");
  expect_output_error(brumlin({"-o", folder.file("a")}, input),
                      folder.file("a") + ": Too many levels of symbolic links");
  EXPECT_EQ(folder.names(), (Names{"a", "b"}));
}

TEST(Output, TheOldFileStaysWhenTheFormCannotSayIt) {
  const TemporaryFolder folder;
  const std::string path = folder.write("out", "old");
  const Outcome outcome = brumlin({"-t", "v1", "-o", path}, not_in_version_1);
  EXPECT_EQ(outcome.status, 1);
  EXPECT_EQ(outcome.err, "<stdin>: error: SMT-LIB v1 format doesn't have an explicit Bool type\n");
  EXPECT_EQ(read_file(path), "old");
  EXPECT_EQ(folder.names(), Names{"out"});
}

TEST(Output, NoFileAppearsWhenTheFormCannotSayIt) {
  const TemporaryFolder folder;
  EXPECT_EQ(brumlin({"-t", "v1", "-o", folder.file("out")}, not_in_version_1).status, 1);
  EXPECT_EQ(folder.names(), Names{});
}

TEST(Output, NoFileAppearsWhenTheInputIsMissing) {
  const TemporaryFolder folder;
  EXPECT_EQ(brumlin({folder.file("in"), "-o", folder.file("out")}).status, 3);
  EXPECT_EQ(folder.names(), Names{});
}

TEST(Output, NothingIsLeftWhenASignalEndsTheCommand) {
  if (!is_installed("timeout")) {
    GTEST_SKIP() << "there is no timeout to send the signal";
  }
  for (const char* signal : {"INT", "TERM", "HUP"}) {
    const TemporaryFolder folder;
    const std::string path = folder.write("out", "old");
    // Nobody writes into this pipe, so the command waits for its input.
    ASSERT_EQ(::mkfifo(folder.file("in").c_str(), 0600), 0);
    const Outcome outcome = run(Start{
        .words = {"timeout", "-s", signal, "1", BRUM_COMMAND, folder.file("in"), "-o", path}});
    constexpr int timed_out = 124;
    EXPECT_EQ(outcome.status, timed_out) << signal;
    EXPECT_EQ(read_file(path), "old");
    EXPECT_EQ(folder.names(), (Names{"in", "out"})) << signal;
  }
}

TEST(Output, RefusesAFolder) {
  const TemporaryFolder folder;
  const std::string path = folder.path().string();
  expect_output_error(brumlin({"-o", path}, input), path + ": it is a folder");
  expect_output_error(brumlin({"-o", path + "/"}, input), path + "/: it is a folder");
  EXPECT_EQ(folder.names(), Names{});
}

TEST(Output, RefusesAPlaceThatIsNotThere) {
  const TemporaryFolder folder;
  const std::string nowhere = folder.file("none/out");
  expect_output_error(brumlin({"-o", nowhere}, input), nowhere + ": No such file or directory");
  const std::string below_file = folder.write("file", "") + "/out";
  expect_output_error(brumlin({"-o", below_file}, input), below_file + ": Not a directory");
  const std::string too_long = folder.file(std::string(300, 'n'));
  expect_output_error(brumlin({"-o", too_long}, input), too_long + ": File name too long");
  EXPECT_EQ(folder.names(), Names{"file"});
}

TEST(Output, TakesTheLongestNameThatThereIs) {
  const TemporaryFolder folder;
  const std::string name(255, 'n');
  expect_written(brumlin({"-o", folder.file(name)}, input));
  EXPECT_EQ(folder.names(), Names{name});
}

TEST(Output, RefusesAFolderWithoutPermission) {
  const TemporaryFolder folder;
  const std::string path = folder.write("out", "old");
  ASSERT_EQ(::chmod(folder.path().c_str(), 0555), 0);
  Outcome outcome;
  try {
    outcome = brumlin(
        Start{.words = {"-o", path}, .input_path = "/dev/null", .without_privileges = true});
  } catch (const std::exception& problem) {
    GTEST_SKIP() << "the command does not start for another user: " << problem.what();
  }
  expect_output_error(outcome, path + ": Permission denied");
  ASSERT_EQ(::chmod(folder.path().c_str(), 0755), 0);
  EXPECT_EQ(read_file(path), "old");
  EXPECT_EQ(folder.names(), Names{"out"});
}

TEST(Output, AFullDeviceIsAnOutputError) {
  expect_output_error(brumlin({"-o", "/dev/full"}, input), "/dev/full: No space left on device");
  expect_output_error(brumlin(Start{.input = input, .output_path = "/dev/full"}),
                      "standard output: No space left on device");
}

TEST(Output, DevicesAreWrittenInPlace) {
  expect_written(brumlin({"-o", "/dev/null"}, input));
  EXPECT_TRUE(fs::is_character_file("/dev/null"));
  const Outcome outcome = brumlin({"-o", "/dev/stderr"}, input);
  EXPECT_EQ(outcome.status, 0);
  EXPECT_EQ(outcome.out, "");
  EXPECT_EQ(outcome.err, document);
}

TEST(Output, AClosedPipeIsAnOutputError) {
  // More than a pipe holds, so that there is no way but to notice.
  std::string large = "(declare-fun p () Bool)\n";
  for (int i = 0; i < 20000; ++i) {
    large += "(assert p)\n";
  }
  for (const std::string& text : {input, large}) {
    expect_output_error(brumlin(Start{.input = text, .into_closed_pipe = true}),
                        "standard output: Broken pipe");
  }
}

TEST(Output, ClosedStandardOutputIsAnOutputError) {
  expect_output_error(brumlin(Start{.input = input, .without_output = true}),
                      "standard output: Bad file descriptor");
}

TEST(Output, HelpThatCannotBeWrittenIsAnOutputError) {
  for (const char* option : {"--help", "--version"}) {
    const Outcome outcome = brumlin(Start{.words = {option}, .output_path = "/dev/full"});
    EXPECT_EQ(outcome.status, 3) << option;
    EXPECT_THAT(outcome.err, StartsWith("brumlin: error: cannot write standard output"));
  }
}

}  // namespace brum::testing
