#include <fcntl.h>
#include <unistd.h>

#include <csignal>
#include <cstdio>
#include <exception>
#include <iostream>
#include <new>

#include "batch.h"
#include "command_line.h"
#include "conversion.h"
#include "number_memory.h"
#include "progress_bar.h"
#include "terminal.h"

namespace brum::tools {

namespace {

/// Where standard error is closed, takes its descriptor for what cannot be written to. Else the
/// next file to be opened would get it, and the messages.
void keep_messages_out_of_files() {
  if (::fcntl(STDERR_FILENO, F_GETFD) >= 0) {
    return;
  }
  const int descriptor = ::open("/dev/null", O_RDONLY);
  if (descriptor >= 0 && descriptor != STDERR_FILENO) {
    ::dup2(descriptor, STDERR_FILENO);
    ::close(descriptor);
  }
}

ExitStatus run(int argc, char** argv) {
  keep_messages_out_of_files();
  end_in_order_without_memory_for_numbers();
  std::ios::sync_with_stdio(false);
  ExitStatus status = ExitStatus::done;
  const auto line = parse_command_line(argc, argv, status);
  if (!line) {
    return status;
  }
  const Terminal terminal = terminal_of_messages();
  if (line->is_batch()) {
    return run_batch(*line, terminal);
  }
  ProgressBar bar(terminal, std::cerr);
  return convert(*line, terminal, bar);
}

/// Reports what went wrong before there was an input, or between inputs. Takes no memory: there may
/// be none.
int fail(const char* problem) noexcept {
  static_cast<void>(std::fprintf(stderr, "brumlin: error: %s\n", problem));
  return static_cast<int>(ExitStatus::io_error);
}

}  // namespace

}  // namespace brum::tools

int main(int argc, char** argv) {
  using namespace brum::tools;
  // A reader of our output that goes away is an error to report, not a reason to die silently.
  static_cast<void>(std::signal(SIGPIPE, SIG_IGN));
  // So is a file that may grow no more.
  static_cast<void>(std::signal(SIGXFSZ, SIG_IGN));
  try {
    return static_cast<int>(run(argc, argv));
  } catch (const std::bad_alloc&) {
    return fail("out of memory");
  } catch (const std::exception& problem) {
    return fail(problem.what());
  }
}
