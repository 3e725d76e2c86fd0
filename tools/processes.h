#ifndef BRUM_TOOLS_PROCESSES_H
#define BRUM_TOOLS_PROCESSES_H

#include <cstddef>
#include <functional>
#include <string>

namespace brum::tools {

/// How a process ended.
struct ProcessEnd {
  int status = 0;        // what its task gave, 0 to 255, unless a signal ended it
  int signal = 0;        // the signal that ended it, 0 for none
  std::string messages;  // what it wrote to standard error
};

/// Runs the tasks 0 to `count` - 1, each in a process of its own and `most` (at least one) at a
/// time, begun in their order. A task gives the status that its process ends with; what it changes
/// in memory is lost. `on_end` is called for each, in the order in which they end; `on_wait` every
/// tenth of a second or oftener.
///
/// Throws IoError when the system gives no process at all, or none of the pipes that messages come
/// through.
void run_in_processes(std::size_t count, std::size_t most,
                      const std::function<int(std::size_t)>& task,
                      const std::function<void(std::size_t, const ProcessEnd&)>& on_end,
                      const std::function<void()>& on_wait);

}  // namespace brum::tools

#endif  // BRUM_TOOLS_PROCESSES_H
