#ifndef BRUM_TOOLS_TERMINAL_H
#define BRUM_TOOLS_TERMINAL_H

#include <cstddef>

namespace brum::tools {

/// What messages are shown on. By default nothing that a person looks at: a file or a pipe.
struct Terminal {
  bool is_terminal = false;
  bool has_escapes = false;  // takes escape sequences, those that move the cursor at least
  bool has_colour = false;   // takes colours, and the user wants them
  std::size_t columns = 80;
};

/// Gives what standard error is connected to. Colours are not wanted where the environment has
/// a NO_COLOR that is not empty; a TERM that is missing or `dumb` takes no escape sequences.
Terminal terminal_of_messages();

}  // namespace brum::tools

#endif  // BRUM_TOOLS_TERMINAL_H
