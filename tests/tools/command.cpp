#include "tests/tools/command.h"

#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <fstream>
#include <sstream>
#include <stdexcept>
#include <system_error>

namespace brum::testing {

namespace {

[[noreturn]] void fail(const std::string& what) {
  throw std::runtime_error(what + ": " + std::generic_category().message(errno));
}

/// What the child does between fork() and the program: only what is safe there.
class Child {
 public:
  Child(const Start& start, const std::string& in, const std::string& out, const std::string& err)
      : start_(start), in_(in), out_(out), err_(err) {
    for (const std::string& word : start.words) {
      words_.push_back(const_cast<char*>(word.c_str()));  // NOLINT: execvp() does not write to it
    }
    words_.push_back(nullptr);
  }

  [[noreturn]] void become_program() {
    open_as(STDIN_FILENO, in_, O_RDONLY, start_.without_input);
    if (start_.into_closed_pipe) {
      std::array<int, 2> ends{};
      require(::pipe(ends.data()) == 0);
      require(::dup2(ends[1], STDOUT_FILENO) >= 0);
      ::close(ends[0]);
      ::close(ends[1]);
    } else {
      open_as(STDOUT_FILENO, out_, O_WRONLY | O_CREAT, start_.without_output);
    }
    open_as(STDERR_FILENO, err_, O_WRONLY | O_CREAT, false);
    require(start_.folder.empty() || ::chdir(start_.folder.c_str()) == 0);
    if (start_.without_privileges && ::geteuid() == 0) {
      constexpr unsigned nobody = 65534;
      require(::setgid(nobody) == 0 && ::setuid(nobody) == 0);
    }
    // Processes in the background of a script are started with signals ignored.
    for (const int signal : {SIGINT, SIGTERM, SIGHUP, SIGPIPE}) {
      require(std::signal(signal, SIG_DFL) != SIG_ERR);
    }
    ::alarm(static_cast<unsigned>(start_.seconds));
    ::execvp(words_.front(), words_.data());
    require(false);
    ::_exit(cannot_start);
  }

  static constexpr int cannot_start = 127;

 private:
  static void require(bool done) {
    if (!done) {
      ::_exit(cannot_start);
    }
  }

  static void open_as(int descriptor, const std::string& path, int flags, bool closed) {
    if (closed) {
      ::close(descriptor);
      return;
    }
    constexpr mode_t permissions = 0600;
    const int opened = ::open(path.c_str(), flags, permissions);
    require(opened >= 0 && ::dup2(opened, descriptor) >= 0);
    if (opened != descriptor) {
      ::close(opened);
    }
  }

  const Start& start_;
  const std::string& in_;
  const std::string& out_;
  const std::string& err_;
  std::vector<char*> words_;
};

}  // namespace

TemporaryFolder::TemporaryFolder() {
  std::string name = (std::filesystem::temp_directory_path() / "brumlin-test-XXXXXX").string();
  if (::mkdtemp(name.data()) == nullptr) {
    fail("mkdtemp");
  }
  path_ = name;
}

TemporaryFolder::~TemporaryFolder() {
  std::error_code ignored;
  std::filesystem::remove_all(path_, ignored);
}

std::string TemporaryFolder::write(const std::string& name, const std::string& text) const {
  std::ofstream(path_ / name, std::ios::binary) << text;
  return file(name);
}

std::vector<std::string> TemporaryFolder::names() const {
  std::vector<std::string> found;
  for (const auto& entry : std::filesystem::directory_iterator(path_)) {
    found.push_back(entry.path().filename().string());
  }
  std::sort(found.begin(), found.end());
  return found;
}

std::string read_file(const std::filesystem::path& path) {
  std::ifstream file(path, std::ios::binary);
  std::ostringstream text;
  text << file.rdbuf();
  return text.str();
}

Outcome run(const Start& start) {
  const TemporaryFolder folder;
  const std::string in =
      start.input_path.empty() ? folder.write("in", start.input) : start.input_path;
  const std::string out = start.output_path.empty() ? folder.file("out") : start.output_path;
  const std::string err = folder.file("err");
  Child program(start, in, out, err);
  const pid_t child = ::fork();
  if (child < 0) {
    fail("fork");
  }
  if (child == 0) {
    program.become_program();
  }
  int how = 0;
  while (::waitpid(child, &how, 0) < 0) {
    if (errno != EINTR) {
      fail("waitpid");
    }
  }
  Outcome outcome;
  outcome.status = WIFEXITED(how) ? WEXITSTATUS(how) : -1;
  if (outcome.status == Child::cannot_start) {
    throw std::runtime_error("cannot start " + start.words.front());
  }
  if (start.output_path.empty()) {
    outcome.out = read_file(out);
  }
  outcome.err = read_file(err);
  return outcome;
}

Outcome brumlin(const std::vector<std::string>& arguments, const std::string& input) {
  return brumlin(Start{.words = arguments, .input = input});
}

Outcome brumlin(Start start) {
  start.words.insert(start.words.begin(), BRUM_COMMAND);
  return run(start);
}

bool is_installed(const std::string& program) {
  const char* path = std::getenv("PATH");  // NOLINT(concurrency-mt-unsafe)
  std::istringstream folders(path == nullptr ? "" : path);
  for (std::string folder; std::getline(folders, folder, ':');) {
    if (::access((folder + '/' + program).c_str(), X_OK) == 0) {
      return true;
    }
  }
  return false;
}

}  // namespace brum::testing
