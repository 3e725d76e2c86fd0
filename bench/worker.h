#ifndef BRUM_BENCH_WORKER_H
#define BRUM_BENCH_WORKER_H

#include <sys/types.h>

#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <vector>

namespace brum::bench {

/// A process that does pieces of work when it is asked to. With one for each system their runs take
/// turns, and still each has a heap of its own, as in a program that uses only one of them.
class Worker {
 public:
  struct Job {
    std::function<void()> prepare;        // not timed; may be empty
    std::function<std::uint64_t()> work;  // gives a number of its own choice
  };

  struct Outcome {
    std::uint64_t value;  // what the work gave
    double seconds;       // of a processor, the system's work for the process included
  };

  Worker() = default;
  Worker(const Worker&) = delete;
  Worker& operator=(const Worker&) = delete;
  ~Worker();

  /// Adds a job and gives its number. The process begins with the first run(); after that is too
  /// late.
  std::size_t add(Job job);

  /// Has a job done. Gives nothing when it throws, which ends the process, or the process has died.
  std::optional<Outcome> run(std::size_t number);

 private:
  bool start();
  void stop() noexcept;

  std::vector<Job> jobs_;
  pid_t process_ = 0;  // 0 before its start, -1 after its end
  int socket_ = -1;    // to and from it
};

/// True when `work` is done in a child process without throwing.
bool succeeds_in_child(const std::function<void()>& work);

}  // namespace brum::bench

#endif  // BRUM_BENCH_WORKER_H
