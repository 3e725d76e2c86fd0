#include <csignal>
#include <iostream>

#include "batch.h"
#include "command_line.h"
#include "conversion.h"
#include "number_memory.h"
#include "progress_bar.h"
#include "terminal.h"

int main(int argc, char** argv) {
  using namespace brum::tools;
  // A reader of our output that goes away is an error to report, not a reason to die silently.
  static_cast<void>(std::signal(SIGPIPE, SIG_IGN));
  // So is a file that may grow no more.
  static_cast<void>(std::signal(SIGXFSZ, SIG_IGN));
  end_in_order_without_memory_for_numbers();
  std::ios::sync_with_stdio(false);
  ExitStatus status = ExitStatus::done;
  const auto line = parse_command_line(argc, argv, status);
  if (!line) {
    return static_cast<int>(status);
  }
  const Terminal terminal = terminal_of_messages();
  if (line->is_batch()) {
    return static_cast<int>(run_batch(*line, terminal));
  }
  ProgressBar bar(terminal, std::cerr);
  return static_cast<int>(convert(*line, terminal, bar));
}
