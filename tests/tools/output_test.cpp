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

/// Runs a line of the shell in a folder, with $BRUMLIN for the command and the input in `in`.
Outcome shell(const TemporaryFolder& folder, const std::string& line) {
  folder.write("in", input);
  return run(Start{.words = {"sh", "-c", "BRUMLIN='" BRUM_COMMAND "'; " + line},
                   .folder = folder.path().string()});
}

/// What --introduced writes for `division`.
const std::string division =
    "(declare-fun x () Int)(declare-fun y () Int)(assert (<= (div x y) 3))";
const std::string definitions =
    "(define-fun brum.quotient_at_zero.1 ((x Int)) Int (div x 0))\n"
    "(define-fun brum.quotient.2 () Int (div x y))\n";

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

TEST(Output, PipesAreWrittenInPlace) {
  const TemporaryFolder folder;
  expect_written(
      shell(folder, "mkfifo pipe; cat pipe >got & $BRUMLIN in -o pipe; s=$?; wait; exit $s"));
  EXPECT_EQ(read_file(folder.file("got")), document);
  EXPECT_TRUE(fs::is_fifo(folder.path() / "pipe"));
  const Outcome outcome = shell(folder, "($BRUMLIN in -o /dev/stdout; echo $?) | cat");
  EXPECT_EQ(outcome.out, document + "0\n");
  EXPECT_EQ(outcome.err, "");
}

TEST(Output, NothingReachesAPipeWhenTheFormCannotSayIt) {
  const TemporaryFolder folder;
  folder.write("not_in_version_1", not_in_version_1);
  const Outcome outcome =
      shell(folder,
            "mkfifo pipe; cat pipe & $BRUMLIN -t v1 not_in_version_1 -o pipe; s=$?; wait; exit $s");
  EXPECT_EQ(outcome.status, 1);
  EXPECT_EQ(outcome.out, "");
}

TEST(Output, AnOpenDescriptorIsWrittenToWhereItStands) {
  // A shell that opens a file to append leaves what is in it; so does the command, by whatever name
  // it is told to write there.
  const TemporaryFolder folder;
  struct Row {
    const char* path;
    const char* redirection;
  };
  for (const Row& row :
       {Row{"/dev/stdout", ">>log"}, Row{"/dev/fd/1", ">>log"}, Row{"/proc/self/fd/1", ">>log"},
        Row{"/dev/stderr", "2>>log"}, Row{"/dev/fd/3", "3>>log"}, Row{"link", "3>>log"}}) {
    folder.write("log", "precious\n");
    const std::string line = std::string("ln -sf /dev/fd/3 link; $BRUMLIN in -o ") + row.path + " ";
    expect_written(shell(folder, line + row.redirection));
    EXPECT_EQ(read_file(folder.file("log")), "precious\n" + document) << row.path;
    expect_written(
        shell(folder, "exec 4>log; (echo first; $BRUMLIN in -o /dev/fd/4; echo last) >&4"));
    EXPECT_EQ(read_file(folder.file("log")), "first\n" + document + "last\n");
  }
  EXPECT_EQ(folder.names(), (Names{"in", "link", "log"}));
}

TEST(Output, AClosedDescriptorIsAnOutputError) {
  // Nor is it one that the command itself has opened in the meantime.
  const TemporaryFolder folder;
  for (const char* options : {"-o /dev/fd/3", "-o out --introduced /dev/fd/3"}) {
    const Outcome outcome = shell(folder, std::string("$BRUMLIN in 3>&- ") + options);
    expect_output_error(outcome, "/dev/fd/3: No such file or directory");
  }
  EXPECT_EQ(shell(folder, "$BRUMLIN in -o /dev/fd/3 3<in").err,
            "brumlin: error: cannot write /dev/fd/3: Bad file descriptor\n");
  EXPECT_EQ(folder.names(), Names{"in"});
  EXPECT_EQ(read_file(folder.file("in")), input);
}

