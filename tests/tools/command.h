#ifndef BRUM_TESTS_TOOLS_COMMAND_H
#define BRUM_TESTS_TOOLS_COMMAND_H

#include <filesystem>
#include <string>
#include <vector>

namespace brum::testing {

/// A folder of its own for one test, gone with the object.
class TemporaryFolder {
 public:
  TemporaryFolder();
  TemporaryFolder(const TemporaryFolder&) = delete;
  TemporaryFolder& operator=(const TemporaryFolder&) = delete;
  ~TemporaryFolder();

  const std::filesystem::path& path() const { return path_; }
  std::string file(const std::string& name) const { return (path_ / name).string(); }

  /// Writes a file of the folder; gives its path.
  std::string write(const std::string& name, const std::string& text) const;

  /// The names of what the folder holds, hidden files too, sorted.
  std::vector<std::string> names() const;

 private:
  std::filesystem::path path_;
};

std::string read_file(const std::filesystem::path& path);

/// How a process is to be started. What is not given is: no input, the current folder, the user
/// and the permissions of the tests themselves.
struct Start {
  std::vector<std::string> words{};  // the program and its arguments
  std::string input{};               // what standard input holds
  std::string input_path{};          // a path to open as standard input instead
  std::string output_path{};         // a path to open as standard output instead of keeping it
  std::string folder{};              // to run in
  bool without_input = false;        // standard input is closed
  bool without_output = false;       // standard output is closed
  bool into_closed_pipe = false;     // standard output is a pipe that nobody reads
  bool without_privileges = false;   // where the tests run as root, run as nobody
  int seconds = 60;                  // then the process is ended
};

/// How a process ended and what it said.
struct Outcome {
  int status = -1;  // the exit status; -1 when a signal ended it
  std::string out;
  std::string err;
};

/// Runs a process to its end. Throws std::runtime_error when it cannot be started.
Outcome run(const Start& start);

/// Runs the command with these arguments and this text on standard input.
Outcome brumlin(const std::vector<std::string>& arguments, const std::string& input = "");

/// The same with more to say; the command's path goes before `start.words`.
Outcome brumlin(Start start);

/// Whether there is a program of this name in the PATH.
bool is_installed(const std::string& program);

}  // namespace brum::testing

#endif
