#include "bench/memory_use.h"

#include <malloc.h>
#include <sys/wait.h>
#include <unistd.h>

#include <fstream>
#include <string>

namespace brum::bench {

namespace {

/// Gives a field of /proc/self/status that is stated in kB, in bytes; 0 when it is not there.
std::size_t status_field(const std::string& name) {
  std::ifstream status("/proc/self/status");
  for (std::string line; std::getline(status, line);) {
    if (line.compare(0, name.size() + 1, name + ":") == 0) {
      return std::stoul(line.substr(name.size() + 1)) * 1024;
    }
  }
  return 0;
}

/// Makes the peak that the system remembers the present use.
bool reset_peak() {
  std::ofstream file("/proc/self/clear_refs");
  file << "5" << std::flush;
  return file.good();
}

/// In the child: does the work and gives what it took; a peak of 0 stands for unknown.
MemoryUse do_and_measure(const std::function<void()>& work) {
  malloc_trim(0);
  if (!reset_peak()) {
    return {0, 0};
  }
  const std::size_t before = status_field("VmRSS");
  work();
  const std::size_t peak = status_field("VmHWM");
  const std::size_t after = status_field("VmRSS");
  return {peak > before ? peak - before : 1, after > before ? after - before : 0};
}

}  // namespace

std::optional<MemoryUse> measure_memory(const std::function<void()>& work) {
  int ends[2];
  if (pipe(ends) != 0) {
    return std::nullopt;
  }
  const pid_t child = fork();
  if (child == 0) {
    const MemoryUse use = do_and_measure(work);
    const bool sent = write(ends[1], &use, sizeof(use)) == static_cast<ssize_t>(sizeof(use));
    _exit(sent ? 0 : 1);
  }
  close(ends[1]);
  MemoryUse use{};
  const bool received =
      child > 0 && read(ends[0], &use, sizeof(use)) == static_cast<ssize_t>(sizeof(use));
  close(ends[0]);
  int status = 0;
  if (child > 0) {
    waitpid(child, &status, 0);
  }
  if (!received || use.peak == 0) {
    return std::nullopt;
  }
  return use;
}

}  // namespace brum::bench