TEST(Output, HoldsNoMessagesWhereStandardErrorIsClosed) {
  const TemporaryFolder folder;
  folder.write("warned", "(set-info :status solved)" + input);
  for (const char* closed : {"2>&-", "<&- 2>&-", "<&- >&- 2>&-"}) {
    expect_written(shell(folder, std::string("$BRUMLIN warned -o out ") + closed));
    EXPECT_EQ(read_file(folder.file("out")), document) << closed;
  }
  expect_written(shell(folder, "$BRUMLIN warned --output-folder outs 2>&-"));
  EXPECT_EQ(read_file(folder.file("outs/warned.smt2")), document);
}

TEST(Output, TheDocumentAndTheDefinitionsDoNotShareAFile) {
  const TemporaryFolder folder;
  fs::create_directory(folder.path() / "sub");
  fs::create_symlink("../file", folder.path() / "sub" / "link");
  fs::create_symlink("../none", folder.path() / "sub" / "link_to_none");
  folder.write("file", "old");
  fs::create_hard_link(folder.path() / "file", folder.path() / "hard");
  for (const char* options :
       {"-o none --introduced none", "-o none --introduced ./sub/../none",
        "-o sub/link_to_none --introduced none", "-o file --introduced file",
        "-o sub/link --introduced file", "-o file --introduced hard",
        "-o file --introduced /dev/stdout >>file", "--introduced file >>file"}) {
    const Outcome outcome = shell(folder, std::string("$BRUMLIN in ") + options);
    EXPECT_EQ(outcome.status, 2) << options;
    EXPECT_EQ(outcome.err, "brumlin: error: --introduced: the document goes to that file\n")
        << options;
    EXPECT_EQ(read_file(folder.file("file")), "old") << options;
  }
  EXPECT_EQ(folder.names(), (Names{"file", "hard", "in", "sub"}));
}

TEST(Output, TheDocumentAndTheDefinitionsMayShareWhatIsNoFile) {
  const Outcome outcome = brumlin({"--introduced", "/dev/stdout", "-o", "/dev/stdout"}, division);
  EXPECT_EQ(outcome.status, 0);
  EXPECT_EQ(outcome.err, "");
  EXPECT_EQ(outcome.out, definitions + brumlin({}, division).out);
  expect_written(brumlin({"--introduced", "/dev/null", "-o", "/dev/null"}, division));
}

TEST(Output, NoFileIsReplacedBeforeAllIsWritten) {
  const TemporaryFolder folder;
  const std::string out = folder.write("out", "old");
  const std::string meaning = folder.write("meaning", "old meaning");
  expect_output_error(
      brumlin(
          Start{.words = {"--introduced", meaning}, .input = division, .output_path = "/dev/full"}),
      "standard output: No space left on device");
  expect_output_error(brumlin({"-o", "/dev/full", "--introduced", meaning}, division),
                      "/dev/full: No space left on device");
  expect_output_error(brumlin({"-o", out, "--introduced", "/dev/full"}, division),
                      "/dev/full: No space left on device");
  expect_output_error(brumlin({"-o", out, "--introduced", folder.file("none/meaning")}, division),
                      folder.file("none/meaning") + ": No such file or directory");
  EXPECT_EQ(brumlin({"-t", "v1", "-o", out, "--introduced", meaning}, not_in_version_1).status, 1);
  EXPECT_EQ(read_file(out), "old");
  EXPECT_EQ(read_file(meaning), "old meaning");
  EXPECT_EQ(folder.names(), (Names{"meaning", "out"}));
  expect_written(brumlin({"-o", out, "--introduced", meaning}, division));
  EXPECT_EQ(read_file(meaning), definitions);
}

TEST(Output, StatsCountTheBytesOfAPipe) {
  const TemporaryFolder folder;
  const Outcome outcome = shell(folder, "$BRUMLIN in --stats -o /dev/stdout | cat");
  EXPECT_THAT(outcome.err,
              ::testing::HasSubstr("\nbytes: " + std::to_string(document.size()) + "\n"));
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
    expect_output_error(outcome, "standard output: No space left on device");
    expect_output_error(brumlin(Start{.words = {option}, .without_output = true}),
                        "standard output: Bad file descriptor");
  }
}

}  // namespace brum::testing
