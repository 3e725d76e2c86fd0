#include "terminal.h"

#include <sys/ioctl.h>
#include <unistd.h>

#include <cstdlib>
#include <string_view>

namespace brum::tools {

namespace {

/// The value of a variable of the environment, empty where there is none.
std::string_view variable(const char* name) {
  const char* value = std::getenv(name);  // NOLINT(concurrency-mt-unsafe): there is one thread
  return value == nullptr ? "" : value;
}

}  // namespace

Terminal terminal_of_messages() {
  Terminal terminal;
  terminal.is_terminal = ::isatty(STDERR_FILENO) == 1;
  if (terminal.is_terminal) {
    const std::string_view kind = variable("TERM");
    terminal.has_escapes = !kind.empty() && kind != "dumb";
    terminal.has_colour = terminal.has_escapes && variable("NO_COLOR").empty();
    winsize size{};
    if (::ioctl(STDERR_FILENO, TIOCGWINSZ, &size) == 0 && size.ws_col > 0) {
      terminal.columns = size.ws_col;
    }
  }
  return terminal;
}

}  // namespace brum::tools
